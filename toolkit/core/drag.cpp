#include "toolkit/core/drag.h"

#include <algorithm>

#include "toolkit/draw/cursor.h"

namespace zel {
namespace {

struct DragRow {
  int cursor;
  DragEdges edges;
};
constexpr DragRow kDragRows[] = {
    {MOUSE_NORMAL, {}},
    {MOUSE_NORMAL, {}},
    {MOUSE_SIZE_DIAGONAL1, {true, false, true, false}},
    {MOUSE_SIZE_DIAGONAL2, {false, true, true, false}},
    {MOUSE_SIZE_DIAGONAL2, {true, false, false, true}},
    {MOUSE_SIZE_DIAGONAL1, {false, true, false, true}},
    {MOUSE_SIZE_VERTICAL, {false, false, true, false}},
    {MOUSE_SIZE_VERTICAL, {false, false, false, true}},
    {MOUSE_SIZE_HORIZONTAL, {true, false, false, false}},
    {MOUSE_SIZE_HORIZONTAL, {false, true, false, false}},
};

struct Span {
  int start, length;
};

// One direction of it: the first edge follows, or the last one, or the whole.
Span DragSpan(Span span, int delta, bool first, bool last, int least) {
  const int end = span.start + span.length;
  if (first) {
    const int length = std::max(least, end - std::max(0, span.start + delta));
    return {std::max(0, end - length), length};
  }
  if (last) return {span.start, std::max(least, span.length + delta)};
  return span;
}

}  // namespace

int DragCursor(int mode) { return kDragRows[mode].cursor; }

DragEdges EdgesOf(int mode) { return kDragRows[mode].edges; }

Rect Dragged(int mode, const Rect& shape, Point delta, Size least) {
  if (mode == kDragMove)
    return {std::max(0, shape.x + delta.x), std::max(0, shape.y + delta.y), shape.w, shape.h};
  const DragEdges edges = EdgesOf(mode);
  const Span across = DragSpan({shape.x, shape.w}, delta.x, edges.left, edges.right, least.w);
  const Span down = DragSpan({shape.y, shape.h}, delta.y, edges.top, edges.bottom, least.h);
  return {across.start, down.start, across.length, down.length};
}

}  // namespace zel
