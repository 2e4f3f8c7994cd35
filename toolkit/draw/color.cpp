#include "toolkit/draw/color.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "toolkit/base/allegro.h"
#include "toolkit/base/text.h"
#include "toolkit/draw/draw_part.h"

namespace zel {
namespace {

// The packing of Allegro's makeacol32, which needs no graphics mode.
int Pack32(int red, int green, int blue, int alpha) {
  const auto shifted = [](int component, int shift) {
    return static_cast<std::uint32_t>(component) << shift;
  };
  return static_cast<int>(shifted(red, _rgb_r_shift_32) | shifted(green, _rgb_g_shift_32) |
                          shifted(blue, _rgb_b_shift_32) | shifted(alpha, _rgb_a_shift_32));
}

// The value as getr and its like may take it: in an 8-bit mode they look it up in the palette
// without checking, and -1 or a colour of a former mode lies outside.
int Readable(int pixel) { return get_color_depth() == 8 ? pixel & 0xFF : pixel; }

int MixNear(int a, int b) { return a + (b - a) / 3; }

struct Rgb {
  int red, green, blue;
};

// In the order of their indices.
constexpr Rgb kNamedColors[] = {
    {255, 255, 255}, {0, 0, 0},     {255, 0, 0},  {0, 255, 0},     {0, 0, 255},     {0, 255, 255},
    {255, 0, 255},   {255, 255, 0}, {96, 96, 96}, {128, 128, 128}, {192, 192, 192}, {255, 170, 0},
    {150, 96, 0},    {144, 0, 168}, {128, 0, 0},  {0, 128, 0},     {0, 0, 128},
};
static_assert(std::size(kNamedColors) == NamedColor::kCount);

}  // namespace

Color::Color(int red, int green, int blue) : value{makecol(red, green, blue)} {}

Color::Color(int red, int green, int blue, int alpha) : value{Pack32(red, green, blue, alpha)} {}

Color Color::FromHsv(float hue, float saturation, float value) {
  int red, green, blue;
  hsv_to_rgb(hue, saturation, value, &red, &green, &blue);
  return {red, green, blue};
}

Color Color::FromText(const char* text) {
  if (!text) return {0, 0, 0};
  if (ustrcmp(text, Ascii("-1")) == 0) return {};
  constexpr int kDecimal = 10;
  std::string copy(text, static_cast<std::size_t>(ustrsizez(text)));  // ustrtok_r cuts it up
  const Ascii separators(", ;");
  int components[3] = {};
  char* rest = copy.data();
  char* next = nullptr;
  for (int& component : components) {
    const char* token = ustrtok_r(rest, separators, &next);
    if (!token) break;
    component = static_cast<int>(ustrtol(token, nullptr, kDecimal));
    rest = nullptr;
  }
  return {components[0], components[1], components[2]};
}

int Color::r() const { return getr(Readable(value)); }
int Color::g() const { return getg(Readable(value)); }
int Color::b() const { return getb(Readable(value)); }
int Color::a() const { return (static_cast<std::uint32_t>(value) >> _rgb_a_shift_32) & 0xFF; }

void Color::SetR(int red) { *this = {red, g(), b()}; }
void Color::SetG(int green) { *this = {r(), green, b()}; }
void Color::SetB(int blue) { *this = {r(), g(), blue}; }
void Color::SetA(int alpha) { *this = {r(), g(), b(), alpha}; }

void Color::Colorize(Color tint, int alpha) {
  if (value == -1) return;
  constexpr float kFullAlpha = 256;
  const float share = static_cast<float>(alpha) / kFullAlpha;
  float hue, saturation, brightness;
  rgb_to_hsv(r(), g(), b(), &hue, &saturation, &brightness);
  float tintHue, tintSaturation, tintBrightness;
  rgb_to_hsv(tint.r(), tint.g(), tint.b(), &tintHue, &tintSaturation, &tintBrightness);
  int red, green, blue;
  hsv_to_rgb(tintHue, tintSaturation * saturation, tintBrightness * brightness, &red, &green,
             &blue);
  const auto mixed = [share](int tinted, int own) {
    return static_cast<int>(static_cast<float>(tinted) * share +
                            static_cast<float>(own) * (1 - share));
  };
  *this = {mixed(red, r()), mixed(green, g()), mixed(blue, b())};
}

Color MixNear(Color a, Color b) {
  return {MixNear(a.r(), b.r()), MixNear(a.g(), b.g()), MixNear(a.b(), b.b())};
}

NamedColor::operator int() const { return Drawing().namedColors[index_]; }

void RecomputeNamedColors() {
  auto& pixels = Drawing().namedColors;
  std::transform(std::begin(kNamedColors), std::end(kNamedColors), pixels.begin(),
                 [](const Rgb& c) { return makecol(c.red, c.green, c.blue); });
  // Whatever the palette holds, masked drawing skips its first entry.
  if (get_color_depth() == 8) pixels[magenta.Index()] = MASK_COLOR_8;
}

}  // namespace zel
