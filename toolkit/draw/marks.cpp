#include "toolkit/draw/marks.h"

#include <algorithm>
#include <cstring>

#include "toolkit/draw/bitmap_guard.h"

namespace zel {
namespace {

constexpr int kBevel = 2;  // lines on each side of a box

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

void DrawBox(BITMAP* bitmap, int x1, int y1, int x2, int y2, Color fill, Color light, Color dark,
             int line) {
  if (fill != Color{}) ::rectfill(bitmap, x1, y1, x2, y2, fill);
  const Color outerLight = MixNear(light, dark);
  const Color innerDark = MixNear(dark, light);
  const auto upright = [=](int x, int top, int bottom, Color color) {
    for (int i = 0; i < line; ++i) ::vline(bitmap, x + i, top, bottom, color);
  };
  const auto level = [=](int left, int y, int right, Color color) {
    for (int i = 0; i < line; ++i) ::hline(bitmap, left, y + i, right, color);
  };
  // Where the inner lines and those at the far sides begin.
  const int left = x1 + line, top = y1 + line;
  const int right = x2 - line + 1, bottom = y2 - line + 1;
  upright(x1, y1, y2, outerLight);
  level(x1, y1, x2, outerLight);
  upright(left, top, bottom - 1, light);
  level(left, top, right - 1, light);
  upright(right - line, top, y2, innerDark);
  level(left, bottom - line, x2, innerDark);
  level(x1, bottom, x2, dark);
  upright(right, y1, y2, dark);
}

// Allegro draws circles of a negative radius beside the bitmap.
void OutlineCircle(BITMAP* bitmap, int x, int y, int radius, Color color) {
  if (radius >= 0) ::circle(bitmap, x, y, radius, color);
}

void FillCircle(BITMAP* bitmap, int x, int y, int radius, Color color) {
  if (radius >= 0) ::circlefill(bitmap, x, y, radius, color);
}

}  // namespace

void DrawBox3D(BITMAP* bitmap, int x1, int y1, int x2, int y2, Color fill, Color light, Color dark,
               int line) {
  // All rows between the bevels look alike.
  const int clipTop = bitmap->ct, clipBottom = bitmap->cb;
  const int bevel = kBevel * line;
  const int first = std::max(y1 + bevel, clipTop), last = std::min(y2 - bevel, clipBottom - 1);
  if (fill == Color{} || !is_memory_bitmap(bitmap) || first >= last || x1 >= x2)
    return DrawBox(bitmap, x1, y1, x2, y2, fill, light, dark, line);
  bitmap->cb = first + 1;
  DrawBox(bitmap, x1, y1, x2, y2, fill, light, dark, line);
  bitmap->cb = clipBottom;
  bitmap->ct = last;
  DrawBox(bitmap, x1, y1, x2, y2, fill, light, dark, line);
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

void DrawDottedRect(BITMAP* bitmap, int x1, int y1, int x2, int y2, Color color, int line) {
  const int period = 2 * line;
  // Dots before the bitmap's first pixel are left out: the loops begin with the first one inside.
  const auto firstDot = [=](int from) {
    return from < 0 ? (from % period + period) % period : from;
  };
  const auto dot = [=](int x, int y) {
    if (line == 1)
      ::putpixel(bitmap, x, y, color);
    else
      ::rectfill(bitmap, x, y, x + line - 1, y + line - 1, color);
  };
  const int right = x2 - line + 1, bottom = y2 - line + 1;
  const int lastX = std::min(right, bitmap->w - 1), lastY = std::min(bottom, bitmap->h - 1);
  for (int x = firstDot(x1); x <= lastX; x += period) {
    dot(x, y1);
    dot(x, bottom);
  }
  for (int y = firstDot(y1); y <= lastY; y += period) {
    dot(x1, y);
    dot(right, y);
  }
}

}  // namespace zel
