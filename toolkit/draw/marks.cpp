#include "toolkit/draw/marks.h"

#include <algorithm>
#include <cstring>

#include "toolkit/draw/bitmap_guard.h"

namespace zel {
namespace {

constexpr int kBevel = 2;  // pixels on each side of a box

// Makes rows of a memory bitmap, where they are visible, look like the first of them.
void RepeatRow(BITMAP* bitmap, int x1, int x2, int firstY, int lastY) {
  const int left = std::max(x1, bitmap->cl), right = std::min(x2, bitmap->cr - 1) + 1;
  if (left >= right) return;
  const auto bytes = static_cast<std::size_t>(BytesPerPixel(bitmap_color_depth(bitmap)));
  const auto pixels = [=](int y) {
    return bitmap->line[y] + static_cast<std::size_t>(left) * bytes;
  };
  const std::size_t count = static_cast<std::size_t>(right - left) * bytes;
  for (int y = firstY + 1; y <= lastY; ++y) std::memcpy(pixels(y), pixels(firstY), count);
}

void DrawBox(BITMAP* bitmap, int x1, int y1, int x2, int y2, Color fill, Color light, Color dark) {
  if (fill != Color{}) ::rectfill(bitmap, x1, y1, x2, y2, fill);
  const Color outerLight = MixNear(light, dark);
  const Color innerDark = MixNear(dark, light);
  ::vline(bitmap, x1, y1, y2, outerLight);
  ::hline(bitmap, x1, y1, x2, outerLight);
  ::vline(bitmap, x1 + 1, y1 + 1, y2 - 1, light);
  ::hline(bitmap, x1 + 1, y1 + 1, x2 - 1, light);
  ::vline(bitmap, x2 - 1, y1 + 1, y2, innerDark);
  ::hline(bitmap, x1 + 1, y2 - 1, x2, innerDark);
  ::hline(bitmap, x1, y2, x2, dark);
  ::vline(bitmap, x2, y1, y2, dark);
}

// Allegro draws circles of a negative radius beside the bitmap.
void OutlineCircle(BITMAP* bitmap, int x, int y, int radius, Color color) {
  if (radius >= 0) ::circle(bitmap, x, y, radius, color);
}

void FillCircle(BITMAP* bitmap, int x, int y, int radius, Color color) {
  if (radius >= 0) ::circlefill(bitmap, x, y, radius, color);
}

}  // namespace

void DrawBox3D(BITMAP* bitmap, int x1, int y1, int x2, int y2, Color fill, Color light,
               Color dark) {
  // All rows between the bevels look alike.
  const int clipTop = bitmap->ct, clipBottom = bitmap->cb;
  const int first = std::max(y1 + kBevel, clipTop), last = std::min(y2 - kBevel, clipBottom - 1);
  if (fill == Color{} || !is_memory_bitmap(bitmap) || first >= last || x1 >= x2)
    return DrawBox(bitmap, x1, y1, x2, y2, fill, light, dark);
  bitmap->cb = first + 1;
  DrawBox(bitmap, x1, y1, x2, y2, fill, light, dark);
  bitmap->cb = clipBottom;
  bitmap->ct = last;
  DrawBox(bitmap, x1, y1, x2, y2, fill, light, dark);
  bitmap->ct = clipTop;
  RepeatRow(bitmap, x1, x2, first, last);
}

void DrawCircle3D(BITMAP* bitmap, int x, int y, int r, Color fill, Color light, Color dark) {
  if (fill != Color{}) FillCircle(bitmap, x, y, r, fill);
  ::set_clip_rect(bitmap, 0, 0, x + r / 2, y + r / 2);
  OutlineCircle(bitmap, x, y, r, MixNear(light, dark));
  OutlineCircle(bitmap, x, y, r - 1, light);
  ::set_clip_rect(bitmap, x - r / 2, y - r / 2, bitmap->w - 1, bitmap->h - 1);
  OutlineCircle(bitmap, x, y, r - 1, MixNear(dark, light));
  OutlineCircle(bitmap, x, y, r, dark);
  ::set_clip_rect(bitmap, 0, 0, bitmap->w - 1, bitmap->h - 1);
}

void DrawXMark(BITMAP* bitmap, int cx, int cy, int size, Color color) {
  const int left = cx - size / 2, right = cx + size / 2;
  const int top = cy - size / 2, bottom = cy + size / 2;
  ::line(bitmap, left, top, right, bottom, color);
  ::line(bitmap, left, bottom, right, top, color);
  // The lines above and below the diagonals end where they would leave the square.
  ::line(bitmap, left + 1, top, right, bottom - 1, color);
  ::line(bitmap, left, top + 1, right - 1, bottom, color);
  ::line(bitmap, left, bottom - 1, right - 1, top, color);
  ::line(bitmap, left + 1, bottom, right, top + 1, color);
}

void DrawCheckMark(BITMAP* bitmap, int x, int y, Color color) {
  constexpr int kThickness = 3;
  for (int i = 0; i < kThickness; ++i) {
    ::line(bitmap, x, y + 2 + i, x + 2, y + 4 + i, color);
    ::line(bitmap, x + 3, y + 3 + i, x + 6, y + i, color);
  }
}

void DrawArrow(BITMAP* bitmap, int x, int y, Color color, int direction) {
  constexpr int kDepth = 4;
  constexpr int kHalfWidth = kDepth - 1;
  for (int i = 0; i < kDepth; ++i) {
    const int fromPoint = i, fromBase = kHalfWidth - i;  // half widths of the run at depth i
    const auto upright = [&](int half) {
      ::vline(bitmap, x + i, y + kHalfWidth - half, y + kHalfWidth + half, color);
    };
    const auto level = [&](int half) {
      ::hline(bitmap, x + kHalfWidth - half, y + i, x + kHalfWidth + half, color);
    };
    switch (direction) {
      case kArrowLeft:
        upright(fromPoint);
        break;
      case kArrowRight:
        upright(fromBase);
        break;
      case kArrowUp:
        level(fromPoint);
        break;
      case kArrowDown:
        level(fromBase);
        break;
    }
  }
}

void DrawDottedRect(BITMAP* bitmap, int x1, int y1, int x2, int y2, Color color) {
  // Dots before the bitmap's first pixel are left out: the loops begin with the first one inside.
  const auto firstDot = [](int from) { return from < 0 ? from & 1 : from; };
  const int lastX = std::min(x2, bitmap->w - 1), lastY = std::min(y2, bitmap->h - 1);
  for (int x = firstDot(x1); x <= lastX; x += 2) {
    ::putpixel(bitmap, x, y1, color);
    ::putpixel(bitmap, x, y2, color);
  }
  for (int y = firstDot(y1); y <= lastY; y += 2) {
    ::putpixel(bitmap, x1, y, color);
    ::putpixel(bitmap, x2, y, color);
  }
}

}  // namespace zel
