// Compiled for vectors of pixels, see CMakeLists.txt.
#include "toolkit/base/display_colors.h"

#include <algorithm>
#include <array>

#include "toolkit/base/allegro.h"

#ifdef ALLEGRO_WITH_XWINDOWS
// After Allegro itself.
#include <xalleg.h>
#endif

namespace zel {

// In 16 bits, so that a vector holds eight pixels. Red and blue repeat their highest bits. Allegro
// looks green up in two halves, upper and lower, each of which it has rounded by itself.
void WidenPixels(const std::uint16_t* from, std::uint32_t* to, int count) {
  using Lane = std::uint16_t;
  for (int i = 0; i < count; ++i) {
    const Lane color = from[i];
    const Lane red = (color >> 8 & 0xF8) | color >> 13;
    const Lane upper = color >> 8 & 7, lower = color >> 5 & 7;
    const Lane green = (color >> 3 & 0xFC) + ((upper * 3 + 1) >> 3) + ((lower + 1) >> 3);
    const Lane blue = (color << 3 & 0xF8) | (color >> 2 & 7);
    const Lane low = static_cast<Lane>(green << 8) | blue;
    to[i] = static_cast<std::uint32_t>(red) << 16 | low;
  }
}

#ifdef ALLEGRO_WITH_XWINDOWS
namespace {

void ShowPart(int x, int y, int w, int h) {
  for (int row = y; row < y + h; ++row)
    WidenPixels(reinterpret_cast<const std::uint16_t*>(_xwin.screen_line[row]) + x,
                reinterpret_cast<std::uint32_t*>(_xwin.buffer_line[row]) + x, w);
}

// Whether Allegro itself would show the first line's pixels so, with every value of each colour.
bool AllegroAgrees() {
  constexpr int kSamples = 64;
  const auto line = reinterpret_cast<std::uint16_t*>(_xwin.screen_line[0]);
  const auto shown = reinterpret_cast<std::uint32_t*>(_xwin.buffer_line[0]);
  std::array<std::uint16_t, kSamples> kept, samples;
  std::array<std::uint32_t, kSamples> wide;
  for (int i = 0; i < kSamples; ++i) samples[i] = i % 32 << 11 | i << 5 | (i * 5) % 32;
  WidenPixels(samples.data(), wide.data(), kSamples);
  std::copy_n(line, kSamples, kept.begin());
  std::copy(samples.begin(), samples.end(), line);
  _xwin.screen_to_buffer(0, 0, kSamples, 1);
  const bool agrees = std::equal(wide.begin(), wide.end(), shown);
  std::copy(kept.begin(), kept.end(), line);
  _xwin.screen_to_buffer(0, 0, kSamples, 1);
  return agrees;
}

}  // namespace

void SpeedUpDisplay() {
  if (_xwin.display && _xwin.screen_to_buffer && _xwin.screen_line && _xwin.screen_depth == 16 &&
      _xwin.fast_visual_depth == 32 && !_xwin.matching_formats && AllegroAgrees())
    _xwin.screen_to_buffer = ShowPart;
}
#else
void SpeedUpDisplay() {}
#endif

}  // namespace zel
