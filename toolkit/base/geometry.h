// Points, sizes and rectangles in pixels.
#pragma once

#include <algorithm>
#include <cstdint>

namespace zel {

// Positions and extents of widgets stay within this many pixels, so that their sums cannot
// overflow.
inline constexpr int kMostPixels = 32767;

struct Point {
  std::int32_t x = 0;
  std::int32_t y = 0;
  friend constexpr bool operator==(const Point&, const Point&) = default;
};

struct Size {
  std::int32_t w = 0;
  std::int32_t h = 0;
  friend constexpr bool operator==(const Size&, const Size&) = default;
};

// A top-left corner and an extent. The right edge is x + w and the bottom edge y + h; both lie just
// outside the painted pixels.
class Rect {
 public:
  constexpr Rect() = default;
  constexpr Rect(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height)
      : x{left}, y{top}, w{width}, h{height} {}
  constexpr Rect(const Rect&) = default;
  constexpr Rect& operator=(const Rect&) = default;
  constexpr virtual ~Rect() = default;

  constexpr std::int32_t Right() const { return x + w; }
  constexpr std::int32_t Bottom() const { return y + h; }

  // The hit test: all four edges belong to the rectangle.
  constexpr bool Contains(Point p) const {
    return x <= p.x && p.x <= Right() && y <= p.y && p.y <= Bottom();
  }
  // True when the two share an area; touching edges do not overlap, nor does what is empty.
  constexpr bool Overlaps(const Rect& other) const {
    const Rect shared = Shared(other);
    return shared.w > 0 && shared.h > 0;
  }
  // What the two share; without a positive extent when they do not overlap.
  constexpr Rect Shared(const Rect& other) const {
    const std::int32_t left = std::max(x, other.x), top = std::max(y, other.y);
    return {left, top, std::min(Right(), other.Right()) - left,
            std::min(Bottom(), other.Bottom()) - top};
  }
  // True when the other one lies in this one whole.
  constexpr bool Surrounds(const Rect& other) const {
    return x <= other.x && y <= other.y && Right() >= other.Right() && Bottom() >= other.Bottom();
  }
  friend constexpr bool operator==(const Rect& a, const Rect& b) {
    return a.x == b.x && a.y == b.y && a.w == b.w && a.h == b.h;
  }

  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t w = 0;
  std::int32_t h = 0;
};

}  // namespace zel
