// Shapes with smooth edges, which take the colour of what lies there already. Drawing the same
// twice makes the edges coarser: what lies behind has to be drawn again before.
//
// In modes with 256 colours, where few mixtures can be had, edges are hard.
#pragma once

#include <span>

#include "toolkit/base/allegro.h"
#include "toolkit/base/geometry.h"
#include "toolkit/draw/color.h"

namespace zel {

// A box with round corners and a line of `border` pixels inside of its edge. No colour leaves the
// inside, or the line, as it is.
struct RoundBox {
  Rect area{};
  int radius = 0;  // as much as fits
  Color fill{};
  Color borderColor{};
  int border = 0;
};
void DrawRoundBox(BITMAP* bitmap, const RoundBox& box);

// A line through points, with round ends and bends.
struct StrokePoint {
  double x, y;  // of a pixel's middle
};
void DrawStroke(BITMAP* bitmap, std::span<const StrokePoint> points, double width, Color color);

}  // namespace zel
