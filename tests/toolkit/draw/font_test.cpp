#include "toolkit/draw/font.h"

#include <climits>
#include <cstdlib>
#include <numeric>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "tests/support/allegro_fixture.h"
#include "tests/support/picture.h"
#include "tests/support/temp_files.h"
#include "toolkit/base/settings.h"
#include "toolkit/draw/bitmap_guard.h"
#include "toolkit/draw/engine_font.h"
#include "toolkit/draw/glyph_painter.h"

namespace zel {
namespace {

constexpr char kOutlineFont[] = "data/skin/fonts/DejaVuSans.ttf";
constexpr int kCell = 8;  // width and height of the built-in font's characters

// A face of pictures whose line is 6 pixels high and that is called by another size: "A" rests on
// the base line, "j" reaches to the left of the pen and below.
constexpr std::string_view kBitmapFont =
    "STARTFONT 2.1\nFONT -zel-test-medium-r-normal--5-50-75-75-c-40-iso10646-1\nSIZE 5 75 75\n"
    "FONTBOUNDINGBOX 4 6 -1 -1\nSTARTPROPERTIES 5\nFONT_ASCENT 5\nFONT_DESCENT 1\nPIXEL_SIZE 5\n"
    "CHARSET_REGISTRY \"ISO10646\"\nCHARSET_ENCODING \"1\"\nENDPROPERTIES\nCHARS 2\n"
    "STARTCHAR A\nENCODING 65\nSWIDTH 666 0\nDWIDTH 4 0\nBBX 3 5 0 0\n"
    "BITMAP\n40\nA0\nE0\nA0\nA0\nENDCHAR\n"
    "STARTCHAR j\nENCODING 106\nSWIDTH 500 0\nDWIDTH 3 0\nBBX 2 4 -1 -1\n"
    "BITMAP\n40\n40\n40\n80\nENDCHAR\nENDFONT\n";

// The start of a font: its characters' width and height, the first and the last, if all are as
// wide.
std::string Grx(std::initializer_list<int> header) {
  std::string bytes = "\x14\x02\x59\x19" + std::string(4, '\0');
  for (int word : header) (bytes += static_cast<char>(word)) += static_cast<char>(word >> 8);
  return bytes + std::string(38, '\0');
}

// The characters A and B, 5 and 11 pixels wide, 7 high.
std::string GrxFont() {
  return Grx({0, 7, 'A', 'B', false}) + std::string{"\5\0\13\0", 4} +
         std::string(7 + 2 * 7, '\x80');
}

// A picture of `cells` cells of 4 x 6 pixels, the first of which is the space.
BitmapPtr Grid(int cells, bool hasMarks = true) {
  BitmapPtr picture{create_bitmap_ex(8, 1 + cells * 5, 8)};
  clear_to_color(picture.get(), hasMarks ? 255 : 0);
  for (int i = 0; i < cells; ++i) {
    rectfill(picture.get(), 1 + i * 5, 1, 4 + i * 5, 6, 0);
    vline(picture.get(), 2 + i * 5, 3, 4, 1);
  }
  return picture;
}

// The pixels of a bitmap, to be compared.
std::vector<int> Pixels(const SkinBitmap& bitmap) {
  std::vector<int> pixels;
  for (int y = 0; y < bitmap.Height(); ++y)
    for (int x = 0; x < bitmap.Width(); ++x) pixels.push_back(bitmap.getpixel(x, y));
  return pixels;
}

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
  }

  void WritePicture(const char* name, BITMAP* picture) const {
    EXPECT_EQ(save_bitmap(dir.Path(name).c_str(), picture, nullptr), 0);
  }

  static SkinBitmap Blank() {
    SkinBitmap canvas{120, 48, kMemoryBitmap};
    canvas.clear_to_color(green);
    return canvas;
  }

  const std::string outlines = ReadFile(kOutlineFont);
  TempDir dir;
  Font font;
};

TEST_F(FontTest, ExtensionChoosesReaderAndDamagedFilesGiveBuiltInFont) {
  const std::string grx = GrxFont(), much(8000, 'x');
  WritePicture("GRID.TGA", Grid(60).get());
  WritePicture("nomarks.bmp", Grid(3, false).get());
  std::string letters = "small.fnt 0x20 0x20\n";
  for (int i = 500; i > 300; --i)
    letters += "- " + std::to_string(i) + ' ' + std::to_string(i) + '\n';
  // Where there is no content, the file is there already.
  const std::tuple<const char*, std::string, int, int, int> cases[] = {
      {"GRID.TGA", "", kNoError, 6, 4},
      {"small.fnt", much.substr(0, 2048), kNoError, 8, 8},
      {"large.fnt", much.substr(0, 4096), kNoError, 16, 8},
      {"grx.fnt", grx, kNoError, 7, 5},
      {"script.txt", "small.fnt 0x20 0x7F\nlarge.fnt 0x80 0xFF\n", kNoError, 16, 8},
      {"letters.txt", letters + "grx.fnt 0x42 0x42\n- 0x41 0x41\nGRID.TGA 0x100 0x110\n- 0x200\n",
       kNoError, 8, 11},
      {"nomarks.bmp", "", kLoadError, 8, 8},
      {"short.itf", much.substr(0, 2047), kLoadError, 8, 8},
      {"cut.fnt", grx.substr(0, grx.size() - 1), kLoadError, 8, 8},
      {"huge.fnt", Grx({0xFFFF, 0xFFFF, 0, 0xFFFE, true}), kLoadError, 8, 8},
      {"backward.fnt", Grx({8, 8, 200, 100, true}) + much, kLoadError, 8, 8},
      {"flat.fnt", Grx({8, 0, 0, 255, true}) + much, kLoadError, 8, 8},
      {"itself.TXT", "itself.TXT 0x20 0x7F\n", kLoadError, 8, 8},
      {"random.ttf", "no font", kLoadError, 8, 8}};
  for (const auto& [file, content, error, height, widthOfA] : cases) {
    if (!content.empty()) dir.Write(file, content);
    ASSERT_EQ(font.Load(kOutlineFont), kNoError);
    EXPECT_EQ(font.Load(dir.Path(file).c_str()), error) << file;
    EXPECT_EQ(font.TextHeight(), height) << file;
    EXPECT_EQ(font.TextLength("A"), widthOfA) << file;
    EXPECT_TRUE(!font.IsEngine() && !font.GetFixedSizes() && font.SetSize(12) == -1) << file;
    EXPECT_EQ(get_color_conversion(), PictureConversion());
  }
  EXPECT_EQ(font.Load(dir.Write("outlines", outlines).c_str()), kNoError);
  EXPECT_TRUE(font.IsScalable() && !font.IsFixed() && *font.GetFixedSizes() == -1);
  Font other;
  EXPECT_EQ(other.Load(dir.Write("outlines", kBitmapFont).c_str()), kNoError);
  EXPECT_TRUE(other.IsFixed() && font.IsScalable()) << "each has what was in the file";
  font.Reset();
  EXPECT_TRUE(!font.IsEngine() && font.TextLength("Zel") == 3 * kCell);
}

TEST_F(FontTest, MissingFileIsLookedUpAmongFontsOfEnvironment) {
  std::filesystem::create_directory(dir.Path("fonts"));
  dir.Write("fonts/raw.itf", std::string(2048, '\x18'));
  ASSERT_EQ(font.Load(kOutlineFont), kNoError);
  const std::string tooLong(5000, 'x');
  for (const char* missing : {"raw.itf", tooLong.c_str(), static_cast<const char*>(nullptr)})
    EXPECT_EQ(font.Load(missing), kFileNotFoundError);
  EXPECT_EQ(font.SetSize(20), 0) << "it is still the font that it was";
  setenv("windir", dir.Path().c_str(), 1);
  EXPECT_EQ(font.Load("/no/such/raw.itf"), kNoError);
  setenv("WINDIR", dir.Path("elsewhere").c_str(), 1);
  EXPECT_EQ(font.Load("raw.itf"), kFileNotFoundError);
}

TEST_F(FontTest, DamagedFilesNeverStopReaders) {
  InstallBitmapGuard();
  std::mt19937 random{3};
  SkinBitmap out = Blank();
  for (const char* name : {"sound.bmp", "sound.pcx", "sound.tga"})
    WritePicture(name, Grid(60).get());
  dir.Write("sound.fnt", GrxFont());
  dir.Write("sound.txt", "sound.fnt 0x41 0x42\nsound.tga 0x80 0xFF\n- 0x30\nsound.bmp 0x20\n");
  dir.Write("sound.ttf", outlines);
  for (const std::string extension : {"bmp", "pcx", "tga", "fnt", "txt", "ttf"}) {
    EXPECT_EQ(font.Load(dir.Path("sound." + extension).c_str()), kNoError) << extension;
    const std::string sound = dir.Read("sound." + extension);
    // The headers, or what lies behind the directory of an outline font's tables.
    const bool isOutline = extension == "ttf";
    const std::size_t from = isOutline ? 400 : 0, end = isOutline ? sound.size() : 80;
    int opened = 0;
    for (int round = 0; round < (isOutline ? 60 : 200); ++round) {
      std::string bytes = sound;
      for (int i = 0; i < (isOutline ? 400 : 3); ++i)
        bytes[from + random() % (std::min(end, sound.size()) - from)] = static_cast<char>(random());
      opened += !font.Load(dir.Write("damaged." + extension, bytes).c_str()).IsError();
      font.SetSize(round);
      font.Textout(out, "Ab & !", 2, 2, white, black, kAlignLeft);
    }
    EXPECT_GT(opened, isOutline ? 10 : 0) << extension;  // else the damage shows nothing
  }
}

int LeftEnd(int x, int width, int align) {
  return align == kAlignRight ? x - width : align == kAlignCentre ? x - width / 2 : x;
}

TEST_F(FontTest, TextIsAlignedWithItsShadowBelowAndSmoothWhereSettingAndFaceAllow) {
  for (int align : {kAlignLeft, kAlignRight, kAlignCentre})
    for (int round = 0; round < 4; ++round) {
      settings.antialiasing = round % 2;
      font.Reset();
      if (round >= 2) font.Load(kOutlineFont);
      font.SetSize(30);
      const int x = LeftEnd(60, font.TextLength("Z1"), align);
      SkinBitmap out = Blank(), expected = Blank(), none;
      font.Textout(none, "Z1", x, 5, white, blue, kAlignLeft);
      font.Textout(expected, "Z1", x, 5, white, -1, kAlignLeft);
      font.TextoutPrintf(out, 60, 5, white, -1, align, "%s", "Z1");
      EXPECT_EQ(Pixels(out), Pixels(expected)) << align;
      const std::vector<int> pixels = Pixels(out);
      EXPECT_EQ(std::set<int>(pixels.begin(), pixels.end()).size() > 2, round == 3);
      font.Textout(expected, "Z1", x + 1, 6, red, blue, kAlignLeft);
      font.Textout(expected, "Z1", x, 5, white, -1, kAlignLeft);
      font.TextoutShadowPrintf(out, {60, 5}, white, red, blue, align, "%c%d", 'Z', 1);
      EXPECT_EQ(Pixels(out), Pixels(expected)) << align;
    }
}

TEST_F(FontTest, HotkeyIsUnderlined) {
  // What is shown, and the underlined character or -1.
  const std::tuple<const char*, const char*, int> cases[] = {
      {"Save &As", "Save As", 5}, {"R&&D", "R&D", -1}, {"Quit&", "Quit", -1},
      {"&&&x", "&x", 1},          {"&a&b", "ab", 1},   {"é&é", "éé", 1}};
  for (const auto& [text, shown, underlined] : cases)
    for (int align : {kAlignLeft, kAlignRight, kAlignCentre}) {
      const int width = font.TextLength(shown), left = LeftEnd(60, width, align);
      SkinBitmap out = Blank(), expected = Blank();
      EXPECT_EQ(font.HotkeyTextout(out, text, 60, 6, white, red, blue, align), width);
      font.TextoutShadow(expected, shown, {left, 6}, white, red, blue, kAlignLeft);
      const int key = left + underlined * kCell;
      if (underlined >= 0) expected.hline(key, 6 + kCell, key + kCell - 1, white);
      EXPECT_EQ(Pixels(out), Pixels(expected)) << text;
    }
  const auto face = Open(outlines);
  SkinBitmap out = Blank(), expected = Blank();
  font.Set(face.get());
  font.Textout(expected, "e\u0301", 60, 6, white, -1, kAlignLeft);
  font.HotkeyTextout(out, "e&\u0301", 60, 6, white, -1, -1, kAlignLeft);
  EXPECT_EQ(Pixels(out), Pixels(expected)) << "a key without width";
  font.Reset();
  Bitmap none;
  std::string text;
  for (int i = 0; i < 600; ++i) text += "&&é";  // three bytes each without the marks
  EXPECT_EQ(font.HotkeyTextout(none, text.c_str(), 0, 0, white, -1, -1, kAlignLeft), 682 * kCell);
}

// By columns: bytes and columns taken. A word too long for any line is taken whole, each separator
// is a piece of its own, a line feed is taken where its word fits, and a damaged character swallows
// neither a separator nor the end.
TEST_F(FontTest, LinesEndBeforeSeparatorThatDoesNotFit) {
  const std::tuple<const char*, int, int, int> cases[] = {
      {"one two", 7, 7, 7},  {"one two", 6, 3, 3},  {"one two", 2, 3, 3},
      {"one  two", 4, 4, 4}, {"one\ntwo", 9, 4, 3}, {"one two\nx", 5, 3, 3},
      {"\ntwo", 9, 1, 0},    {"one\ttwo", 3, 3, 3}, {"one", -5, 3, 3},
      {"", 5, 0, 0},         {"ab\xF0", 9, 3, 3},   {"ab\xE2\x82 cd", 3, 4, 3},
      {"éé x", 3, 4, 2}};
  for (const auto& [text, columns, bytes, taken] : cases) {
    int width = -1;
    EXPECT_EQ(font.WrapCount(text, columns * kCell, &width), bytes) << text << columns;
    EXPECT_EQ(width, taken * kCell) << text << columns;
  }
}

TEST_F(FontTest, MultilineTextIsAlignedInItsColumn) {
  const char* text = "  one two\n\n \tthree\nfour ";
  const int width = 5 * kCell;
  for (int align : {kAlignLeft, kAlignRight, kAlignCentre}) {
    SkinBitmap out = Blank(), expected = Blank();
    font.MultilineTextout(out, text, white, red, -1, 30, 2, width, align);
    Point at{30 - LeftEnd(0, width, align), 2};
    for (const char* line : {"one", "two", "", "three", "four "}) {
      font.TextoutShadow(expected, line, at, white, red, -1, align);
      at.y += kCell;
    }
    EXPECT_EQ(Pixels(out), Pixels(expected)) << align;
  }
  EXPECT_EQ(font.MultilineHeight(text, width), 5 * kCell);
  EXPECT_EQ(font.MultilineHeight("  \t ", width), 0);
  EXPECT_EQ(font.MultilineHeight("\n\n\n", width), 3 * kCell);
}

TEST_F(FontTest, SizeIsTheLargestPixelSizeWhoseLineIsNotHigher) {
  const auto face = Open(outlines), pictures = Open(kBitmapFont);
  EXPECT_EQ(EngineTextHeight(*face), 8) << "the initial size";
  const FT_Size_Metrics& metrics = face->ftFace->size->metrics;
  for (int px = 9; px <= 60; ++px) {
    ASSERT_EQ(EngineSetSize(*face, px), 0) << px;
    EXPECT_EQ(EngineTextHeight(*face), px);
    EXPECT_EQ(face->ascent, metrics.ascender / 64);
    EXPECT_LE((metrics.ascender - metrics.descender) / 64, px);
    FT_Set_Pixel_Sizes(face->ftFace, 0, static_cast<FT_UInt>(face->pixelSize + 1));
    EXPECT_GT((metrics.ascender - metrics.descender) / 64, px);
  }
  EngineSetSize(*face, 20);
  for (int px : {0, -1, INT_MIN, 100000, 2000000000, INT_MAX}) {
    EXPECT_EQ(EngineSetSize(*face, px), -1) << px;
    EXPECT_EQ(EngineTextHeight(*face), 20);
    EXPECT_EQ(metrics.y_ppem, face->pixelSize);
  }
  EXPECT_EQ(EngineSetSize(*pictures, 7), -1);
  EXPECT_EQ(EngineTextHeight(*pictures), 6);
  EXPECT_EQ(pictures->fixedSizes, (std::vector<int>{6, -1}));
}

TEST_F(FontTest, PlacesGlyphsByOffsetsAdvancesAndSpacingOnTheirBackground) {
  for (const auto& [draw, print] : {std::pair{&EngineTextout, &EngineTextoutPrintf},
                                    {&EngineTextoutAA, &EngineTextoutAAPrintf}}) {
    const auto face = Open(kBitmapFont);
    const BitmapPtr out = Paint(Rows(6, "............"));
    EngineSetBackground(-1);
    draw(out.get(), *face, "AjA", 1, 0, red, kAlignLeft);
    EXPECT_EQ(Picture(out.get()), Rows({"..r......r..", ".r.r....r.r.", ".rrr.r..rrr.",
                                        ".r.r.r..r.r.", ".r.r.r..r.r.", "....r......."}));
    EngineSetSpacing(*face, 5000);
    EXPECT_EQ(face->spacing, 4096);
    EngineSetSpacing(*face, 2);
    EngineSetBackground(blue);
    clear_to_color(out.get(), magenta);
    draw(out.get(), *face, "", 5, 0, red, kAlignLeft);
    print(out.get(), *face, 4 + 3 + 2 * 2, 0, red, kAlignRight, "%c%s", 'A', "j");
    EXPECT_EQ(Picture(out.get()), Rows({"brbbbbbbbbb.", "rbrbbbbbbbb.", "rrrbbbrbbbb.",
                                        "rbrbbbrbbbb.", "rbrbbbrbbbb.", "bbbbbrbbbbb."}));
  }
}

TEST_F(FontTest, EveryCoverageBlendsLikeAllegroAndLeadsFromBackgroundToColour) {
  GlyphImage image{256, 1, 256, 0, 0, std::make_unique<std::uint8_t[]>(256)};
  std::iota(image.pixels.get(), image.pixels.get() + 256, std::uint8_t{0});
  for (int depth : {15, 16, 24, 32}) {
    UseDepth(depth);
    // All values of 5 and 6 bits, every fourth of 8 bits; some have more bits than a colour has.
    const auto colorOf = [depth](int i, int value) {
      const int more = depth == 15 ? 0x8000 : depth == 32 ? 0x5A000000 : 0;
      return makecol(value, i * 29 % 64 * 255 / 63, 255 - value) | (i % 2 ? more : 0);
    };
    SkinBitmap drawn{256, 1, kMemoryBitmap}, expected{256, 1, kMemoryBitmap};
    for (int i = 0; i < 64 * 64; ++i) {
      const int color = colorOf(i, i / 64 * 255 / 63), below = colorOf(i / 2, i % 64 * 255 / 63);
      drawn.clear_to_color(below);
      expected.clear_to_color(below);
      GlyphPainter{drawn.GetBitmap(), color, -1, true}.Paint(image, 0, 0);
      for (int k = 1; k < 256; ++k) {
        set_trans_blender(0, 0, 0, k);
        if (k < 255) drawing_mode(DRAW_MODE_TRANS, nullptr, 0, 0);
        expected.putpixel(k, 0, color);
        solid_mode();
      }
      ASSERT_EQ(Pixels(drawn), Pixels(expected)) << depth << ": " << color << " over " << below;
    }
    if (depth < 24) continue;  // where the colours are not exactly these
    GlyphPainter{drawn.GetBitmap(), {248, 8, 96}, {16, 200, 96}, true}.Paint(image, 0, 0);
    for (int k = 1; k < 256; ++k)  // a step is one more than the difference
      EXPECT_EQ(drawn.getpixel(k, 0),
                makecol((16 * 256 + k * 233) >> 8, (200 * 256 - k * 191) >> 8, 96));
  }
}

TEST_F(FontTest, LettersInTwoTonesAreMovedOntoTheGridAndSoAreTheirDistances) {
  const auto face = Open(outlines);
  font.Set(face.get());
  font.SetSize(13);
  for (int depth : {8, 16}) {
    UseDepth(depth);
    settings.antialiasing = depth == 8;  // which has no effect there
    for (char c = '!'; c <= '~'; ++c) {
      FT_Load_Char(face->ftFace, static_cast<FT_ULong>(c), FT_LOAD_TARGET_MONO);
      const int advance = static_cast<int>(face->ftFace->glyph->advance.x >> 6);
      const std::string letter(1, c), pair(2, c);
      EXPECT_EQ(font.TextLength(pair.c_str()), 2 * advance) << c;
      SkinBitmap out = Blank(), expected = Blank();
      font.Textout(out, pair.c_str(), 5, 3, 15, -1, kAlignLeft);
      for (int x : {5, 5 + advance}) font.Textout(expected, letter.c_str(), x, 3, 15, -1, 0);
      EXPECT_EQ(Pixels(out), Pixels(expected)) << c;
      if (c != 'n') continue;
      std::string row;
      for (int x = 5; x < 17; ++x) row += out.getpixel(x, 3 + face->ascent - 1) == 15 ? '#' : '.';
      EXPECT_EQ(row, ".#...#.#...#") << "whole stems";
    }
  }
}

TEST_F(FontTest, StaysWithinClipRectangle) {
  const Point places[] = {{5, 3},       {0, 48},      {0, -22},     {120, 0},
                          {0, INT_MAX}, {0, INT_MIN}, {INT_MAX, 0}, {INT_MIN, 0}};
  for (int depth : {8, 15, 16, 24, 32}) {
    UseDepth(depth);
    const auto face = Open(outlines);
    EngineSetSize(*face, 22);
    for (const auto draw : {EngineTextout, EngineTextoutAA})
      for (const Color background : {Color{}, Color{1, 2, 3}}) {
        SkinBitmap whole = Blank(), clipped = Blank(), expected = Blank();
        EngineSetBackground(background);
        draw(whole.GetBitmap(), *face, "Wait", 5, 3, 15, kAlignLeft);
        whole.blit(expected, 11, 9, 11, 9, 30, 10);
        clipped.set_clip_rect(11, 9, 40, 18);
        for (const auto& [x, y] : places)
          draw(clipped.GetBitmap(), *face, "Wait", x, y, 15, kAlignLeft);
        EXPECT_EQ(Pixels(clipped), Pixels(expected)) << depth;
      }
  }
}

TEST_F(FontTest, CharactersAreThoseOfTextFormatAndDamagedOnesEndWithText) {
  const auto face = Open(outlines);
  const int wide = EngineTextLength(*face, "\xC5\x81");  // U+0141
  EXPECT_EQ(EngineTextLength(*face, "A\xC5\x81"), EngineTextLength(*face, "A") + wide);
  for (const std::string_view damaged : {"A\xC3", "A\xE2\x82", "A\xF0", "A\xFF"}) {
    const auto text = std::make_unique<char[]>(damaged.size() + 1);  // no byte after the terminator
    damaged.copy(text.get(), damaged.size());
    EXPECT_EQ(EngineTextLength(*face, text.get()), EngineTextLength(*face, "A^"));
  }
  set_uformat(U_ASCII);
  EXPECT_NE(EngineTextLength(*face, "\xC5\x81"), wide);  // two characters
  EngineExit();
  EXPECT_FALSE(Open(outlines));
  EXPECT_TRUE(EngineInit());
  EXPECT_EQ(EngineTextLength(*face, "ZZ"), 2 * EngineTextLength(*face, "Z")) << "it outlived that";
}

}  // namespace
}  // namespace zel
