// What the tests of the picture formats share.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "imageformats/register.h"
#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {

using Bytes = std::vector<std::uint8_t>;

struct Rgb {
  int r, g, b;
};

// Loads pictures by way of load_bitmap, like everybody who shows one.
class PictureFixture : public AllegroFixture {
 protected:
  explicit PictureFixture(const char* extension)
      : AllegroFixture{32}, fileName_{std::string{"picture."} + extension} {
    static const bool registered = (RegisterPictureFormats(), true);
    EXPECT_TRUE(registered);
    set_color_conversion(COLORCONV_TOTAL);
    set_palette(desktop_palette);
  }

  BitmapPtr Load(const Bytes& file, RGB* palette = nullptr) const {
    const std::string path =
        directory_.Write(fileName_, {reinterpret_cast<const char*>(file.data()), file.size()});
    return BitmapPtr{load_bitmap(path.c_str(), palette)};
  }

  static void ExpectColor(BITMAP* bitmap, int x, int y, Rgb expected, int tolerance) {
    const int depth = bitmap_color_depth(bitmap);
    const int pixel = getpixel(bitmap, x, y);
    EXPECT_NEAR(getr_depth(depth, pixel), expected.r, tolerance) << "at " << x << ',' << y;
    EXPECT_NEAR(getg_depth(depth, pixel), expected.g, tolerance) << "at " << x << ',' << y;
    EXPECT_NEAR(getb_depth(depth, pixel), expected.b, tolerance) << "at " << x << ',' << y;
  }

  // Beginnings of a file are no pictures, and nothing is said about it.
  void ExpectEveryBeginningIsRefused(Bytes file) const {
    testing::internal::CaptureStderr();
    while (!file.empty()) {
      file.pop_back();
      EXPECT_EQ(Load(file), nullptr) << file.size() << " bytes";
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  }

  // Overwrites a few bytes with others, many times: what still loads must be a whole bitmap.
  void ExpectDamageIsSurvived(const Bytes& file) const {
    constexpr int kRounds = 1000;
    testing::internal::CaptureStderr();
    std::uint32_t random = 1;
    const auto next = [&random] { return (random = random * 1664525u + 1013904223u) >> 8; };
    int refused = 0;
    for (int round = 0; round < kRounds; ++round) {
      Bytes damaged = file;
      for (std::uint32_t count = next() % 8 + 1; count > 0; --count)
        damaged[next() % damaged.size()] = static_cast<std::uint8_t>(next());
      const BitmapPtr bitmap = Load(damaged);
      if (!bitmap)
        ++refused;
      else
        getpixel(bitmap.get(), bitmap->w - 1, bitmap->h - 1);
    }
    EXPECT_GT(refused, 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  }

 private:
  TempDir directory_;
  std::string fileName_;
};

}  // namespace zel
