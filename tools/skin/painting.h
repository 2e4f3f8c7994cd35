// Drawing small pictures smoothly.
#pragma once

#include <functional>
#include <vector>

#include "toolkit/base/allegro.h"
#include "toolkit/base/geometry.h"
#include "toolkit/draw/color.h"

namespace zel {

struct Spot {
  double x = 0, y = 0;
};

// How far a place is from a shape, in its measure; negative inside.
using Shape = std::function<double(Spot at)>;

Shape RoundedBox(double x, double y, double w, double h, double radius);
Shape Disc(Spot centre, double radius);
// A line through some places, with round ends and corners.
Shape Stroke(std::vector<Spot> places, double width);
Shape Polygon(std::vector<Spot> corners);
// What lies in one of two shapes, and one that is larger on all sides.
Shape Both(Shape a, Shape b);
Shape Grown(Shape shape, double by);
// Turned around a place by degrees to the right.
Shape Turned(Shape shape, Spot around, double degrees);
// Drawn for a square of `from` and put into one of `to` at (x, y).
Shape Placed(Shape shape, double from, double to, double x, double y);

// A picture of so many units, each of `scale` pixels across and down, transparent at first.
class Painting {
 public:
  Painting(Size units, int scale);

  // The nearer a pixel's middle to the edge of the shape, the more of what is below shows.
  void Paint(const Shape& shape, Color color);
  void Fill(Color color);
  // A box with a line of `line` units around it, inside its size.
  void Box(const Rect& box, double radius, Color fill, Color edge, double line = 1);
  // Puts it on a bitmap: where it is half transparent at least, the mask colour, else mixed with
  // the ground.
  void PutOn(BITMAP* bitmap, int x, int y, Color ground) const;

 private:
  struct Pixel {
    double r = 0, g = 0, b = 0, alpha = 0;  // 0 to 255, times alpha
  };

  Size size_;
  int scale_;
  std::vector<Pixel> pixels_;
};

}  // namespace zel
