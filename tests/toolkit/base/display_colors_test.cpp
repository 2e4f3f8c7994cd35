#include "toolkit/base/display_colors.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace zel {
namespace {

TEST(DisplayColorsTest, EveryPixelIsWidenedRoundedDown) {
  std::vector<std::uint16_t> narrow(65536);
  std::vector<std::uint32_t> wide(65536 + 1);
  std::iota(narrow.begin(), narrow.end(), std::uint16_t{0});
  WidenPixels(narrow.data(), wide.data(), 65536);
  for (std::uint32_t i = 0; i < 65536; ++i)
    ASSERT_EQ(wide[i],
              (i >> 11) * 255 / 31 << 16 | (i >> 5 & 63) * 255 / 63 << 8 | (i & 31) * 255 / 31);
  EXPECT_EQ(wide[65536], 0u);
}

}  // namespace
}  // namespace zel
