#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iterator>

#include <jpeglib.h>

#include "tests/imageformats/picture_fixture.h"

namespace zel {
namespace {

constexpr int kBlock = 8;  // the squares that JPEG works in

// A picture of one block beside another, each of one colour.
struct TwoBlocks {
  J_COLOR_SPACE colorSpace = JCS_RGB;
  Bytes left{255, 0, 0};
  Bytes right{0, 0, 255};
};

using Adjust = std::function<void(jpeg_compress_struct&)>;

Bytes Encode(
    const TwoBlocks& picture, const Adjust& adjust = [](jpeg_compress_struct&) {}) {
  jpeg_compress_struct info;
  jpeg_error_mgr errors;
  info.err = jpeg_std_error(&errors);
  jpeg_create_compress(&info);
  unsigned char* bytes = nullptr;
  unsigned long length = 0;
  jpeg_mem_dest(&info, &bytes, &length);
  info.image_width = 2 * kBlock;
  info.image_height = kBlock;
  info.input_components = static_cast<int>(picture.left.size());
  info.in_color_space = picture.colorSpace;
  jpeg_set_defaults(&info);
  jpeg_set_quality(&info, 100, TRUE);
  adjust(info);
  // Without colours that spread over the edge of the block.
  for (int i = 0; i < info.num_components; ++i)
    info.comp_info[i].h_samp_factor = info.comp_info[i].v_samp_factor = 1;
  jpeg_start_compress(&info, TRUE);
  Bytes row;
  for (int x = 0; x < 2 * kBlock; ++x) {
    const Bytes& pixel = x < kBlock ? picture.left : picture.right;
    row.insert(row.end(), pixel.begin(), pixel.end());
  }
  JSAMPROW rows = row.data();
  for (int y = 0; y < kBlock; ++y) jpeg_write_scanlines(&info, &rows, 1);
  jpeg_finish_compress(&info);
  jpeg_destroy_compress(&info);
  const Bytes file{bytes, bytes + length};
  std::free(bytes);
  return file;
}

void MakeProgressive(jpeg_compress_struct& info) { jpeg_simple_progression(&info); }

// Where the segment of a marker begins.
std::size_t FindMarker(const Bytes& file, int marker) {
  for (std::size_t i = 0; i + 1 < file.size(); ++i)
    if (file[i] == 0xFF && file[i + 1] == marker) return i;
  ADD_FAILURE() << "no marker " << marker;
  return 0;
}

constexpr int kFrameMarker = 0xC0;
constexpr int kTableMarker = 0xDB;

class Jpeg : public PictureFixture {
 protected:
  Jpeg() : PictureFixture{"jpg"} {}

  void ExpectColors(const Bytes& file, Rgb left, Rgb right, int tolerance = 3) {
    const BitmapPtr bitmap = Load(file);
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->w, 2 * kBlock);
    EXPECT_EQ(bitmap->h, kBlock);
    for (const int y : {0, kBlock - 1}) {
      ExpectColor(bitmap.get(), 0, y, left, tolerance);
      ExpectColor(bitmap.get(), kBlock - 1, y, left, tolerance);
      ExpectColor(bitmap.get(), kBlock, y, right, tolerance);
      ExpectColor(bitmap.get(), 2 * kBlock - 1, y, right, tolerance);
    }
  }
};

TEST_F(Jpeg, ComesInTheDepthOfTheScreen) {
  const Bytes file = Encode({.left = {200, 100, 40}, .right = {10, 20, 250}});
  for (const int depth : {15, 16, 24, 32}) {
    SCOPED_TRACE(depth);
    UseDepth(depth);
    EXPECT_EQ(bitmap_color_depth(Load(file).get()), depth);
    ExpectColors(file, {200, 100, 40}, {10, 20, 250}, depth < 24 ? 10 : 3);
  }
}

TEST_F(Jpeg, HasNoAlphaInAPixelOf32Bits) {
  const BitmapPtr bitmap = Load(Encode({.left = {255, 255, 255}}));
  EXPECT_EQ(getpixel(bitmap.get(), 0, 0), makecol32(255, 255, 255));
}

TEST_F(Jpeg, IsMadeForTheCurrentPaletteIn8Bits) {
  UseDepth(8);
  const BitmapPtr bitmap = Load(Encode({}));
  ASSERT_EQ(bitmap_color_depth(bitmap.get()), 8);
  EXPECT_EQ(getpixel(bitmap.get(), 0, 0), makecol8(255, 0, 0));
  EXPECT_EQ(getpixel(bitmap.get(), kBlock, 0), makecol8(0, 0, 255));
}

TEST_F(Jpeg, LeavesAPaletteForTheCaller) {
  PALETTE palette = {};
  UseDepth(8);
  const BitmapPtr bitmap = Load(Encode({}), palette);
  const RGB& red = palette[getpixel(bitmap.get(), 0, 0)];
  EXPECT_GT(red.r, 55);
  EXPECT_LT(red.g + red.b, 8);

  UseDepth(16);
  PALETTE fixed, expected;
  generate_332_palette(expected);
  Load(Encode({}), fixed);
  EXPECT_EQ(fixed[200].r, expected[200].r);
}

TEST_F(Jpeg, KeepsItsOwnDepthWithoutConversion) {
  UseDepth(16);
  set_color_conversion(COLORCONV_NONE);
  EXPECT_EQ(bitmap_color_depth(Load(Encode({})).get()), 24);
}

TEST_F(Jpeg, IsDitheredOnRequest) {
  UseDepth(16);
  const Bytes file = Encode({.left = {100, 100, 100}});
  const BitmapPtr plain = Load(file);
  set_color_conversion(COLORCONV_TOTAL | COLORCONV_DITHER_HI);
  const BitmapPtr dithered = Load(file);
  const auto colors = [](BITMAP* bitmap) {
    int changes = 0;
    for (int x = 1; x < kBlock; ++x)
      changes += getpixel(bitmap, x, 0) != getpixel(bitmap, x - 1, 0);
    return changes;
  };
  EXPECT_EQ(colors(plain.get()), 0);
  EXPECT_GT(colors(dithered.get()), 0);
}

TEST_F(Jpeg, MayBeProgressive) {
  ExpectColors(Encode({}, MakeProgressive), {255, 0, 0}, {0, 0, 255});
}

TEST_F(Jpeg, MayBeGrey) {
  ExpectColors(Encode({JCS_GRAYSCALE, {30}, {220}}), {30, 30, 30}, {220, 220, 220});
}

TEST_F(Jpeg, MayBeCmyk) {
  // An Adobe marker tells of inverted values.
  ExpectColors(Encode({JCS_CMYK, {255, 0, 0, 255}, {255, 255, 255, 128}}), {255, 0, 0},
               {128, 128, 128});
  const Adjust withoutMarker = [](jpeg_compress_struct& info) { info.write_Adobe_marker = FALSE; };
  ExpectColors(Encode({JCS_CMYK, {0, 255, 255, 0}, {0, 0, 0, 127}}, withoutMarker), {255, 0, 0},
               {128, 128, 128});
  const Adjust asYcck = [](jpeg_compress_struct& info) { jpeg_set_colorspace(&info, JCS_YCCK); };
  ExpectColors(Encode({JCS_CMYK, {255, 0, 0, 255}, {255, 255, 255, 128}}, asYcck), {255, 0, 0},
               {128, 128, 128});
}

TEST_F(Jpeg, MayHaveUnusedBytesBetweenItsSegments) {
  Bytes file = Encode({});
  const auto table = file.begin() + static_cast<std::ptrdiff_t>(FindMarker(file, kTableMarker));
  file.insert(table, {1, 2, 3});
  ExpectColors(file, {255, 0, 0}, {0, 0, 255});
}

TEST_F(Jpeg, MustBeComplete) {
  ExpectEveryBeginningIsRefused(Encode({}));
  ExpectEveryBeginningIsRefused(Encode({}, MakeProgressive));
}

TEST_F(Jpeg, DamageIsSurvived) {
  ExpectDamageIsSurvived(Encode({.left = {200, 100, 40}}));
  ExpectDamageIsSurvived(Encode({}, MakeProgressive));
  ExpectDamageIsSurvived(Encode({JCS_CMYK, {255, 0, 0, 255}, {1, 2, 3, 4}}));
}

TEST_F(Jpeg, MissingFileIsNoPicture) {
  EXPECT_EQ(load_bitmap("no-such-directory/picture.jpg", nullptr), nullptr);
}

// The size in a header that reaches further than its data must not cost memory or time.
TEST_F(Jpeg, HugeSizeIsRefused) {
  Bytes file = Encode({});
  const std::size_t size = FindMarker(file, kFrameMarker) + 5;  // height and width, high byte first
  for (std::size_t i = size; i < size + 4; ++i) file[i] = 0xFF;
  EXPECT_EQ(Load(file), nullptr);
}

TEST_F(Jpeg, EndlessScansAreRefused) {
  constexpr int kCoefficients = 64;
  std::vector<jpeg_scan_info> scans{{1, {0}, 0, 0, 0, 0}};
  for (int coefficient = 1; coefficient < kCoefficients; ++coefficient) {
    scans.push_back({1, {0}, coefficient, coefficient, 0, 1});
    scans.push_back({1, {0}, coefficient, coefficient, 1, 0});
  }
  const TwoBlocks grey{JCS_GRAYSCALE, {30}, {220}};
  const auto withScans = [&](std::size_t count) {
    return Encode(grey, [&](jpeg_compress_struct& info) {
      info.scan_info = scans.data();
      info.num_scans = static_cast<int>(count);
    });
  };
  EXPECT_NE(Load(withScans(90)), nullptr);
  EXPECT_EQ(Load(withScans(scans.size())), nullptr);
}

TEST_F(Jpeg, IsKnownByEitherExtensionInAnyCase) {
  const Bytes file = Encode({});
  const std::string_view content{reinterpret_cast<const char*>(file.data()), file.size()};
  for (const char* name : {"a.jpg", "a.jpeg", "a.JPG"}) {
    const TempFile picture{content, name};
    EXPECT_NE(BitmapPtr{load_bitmap(picture.Path(), nullptr)}, nullptr) << name;
  }
}

}  // namespace
}  // namespace zel
