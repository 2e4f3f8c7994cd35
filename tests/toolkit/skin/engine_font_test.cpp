#include "toolkit/skin/engine_font.h"

#include <climits>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "tests/support/allegro_fixture.h"
#include "tests/support/picture.h"
#include "tests/support/temp_files.h"
#include "toolkit/skin/font.h"

namespace zel {
namespace {

constexpr char kOutlineFont[] = "data/skin/fonts/DejaVuSans.ttf";

// A face of pictures: "A" rests on the base line, "j" reaches to the left of the pen and below.
constexpr std::string_view kBitmapFont =
    "STARTFONT 2.1\nFONT -zel-test-medium-r-normal--6-60-75-75-c-40-iso10646-1\nSIZE 6 75 75\n"
    "FONTBOUNDINGBOX 4 6 -1 -1\nSTARTPROPERTIES 5\nFONT_ASCENT 5\nFONT_DESCENT 1\nPIXEL_SIZE 6\n"
    "CHARSET_REGISTRY \"ISO10646\"\nCHARSET_ENCODING \"1\"\nENDPROPERTIES\nCHARS 2\n"
    "STARTCHAR A\nENCODING 65\nSWIDTH 666 0\nDWIDTH 4 0\nBBX 3 5 0 0\n"
    "BITMAP\n40\nA0\nE0\nA0\nA0\nENDCHAR\n"
    "STARTCHAR j\nENCODING 106\nSWIDTH 500 0\nDWIDTH 3 0\nBBX 2 4 -1 -1\n"
    "BITMAP\n40\n40\n40\n80\nENDCHAR\nENDFONT\n";

std::unique_ptr<EngineFont> Open(std::string_view bytes) {
  return EngineLoad(std::make_shared<std::vector<std::uint8_t>>(bytes.begin(), bytes.end()));
}

class EngineFontTest : public AllegroFixture {
 protected:
  EngineFontTest() { EXPECT_TRUE(EngineInit()); }
  ~EngineFontTest() override { EngineSetBackground(-1); }

  static std::unique_ptr<EngineFont> OpenOutlines(int size) {
    static const std::string bytes = ReadFile(kOutlineFont);
    auto face = Open(bytes);
    EXPECT_NE(face, nullptr) << kOutlineFont;
    EXPECT_EQ(EngineSetSize(*face, size), 0);
    return face;
  }
};

int LineHeightAt(FT_Face face, int pixelSize) {
  EXPECT_EQ(FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(pixelSize)), 0);
  return static_cast<int>((face->size->metrics.ascender - face->size->metrics.descender) / 64);
}

// Many colours, so that whatever blends wrongly shows.
BitmapPtr Pattern(int w, int h) {
  BitmapPtr bitmap{create_bitmap(w, h)};
  const int depth = bitmap_color_depth(bitmap.get());
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      int pixel = makecol_depth(depth, x * 7 & 255, y * 13 & 255, (x + y) * 29 & 255);
      if (depth == 32) pixel |= static_cast<int>(static_cast<unsigned>(x) << 24);
      putpixel(bitmap.get(), x, y, pixel);
    }
  return bitmap;
}

BitmapPtr Copy(BITMAP* source) {
  BitmapPtr copy{create_bitmap(source->w, source->h)};
  blit(source, copy.get(), 0, 0, 0, 0, source->w, source->h);
  return copy;
}

// The number of pixels that differ.
int Differences(BITMAP* a, BITMAP* b) {
  int count = 0;
  for (int y = 0; y < a->h; ++y)
    for (int x = 0; x < a->w; ++x) count += getpixel(a, x, y) != getpixel(b, x, y);
  return count;
}

// Calls draw(x, y, coverage) for every pixel that FreeType itself covers for a text of ASCII.
template <class Draw>
void ForEachCovered(EngineFont& face, const char* text, int x, int y, Draw draw) {
  for (; *text != '\0'; ++text) {
    EXPECT_EQ(FT_Load_Char(face.ftFace, static_cast<FT_ULong>(*text), FT_LOAD_RENDER), 0);
    const FT_GlyphSlot glyph = face.ftFace->glyph;
    for (unsigned row = 0; row < glyph->bitmap.rows; ++row)
      for (unsigned column = 0; column < glyph->bitmap.width; ++column)
        if (const int k = glyph->bitmap.buffer[row * glyph->bitmap.pitch + column])
          draw(x + glyph->bitmap_left + static_cast<int>(column),
               y + face.ascent - glyph->bitmap_top + static_cast<int>(row), k);
    x += static_cast<int>(glyph->advance.x >> 6);
  }
}

TEST_F(EngineFontTest, SizeIsTheLargestPixelSizeWhoseLineIsNotHigher) {
  auto face = OpenOutlines(12);
  for (int px = 9; px <= 60; ++px) {
    ASSERT_EQ(EngineSetSize(*face, px), 0) << px;
    EXPECT_EQ(EngineTextHeight(*face), px);
    const int chosen = LineHeightAt(face->ftFace, face->pixelSize);
    EXPECT_EQ(face->ascent, face->ftFace->size->metrics.ascender / 64);
    EXPECT_LE(chosen, px);
    if (chosen < px) {
      EXPECT_GT(LineHeightAt(face->ftFace, face->pixelSize + 1), px);
    }
  }
}

TEST_F(EngineFontTest, ImpossibleSizesLeaveFaceAsItWas) {
  auto face = OpenOutlines(20);
  const int pixelSize = face->pixelSize;
  const int length = EngineTextLength(*face, "Rescue");
  for (int px : {0, -1, INT_MIN, 100000, 2000000000, INT_MAX}) {
    EXPECT_EQ(EngineSetSize(*face, px), -1) << px;
    EXPECT_EQ(face->size, 20);
    EXPECT_EQ(face->pixelSize, pixelSize);
    EXPECT_EQ(face->ftFace->size->metrics.y_ppem, pixelSize);
  }
  EXPECT_EQ(EngineTextLength(*face, "Rescue"), length);
}

TEST_F(EngineFontTest, OpensAtItsInitialSize) {
  auto outlines = OpenOutlines(8);  // no change
  EXPECT_EQ(outlines->size, 8);
  EXPECT_EQ(outlines->fixedCount, -1);
  EXPECT_EQ(outlines->fixedSizes, std::vector<int>{-1});
  EXPECT_EQ(outlines->spacing, 0);

  auto pictures = Open(kBitmapFont);
  ASSERT_NE(pictures, nullptr);
  EXPECT_EQ(pictures->size, 6);
  EXPECT_EQ(pictures->ascent, 5);
  EXPECT_EQ(pictures->fixedCount, 1);
  EXPECT_EQ(pictures->fixedSizes, (std::vector<int>{6, -1}));
  EXPECT_EQ(EngineSetSize(*pictures, 7), -1);
  EXPECT_EQ(EngineSetSize(*pictures, 6), 0);
}

TEST_F(EngineFontTest, PlacesGlyphsByTheirOffsetsAndAdvances) {
  auto face = Open(kBitmapFont);
  EXPECT_EQ(EngineTextLength(*face, "AjA"), 4 + 3 + 4);
  for (const auto draw : {EngineTextout, EngineTextoutAA}) {
    BitmapPtr out = Paint(Rows(8, "............"));
    draw(out.get(), *face, "AjA", 1, 1, makecol(255, 0, 0), kAlignLeft);
    EXPECT_EQ(Picture(out.get()), Rows({"............",  //
                                        "..r......r..",  //
                                        ".r.r....r.r.",  //
                                        ".rrr.r..rrr.",  //
                                        ".r.r.r..r.r.",  //
                                        ".r.r.r..r.r.",  //
                                        "....r.......",  //
                                        "............"}));
  }
}

TEST_F(EngineFontTest, SpacingFollowsEveryGlyph) {
  auto face = Open(kBitmapFont);
  EngineSetSpacing(*face, 2);
  EXPECT_EQ(EngineTextLength(*face, "AjA"), 4 + 3 + 4 + 3 * 2);
  BitmapPtr out = Paint(Rows(7, "..........."));
  EngineTextout(out.get(), *face, "AA", 0, 0, makecol(255, 0, 0), kAlignLeft);
  EXPECT_EQ(Picture(out.get())[2], "rrr...rrr..");
  EngineSetSpacing(*face, -1);
  EXPECT_EQ(face->spacing, 0);
  EngineSetSpacing(*face, 5000);
  EXPECT_EQ(face->spacing, 4096);
}

TEST_F(EngineFontTest, BackgroundCoversLineAndNothingOfAnEmptyOne) {
  auto face = Open(kBitmapFont);
  for (const auto draw : {EngineTextout, EngineTextoutAA}) {
    BitmapPtr out = Paint(Rows(8, "......"));
    EngineSetBackground(makecol(0, 0, 255));
    draw(out.get(), *face, "A", 1, 1, makecol(255, 0, 0), kAlignLeft);
    draw(out.get(), *face, "", 1, 1, makecol(255, 0, 0), kAlignLeft);
    // The last entry of the ramp is the colour itself.
    EXPECT_EQ(Picture(out.get()), Rows({"......",  //
                                        ".brbb.",  //
                                        ".rbrb.",  //
                                        ".rrrb.",  //
                                        ".rbrb.",  //
                                        ".rbrb.",  //
                                        ".bbbb.",  //
                                        "......"}));
  }
}

TEST_F(EngineFontTest, AlignmentMovesText) {
  auto face = OpenOutlines(16);
  const char* text = "Rescue";
  const int length = EngineTextLength(*face, text);
  for (const auto draw : {EngineTextout, EngineTextoutAA}) {
    BitmapPtr left = Pattern(160, 24), right = Pattern(160, 24), centre = Pattern(160, 24);
    draw(left.get(), *face, text, 40, 3, white, kAlignLeft);
    draw(right.get(), *face, text, 40 + length, 3, white, kAlignRight);
    draw(centre.get(), *face, text, 40 + length / 2, 3, white, kAlignCentre);
    EXPECT_EQ(Differences(left.get(), right.get()), 0);
    EXPECT_EQ(Differences(left.get(), centre.get()), 0);
    EXPECT_NE(Differences(left.get(), Pattern(160, 24).get()), 0);
  }
}

TEST_F(EngineFontTest, BlendsAsAllegroDoesAtEveryDepth) {
  for (int depth : {15, 16, 24, 32}) {
    UseDepth(depth);
    auto face = OpenOutlines(22);
    for (Color color : {Color{255, 255, 255}, Color{0, 0, 0}, Color{200, 30, 120}}) {
      BitmapPtr drawn = Pattern(180, 30), expected = Copy(drawn.get());
      EngineTextoutAA(drawn.get(), *face, "Wait & @%g", 5, 3, color, kAlignLeft);
      ForEachCovered(*face, "Wait & @%g", 5, 3, [&](int x, int y, int k) {
        set_trans_blender(0, 0, 0, k);
        drawing_mode(k < 255 ? DRAW_MODE_TRANS : DRAW_MODE_SOLID, nullptr, 0, 0);
        putpixel(expected.get(), x, y, color);
      });
      solid_mode();
      EXPECT_EQ(Differences(drawn.get(), expected.get()), 0) << depth;
    }
  }
}

TEST_F(EngineFontTest, FullCoverageKeepsAlphaOfColour) {
  UseDepth(32);
  auto face = Open(kBitmapFont);
  const Color color{10, 20, 30, 200};
  BitmapPtr out{create_bitmap(4, 6)};
  clear_to_color(out.get(), makeacol32(1, 2, 3, 77));
  EngineTextoutAA(out.get(), *face, "A", 0, 0, color, kAlignLeft);
  EXPECT_EQ(getpixel(out.get(), 1, 0), color);
  EXPECT_EQ(getpixel(out.get(), 0, 0), makeacol32(1, 2, 3, 77));
}

TEST_F(EngineFontTest, RampLeadsFromBackgroundToColour) {
  const auto mix = [](int color, int background, int k) {
    const int step = color == background ? 0 : color - background + 1;
    return (background * 256 + k * step) >> 8;
  };
  for (int depth : {15, 16, 24, 32}) {
    UseDepth(depth);
    auto face = OpenOutlines(22);
    const Color color{248, 8, 96}, background{16, 200, 96};
    BitmapPtr drawn = Pattern(180, 30), expected = Copy(drawn.get());
    EngineSetBackground(background);
    EngineTextoutAA(drawn.get(), *face, "Wait", 5, 3, color, kAlignLeft);
    rectfill(expected.get(), 5, 3, 5 + EngineTextLength(*face, "Wait") - 1, 3 + 22 - 1, background);
    ForEachCovered(*face, "Wait", 5, 3, [&](int x, int y, int k) {
      putpixel(expected.get(), x, y,
               makecol(mix(color.r(), background.r(), k), mix(color.g(), background.g(), k),
                       mix(color.b(), background.b(), k)));
    });
    EXPECT_EQ(Differences(drawn.get(), expected.get()), 0) << depth;
  }
}

TEST_F(EngineFontTest, PaletteModesDrawInTwoTones) {
  UseDepth(8);
  auto face = OpenOutlines(13);
  BitmapPtr drawn{create_bitmap(16, 16)};
  clear_to_color(drawn.get(), 7);
  EngineTextoutAA(drawn.get(), *face, "n", 0, 0, 200, kAlignLeft);
  // Both stems are there.
  std::string row;
  for (int x = 0; x < 8; ++x) row += getpixel(drawn.get(), x, face->ascent - 1) == 200 ? '#' : '.';
  EXPECT_EQ(row, ".#...#..");
}

TEST_F(EngineFontTest, StaysWithinClipRectangleAndSubBitmap) {
  for (int depth : {8, 15, 16, 24, 32}) {
    UseDepth(depth);
    auto face = OpenOutlines(22);
    for (const auto draw : {EngineTextout, EngineTextoutAA})
      for (Color background : {Color{}, Color{1, 2, 3}}) {
        BitmapPtr whole = Pattern(100, 40), part = Copy(whole.get()), clipped = Copy(whole.get());
        const BitmapPtr before = Copy(whole.get());
        EngineSetBackground(background);
        draw(whole.get(), *face, "Wait", 5, 3, 15, kAlignLeft);
        set_clip_rect(clipped.get(), 11, 9, 40, 18);
        draw(clipped.get(), *face, "Wait", 5, 3, 15, kAlignLeft);
        {
          BitmapPtr sub{create_sub_bitmap(part.get(), 11, 9, 30, 10)};
          draw(sub.get(), *face, "Wait", 5 - 11, 3 - 9, 15, kAlignLeft);
        }
        set_clip_rect(clipped.get(), 0, 0, 99, 39);
        EXPECT_EQ(Differences(clipped.get(), part.get()), 0) << depth;
        blit(whole.get(), before.get(), 11, 9, 11, 9, 30, 10);
        EXPECT_EQ(Differences(clipped.get(), before.get()), 0) << depth;
      }
  }
}

TEST_F(EngineFontTest, TextOutsideDrawsNothing) {
  auto face = OpenOutlines(22);
  BitmapPtr out = Pattern(60, 30);
  const BitmapPtr before = Copy(out.get());
  EngineSetBackground(white);
  for (const Point at :
       {Point{0, 30}, Point{0, -22}, Point{60, 0}, Point{-2000, 0}, Point{0, INT_MAX},
        Point{0, INT_MIN}, Point{INT_MAX, 0}, Point{INT_MIN, 0}})
    EngineTextoutAA(out.get(), *face, "Wait", at.x, at.y, black, kAlignLeft);
  EXPECT_EQ(Differences(out.get(), before.get()), 0);
}

TEST_F(EngineFontTest, CharactersAreThoseOfTextFormat) {
  auto face = OpenOutlines(16);
  const int wide = EngineTextLength(*face, "\xC5\x81");  // U+0141
  EXPECT_GT(wide, 0);
  EXPECT_EQ(EngineTextLength(*face, "A\xC5\x81"), EngineTextLength(*face, "A") + wide);
  set_uformat(U_ASCII);
  EXPECT_NE(EngineTextLength(*face, "\xC5\x81"), wide);  // two characters
}

TEST_F(EngineFontTest, DamagedCharactersEndWithText) {
  auto face = OpenOutlines(16);
  const int caret = EngineTextLength(*face, "^");
  for (const std::string_view damaged : {"A\xC3", "A\xE2\x82", "A\xF0", "A\xFF"}) {
    // No byte follows the terminator.
    const auto text = std::make_unique<char[]>(damaged.size() + 1);
    std::memcpy(text.get(), damaged.data(), damaged.size());
    EXPECT_EQ(EngineTextLength(*face, text.get()), EngineTextLength(*face, "A") + caret);
    BitmapPtr out = Pattern(60, 30), expected = Pattern(60, 30);
    EngineTextoutAA(out.get(), *face, text.get(), 0, 0, white, kAlignLeft);
    EngineTextoutAA(expected.get(), *face, "A^", 0, 0, white, kAlignLeft);
    EXPECT_EQ(Differences(out.get(), expected.get()), 0);
  }
}

TEST_F(EngineFontTest, BytesThatAreNoFontOpenNothing) {
  EXPECT_EQ(EngineLoad(nullptr), nullptr);
  EXPECT_EQ(Open(""), nullptr);
  EXPECT_EQ(Open("font"), nullptr);
  std::mt19937 random{1};
  for (int size : {1, 100, 5000}) {
    std::string bytes(static_cast<std::size_t>(size), '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    EXPECT_EQ(Open(bytes), nullptr);
  }
}

TEST_F(EngineFontTest, DamagedFontsAreDrawnOrRefused) {
  constexpr std::size_t kTables = 400;  // where the directory of tables ends
  const std::string sound = ReadFile(kOutlineFont);
  std::mt19937 random{7};
  BitmapPtr out = Pattern(200, 40);
  int opened = 0;
  for (int round = 0; round < 60; ++round) {
    std::string bytes = sound;
    if (round % 3 == 0) bytes.resize(kTables + random() % (sound.size() - kTables));
    for (int i = 0; i < 400; ++i)
      bytes[kTables + random() % (bytes.size() - kTables)] = static_cast<char>(random());
    auto face = Open(bytes);
    if (!face) continue;
    ++opened;
    for (int px : {3, 30, 2000000000}) {
      EngineSetSize(*face, px);
      EngineTextoutAA(out.get(), *face, "Wait & see", 2, 2, white, kAlignLeft);
      EngineTextout(out.get(), *face, "Wait & see", 2, 2, white, kAlignLeft);
    }
  }
  EXPECT_GT(opened, 10);  // else the damage shows nothing
}

}  // namespace
}  // namespace zel
