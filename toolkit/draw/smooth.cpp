#include "toolkit/draw/smooth.h"

#include <algorithm>
#include <cmath>

namespace zel {
namespace {

// How much of a pixel a shape covers whose edge is so far from the pixel's middle; negative inside.
double Coverage(BITMAP* bitmap, double distance) {
  const double covered = std::clamp(0.5 - distance, 0.0, 1.0);
  return bitmap_color_depth(bitmap) == 8 ? std::round(covered) : covered;
}

void Blend(BITMAP* bitmap, int x, int y, Color color, double share) {
  if (!color.IsSet() || share <= 0) return;
  if (share >= 1) {
    putpixel(bitmap, x, y, color);
    return;
  }
  const Color there{getpixel(bitmap, x, y)};
  const auto mixed = [share](int from, int to) {
    return static_cast<int>(std::lround(from + (to - from) * share));
  };
  putpixel(
      bitmap, x, y,
      Color{mixed(there.r(), color.r()), mixed(there.g(), color.g()), mixed(there.b(), color.b())});
}

// How far a pixel of a corner lies outside of a quarter of a circle around the corner's inner end;
// x and y count from the box's edges.
double FromRound(int x, int y, double inset, double radius) {
  const double dx = std::max(0.0, inset + radius - x - 0.5);
  const double dy = std::max(0.0, inset + radius - y - 0.5);
  return dx > 0 || dy > 0 ? std::hypot(dx, dy) - radius : -1;
}

// The four pixels that lie alike in the corners.
void DrawCornerPixel(BITMAP* bitmap, const RoundBox& box, int x, int y) {
  const int radius = box.radius, line = box.border;
  const double outer = Coverage(bitmap, FromRound(x, y, 0, radius));
  const double within =
      x < line || y < line ? 0 : Coverage(bitmap, FromRound(x, y, line, radius - line));
  for (const int px : {box.area.x + x, box.area.Right() - 1 - x})
    for (const int py : {box.area.y + y, box.area.Bottom() - 1 - y}) {
      const bool hasLine = line > 0 && within < 1;
      if (hasLine) Blend(bitmap, px, py, box.borderColor, outer);
      Blend(bitmap, px, py, box.fill, hasLine ? within : outer);
    }
}

void FillPart(BITMAP* bitmap, int left, int top, int right, int bottom, Color color) {
  if (color.IsSet() && left < right && top < bottom)
    rectfill(bitmap, left, top, right - 1, bottom - 1, color);
}

double FromSegment(StrokePoint p, StrokePoint a, StrokePoint b) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  const double length = dx * dx + dy * dy;
  const double along =
      length > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / length, 0.0, 1.0) : 0;
  return std::hypot(p.x - a.x - along * dx, p.y - a.y - along * dy);
}

}  // namespace

void DrawRoundBox(BITMAP* bitmap, const RoundBox& wanted) {
  if (!bitmap || wanted.area.w < 1 || wanted.area.h < 1) return;
  RoundBox box = wanted;
  const int most = std::min(box.area.w, box.area.h) / 2;
  box.radius = std::clamp(box.radius, 0, most);
  box.border = box.borderColor.IsSet() ? std::clamp(box.border, 0, most) : 0;
  const int line = box.border;
  // Wide enough that only straight edges lie between the corners.
  const int corner = std::max(box.radius, line);
  const int left = box.area.x, right = box.area.Right();
  const int top = box.area.y, bottom = box.area.Bottom();
  FillPart(bitmap, left + corner, top, right - corner, top + line, box.borderColor);
  FillPart(bitmap, left + corner, bottom - line, right - corner, bottom, box.borderColor);
  FillPart(bitmap, left, top + corner, left + line, bottom - corner, box.borderColor);
  FillPart(bitmap, right - line, top + corner, right, bottom - corner, box.borderColor);
  FillPart(bitmap, left + corner, top + line, right - corner, top + corner, box.fill);
  FillPart(bitmap, left + corner, bottom - corner, right - corner, bottom - line, box.fill);
  FillPart(bitmap, left + line, top + corner, right - line, bottom - corner, box.fill);
  for (int y = 0; y < corner; ++y)
    for (int x = 0; x < corner; ++x) DrawCornerPixel(bitmap, box, x, y);
}

void DrawStroke(BITMAP* bitmap, std::span<const StrokePoint> points, double width, Color color) {
  if (!bitmap || points.empty()) return;
  const auto [leftmost, rightmost] =
      std::minmax_element(points.begin(), points.end(), [](auto& a, auto& b) { return a.x < b.x; });
  const auto [topmost, bottommost] =
      std::minmax_element(points.begin(), points.end(), [](auto& a, auto& b) { return a.y < b.y; });
  const double reach = width / 2 + 1;
  const int left = static_cast<int>(leftmost->x - reach);
  const int right = static_cast<int>(rightmost->x + reach);
  const int top = static_cast<int>(topmost->y - reach);
  const int bottom = static_cast<int>(bottommost->y + reach);
  for (int y = top; y <= bottom; ++y)
    for (int x = left; x <= right; ++x) {
      const StrokePoint pixel{1.0 * x, 1.0 * y};
      double distance = FromSegment(pixel, points.front(), points.front());
      for (std::size_t i = 1; i < points.size(); ++i)
        distance = std::min(distance, FromSegment(pixel, points[i - 1], points[i]));
      Blend(bitmap, x, y, color, Coverage(bitmap, distance - width / 2));
    }
}

}  // namespace zel
