#include "toolkit/core/bitmap_guard.h"

#include <climits>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

class BitmapGuardTest : public AllegroFixture {
 protected:
  BitmapGuardTest() { InstallBitmapGuard(); }
};

TEST_F(BitmapGuardTest, SizesThatOverflowOrFillTheMemoryAreRefused) {
  EXPECT_TRUE(IsPossibleBitmap(32, 8192, 8192));
  EXPECT_FALSE(IsPossibleBitmap(32, 8192, 8193));
  EXPECT_FALSE(IsPossibleBitmap(32, INT_MAX, INT_MAX));
  EXPECT_FALSE(IsPossibleBitmap(8, -1, -1));
  EXPECT_EQ(create_bitmap(32768, 32769), nullptr);
  BitmapPtr bitmap{create_bitmap(3, 2)};
  ASSERT_TRUE(bitmap);
  EXPECT_EQ(create_bitmap(65536, 65536), nullptr) << "also after a bitmap was made";
}

TEST_F(BitmapGuardTest, APictureFileThatClaimsFourGigabytesIsNotLoaded) {
  constexpr std::size_t kSizesAt = 18;
  const TempDir folder;
  const std::string path = folder.Path("picture.bmp");
  BitmapPtr small{create_bitmap(4, 4)};
  clear_bitmap(small.get());
  ASSERT_EQ(save_bitmap(path.c_str(), small.get(), nullptr), 0);
  std::string picture = ReadFile(path);
  picture.replace(kSizesAt, 8, std::string{"\0\0\1\0\0\0\1\0", 8});  // 65536 x 65536
  WriteFile(path, picture);
  EXPECT_EQ(load_bitmap(path.c_str(), nullptr), nullptr);
}

}  // namespace
}  // namespace zel
