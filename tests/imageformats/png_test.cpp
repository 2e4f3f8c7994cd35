#include <png.h>

#include <functional>

#include "tests/imageformats/picture_fixture.h"

namespace zel {
namespace {

// A picture as PNG stores it.
struct Stored {
  int width;
  int height;
  int colorType;
  Bytes samples;  // all rows
  int bits = 8;   // of a sample
  bool interlaced = false;
  Bytes palette{};                    // red, green, blue
  Bytes paletteAlpha{};               // of the first entries
  const png_color_16* key = nullptr;  // the colour that is transparent
};

void Append(png_structp png, png_bytep bytes, std::size_t count) {
  auto* file = static_cast<Bytes*>(png_get_io_ptr(png));
  file->insert(file->end(), bytes, bytes + count);
}

Bytes Encode(const Stored& picture) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  Bytes file;
  png_set_write_fn(png, &file, Append, nullptr);
  png_set_IHDR(png, info, static_cast<png_uint_32>(picture.width),
               static_cast<png_uint_32>(picture.height), picture.bits, picture.colorType,
               picture.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  std::vector<png_color> palette;
  for (std::size_t i = 0; i < picture.palette.size(); i += 3)
    palette.push_back({picture.palette[i], picture.palette[i + 1], picture.palette[i + 2]});
  if (!palette.empty()) png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
  if (!picture.paletteAlpha.empty())
    png_set_tRNS(png, info, picture.paletteAlpha.data(),
                 static_cast<int>(picture.paletteAlpha.size()), nullptr);
  if (picture.key) png_set_tRNS(png, info, nullptr, 0, picture.key);
  Bytes samples = picture.samples;
  std::vector<png_bytep> rows;
  const std::size_t stride = samples.size() / static_cast<std::size_t>(picture.height);
  for (int y = 0; y < picture.height; ++y)
    rows.push_back(samples.data() + static_cast<std::size_t>(y) * stride);
  png_set_rows(png, info, rows.data());
  png_write_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
  png_destroy_write_struct(&png, &info);
  return file;
}

// A white picture of one bit a pixel.
Bytes EncodeWhite(int width, int height) {
  const int stride = (width + 7) / 8;
  return Encode(
      {.width = width,
       .height = height,
       .colorType = PNG_COLOR_TYPE_GRAY,
       .samples = Bytes(static_cast<std::size_t>(stride) * static_cast<std::size_t>(height), 0xFF),
       .bits = 1});
}

const Stored kAlphaSteps{.width = 4,
                         .height = 1,
                         .colorType = PNG_COLOR_TYPE_RGB_ALPHA,
                         .samples = {255, 0, 0, 255,  //
                                     255, 0, 0, 128,  //
                                     255, 0, 0, 127,  //
                                     255, 0, 0, 0}};

class Png : public PictureFixture {
 protected:
  Png() : PictureFixture{"png"} {}
};

TEST_F(Png, ComesInTheDepthOfTheScreen) {
  const Bytes file = Encode({.width = 2,
                             .height = 2,
                             .colorType = PNG_COLOR_TYPE_RGB,
                             .samples = {200, 100, 40, 0, 0, 0, 255, 255, 255, 10, 20, 250}});
  for (const int depth : {15, 16, 24, 32}) {
    SCOPED_TRACE(depth);
    UseDepth(depth);
    const BitmapPtr bitmap = Load(file);
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap_color_depth(bitmap.get()), depth);
    EXPECT_EQ(getpixel(bitmap.get(), 0, 0), makecol(200, 100, 40));
    EXPECT_EQ(getpixel(bitmap.get(), 1, 0), makecol(0, 0, 0));
    EXPECT_EQ(getpixel(bitmap.get(), 0, 1), makecol(255, 255, 255));
    EXPECT_EQ(getpixel(bitmap.get(), 1, 1), makecol(10, 20, 250));
  }
}

TEST_F(Png, PixelsLessThanHalfOpaqueAreMasked) {
  const Bytes file = Encode(kAlphaSteps);
  for (const int depth : {8, 15, 16, 24, 32}) {
    SCOPED_TRACE(depth);
    UseDepth(depth);
    const BitmapPtr bitmap = Load(file);
    ASSERT_NE(bitmap, nullptr);
    const int opaque = makecol_depth(depth, 255, 0, 0);
    const int mask = bitmap_mask_color(bitmap.get());
    EXPECT_EQ(getpixel(bitmap.get(), 0, 0), opaque);
    EXPECT_EQ(getpixel(bitmap.get(), 1, 0), opaque);
    EXPECT_EQ(getpixel(bitmap.get(), 2, 0), mask);
    EXPECT_EQ(getpixel(bitmap.get(), 3, 0), mask);
  }
}

TEST_F(Png, MaskIsKeptApartFromTheColorsOfAPalette) {
  UseDepth(8);
  set_color_conversion(COLORCONV_TOTAL & ~COLORCONV_KEEP_TRANS);
  const RGB black{0, 0, 0, 0};
  set_color(0, &black);
  const BitmapPtr bitmap = Load(Encode({.width = 2,
                                        .height = 1,
                                        .colorType = PNG_COLOR_TYPE_GRAY_ALPHA,
                                        .samples = {0, 255, 0, 0}}));
  EXPECT_NE(getpixel(bitmap.get(), 0, 0), 0);
  EXPECT_EQ(getpixel(bitmap.get(), 1, 0), 0);
  EXPECT_EQ(get_color_conversion(), COLORCONV_TOTAL & ~COLORCONV_KEEP_TRANS);
}

TEST_F(Png, MayBeGrey) {
  const BitmapPtr bitmap = Load(
      Encode({.width = 2, .height = 1, .colorType = PNG_COLOR_TYPE_GRAY, .samples = {30, 220}}));
  ExpectColor(bitmap.get(), 0, 0, {30, 30, 30}, 0);
  ExpectColor(bitmap.get(), 1, 0, {220, 220, 220}, 0);
  const BitmapPtr white = Load(EncodeWhite(9, 1));
  ExpectColor(white.get(), 8, 0, {255, 255, 255}, 0);
}

TEST_F(Png, MayHaveAPalette) {
  const BitmapPtr bitmap = Load(Encode({.width = 3,
                                        .height = 1,
                                        .colorType = PNG_COLOR_TYPE_PALETTE,
                                        .samples = {0b00'01'10'00},
                                        .bits = 2,
                                        .palette = {1, 2, 3, 40, 50, 60, 7, 8, 9},
                                        .paletteAlpha = {255, 0}}));
  ExpectColor(bitmap.get(), 0, 0, {1, 2, 3}, 0);
  EXPECT_EQ(getpixel(bitmap.get(), 1, 0), bitmap_mask_color(bitmap.get()));
  ExpectColor(bitmap.get(), 2, 0, {7, 8, 9}, 0);
}

TEST_F(Png, MayHaveATransparentColor) {
  const png_color_16 key{.index = 0, .red = 9, .green = 8, .blue = 7, .gray = 0};
  const BitmapPtr bitmap = Load(Encode({.width = 2,
                                        .height = 1,
                                        .colorType = PNG_COLOR_TYPE_RGB,
                                        .samples = {9, 8, 7, 9, 8, 6},
                                        .key = &key}));
  EXPECT_EQ(getpixel(bitmap.get(), 0, 0), bitmap_mask_color(bitmap.get()));
  ExpectColor(bitmap.get(), 1, 0, {9, 8, 6}, 0);
}

TEST_F(Png, MayHave16BitsASample) {
  const BitmapPtr bitmap =
      Load(Encode({.width = 2,
                   .height = 1,
                   .colorType = PNG_COLOR_TYPE_RGB_ALPHA,
                   .samples = {200, 200, 100, 100, 50, 50, 255, 255, 1, 1, 2, 2, 3, 3, 0, 255},
                   .bits = 16}));
  ExpectColor(bitmap.get(), 0, 0, {200, 100, 50}, 0);
  EXPECT_EQ(getpixel(bitmap.get(), 1, 0), bitmap_mask_color(bitmap.get()));
}

TEST_F(Png, MayBeInterlaced) {
  constexpr int kSide = 13;
  Stored picture{.width = kSide, .height = kSide, .colorType = PNG_COLOR_TYPE_RGB, .samples = {}};
  for (int i = 0; i < kSide * kSide; ++i)
    picture.samples.insert(picture.samples.end(), {static_cast<std::uint8_t>(i), 7, 9});
  const BitmapPtr plain = Load(Encode(picture));
  picture.interlaced = true;
  const BitmapPtr interlaced = Load(Encode(picture));
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      ExpectColor(plain.get(), x, y, {y * kSide + x, 7, 9}, 0);
      EXPECT_EQ(getpixel(interlaced.get(), x, y), getpixel(plain.get(), x, y));
    }
  }
}

TEST_F(Png, MustBeComplete) {
  Stored picture = kAlphaSteps;
  ExpectEveryBeginningIsRefused(Encode(picture));
  picture.interlaced = true;
  ExpectEveryBeginningIsRefused(Encode(picture));
}

TEST_F(Png, DamageIsSurvived) {
  ExpectDamageIsSurvived(Encode(kAlphaSteps));
  ExpectDamageIsSurvived(Encode({.width = 3,
                                 .height = 1,
                                 .colorType = PNG_COLOR_TYPE_PALETTE,
                                 .samples = {0b00'01'10'00},
                                 .bits = 2,
                                 .interlaced = true,
                                 .palette = {1, 2, 3, 40, 50, 60},
                                 .paletteAlpha = {255, 0}}));
}

TEST_F(Png, HugeSizeIsRefused) {
  EXPECT_NE(Load(EncodeWhite(16384, 1)), nullptr);
  EXPECT_EQ(Load(EncodeWhite(16385, 1)), nullptr);
  EXPECT_EQ(Load(EncodeWhite(1, 16385)), nullptr);
  EXPECT_EQ(Load(EncodeWhite(16384, 2049)), nullptr);
}

}  // namespace
}  // namespace zel
