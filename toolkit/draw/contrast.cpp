#include "toolkit/draw/contrast.h"

#include <algorithm>
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

// Darker, or lighter: as long as it can it keeps its hue, then it becomes white.
Color Moved(Color from, bool lightens, int step) {
  const int most = std::max({from.r(), from.g(), from.b(), 1});
  const double part = 1.0 * step / kSteps;
  const double bright = std::min(1.0, 2 * part), pale = std::max(0.0, 2 * part - 1);
  const auto moved = [=](int channel) {
    const double scaled =
        lightens ? channel * (1 + bright * (255.0 / most - 1)) : channel * (1 - part);
    return static_cast<int>(std::lround(lightens ? scaled + (255 - scaled) * pale : scaled));
  };
  return {moved(from.r()), moved(from.g()), moved(from.b())};
}

}  // namespace

double Contrast(Color a, Color b) {
  constexpr double kGlare = 0.05;
  const double one = Luminance(a) + kGlare, other = Luminance(b) + kGlare;
  return one > other ? one / other : other / one;
}

Color WithContrast(Color text, Color ground, double least) {
  return WithContrast(text, ground, least, Contrast(white, ground) > Contrast(black, ground));
}

Color WithContrast(Color text, Color ground, double least, bool lightens) {
  if (!text.IsSet() || !ground.IsSet()) return text;
  for (int step = 0; step < kSteps; ++step)
    if (const Color tried = Moved(text, lightens, step); Contrast(tried, ground) >= least)
      return tried;
  return lightens ? Color{white} : Color{black};
}

}  // namespace zel
