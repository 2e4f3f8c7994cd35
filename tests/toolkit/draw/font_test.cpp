#include "toolkit/draw/font.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <tuple>
#include <utility>

#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"
#include "toolkit/draw/engine_font.h"
#include "toolkit/testing/fake_machine.h"

namespace zel {
namespace {

constexpr char kOutlineFont[] = "data/skin/fonts/DejaVuSans.ttf";
constexpr char kEasternFont[] = "data/skin/fonts/DroidSansFallbackFull.ttf";

// Fonts.
//
//   small.fnt, small.bdf  for the library and the engine, with letters that look alike: 2 pixels
//                         wide in a line of 3, two pixels over one, which is the left one in "B",
//                         "D" and so on; in the second, which is called by another size, "j" lies
//                         one pixel to the left of the others and below
//   grey.bdf              for the engine: an A of 3 x 2 pixels in 8 bits
//   proportional.fnt      for the library: A and B, 5 and 11 pixels wide, 7 high
//   cut.fnt, huge.fnt, backward.fnt, flat.fnt
//                         likewise, without the last byte, with characters of 65535 x 65535 pixels,
//                         from 200 to 100, and without height
//   GRID.TGA, deep.tga    60 cells of 4 x 6 pixels in 8 and 24 bits
//   cell.bmp              one without pixels; nomarks.bmp, row.bmp, column.bmp, block.bmp: none
const std::string kSamples = "tests/toolkit/draw/samples/";

std::unique_ptr<EngineFont> Open(std::string_view bytes) {
  const auto copy = std::make_shared<std::vector<std::uint8_t>>(bytes.begin(), bytes.end());
  return EngineLoad({copy, *copy});
}

struct FontTest : AllegroFixture {
  FontTest() {
    EXPECT_TRUE(EngineInit());
    EngineSetBackground(-1);
    unsetenv("WINDIR");
    unsetenv("windir");
    std::filesystem::copy(kSamples, dir.Path());
  }

  Error Load(const std::string& name) { return font.Load(dir.Path(name).c_str()); }
  static SkinBitmap Blank(int w, int h) {
    SkinBitmap canvas{w, h, kMemoryBitmap};
    canvas.clear_to_color(magenta);
    return canvas;
  }

  const std::string outlines = ReadFile(kOutlineFont),
                    pictureFace = ReadFile(kSamples + "small.bdf");
  TempDir dir;
  Font font;
};

// By the file, or the script: the code, the height, the width of "A", whether it has the first, "A"
// and another, and what "A" looks like. The refused ones have the built-in font.
TEST_F(FontTest, ExtensionChoosesReaderAndDamagedFilesGiveBuiltInFont) {
  std::string seen;
  const auto load = [&](const std::string& what, const std::string& file) {
    EXPECT_EQ(font.Load(kOutlineFont), kNoError);
    const int code = Load(file).code;
    seen += what + ": " +
            Join(code, font.TextHeight(), font.TextLength("A"), font.Has(' '), font.Has('A'),
                 font.Has(0x11000)) +
            '\n';
    SkinBitmap out = Blank(12, 9);
    font.Textout(out, "A", 0, 0, red, -1, kAlignLeft);
    if (code == 0) seen += Describe(out.GetBitmap(), {0, 0, 12, 9});
    EXPECT_TRUE(!font.IsEngine() && !font.GetFixedSizes() && font.SetSize(12) == -1) << what;
    EXPECT_EQ(get_color_conversion(), PictureConversion());
  };
  dir.Write("bios.fnt", std::string(2048, 'x'));
  dir.Write("large.fnt", std::string(4096, 'x'));
  dir.Write("short.itf", std::string(2047, 'x'));
  dir.Write("raw.itf", std::string(2048, 'x'));
  const auto grx = [this](const char* name, int w, int h, int first, int last) {
    std::string bytes{"\x14\x02\x59\x19    ", 8};
    for (const int word : {w, h, first, last, 1})
      bytes += {static_cast<char>(word), static_cast<char>(word >> 8)};
    dir.Write(name, bytes.append(38 + (w + 7) / 8 * h * (last - first + 1), '\xB7'));
  };
  grx("many.fnt", 1, 1, 0, 0xFFFF);
  grx("largest.fnt", 4096, 4096, 0x41, 0x44);
  grx("wide.fnt", 4097, 1, 0x41, 0x41);
  grx("high.fnt", 1, 4097, 0x41, 0x41);
  dir.Write("random.ttf", "no font");
  for (const char* file :
       {"GRID.TGA", "bios.fnt", "large.fnt", "proportional.fnt", "deep.tga", "nomarks.bmp",
        "short.itf", "cut.fnt", "huge.fnt", "backward.fnt", "flat.fnt", "random.ttf", "raw.itf",
        "cell.bmp", "row.bmp", "column.bmp", "block.bmp", "wide.fnt", "high.fnt"})
    load(file, file);
  const std::string good = "bios.fnt 0x41 0x41\n";
  std::string letters = "bios.fnt 0x20 0x20\n", files;
  for (int i = 500; i > 300; --i) letters += "- " + Join(i, i) + '\n';
  for (int i = 0; i < 256; ++i) files += "bios.fnt 0x20 0x20\n";
  for (const std::string& script :
       {std::string{" \r\nbios.fnt\t0x20 0x7F\nlarge.fnt 0x80 0xFF"},
        letters + "proportional.fnt 0x42 0x42\n- 0x41 0x41\nGRID.TGA 0x100 0x110\n- 0x200\n",
        std::string{"bios.fnt 0x10FF00 -1\n- 0x41\nproportional.fnt 1\nlarge.fnt 0x30 0x10FFFF"},
        good + "proportional.fnt 0x41 0x41", std::string{"deep.tga 0x20"}, files,
        std::string{"many.fnt 1"}, std::string{"many.fnt 1\nbios.fnt 0x11000 0x11000"},
        std::string{"largest.fnt 0x41"}, std::string{"largest.fnt 0x41\nbios.fnt 0x20 0x20"},
        files + "bios.fnt 0x20 0x20\n", good + "bios.fnt", std::string{"- 0x20"},
        good + "bios.fnt 0 0x20", good + "- 0x21 0x20", good + "bios.fnt 0x110000",
        good + "bios.fnt 0x10FFFF 0x110000", good + "script.TXT 0x20 0x7F\n",
        kSamples + "small.fnt 0x20\n"})
    dir.Write("script.TXT", script), load(script.substr(0, 70), "script.TXT");
  ExpectText("fonts", seen);
  EXPECT_EQ(font.Load(dir.Write("outlines", outlines).c_str()), kNoError);
  Font other;
  EXPECT_EQ(other.Load(dir.Write("outlines", pictureFace).c_str()), kNoError);
  EXPECT_TRUE(other.IsFixed() && !other.IsScalable() && *other.GetFixedSizes() == 3);
  EXPECT_TRUE(font.IsScalable() && !font.IsFixed()) << "each has what was in the file";
}

TEST_F(FontTest, MissingFileIsLookedUpAmongFontsOfEnvironment) {
  std::filesystem::create_directory(dir.Path("fonts"));
  dir.Write("fonts/raw.fnt", std::string(4096, 'x'));
  const std::string tooLong(5000, 'x');
  for (const char* missing : {"raw.fnt", tooLong.c_str(), static_cast<const char*>(nullptr)})
    EXPECT_EQ(font.Load(missing), kFileNotFoundError);
  setenv("windir", dir.Path("fonts\\..").c_str(), 1);
  EXPECT_EQ(font.Load("/no/such/raw.fnt"), kNoError);
  setenv("WINDIR", dir.Path("elsewhere").c_str(), 1);
  EXPECT_EQ(font.Load("raw.fnt"), kFileNotFoundError);
  EXPECT_EQ(font.TextHeight(), 16) << "it is still the font that it was";
}

// What is the same for both kinds of faces.
class FaceTest : public FontTest, public testing::WithParamInterface<const char*> {
 protected:
  static constexpr int kCell = 2;

  FaceTest() { EXPECT_EQ(Load(GetParam()), kNoError); }
};
INSTANTIATE_TEST_SUITE_P(, FaceTest, testing::Values("small.fnt", "small.bdf"));

TEST_P(FaceTest, TextIsAlignedOverItsShadow) {
  SkinBitmap out = Blank(12, 13), none;
  font.TextoutShadow(out, "AB", {6, 0}, white, red, blue, kAlignLeft);
  font.TextoutShadowPrintf(out, {6, 5}, white, red, blue, kAlignRight, "%c%s", 'A', "B");
  font.TextoutPrintf(out, 6, 9, white, blue, kAlignCentre, "%s%d", "AB", 3);
  font.Textout(none, "AB", 6, 5, white, blue, kAlignLeft);
  ExpectLook("text_aligned", out.GetBitmap(), {0, 0, 12, 13});
}

TEST_P(FaceTest, HotkeyIsUnderlined) {
  SkinBitmap out = Blank(32, 96), none;
  int y = 0;
  for (const char* text : {"Save &As", "RD&&", "Quit&", "&&&x", "&a&b", "\u00E9&\u00E9"}) {
    for (const int align : {kAlignLeft, kAlignRight, kAlignCentre}) {
      const int width = font.HotkeyTextout(out, text, 16, y, white, red, blue, align);
      EXPECT_EQ(width, font.HotkeyTextout(none, text, 0, 0, white, -1, -1, align));
      y += 5;
    }
  }
  ExpectLook("text_with_hot_keys", out.GetBitmap(), {0, 0, 32, 96});
  std::string text;
  for (int i = 0; i < 600; ++i) text += "&&\u00E9";  // three bytes each without the marks
  EXPECT_EQ(font.HotkeyTextout(none, text.c_str(), 0, 0, white, -1, -1, kAlignLeft), 682 * kCell);
}

// By columns: bytes and columns taken. A word too long for any line is taken whole, each separator
// is a piece of its own, a line feed is taken where its word fits, and a damaged character swallows
// neither a separator nor the end.
TEST_P(FaceTest, LinesEndBeforeSeparatorThatDoesNotFit) {
  const std::tuple<const char*, int, int, int> cases[] = {
      {"one two", 7, 7, 7},  {"one two", 6, 3, 3},  {"one two", 2, 3, 3},
      {"one  two", 4, 4, 4}, {"one\ntwo", 9, 4, 3}, {"one two\nx", 5, 3, 3},
      {"\ntwo", 9, 1, 0},    {"one\1two", 3, 3, 3}, {"one", -5, 3, 3},
      {"", 5, 0, 0},         {"ab\xF0", 9, 3, 3},   {"ab\xE2\x82 cd", 3, 4, 3},
      {"éé x", 3, 4, 2},     {"one! x", 3, 4, 4}};
  for (const auto& [text, columns, bytes, taken] : cases) {
    int width = -1;
    EXPECT_EQ(font.WrapCount(text, columns * kCell, &width), bytes) << text << columns;
    EXPECT_EQ(width, taken * kCell) << text << columns;
  }
}

TEST_P(FaceTest, MultilineTextIsAlignedInItsColumn) {
  const char* text = "  A B\n\n \tABA\nA ";
  SkinBitmap out = Blank(24, 13);
  for (int align : {kAlignLeft, kAlignRight, kAlignCentre})
    font.MultilineTextout(out, text, white, red, -1, 1 + 8 * align, 1, 3 * kCell, align);
  ExpectLook("text_in_columns", out.GetBitmap(), {0, 0, 24, 13});
  EXPECT_EQ(font.MultilineHeight(text, 3 * kCell), 4 * 3);
  EXPECT_EQ(font.MultilineHeight("  \t ", 9), 0);
  EXPECT_EQ(font.MultilineHeight("\n\n\n", 9), 3 * 3);
}

TEST_F(FontTest, SizeIsTheLargestPixelSizeWhoseLineIsNotHigher) {
  std::string flat = outlines;  // lines are lower than the letters' size, and grow by two at times
  flat.replace(flat.find_first_of('\x08', flat.find("\x5F\x0F\x3C\xF5")), 2, "\x10\0", 2);
  const auto tall = Open(outlines), low = Open(flat), pictures = Open(pictureFace);
  for (const auto& [face, first] : {std::pair{tall.get(), 2}, {low.get(), 5}}) {
    EXPECT_EQ(EngineTextHeight(*face), 8) << "the initial size";
    const FT_Size_Metrics& metrics = face->ftFace->size->metrics;
    for (int px = first; px <= 60; ++px) {
      ASSERT_EQ(EngineSetSize(*face, px), 0) << px;
      EXPECT_EQ(Join(EngineTextHeight(*face), face->ascent, face->pixelSize),
                Join(px, metrics.ascender / 64, metrics.y_ppem));
      const auto line = (metrics.ascender - metrics.descender) / 64;
      EXPECT_LE(line, px);
      FT_Set_Pixel_Sizes(face->ftFace, 0, static_cast<FT_UInt>(face->pixelSize + 1));
      EXPECT_GT((metrics.ascender - metrics.descender) / 64, line < px || first == 2 ? px : px - 1);
    }
  }
  const auto& face = tall;
  const FT_Size_Metrics& metrics = face->ftFace->size->metrics;
  EXPECT_EQ(EngineSetSize(*face, 20) + EngineSetSize(*face, 20), 0);
  for (int px : {0, -1, 1, INT_MIN, 100000, 2000000000, INT_MAX}) {
    EXPECT_EQ(EngineSetSize(*face, px), -1) << px;
    EXPECT_TRUE(EngineTextHeight(*face) == 20 && metrics.y_ppem == face->pixelSize) << px;
  }
  EXPECT_EQ(EngineSetSize(*pictures, 7), -1);
  EXPECT_EQ(pictures->fixedSizes, (std::vector<int>{3, -1}));
  EXPECT_EQ(Join(pictures->pixelSize, pictures->ascent, pictures->size, pictures->dataSize),
            Join(5, 2, 3, pictureFace.size()));
}

TEST_F(FontTest, PlacesGlyphsByOffsetsAdvancesAndSpacingOnTheirBackground) {
  for (const auto& [draw, print] : {std::pair{&EngineTextout, &EngineTextoutPrintf},
                                    {&EngineTextoutAA, &EngineTextoutAAPrintf}}) {
    const auto face = Open(pictureFace);
    SkinBitmap out = Blank(12, 6);
    EngineSetBackground(-1);
    draw(out.GetBitmap(), *face, "AjB", 1, 0, green, kAlignLeft);
    for (const auto& [wanted, set] : {std::pair{-1, 0}, {5000, 4096}}) {
      EngineSetSpacing(*face, wanted);
      EXPECT_EQ(face->spacing, set);
    }
    EngineSetSpacing(*face, 2);
    EngineSetBackground(blue);
    draw(out.GetBitmap(), *face, "", 5, 0, red, kAlignLeft);
    print(out.GetBitmap(), *face, 11, 3, red, kAlignRight, "%c%s", 'A', "j");
    EXPECT_EQ(Picture(out.GetBitmap()), Rows({".gg..gg.....", "..gg.g......", "..g.........",
                                              "...rrbbbbbb.", "...brbrrbbb.", "...bbbrbbbb."}));
  }
}

TEST_F(FontTest, PicturesInShadesCoverAsMuchOrInTwoTonesWhatIsHalfCovered) {
  const auto face = Open(ReadFile(kSamples + "grey.bdf"));
  SkinBitmap out = Blank(8, 3);
  EngineTextout(out.GetBitmap(), *face, "A", 0, 0, black, kAlignLeft);
  EngineTextoutAA(out.GetBitmap(), *face, "A", 4, 0, black, kAlignLeft);
  ExpectLook("text_in_grey", out.GetBitmap(), {0, 0, 8, 3});
}

TEST_F(FontTest, LettersInTwoTonesAreMovedOntoTheGridAndOthersLeadFromBackgroundToColour) {
  const auto face = Open(outlines);
  font.Set(face.get());
  EXPECT_EQ(font.TextLength("nn"), 8);
  font.SetSize(13);
  set_palette(desktop_palette);
  for (const auto& [depth, antialiasing, picture] : {std::tuple{8, true, "text_of_outlines_8"},
                                                     {32, false, "text_of_outlines"},
                                                     {32, true, "text_of_outlines_smooth"}}) {
    UseDepth(depth);
    settings.antialiasing = antialiasing;  // which has no effect where there is a palette
    SkinBitmap out = Blank(18, 28);
    font.Textout(out, "nn", 9, 0, {248, 8, 96}, -1, kAlignCentre);
    font.Textout(out, "nn", 17, 14, {248, 8, 96}, {16, 200, 96}, kAlignRight);
    ExpectLook(picture, out.GetBitmap(), {0, 0, 18, 28});
    font.SetFallbacks({kEasternFont});
    SkinBitmap mixed = Blank(42, 16);
    font.HotkeyTextout(mixed, "@中&国", 0, 0, {248, 8, 96}, -1, {16, 200, 96}, kAlignLeft);
    ExpectLook(std::string{picture} + "_mixed", mixed.GetBitmap(), {0, 0, 42, 16});
  }
  std::string widths;
  for (const int size : {13, 26, 13}) {
    font.SetSize(size);
    widths += Join(font.TextLength("中W"), EngineTextLength(*face, "中W"));
  }
  EXPECT_EQ(widths, "20 19 42 42 20 19 ");
}

TEST_F(FontTest, LettersThatAFaceLacksAreThoseOfTheFirstFallbackThatCanDrawThem) {
  std::string damaged = ReadFile(kEasternFont), other = pictureFace;
  std::fill(damaged.begin() + 400'000, damaged.begin() + 3'900'000, '\xFF');
  for (const auto& [from, to] :
       {std::pair{"ENCODING 66\n", "ENCODING 20013\n"}, {"ENCODING 106\n", "ENCODING 233\n"}})
    other.replace(other.find(from), std::strlen(from), to);
  EXPECT_EQ(Load("small.bdf"), kNoError);
  SkinBitmap out = Blank(12, 9);
  std::string has;
  const auto draw = [&](int y) {
    font.Textout(out, "Aé中B入A", 0, y, red, blue, kAlignLeft);
    has += Join(font.Has('A'), font.Has(0x4E2D), font.Has(0x5165));
  };
  draw(0);
  font.SetFallbacks({dir.Path("none"), dir.Write("random.ttf", "no font"), dir.Path("small.fnt"),
                     dir.Path("damaged.ttf"), dir.Path("other.bdf"), kOutlineFont});
  font.Textout(out, "A", 0, 3, red, blue, kAlignLeft);
  dir.Write("damaged.ttf", damaged), dir.Write("other.bdf", other);
  draw(3);
  font.SetFallbacks({});
  draw(6);
  EXPECT_EQ(has, "1 0 0 1 1 0 1 0 0 ") << "without, with and without them";
  ExpectLook("text_with_fallbacks", out.GetBitmap(), {0, 0, 12, 9});
}

TEST_F(FontTest, LinesOfFontWithFallbacksEndBetweenLettersOfTheEast) {
  std::string rest = "中国ab「入、x」中(国)", lines;
  EXPECT_EQ(Load("small.bdf"), kNoError);
  int width = 0;
  EXPECT_EQ(font.WrapCount(rest.c_str(), 2, &width), rest.size());
  font.SetFallbacks({dir.Path("none")});
  for (int taken = 0; !rest.empty(); rest.erase(0, static_cast<std::size_t>(taken))) {
    taken = font.WrapCount(rest.c_str(), 2, &width);
    lines += rest.substr(0, static_cast<std::size_t>(taken)) + '|';
  }
  EXPECT_EQ(lines, "中|国|ab|「入、|x」|中|(国)|");
}

// On a video bitmap Allegro blends. Below are pixels that have more bits than a colour, too.
TEST_F(FontTest, BlendsLikeAllegroAndWithinTheClipRectangle) {
  FakeMachine machine;
  const auto face = Open(outlines);
  EngineSetSize(*face, 22);
  for (int depth : {8, 15, 16, 24, 32}) {
    UseDepth(depth);
    set_gfx_mode(GFX_AUTODETECT_FULLSCREEN, 120, 48, 0, 0);
    for (const auto draw : {EngineTextout, EngineTextoutAA})
      for (const Color background : {Color{}, Color{1, 2, 3}}) {
        SkinBitmap whole{120, 48, kMemoryBitmap}, clipped{120, 48, kMemoryBitmap};
        SkinBitmap expected{120, 48, kMemoryBitmap}, video{120, 48, kVideoBitmap};
        for (SkinBitmap* out : {&whole, &clipped, &expected, &video})
          for (int x = 0; x < 120; ++x) out->vline(x, 0, 47, static_cast<int>(x * 0x8A6B4C2Du));
        EngineSetBackground(background);
        clipped.set_clip_rect(11, 9, 36, 18);
        for (SkinBitmap* out : {&whole, &clipped, &video})
          draw(out->GetBitmap(), *face, "Wait", 5, 3, static_cast<int>(0x9E1F73A5u), kAlignLeft);
        for (const int far : {INT_MIN, -200, 120, INT_MAX})
          for (const Point& point : {Point{0, far}, {far, 0}})
            draw(clipped.GetBitmap(), *face, "Wait", point.x, point.y, 15, kAlignLeft);
        EXPECT_EQ(Pixels(whole.GetBitmap()), Pixels(video.GetBitmap())) << depth;
        whole.blit(expected, 11, 9, 11, 9, 26, 10);
        EXPECT_EQ(Pixels(clipped.GetBitmap()), Pixels(expected.GetBitmap())) << depth;
      }
  }
}

TEST_F(FontTest, CharactersAreThoseOfTextFormatAndDamagedOnesEndWithText) {
  const auto face = Open(outlines);
  const auto length = [&face](const char* text) { return EngineTextLength(*face, text); };
  EngineSetSpacing(*face, 3);
  EXPECT_EQ(length("e\u0301"), length("e")) << "an accent takes no place";
  const int wide = length("\xC5\x81");  // U+0141
  EXPECT_EQ(length("A\xC5\x81"), length("A") + wide);
  for (const char* damaged : {"A\xC3", "A\xE2\x82", "A\xF0", "A\xFF"})
    EXPECT_EQ(length(std::unique_ptr<char, void (*)(void*)>{strdup(damaged), std::free}.get()),
              length("A^"));
  set_uformat(U_ASCII);
  EXPECT_NE(length("\xC5\x81"), wide) << "two characters";
  EngineExit();
  EXPECT_FALSE(Open(outlines));
  EXPECT_TRUE(EngineInit());
  EXPECT_EQ(length("ZZ"), 2 * length("Z")) << "it outlived that";
}

}  // namespace
}  // namespace zel
