// The pointer shapes of a look: light with a dark rim, to be seen on any ground.
#include <cmath>

#include "toolkit/draw/cursor.h"
#include "tools/skin/look.h"

namespace zel {
namespace {

constexpr double kCanvas = 24;
constexpr double kRim = 1.2;
constexpr int kGlassFrames = 8;

Color Light() { return {255, 255, 255}; }
Color Dark() { return {24, 32, 44}; }
Color Red() { return {190, 38, 30}; }
Color Sand() { return {217, 164, 65}; }

void Rimmed(Painting& frame, const Shape& shape, double size) {
  frame.Paint(Placed(Grown(shape, kRim / 2), kCanvas, size, 0, 0), Dark());
  frame.Paint(Placed(Grown(shape, -kRim / 2), kCanvas, size, 0, 0), Light());
}

// A dark line with a light rim.
void Lines(Painting& frame, const std::vector<std::vector<Spot>>& lines, double size,
           double degrees = 0) {
  for (const auto& [width, color] : {std::pair{4.2, Light()}, {1.9, Dark()}})
    for (const std::vector<Spot>& line : lines)
      frame.Paint(Placed(Turned(Stroke(line, width), {12, 12}, degrees), kCanvas, size, 0, 0),
                  color);
}

const std::vector<std::vector<Spot>>& Sideways() {
  static const std::vector<std::vector<Spot>> kLines{
      {{3, 12}, {21, 12}}, {{7, 8}, {3, 12}, {7, 16}}, {{17, 8}, {21, 12}, {17, 16}}};
  return kLines;
}

template <int kDegrees>
void DrawSideways(Painting& frame, int, double size) {
  Lines(frame, Sideways(), size, kDegrees);
}

void DrawArrow(Painting& frame, int, double size) {
  Rimmed(frame,
         Polygon({{2, 1.5}, {2, 17.5}, {6.2, 13.9}, {9, 20.3}, {12, 19}, {9.2, 12.8}, {15, 12.8}}),
         size);
}

void DrawUp(Painting& frame, int, double size) {
  Rimmed(frame,
         Polygon({{12, 1.5}, {18, 9}, {14.5, 9}, {14.5, 21.5}, {9.5, 21.5}, {9.5, 9}, {6, 9}}),
         size);
}

void DrawHand(Painting& frame, int, double size) {
  const Shape finger = Stroke({{8.5, 3.6}, {8.5, 14}}, 4);
  const Shape thumb = Stroke({{5.2, 13.6}, {9.6, 19}}, 3.6);
  const Shape palm =
      Polygon({{7.5, 9.5}, {10.5, 9.2}, {17, 10.8}, {18.2, 12.4}, {17.2, 20.4}, {9, 20.4}});
  Rimmed(frame, Both(Both(finger, thumb), Grown(palm, 0.6)), size);
}

void DrawCross(Painting& frame, int, double size) {
  Lines(frame, {{{12, 2}, {12, 9}}, {{12, 15}, {12, 22}}, {{2, 12}, {9, 12}}, {{15, 12}, {22, 12}}},
        size);
}

void DrawMove(Painting& frame, int, double size) {
  std::vector<std::vector<Spot>> lines{{{9, 6}, {12, 3}, {15, 6}}, {{9, 18}, {12, 21}, {15, 18}},
                                       {{6, 9}, {3, 12}, {6, 15}}, {{18, 9}, {21, 12}, {18, 15}},
                                       {{12, 3}, {12, 21}},        {{3, 12}, {21, 12}}};
  Lines(frame, lines, size);
}

void DrawBeam(Painting& frame, int, double size) {
  Lines(frame,
        {{{9, 3}, {11, 3.4}, {12, 5}, {12, 19}, {11, 20.6}, {9, 21}},
         {{15, 3}, {13, 3.4}, {12, 5}},
         {{15, 21}, {13, 20.6}, {12, 19}}},
        size);
}

void DrawNo(Painting& frame, int, double size) {
  std::vector<Spot> ring;
  for (int degrees = 0; degrees <= 360; degrees += 10) {
    const double angle = degrees * 3.14159265 / 180;
    ring.push_back({12 + 8.5 * std::cos(angle), 12 + 8.5 * std::sin(angle)});
  }
  for (const auto& [width, color] : {std::pair{5.0, Light()}, {3.0, Red()}})
    for (const auto& line : {ring, std::vector<Spot>{{6, 6}, {18, 18}}})
      frame.Paint(Placed(Stroke(line, width), kCanvas, size, 0, 0), color);
}

// The sand falls in all frames but the last, in which the glass turns.
void DrawGlass(Painting& frame, int index, double size) {
  const Shape glass = Polygon({{6, 2.5},
                               {18, 2.5},
                               {18, 6},
                               {13.2, 12},
                               {18, 18},
                               {18, 21.5},
                               {6, 21.5},
                               {6, 18},
                               {10.8, 12},
                               {6, 6}});
  if (index == kGlassFrames - 1) return Rimmed(frame, Turned(glass, {12, 12}, 45), size);
  Rimmed(frame, glass, size);
  const double fallen = index / (kGlassFrames - 2.0), top = 6.1 + 3.4 * fallen;
  const double half = 3.6 * (1 - fallen);
  const auto sand = [&](std::vector<Spot> corners) {
    frame.Paint(Placed(Polygon(std::move(corners)), kCanvas, size, 0, 0), Sand());
  };
  if (half > 0.2) sand({{12 - half, top}, {12 + half, top}, {12, 11}});
  if (index > 0) sand({{8, 20.3}, {16, 20.3}, {12, 20.3 - 3.4 * fallen}});
}

}  // namespace

const PointerLook& PointerLookOf(int shape) {
  static const PointerLook kLooks[kCursorCount] = {
      {{12, 1}, 1, 20, DrawUp},
      {{12, 12}, 1, 20, DrawCross},
      {{12, 12}, kGlassFrames, 120, DrawGlass},
      {{12, 12}, 1, 20, DrawMove},
      {{2, 1}, 1, 20, DrawArrow},
      {{8, 1}, 1, 20, DrawHand},
      {{12, 12}, 1, 20, DrawSideways<45>},
      {{12, 12}, 1, 20, DrawSideways<-45>},
      {{12, 12}, 1, 20, DrawSideways<0>},
      {{12, 12}, 1, 20, DrawSideways<90>},
      {{12, 12}, 1, 20, DrawBeam},
      {{12, 12}, 1, 20, DrawNo},
  };
  return kLooks[shape];
}

}  // namespace zel
