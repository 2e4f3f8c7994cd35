#include "toolkit/draw/pixel_area.h"

#include <algorithm>
#include <utility>

namespace zel {
namespace {

// The corners of a rectangle that lie inside another one.
enum CornerMask : int { kTopLeft = 1, kTopRight = 2, kBottomLeft = 4, kBottomRight = 8 };

int CornersInside(const Rect& r, const Rect& covered) {
  int mask = 0;
  if (covered.Contains({r.x, r.y})) mask |= kTopLeft;
  if (covered.Contains({r.Right(), r.y})) mask |= kTopRight;
  if (covered.Contains({r.x, r.Bottom()})) mask |= kBottomLeft;
  if (covered.Contains({r.Right(), r.Bottom()})) mask |= kBottomRight;
  return mask;
}

// The parts of `r` that `covered` leaves open, in the order in which they are listed.
std::vector<Rect> Uncovered(const Rect& r, const Rect& covered) {
  const int x1 = r.x, y1 = r.y, x2 = r.Right(), y2 = r.Bottom();
  const int ex1 = covered.x, ey1 = covered.y, ex2 = covered.Right(), ey2 = covered.Bottom();
  switch (CornersInside(r, covered)) {
    case 0: {
      const int top = std::max(y1, ey1);
      const int height = std::min(y2, ey2) - top;
      return {{x1, y1, r.w, ey1 - y1},
              {x1, top, ex1 - x1, height},
              {ex2, top, x2 - ex2, height},
              {x1, ey2, r.w, y2 - ey2}};
    }
    case kTopLeft:
      return {{ex2, y1, x2 - ex2, ey2 - y1}, {x1, ey2, r.w, y2 - ey2}};
    case kTopRight:
      return {{x1, y1, ex1 - x1, ey2 - y1}, {x1, ey2, r.w, y2 - ey2}};
    case kTopLeft | kTopRight:
      return {{x1, ey2, r.w, y2 - ey2}};
    case kBottomLeft:
      return {{x1, y1, r.w, ey1 - y1}, {ex2, ey1, x2 - ex2, y2 - ey1}};
    case kTopLeft | kBottomLeft:
      return {{ex2, y1, x2 - ex2, r.h}};
    case kBottomRight:
      return {{x1, y1, r.w, ey1 - y1}, {x1, ey1, ex1 - x1, y2 - ey1}};
    case kTopRight | kBottomRight:
      return {{x1, y1, ex1 - x1, r.h}};
    case kBottomLeft | kBottomRight:
      return {{x1, y1, r.w, ey1 - y1}};
    default:
      return {};
  }
}

}  // namespace

void PixelArea::Add(const Rect& rect) {
  // Pieces that are still to be checked against the list, the next one last.
  std::vector<Rect> open{rect};
  while (!open.empty()) {
    const Rect piece = open.back();
    open.pop_back();
    if (piece.w <= 0 || piece.h <= 0) continue;
    const auto covered = std::find_if(rects_.begin(), rects_.end(), [&piece](const Rect& listed) {
      return listed.Overlaps(piece);
    });
    if (covered == rects_.end()) {
      rects_.push_back(piece);
      continue;
    }
    const std::vector<Rect> rest = Uncovered(piece, *covered);
    open.insert(open.end(), rest.rbegin(), rest.rend());
  }
}

void PixelArea::Remove(const Rect& rect) {
  std::vector<Rect> left;
  for (const Rect& listed : rects_) {
    if (!listed.Overlaps(rect)) {
      left.push_back(listed);
      continue;
    }
    for (const Rect& piece : Uncovered(listed, rect))
      if (piece.w > 0 && piece.h > 0) left.push_back(piece);
  }
  rects_ = std::move(left);
}

}  // namespace zel
