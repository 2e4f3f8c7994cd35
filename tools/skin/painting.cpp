#include "tools/skin/painting.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace zel {
namespace {

double ToSegment(Spot at, Spot a, Spot b) {
  const double dx = b.x - a.x, dy = b.y - a.y, length = dx * dx + dy * dy;
  const double along = length > 0 ? ((at.x - a.x) * dx + (at.y - a.y) * dy) / length : 0;
  const double t = std::clamp(along, 0.0, 1.0);
  return std::hypot(at.x - a.x - t * dx, at.y - a.y - t * dy);
}

}  // namespace

Shape RoundedBox(double x, double y, double w, double h, double radius) {
  const double r = std::max(0.0, std::min({radius, w / 2, h / 2}));
  return [=](Spot at) {
    const double dx = std::abs(at.x - x - w / 2) - w / 2 + r;
    const double dy = std::abs(at.y - y - h / 2) - h / 2 + r;
    return std::hypot(std::max(dx, 0.0), std::max(dy, 0.0)) + std::min(std::max(dx, dy), 0.0) - r;
  };
}

Shape Disc(Spot centre, double radius) {
  return [=](Spot at) { return std::hypot(at.x - centre.x, at.y - centre.y) - radius; };
}

Shape Stroke(std::vector<Spot> places, double width) {
  return [places = std::move(places), width](Spot at) {
    double nearest = ToSegment(at, places.front(), places.front());
    for (std::size_t i = 1; i < places.size(); ++i)
      nearest = std::min(nearest, ToSegment(at, places[i - 1], places[i]));
    return nearest - width / 2;
  };
}

Shape Polygon(std::vector<Spot> corners) {
  return [corners = std::move(corners)](Spot at) {
    double nearest = ToSegment(at, corners.back(), corners.front());
    bool isInside = false;
    for (std::size_t i = 0, before = corners.size() - 1; i < corners.size(); before = i++) {
      const Spot a = corners[before], b = corners[i];
      nearest = std::min(nearest, ToSegment(at, a, b));
      if ((a.y > at.y) != (b.y > at.y) && at.x < (b.x - a.x) * (at.y - a.y) / (b.y - a.y) + a.x)
        isInside = !isInside;
    }
    return isInside ? -nearest : nearest;
  };
}

Shape Both(Shape a, Shape b) {
  return [a = std::move(a), b = std::move(b)](Spot at) { return std::min(a(at), b(at)); };
}

Shape Grown(Shape shape, double by) {
  return [shape = std::move(shape), by](Spot at) { return shape(at) - by; };
}

Shape Turned(Shape shape, Spot around, double degrees) {
  const double angle = degrees * std::numbers::pi / 180;
  return [shape = std::move(shape), around, sine = std::sin(angle),
          cosine = std::cos(angle)](Spot at) {
    const double x = at.x - around.x, y = at.y - around.y;
    return shape({around.x + x * cosine + y * sine, around.y - x * sine + y * cosine});
  };
}

Shape Placed(Shape shape, double from, double to, double x, double y) {
  const double factor = to / from;
  return [shape = std::move(shape), factor, x, y](Spot at) {
    return shape({(at.x - x) / factor, (at.y - y) / factor}) * factor;
  };
}

Painting::Painting(Size units, int scale)
    : size_{units.w * scale, units.h * scale},
      scale_{scale},
      pixels_(static_cast<std::size_t>(size_.w) * static_cast<std::size_t>(size_.h)) {}

void Painting::Paint(const Shape& shape, Color color) {
  auto pixel = pixels_.begin();
  for (int y = 0; y < size_.h; ++y) {
    for (int x = 0; x < size_.w; ++x, ++pixel) {
      const double distance = shape({(x + 0.5) / scale_, (y + 0.5) / scale_}) * scale_;
      const double cover = std::clamp(0.5 - distance, 0.0, 1.0);
      if (cover <= 0) continue;
      *pixel = {pixel->r * (1 - cover) + color.r() * cover,
                pixel->g * (1 - cover) + color.g() * cover,
                pixel->b * (1 - cover) + color.b() * cover, pixel->alpha * (1 - cover) + cover};
    }
  }
}

void Painting::Fill(Color color) {
  std::fill(pixels_.begin(), pixels_.end(),
            Pixel{1.0 * color.r(), 1.0 * color.g(), 1.0 * color.b(), 1});
}

void Painting::Box(const Rect& box, double radius, Color fill, Color edge, double line) {
  Paint(RoundedBox(box.x, box.y, box.w, box.h, radius), edge);
  Paint(RoundedBox(box.x + line, box.y + line, box.w - 2 * line, box.h - 2 * line, radius - line),
        fill);
}

void Painting::PutOn(BITMAP* bitmap, int x, int y, Color ground) const {
  constexpr double kHalf = 0.5;
  auto pixel = pixels_.begin();
  for (int row = 0; row < size_.h; ++row)
    for (int column = 0; column < size_.w; ++column, ++pixel) {
      const auto mixed = [&](double part, int below) {
        return static_cast<int>(std::lround(part + (1 - pixel->alpha) * below));
      };
      const int color =
          pixel->alpha < kHalf
              ? bitmap_mask_color(bitmap)
              : makecol_depth(bitmap_color_depth(bitmap), mixed(pixel->r, ground.r()),
                              mixed(pixel->g, ground.g()), mixed(pixel->b, ground.b()));
      putpixel(bitmap, x + column, y + row, color);
    }
}

}  // namespace zel
