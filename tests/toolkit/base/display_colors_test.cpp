#include "toolkit/base/display_colors.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "toolkit/base/allegro.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>

namespace zel {
namespace {

TEST(DisplayColorsTest, EveryPixelIsWidenedAsAllegroDoes) {
  constexpr int kColors = 65536;
  std::vector<std::uint16_t> narrow(kColors);
  std::vector<std::uint32_t> wide(kColors + 1), expected(kColors + 1);
  std::iota(narrow.begin(), narrow.end(), std::uint16_t{0});
  GRAPHICS_RECT from{kColors, 1, 2 * kColors, narrow.data()};
  GRAPHICS_RECT to{kColors, 1, 4 * kColors, expected.data()};
  _get_colorconv_blitter(16, 32)(&from, &to);
  WidenPixels(narrow.data(), wide.data(), kColors);
  EXPECT_EQ(wide, expected);
}

}  // namespace
}  // namespace zel
