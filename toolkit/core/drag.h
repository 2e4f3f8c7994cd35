// What a press that goes on does to the shape of a dialog.
#pragma once

#include "toolkit/base/geometry.h"

namespace zel {

// What a press at the pointer would drag.
enum DragMode : int {
  kDragNone,
  kDragMove,
  kDragTopLeft,
  kDragTopRight,
  kDragBottomLeft,
  kDragBottomRight,
  kDragTop,
  kDragBottom,
  kDragLeft,
  kDragRight,
};

// The index of the pointer shape that goes with a mode.
int DragCursor(int mode);

// Which edges follow the pointer, in a mode that drags some.
struct DragEdges {
  bool left, right, top, bottom;
};
DragEdges EdgesOf(int mode);

// Where `shape`, relative to what the dialog lies in, goes when the pointer is `delta` away from
// where it was pressed: never beyond the left or the top edge, and never smaller than `least`. What
// is not dragged stays where it is.
Rect Dragged(int mode, const Rect& shape, Point delta, Size least);

}  // namespace zel
