#include "toolkit/draw/marks.h"

#include <algorithm>

namespace zel {
namespace {

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
  // Dots far from the bitmap are left out.
  const auto firstDot = [=](int from) { return std::max(from, from % period); };
  const auto dot = [=](int x, int y) {
    if (line == 1)
      ::putpixel(bitmap, x, y, color);
    else
      ::rectfill(bitmap, x, y, x + line - 1, y + line - 1, color);
  };
  const int right = x2 - line + 1, bottom = y2 - line + 1;
  const int lastX = std::min(right, bitmap->w), lastY = std::min(bottom, bitmap->h);
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
