#include "toolkit/draw/bitmap_guard.h"

#include <climits>

#include "tests/support/allegro_fixture.h"

namespace zel {
namespace {

using BitmapGuardTest = AllegroFixture;

TEST_F(BitmapGuardTest, SizesThatOverflowOrFillTheMemoryAreRefused) {
  InstallBitmapGuard();
  EXPECT_TRUE(IsPossibleBitmap(32, 8192, 8192));
  EXPECT_FALSE(IsPossibleBitmap(32, 8192, 8193));
  EXPECT_FALSE(IsPossibleBitmap(32, INT_MAX, INT_MAX));
  EXPECT_FALSE(IsPossibleBitmap(8, -1, -1));
  EXPECT_EQ(create_bitmap(32768, 32769), nullptr);
  EXPECT_TRUE(BitmapPtr{create_bitmap(3, 2)});
  EXPECT_EQ(create_bitmap(65536, 65536), nullptr) << "also after a bitmap was made";
}

}  // namespace
}  // namespace zel
