#include "toolkit/draw/contrast.h"

#include <cmath>

namespace zel {
namespace {

constexpr int kSteps = 32;  // from a colour to white or black

// Of one channel of sRGB, 0 to 1.
double Linear(int channel) {
  const double part = channel / 255.0;
  return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(Color color) {
  return 0.2126 * Linear(color.r()) + 0.7152 * Linear(color.g()) + 0.0722 * Linear(color.b());
}

Color Towards(Color from, int end, int step) {
  const auto moved = [=](int channel) { return channel + (end - channel) * step / kSteps; };
  return {moved(from.r()), moved(from.g()), moved(from.b())};
}

}  // namespace

double Contrast(Color a, Color b) {
  constexpr double kGlare = 0.05;
  const double one = Luminance(a) + kGlare, other = Luminance(b) + kGlare;
  return one > other ? one / other : other / one;
}

Color WithContrast(Color text, Color ground, double least) {
  if (!text.IsSet() || !ground.IsSet()) return text;
  const int end = Contrast(white, ground) > Contrast(black, ground) ? 255 : 0;
  for (int step = 0; step <= kSteps; ++step)
    if (const Color tried = step == 0 ? text : Towards(text, end, step);
        Contrast(tried, ground) >= least)
      return tried;
  return {end, end, end};
}

}  // namespace zel
