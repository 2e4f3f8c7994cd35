#include "imageformats/load.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
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

// Small pictures of every kind: JPEG and PNG as libjpeg and libpng write them, saved_* as Allegro
// does, the others byte by byte. Palettes are black, which stands for what is masked, red, green
// and blue; that of long_header.bmp has magenta, those of saved_8.* are the one of
// generate_332_palette.
//
//   *_scans.jpg, arithmetic.jpg, of_65535_by_65535.jpg
//                            what must not cost memory or time; 100 scans are read
//   cmyk_with_adobe_marker.jpg, padded.jpg
//                            has inverted values, has bytes between two segments
//   runs_of_8_bits.bmp       with a move and pixels one by one
//   from_the_top.bmp         of 16 bits
//   bytes.lbm, planes.lbm    with runs, of an odd width; with a plane of the mask, without runs
//   even.lbm, one_plane.lbm  without runs; of 16 pixels, with a text and a palette of odd lengths
//   os2.bmp, masks_*.bmp     of 4 bits with a short header; masks_of_32_bits.bmp from the top
//   grey.tga, packed_*.tga   with an id; with runs
//   wide_*.bmp, wide_*.tga   43 pixels wide; with runs, also pixels one by one
//   wide.lbm                 of eight planes, 33 pixels wide, with runs and bytes that say nothing
//   opaque.*                 of 32 bits, whose last eight are set, in part magenta
const std::string kSamples = "tests/imageformats/samples/";

using Loader = BITMAP* (*)(const Bytes&, RGB*);
const std::map<std::string, Loader> kLibraryLoaders = {
    {"bmp", LoadBmp}, {"tga", LoadTga}, {"lbm", LoadLbm}, {"pcx", LoadPcx}};

std::string ExtensionOf(const std::string& name) { return get_extension(name.c_str()); }

class LoadTest : public AllegroFixture {
 protected:
  LoadTest() : AllegroFixture{32} {
    [[maybe_unused]] static const bool registered = (RegisterPictureFormats(), true);
    set_color_conversion(PictureConversion());
    set_palette(desktop_palette);
    for (const auto& entry : std::filesystem::directory_iterator{kSamples})
      samples.insert(entry.path().filename());
  }

  static BitmapPtr Sample(const std::string& name, RGB* palette = nullptr) {
    return BitmapPtr{LoadPicture((kSamples + name).c_str(), palette)};
  }

  std::set<std::string> samples;
};

TEST_F(LoadTest, PicturesAreReadAsTheyAreMeantAndTheirBeginningsAreRefusedInSilence) {
  const TempDir directory;
  PALETTE colors;
  generate_332_palette(colors);
  set_palette(colors);
  testing::internal::CaptureStderr();
  std::string seen;
  for (const int depth : {8, 16, 32}) {
    UseDepth(depth);
    set_color_conversion(PictureConversion());
    for (const std::string& name : samples) {
      seen += std::to_string(depth) + ' ' + name + '\n';
      const BitmapPtr picture = Sample(name);
      for (const std::string& row : picture ? Picture(picture.get()) : Rows{"refused"})
        seen += row + '\n';
      for (Bytes cut = ReadBytes((kSamples + name).c_str(), 2000);
           depth == 16 && picture && !cut.empty();) {
        cut.pop_back();
        const std::string path =
            directory.Write("cut." + ExtensionOf(name), std::string(cut.begin(), cut.end()));
        EXPECT_EQ(LoadPicture(path.c_str(), nullptr), nullptr) << name << " to " << cut.size();
      }
    }
  }
  ExpectText("pictures_read", seen);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
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

// Its first entry, black, is masked in what was made for it.
TEST_F(LoadTest, PicturesTakeTheNearestPlacesOfThePaletteUnlessTheyAreMadeForIt) {
  PALETTE four;
  std::fill_n(four, PAL_SIZE, RGB{9, 9, 9, 0});
  Sample("runs_of_8_bits.bmp", four);  // what the file does not say is black
  set_palette(four);
  UseDepth(8);
  std::string seen;
  for (const char* name : {"runs_of_8_bits.bmp", "long_header.bmp", "saved_8.tga", "saved_24.bmp",
                           "bytes.lbm", "palette.png", "opaque.bmp"}) {
    seen += name;
    for (const int place : Pixels(Sample(name).get())) seen += ' ' + std::to_string(place);
    seen += '\n';
  }
  ExpectText("pictures_in_four_colours", seen);
}

TEST_F(LoadTest, JpegComesInTheOrderThatChannelsHaveOnTheScreen) {
  UseDepth(32);
  for (const auto& [r, g, b] : {std::tuple{16, 0, 8}, {8, 16, 24}, {16, 8, 0}, {0, 8, 16}}) {
    _rgb_r_shift_32 = r, _rgb_g_shift_32 = g, _rgb_b_shift_32 = b;
    const BitmapPtr picture = Sample("rgb.jpeg");
    EXPECT_EQ(getpixel(picture.get(), 0, 0), 254 << r);
    EXPECT_EQ(getpixel(picture.get(), 15, 7), 254 << b);
  }
}

// Much of what is not meant would make Allegro write past a row, a bitmap or a palette where there
// is enough behind it in the file. By bytes from the start: with these values there the file is
// refused (x), or the picture is the same (.), of another size (s) or of other colours (o).
TEST_F(LoadTest, WhatDoesNotFitInAHeaderIsRefused) {
  std::string seen;
  for (const std::string& name : samples) {
    const auto loader = kLibraryLoaders.find(ExtensionOf(name));
    if (loader == kLibraryLoaders.end()) continue;
    Bytes file = ReadBytes((kSamples + name).c_str(), 1 << 20);
    const std::size_t end = std::min<std::size_t>(file.size(), 96);
    file.resize(file.size() + 20000);
    PALETTE colors;
    std::fill_n(colors, PAL_SIZE, RGB{9, 9, 9, 0});
    const BitmapPtr whole{loader->second(file, colors)};
    EXPECT_NE(colors[9].r, 9) << "what the file does not say is black";
    seen += name + '\n';
    for (const int value : {0, 1, 2, 3, 9, 0xC, 0xF, 0x10, 0x20, 0x80, 0x86, 0xFF}) {
      for (std::size_t at = 0; at < end; ++at) {
        Bytes other = file;
        other[at] = static_cast<std::uint8_t>(value);
        const BitmapPtr loaded{loader->second(other, nullptr)};
        const bool isSized = loaded && loaded->w == whole->w && loaded->h == whole->h;
        const bool isSame = isSized && Picture(loaded.get()) == Picture(whole.get());
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
