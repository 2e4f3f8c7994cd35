#include "imageformats/load.h"

#include <algorithm>
#include <map>
#include <string>
#include <tuple>

#include "imageformats/library_formats.h"
#include "imageformats/picture.h"
#include "imageformats/register.h"
#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"
#include "tests/support/temp_files.h"
#include "toolkit/testing/picture.h"

namespace zel {
namespace {

// Small pictures of every kind: JPEG and PNG as libjpeg and libpng write them, the others byte by
// byte. Palettes are black, which stands for what is masked, red, green and blue.
const std::string kSamples = "tests/imageformats/samples/";

// What Allegro reads, after it was looked at.
const std::pair<std::string, Rows> kOfTheLibrary[] = {
    {"runs_of_8_bits.bmp", {"bbbbb", "kkrgb", "rrrgg"}},  // with a move and pixels one by one
    {"runs_of_4_bits.bmp", {"bkbkg", "rgbbr", "rgrgr"}},
    {"runs_beyond_rows.bmp", {"rrb", "rrr"}},
    {"from_the_top.bmp", {"rg", "bw"}},   // of 16 bits
    {"long_header.bmp", {"bbr", "kr."}},  // with magenta in the palette
    {"long_header_with_masks.bmp", {".g"}},
    {"run_over_rows.tga", {"rrr", "rrb"}},
    {"no_palette.tga", {"rb"}},
    {"bytes.lbm", {"rrr", "rgb"}},  // with runs, of an odd width
    // and one of the mask, without runs
    {"planes.lbm", {"rrrrrrrrrrrrrrrrgbgb", "ggggggggggggggggrgrg"}},
    // As Allegro writes them, those of 8 bits with the palette of generate_332_palette.
    {"saved_8.bmp", {"rgbwk", "yc?r."}},
    {"saved_8.pcx", {"rgbwk", "yc?r."}},
    {"saved_8.tga", {"rgbwk", "yc?r."}},
    {"saved_24.bmp", {"rgbwk", "yc?r."}},
    {"saved_24.pcx", {"rgbwk", "yc?r."}},
    {"saved_24.tga", {"rgbwk", "yc?r."}}};

class LoadTest : public AllegroFixture {
 protected:
  LoadTest() : AllegroFixture{32} {
    [[maybe_unused]] static const bool registered = (RegisterPictureFormats(), true);
    set_color_conversion(PictureConversion());
    set_palette(desktop_palette);
  }

  BitmapPtr Load(const std::string& extension, const Bytes& file, RGB* palette = nullptr) const {
    const std::string bytes{file.begin(), file.end()};
    return BitmapPtr{LoadPicture(directory.Write("a." + extension, bytes).c_str(), palette)};
  }

  static BitmapPtr Sample(const std::string& name, RGB* palette = nullptr) {
    return BitmapPtr{LoadPicture((kSamples + name).c_str(), palette)};
  }

  // Beginnings of the file are no pictures, and nothing is said about that.
  void ExpectSturdy(const std::string& path, const Rows& rows) const {
    testing::internal::CaptureStderr();
    const BitmapPtr picture{LoadPicture(path.c_str(), nullptr)};
    ASSERT_NE(picture, nullptr) << path;
    EXPECT_EQ(Picture(picture.get()), rows) << path;
    for (Bytes cut = ReadBytes(path.c_str(), 1 << 20); !cut.empty();) {
      cut.pop_back();
      EXPECT_EQ(Load(get_extension(path.c_str()), cut), nullptr) << path << " to " << cut.size();
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  }

  TempDir directory;
};

TEST_F(LoadTest, JpegAndPngOfEveryKindAreRead) {
  const Rows redAndBlue(8, "rrrrrrrrbbbbbbbb"), redAndBlack(8, "rrrrrrrrkkkkkkkk");
  const Rows blackAndWhite(8, "kkkkkkkkwwwwwwww");
  // 16 bits hide what compressing changes.
  const std::tuple<int, std::string, Rows> samples[] = {
      {16, "rgb.jpeg", redAndBlue},
      {16, "progressive.jpg", redAndBlue},
      {16, "grey.jpg", blackAndWhite},
      {32, "padded.jpg", blackAndWhite},                // between two segments
      {16, "cmyk_with_adobe_marker.jpg", redAndBlack},  // which tells of inverted values
      {16, "cmyk.jpg", redAndBlack},
      {16, "ycck.jpg", redAndBlack},
      {32, "grey_interlaced.png", {"kw.kw.kw.", "wwwkkk..."}},
      {32, "grey.png", {"kw"}},
      {32, "palette.png", {"rg.br"}},
      {32, "rgb.png", {"r", "g", "b"}},
      {32, "of_16_bits.png", {"r."}}};
  for (const auto& [depth, name, rows] : samples) {
    UseDepth(depth);
    ExpectSturdy(kSamples + name, rows);
  }
}

// What a header, many scans or arithmetic coding promise must not cost memory or time.
TEST_F(LoadTest, JpegOfEndlessWorkIsRefused) {
  for (const char* name : {"of_65535_by_65535.jpg", "arithmetic.jpg", "101_scans.jpg"})
    EXPECT_EQ(Sample(name), nullptr) << name;
  EXPECT_NE(Sample("100_scans.jpg"), nullptr);
}

TEST_F(LoadTest, PngComesInTheDepthOfTheScreenWithMaskedPixelsAndAPalette) {
  set_color_conversion(COLORCONV_TOTAL & ~COLORCONV_KEEP_TRANS);
  const RGB black{0, 0, 0, 0};
  set_color(0, &black);  // in 8 bits the mask is a place in the palette, whatever its colour
  std::string seen;
  for (const int depth : {8, 15, 16, 24, 32})
    for (const bool hasPalette : {false, true}) {
      UseDepth(depth);
      PALETTE palette{};
      const BitmapPtr bitmap = Sample("rgb_and_alpha.png", hasPalette ? palette : nullptr);
      EXPECT_EQ(bitmap_color_depth(bitmap.get()), depth);
      seen += std::to_string(depth) + "\n" + Describe(bitmap.get(), {0, 0, bitmap->w, bitmap->h});
      const RGB& color = palette[depth == 8 ? getpixel(bitmap.get(), 0, 0) : 200];
      seen += std::to_string(color.r) + ' ' + std::to_string(color.g) + "\n\n";
    }
  ExpectText("png_with_alpha", seen);
  UseDepth(16);
  set_color_conversion(COLORCONV_TOTAL | COLORCONV_DITHER_HI);
  const BitmapPtr dithered = Sample("two_alike.png");
  EXPECT_NE(getpixel(dithered.get(), 0, 0), getpixel(dithered.get(), 1, 0));
  set_color_conversion(COLORCONV_NONE);
  EXPECT_EQ(bitmap_color_depth(Sample("rgb_and_alpha.png").get()), 24);
}

TEST_F(LoadTest, LibraryFormatsAreReadAsTheyAreMeant) {
  PALETTE colors;
  generate_332_palette(colors);
  set_palette(colors);
  for (const int depth : {32, 8}) {
    UseDepth(depth);
    set_color_conversion(PictureConversion());
    for (const auto& [name, rows] : kOfTheLibrary) ExpectSturdy(kSamples + name, rows);
  }
}

// Much of what is not meant would make Allegro write past a row, a bitmap or a palette where there
// is enough behind it in the file. By bytes from the start: with these values there the file is
// refused (x), or the picture is the same (.), of another size (s) or of other colours (o).
TEST_F(LoadTest, WhatDoesNotFitInAHeaderIsRefused) {
  const std::map<std::string, BITMAP* (*)(const Bytes&, RGB*)> loaders = {
      {"bmp", LoadBmp}, {"tga", LoadTga}, {"lbm", LoadLbm}, {"pcx", LoadPcx}};
  std::string seen;
  for (const auto& [name, rows] : kOfTheLibrary) {
    Bytes file = ReadBytes((kSamples + name).c_str(), 1 << 20);
    const std::size_t end = std::min<std::size_t>(file.size(), 96);
    file.resize(file.size() + 20000);
    seen += name + '\n';
    for (const int value : {0, 1, 2, 9, 0x10, 0x20, 0x86, 0xFF}) {
      for (std::size_t at = 0; at < end; ++at) {
        Bytes other = file;
        other[at] = static_cast<std::uint8_t>(value);
        const BitmapPtr loaded{loaders.at(get_extension(name.c_str()))(other, nullptr)};
        const bool isSized = loaded && std::pair(loaded->w, loaded->h) ==
                                           std::pair(int(rows[0].size()), int(rows.size()));
        const bool isSame = isSized && Picture(loaded.get()) == rows;
        seen += !loaded ? 'x' : !isSized ? 's' : isSame ? '.' : 'o';
      }
      seen += '\n';
    }
  }
  ExpectText("damaged_pictures", seen);
  EXPECT_TRUE(IsPictureSize(16384, 2048));
  for (const auto& [w, h] : {std::pair{16384, 2049}, {16385, 1}, {1, 16385}, {1, 0}, {-1, -1}})
    EXPECT_FALSE(IsPictureSize(w, h));
}

}  // namespace
}  // namespace zel
