#include "imageformats/load.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <tuple>

#include <jpeglib.h>
#include <png.h>

#include "imageformats/picture.h"
#include "imageformats/register.h"
#include "tests/support/allegro_fixture.h"
#include "tests/support/picture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

constexpr int kBlock = 8;  // the squares that JPEG works in

using Adjust = std::function<void(jpeg_compress_struct*)>;

// A JPEG picture of one block beside another, each of one colour.
Bytes EncodeJpeg(J_COLOR_SPACE colors, const Bytes& left, const Bytes& right,
                 const Adjust& adjust = {}) {
  jpeg_compress_struct info;
  jpeg_error_mgr errors;
  info.err = jpeg_std_error(&errors);
  jpeg_create_compress(&info);
  unsigned char* bytes = nullptr;
  unsigned long length = 0;
  jpeg_mem_dest(&info, &bytes, &length);
  info.image_width = 2 * kBlock;
  info.image_height = kBlock;
  info.input_components = static_cast<int>(left.size());
  info.in_color_space = colors;
  jpeg_set_defaults(&info);
  if (adjust) adjust(&info);
  // Colours must not spread over the edge of the block.
  for (int i = 0; i < info.num_components; ++i)
    info.comp_info[i].h_samp_factor = info.comp_info[i].v_samp_factor = 1;
  jpeg_start_compress(&info, TRUE);
  Bytes row;
  for (int x = 0; x < 2 * kBlock; ++x)
    for (const std::uint8_t sample : x < kBlock ? left : right) row.push_back(sample);
  JSAMPROW rows = row.data();
  while (info.next_scanline < kBlock) jpeg_write_scanlines(&info, &rows, 1);
  jpeg_finish_compress(&info);
  jpeg_destroy_compress(&info);
  const Bytes file{bytes, bytes + length};
  std::free(bytes);
  return file;
}

// A PNG picture in the format that libpng's simplified writing gives to such pixels.
template <class Sample>
Bytes EncodePng(unsigned width, unsigned height, unsigned format, std::vector<Sample> pixels,
                const Bytes& palette = {}) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = width;
  image.height = height;
  image.format = format;
  image.colormap_entries = static_cast<png_uint_32>(palette.size() / 4);
  Bytes file(4096);
  png_alloc_size_t size = file.size();
  png_image_write_to_memory(&image, file.data(), &size, 0, pixels.data(), 0, palette.data());
  file.resize(size);
  return file;
}

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

const Bytes kRed{255, 0, 0}, kBlue{0, 0, 255};

TEST_F(LoadTest, JpegOfEveryKindIsRead) {
  const Adjust unmarked = [](auto* info) { info->write_Adobe_marker = FALSE; };
  const Adjust ycck = [](auto* info) { jpeg_set_colorspace(info, JCS_YCCK); };
  const Bytes grey = EncodeJpeg(JCS_GRAYSCALE, {0}, {255});
  Bytes padded = grey;
  padded.insert(padded.begin() + 20, 3, 1);  // between two segments
  // 16 bits hide what compressing changes.
  const std::tuple<int, Bytes, const char*> kinds[] = {
      {16, EncodeJpeg(JCS_RGB, kRed, kBlue), "rrrrrrrrbbbbbbbb"},
      {16, EncodeJpeg(JCS_RGB, kRed, kBlue, jpeg_simple_progression), "rrrrrrrrbbbbbbbb"},
      {16, grey, "kkkkkkkkwwwwwwww"},
      {32, padded, "kkkkkkkkwwwwwwww"},
      // An Adobe marker tells of inverted values.
      {16, EncodeJpeg(JCS_CMYK, {255, 0, 0, 255}, {255, 255, 255, 0}), "rrrrrrrrkkkkkkkk"},
      {16, EncodeJpeg(JCS_CMYK, {0, 255, 255, 0}, {0, 0, 0, 255}, unmarked), "rrrrrrrrkkkkkkkk"},
      {16, EncodeJpeg(JCS_CMYK, {255, 0, 0, 255}, {255, 255, 255, 0}, ycck), "rrrrrrrrkkkkkkkk"},
  };
  for (const auto& [depth, file, row] : kinds) {
    UseDepth(depth);
    ExpectSturdy("jpeg", file, Rows(kBlock, row));
  }
}

// What a header, many scans or arithmetic coding promise must not cost memory or time.
TEST_F(LoadTest, JpegOfEndlessWorkIsRefused) {
  Bytes huge = EncodeJpeg(JCS_RGB, kRed, kBlue);
  const std::uint8_t frame[] = {0xFF, 0xC0};
  std::fill_n(std::search(huge.begin(), huge.end(), frame, frame + 2) + 5, 4, 0xFF);
  EXPECT_EQ(Load("jpg", huge), nullptr);
  EXPECT_EQ(Load("jpg", EncodeJpeg(JCS_RGB, kRed, kBlue, [](auto* info) { info->arith_code = 1; })),
            nullptr);
  std::vector<jpeg_scan_info> scans{{1, {0}, 0, 0, 0, 0}};
  for (int i = 1; i < kBlock * kBlock; ++i)
    for (const int bit : {1, 0}) scans.push_back({1, {0}, i, i, 1 - bit, bit});
  for (const int count : {90, 127})
    EXPECT_EQ(Load("jpg", EncodeJpeg(JCS_GRAYSCALE, {30}, {220},
                                     [&](auto* info) {
                                       info->scan_info = scans.data();
                                       info->num_scans = count;
                                     })) != nullptr,
              count == 90);
}

TEST_F(LoadTest, PngOfEveryKindIsRead) {
  const Bytes colors{255, 0, 0, 255, 0, 255, 0, 255, 9, 9, 9, 0, 0, 0, 255, 255};
  const std::vector<std::uint16_t> deep{65535, 0, 0, 65535, 0, 0, 0, 255};
  const std::pair<Bytes, Rows> kinds[] = {
      // Grey of 2 bits, interlaced, with one value transparent.
      {Hex("89504E470D0A1A0A 0000000D 49484452 00000009 00000002 0200000001 928A8138 00000002"
           "74524E53 0002 989DAC14 00000014 49444154 089963506038C0D0C0709AE10F570300132B03B2"
           "EB9F0667 00000000 49454E44 AE426082"),
       {"kw.kw.kw.", "wwwkkk..."}},
      {EncodePng(2, 1, PNG_FORMAT_GRAY, Bytes{0, 255}), {"kw"}},
      {EncodePng(5, 1, PNG_FORMAT_RGBA_COLORMAP, Bytes{0, 1, 2, 3, 0}, colors), {"rg.br"}},
      {EncodePng(1, 3, PNG_FORMAT_RGB, Bytes{255, 0, 0, 0, 255, 0, 0, 0, 255}), {"r", "g", "b"}},
      {EncodePng(2, 1, PNG_FORMAT_LINEAR_RGB_ALPHA, deep), {"r."}}};
  for (const auto& [file, rows] : kinds) ExpectSturdy("png", file, rows);
}

TEST_F(LoadTest, PngComesInTheDepthOfTheScreenWithMaskedPixelsAndAPalette) {
  const Bytes pixels{200, 100, 40, 255, 0, 0, 0, 128, 0, 0, 0, 127, 255, 0, 0, 0};
  const Bytes file = EncodePng(4, 1, PNG_FORMAT_RGBA, pixels);
  set_color_conversion(COLORCONV_TOTAL & ~COLORCONV_KEEP_TRANS);
  const RGB black{0, 0, 0, 0};
  set_color(0, &black);  // in 8 bits the mask is a place in the palette, whatever its colour
  PALETTE palette{}, fixed;
  generate_332_palette(fixed);
  BitmapPtr bitmap;
  const auto pixel = [&bitmap](int x) { return getpixel(bitmap.get(), x, 0); };
  for (const int depth : {8, 15, 16, 24, 32}) {
    UseDepth(depth);
    bitmap = Load("png", file);
    ASSERT_EQ(bitmap_color_depth(bitmap.get()), depth);
    EXPECT_EQ(pixel(0), makecol(200, 100, 40)) << depth;
    EXPECT_EQ(Picture(bitmap.get())[0].substr(2), "..") << depth;
    EXPECT_NE(pixel(1), bitmap_mask_color(bitmap.get())) << depth;
    bitmap = Load("png", file, palette);
    EXPECT_NEAR(depth == 8 ? palette[pixel(0)].g : 25, 25, 2);
    EXPECT_TRUE(depth == 8 || palette[200].r == fixed[200].r) << depth;
  }
  UseDepth(16);
  set_color_conversion(COLORCONV_TOTAL | COLORCONV_DITHER_HI);
  bitmap = Load("png", EncodePng(2, 1, PNG_FORMAT_RGB, Bytes(6, 100)));
  EXPECT_NE(pixel(0), pixel(1)) << "dithered";
  set_color_conversion(COLORCONV_NONE);
  EXPECT_EQ(bitmap_color_depth(Load("png", file).get()), 24);
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
