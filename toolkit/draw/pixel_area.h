// A set of pixels.
#pragma once

#include <vector>

#include "toolkit/base/geometry.h"

namespace zel {

// Kept as rectangles, no two of which overlap, in the order in which they came.
class PixelArea {
 public:
  PixelArea() = default;
  explicit PixelArea(const Rect& rect) { Add(rect); }
  // Takes in the pixels of the rectangle that are not in the set yet.
  void Add(const Rect& rect);
  // Takes the pixels of the rectangle out.
  void Remove(const Rect& rect);
  void Clear() { rects_.clear(); }
  bool IsEmpty() const { return rects_.empty(); }
  const std::vector<Rect>& Rects() const { return rects_; }

 private:
  std::vector<Rect> rects_;
};

}  // namespace zel
