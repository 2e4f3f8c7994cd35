#include "imageformats/load.h"

#include <algorithm>
#include <string>
#include <tuple>

#include "imageformats/picture.h"
#include "imageformats/register.h"
#include "tests/support/allegro_fixture.h"
#include "tests/support/picture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

// Small pictures of every kind, as libjpeg and libpng write them.
const std::string kSamples = "tests/imageformats/samples/";

Bytes Hex(std::string digits) {
  std::erase(digits, ' ');
  Bytes bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2)
    bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
  return bytes;
}

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
  void ExpectSturdy(const std::string& extension, const Bytes& file, const Rows& rows) const {
    testing::internal::CaptureStderr();
    const BitmapPtr picture = Load(extension, file);
    ASSERT_NE(picture, nullptr) << extension << rows[0];
    EXPECT_EQ(Picture(picture.get()), rows) << extension;
    for (Bytes cut = file; !cut.empty();) {
      cut.pop_back();
      EXPECT_EQ(Load(extension, cut), nullptr) << extension << cut.size() << " of " << file.size();
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
    ExpectSturdy(get_extension(name.c_str()), ReadBytes((kSamples + name).c_str(), 1 << 20), rows);
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
  PALETTE palette{}, fixed;
  generate_332_palette(fixed);
  BitmapPtr bitmap;
  const auto pixel = [&bitmap](int x) { return getpixel(bitmap.get(), x, 0); };
  for (const int depth : {8, 15, 16, 24, 32}) {
    UseDepth(depth);
    bitmap = Sample("rgb_and_alpha.png");
    ASSERT_EQ(bitmap_color_depth(bitmap.get()), depth);
    EXPECT_EQ(pixel(0), makecol(200, 100, 40)) << depth;
    EXPECT_EQ(Picture(bitmap.get())[0].substr(2), "..") << depth;
    EXPECT_NE(pixel(1), bitmap_mask_color(bitmap.get())) << depth;
    bitmap = Sample("rgb_and_alpha.png", palette);
    EXPECT_NEAR(depth == 8 ? palette[pixel(0)].g : 25, 25, 2);
    EXPECT_TRUE(depth == 8 || palette[200].r == fixed[200].r) << depth;
  }
  UseDepth(16);
  set_color_conversion(COLORCONV_TOTAL | COLORCONV_DITHER_HI);
  bitmap = Sample("two_alike.png");
  EXPECT_NE(pixel(0), pixel(1)) << "dithered";
  set_color_conversion(COLORCONV_NONE);
  EXPECT_EQ(bitmap_color_depth(Sample("rgb_and_alpha.png").get()), 24);
}

// The palettes are black, which stands for what is masked, red, green and blue.
const std::string kZeros(40, '0'), kBmp = "424D 00000000 00000000 46000000 28000000 ";
const std::string kLongBmp(136, '0');  // what a long header has more, without masks
const std::string kBmpPalette = kZeros + "00000000 0000FF00 00FF0000 FF000000 ";
const std::string kLbm = "464F524D 00000000 ", kLbmHeader = " 424D4844 00000014 ";
const std::string kLbmPalette =
    kZeros.substr(24) + "434D4150 0000000C 000000 FF0000 00FF00 0000FF ";
const std::tuple<const char*, std::string, Rows> kExamples[] = {
    // Runs of 8 bits, with a move and pixels one by one.
    {"bmp",
     kBmp + "05000000 03000000 0100 0800 01000000" + kBmpPalette +
         "0301 0202 0000 00020200 0003010203 00 0000 0503 0001",
     {"bbbbb", "kkrgb", "rrrgg"}},
    // Of 4 bits.
    {"bmp",
     kBmp + "05000000 03000000 0100 0400 02000000" + kBmpPalette +
         "0512 0000 0005123310 00 0000 0430 0120 0001",
     {"bkbkg", "rgbbr", "rgrgr"}},
    // From the top down, of 16 bits.
    {"bmp",
     kBmp + "02000000 FEFFFFFF 0100 1000 03000000" + kZeros +
         "00F80000 E0070000 1F000000 00F8E007 1F00FFFF",
     {"rg", "bw"}},
    // A run goes from row to row.
    {"tga",
     "00 01 09 0000 0400 18 00000000 0300 0200 08 20 000000 0000FF 00FF00 FF0000 8401 0003",
     {"rrr", "rrb"}},
    {"tga", "00 00 0A 0000 0000 00 00000000 0200 0100 18 00 800000FF 00FF0000", {"rb"}},
    // Bytes with runs, of an odd width.
    {"lbm",
     kLbm + "50424D20" + kLbmHeader + "0003 0002 00000000 08 00 01 00" + kLbmPalette +
         "424F4459 00000007 FD01 0301020300",
     {"rrr", "rgb"}},
    // Two planes and one of the mask, without runs.
    {"lbm",
     kLbm + "494C424D" + kLbmHeader + "0014 0001 00000000 02 01 00 00" + kLbmPalette +
         "424F4459 0000000C FFFF5000 0000F000 FFFFFFFF",
     {"rrrrrrrrrrrrrrrrgbgb"}},
    // With runs that go on beyond the end of the row.
    {"bmp",
     kBmp + "03000000 02000000 0100 0800 01000000" + kBmpPalette + "0401 0000 0201 0203 00 01",
     {"rrb", "rrr"}},
    // With long headers: a palette with magenta behind one, masks in another.
    {"bmp",
     "424D 00000000 00000000 8A000000 6C000000 03000000 02000000 0100 0800 00000000" + kZeros +
         kLongBmp + "00000000 0000FF00 FF00FF00 FF000000 00010200 03030100",
     {"bbr", "kr."}},
    {"bmp",
     "424D 00000000 00000000 8C000000 7C000000 02000000 FFFFFFFF 0100 2000 03000000" + kZeros +
         "0000FF00 00FF0000 FF000000 000000FF" + kLongBmp + "ABCD" + "FF00FF80 00FF0000",
     {".g"}}};

TEST_F(LoadTest, LibraryFormatsAreReadAsTheyAreMeant) {
  PALETTE colors;
  generate_332_palette(colors);
  set_palette(colors);
  for (const int depth : {32, 8}) {
    UseDepth(depth);
    set_color_conversion(PictureConversion());
    for (const auto& [extension, digits, rows] : kExamples)
      ExpectSturdy(extension, Hex(digits), rows);
  }
  const std::string own = directory.Path("own.bmp");
  BitmapPtr masked{create_bitmap(1, 1)};
  clear_bitmap(masked.get());
  ASSERT_EQ(save_bitmap(own.c_str(), masked.get(), colors), 0);
  masked.reset(LoadPicture(own.c_str(), nullptr));
  EXPECT_EQ(getpixel(masked.get(), 0, 0), 0) << "made for the current palette";
  set_color_conversion(COLORCONV_TOTAL);
  for (const int depth : {8, 24}) {
    UseDepth(depth);
    const BitmapPtr picture = Paint({"rgbwk", "yc?rg"});
    UseDepth(32);
    for (const char* extension : {"bmp", "pcx", "tga"}) {
      const std::string path = directory.Path(std::string{"saved."} + extension);
      ASSERT_EQ(save_bitmap(path.c_str(), picture.get(), nullptr), 0);
      ExpectSturdy(extension, ReadBytes(path.c_str(), 1 << 20), {"rgbwk", "yc?rg"});
    }
  }
}

// What makes Allegro write past a row, a bitmap or a palette, with enough behind it in the file.
TEST_F(LoadTest, WhatDoesNotFitIsRefused) {
  const std::tuple<int, std::size_t, std::uint8_t> lies[] = {
      {0, 22, 0},    {0, 24, 1},    {0, 78, 6},  {0, 79, 9}, {2, 55, 0},    {3, 6, 2},  {3, 7, 12},
      {3, 30, 0x86}, {4, 18, 0x87}, {5, 20, 16}, {5, 28, 9}, {5, 68, 0xF0}, {5, 70, 16}};
  for (const auto& [example, at, value] : lies) {
    const auto& [extension, digits, rows] = kExamples[example];
    Bytes file = Hex(digits);
    file.resize(file.size() + 300000);
    EXPECT_NE(Load(extension, file), nullptr) << example;
    file[at] = value;
    EXPECT_EQ(Load(extension, file), nullptr) << example << " at " << at;
  }
  EXPECT_TRUE(IsPictureSize(16384, 2048));
  for (const auto& [w, h] : {std::pair{16384, 2049}, {16385, 1}, {1, 16385}, {1, 0}, {-1, -1}})
    EXPECT_FALSE(IsPictureSize(w, h));
}

}  // namespace
}  // namespace zel
