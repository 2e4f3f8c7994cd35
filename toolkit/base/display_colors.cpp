// Compiled for vectors of pixels, see CMakeLists.txt.
#include "toolkit/base/display_colors.h"

#include "toolkit/base/allegro.h"

#ifdef ALLEGRO_WITH_XWINDOWS
// After Allegro itself.
#include <xalleg.h>
#endif

namespace zel {

// In steps that fit into 16 bits, so that a vector holds eight pixels: 1053 / 128 stands for
// 255 / 31, and 49 / 1024 for what 255 / 63 has over 4, which is 1 / 21.
void WidenPixels(const std::uint16_t* from, std::uint32_t* to, int count) {
  using Lane = std::uint16_t;
  for (int i = 0; i < count; ++i) {
    const Lane color = from[i];
    const Lane red = static_cast<Lane>((color >> 11) * 1053U) >> 7;
    const Lane blue = static_cast<Lane>((color & 31) * 1053U) >> 7;
    const Lane of63 = color >> 5 & 63;
    const Lane green = 4 * of63 + (static_cast<Lane>(of63 * 49) >> 10);
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

std::uint32_t Widened(int color) {
  const auto pixel = static_cast<std::uint16_t>(color);
  std::uint32_t wide = 0;
  WidenPixels(&pixel, &wide, 1);
  return wide;
}

// Whether the tables, whose entries are or-ed, say the same for each of the three.
bool TablesAgree() {
  for (int i = 0; i < 64; ++i) {
    const bool isShort = i < 32;
    if (_xwin.gmap[i] != Widened(i << 5) || (isShort && _xwin.rmap[i] != Widened(i << 11)) ||
        (isShort && _xwin.bmap[i] != Widened(i)))
      return false;
  }
  return true;
}

}  // namespace

void SpeedUpDisplay() {
  const bool isConverted = _xwin.display && _xwin.screen_to_buffer && _xwin.screen_line;
  if (isConverted && _xwin.screen_depth == 16 && _xwin.fast_visual_depth == 32 &&
      !_xwin.matching_formats && TablesAgree())
    _xwin.screen_to_buffer = ShowPart;
}
#else
void SpeedUpDisplay() {}
#endif

}  // namespace zel
