#include "toolkit/skin/font.h"

#include <cstdlib>
#include <memory>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/allegro_fixture.h"
#include "tests/support/picture.h"
#include "tests/support/temp_files.h"
#include "toolkit/core/bitmap_guard.h"
#include "toolkit/core/settings.h"
#include "toolkit/skin/engine_font.h"

namespace zel {
namespace {

constexpr char kOutlineFont[] = "data/skin/fonts/DejaVuSans.ttf";
constexpr int kCell = 8;  // width and height of the built-in font's characters

// Sets a variable of the environment, and takes it away again.
class Variable {
 public:
  Variable(const char* name, const std::string& value) : name_{name} {
    setenv(name_, value.c_str(), 1);
  }
  ~Variable() { unsetenv(name_); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  const char* name_;
};

void PutWord(std::string& bytes, int value) {
  bytes += static_cast<char>(value & 255);
  bytes += static_cast<char>(value >> 8 & 255);
}

std::string GrxHeader(int w, int h, int first, int last, bool isFixed) {
  std::string bytes = "\x14\x02\x59\x19";
  bytes.append(4, '\0');
  for (int word : {w, h, first, last, isFixed ? 1 : 0}) PutWord(bytes, word);
  return bytes.append(38, '\0');
}

// The characters A and B, 5 and 11 pixels wide, 7 high.
std::string GrxFont() {
  std::string bytes = GrxHeader(0, 7, 'A', 'B', false);
  PutWord(bytes, 5);
  PutWord(bytes, 11);
  return bytes.append(7 + 2 * 7, '\x80');
}

// A picture of `cells` cells of 4 x 6 pixels, the first of which is the space.
BitmapPtr Grid(int cells, bool hasMarks = true, int extraColor = 1) {
  BitmapPtr picture{create_bitmap_ex(8, 1 + cells * 5, 8)};
  clear_to_color(picture.get(), hasMarks ? 255 : 0);
  for (int i = 0; i < cells; ++i) {
    rectfill(picture.get(), 1 + i * 5, 1, 4 + i * 5, 6, 0);
    putpixel(picture.get(), 2 + i * 5, 3, 1);
    putpixel(picture.get(), 2 + i * 5, 4, extraColor);
  }
  return picture;
}

class FontTest : public AllegroFixture {
 protected:
  FontTest() {
    EXPECT_TRUE(EngineInit());
    unsetenv("WINDIR");
    unsetenv("windir");
  }

  std::string WritePicture(const std::string& name, BITMAP* picture) const {
    PALETTE palette{};
    for (int i = 0; i < 256; ++i)
      palette[i].r = palette[i].g = palette[i].b = static_cast<unsigned char>(i / 4);
    EXPECT_EQ(save_bitmap(dir.Path(name).c_str(), picture, palette), 0);
    return dir.Path(name);
  }

  TempDir dir;
};

bool IsBuiltIn(const Font& font) {
  return !font.IsEngine() && font.TextHeight() == kCell && font.TextLength("Zel") == 3 * kCell &&
         !font.GetFixedSizes();
}

BITMAP* Row(const BitmapPtr& bitmap) {
  clear_to_color(bitmap.get(), bitmap_mask_color(bitmap.get()));
  return bitmap.get();
}

BitmapPtr Canvas() {
  BitmapPtr canvas{create_bitmap(120, 48)};
  Row(canvas);
  return canvas;
}

TEST_F(FontTest, FreshAndReleasedFontsAreBuiltInOne) {
  Font font;
  EXPECT_TRUE(IsBuiltIn(font));
  EXPECT_EQ(font.SetSize(12), -1);
  ASSERT_EQ(font.Load(kOutlineFont), kNoError);
  EXPECT_TRUE(font.IsEngine());
  font.Reset();
  EXPECT_TRUE(IsBuiltIn(font));
}

TEST_F(FontTest, MissingFileLeavesFontAsItIs) {
  Font font;
  EXPECT_EQ(font.Load("none"), kFileNotFoundError);
  EXPECT_EQ(font.Load(nullptr), kFileNotFoundError);
  EXPECT_EQ(font.Load(std::string(5000, 'x').c_str()), kFileNotFoundError);
  EXPECT_TRUE(IsBuiltIn(font));
  ASSERT_EQ(font.Load(kOutlineFont), kNoError);
  font.SetSize(20);
  EXPECT_EQ(font.Load("none"), kFileNotFoundError);
  EXPECT_EQ(font.TextHeight(), 20);
}

TEST_F(FontTest, MissingFileIsLookedUpAmongFontsOfEnvironment) {
  std::filesystem::create_directory(dir.Path("fonts"));
  dir.Write("fonts/raw.itf", std::string(2048, '\x18'));
  Font font;
  {
    const Variable directory{"windir", dir.Path()};
    EXPECT_EQ(font.Load("raw.itf"), kNoError);
    EXPECT_EQ(font.Load("/no/such/raw.itf"), kNoError);
    EXPECT_EQ(font.Load("other.itf"), kFileNotFoundError);
    const Variable first{"WINDIR", dir.Path("elsewhere")};
    EXPECT_EQ(font.Load("raw.itf"), kFileNotFoundError);
  }
  EXPECT_EQ(font.Load("raw.itf"), kFileNotFoundError);
}

TEST_F(FontTest, ExtensionChoosesReader) {
  const BitmapPtr grid = Grid(60);
  WritePicture("grid.bmp", grid.get());
  WritePicture("grid.pcx", grid.get());
  WritePicture("grid.tga", grid.get());
  dir.Write("UPPER.ITF", std::string(2048, '\x18'));
  dir.Write("small.fnt", std::string(2048, '\x18'));
  dir.Write("large.fnt", std::string(4096, '\x18'));
  dir.Write("grx.fnt", GrxFont());
  dir.Write("script.txt", "small.fnt 0x20 0x7F\nlarge.fnt 0x80 0xFF\n");
  dir.Write("outlines", ReadFile(kOutlineFont));
  const struct {
    const char* file;
    int height, widthOfA;
  } cases[] = {
      {"grid.bmp", 6, 4},  {"grid.pcx", 6, 4},   {"grid.tga", 6, 4}, {"UPPER.ITF", 8, 8},
      {"small.fnt", 8, 8}, {"large.fnt", 16, 8}, {"grx.fnt", 7, 5},  {"script.txt", 16, 8},
  };
  Font font;
  for (const auto& c : cases) {
    EXPECT_EQ(font.Load(dir.Path(c.file).c_str()), kNoError) << c.file;
    EXPECT_FALSE(font.IsEngine()) << c.file;
    EXPECT_EQ(font.TextHeight(), c.height) << c.file;
    EXPECT_EQ(font.TextLength("A"), c.widthOfA) << c.file;
    EXPECT_EQ(get_color_conversion(), kPictureConversion);
  }
  EXPECT_EQ(font.Load(dir.Path("outlines").c_str()), kNoError);
  EXPECT_TRUE(font.IsScalable());
  EXPECT_FALSE(font.IsFixed());
  EXPECT_EQ(*font.GetFixedSizes(), -1);
}

TEST_F(FontTest, RawFontsHoldARowOfPixelsInAByte) {
  std::string bytes(2048, '\0');
  bytes.replace('A' * 8, 3, "\x81\xF0\x01");
  Font font;
  ASSERT_EQ(font.Load(dir.Write("raw.itf", bytes).c_str()), kNoError);
  const BitmapPtr out = Paint(Rows(4, "........."));
  Bitmap target{out.get()};
  font.Textout(target, "A", 0, 0, makecol(255, 0, 0), -1, kAlignLeft);
  EXPECT_EQ(Picture(out.get()), Rows({"r......r.",  //
                                      "rrrr.....",  //
                                      ".......r.",  //
                                      "........."}));
}

TEST_F(FontTest, GridsOfSeveralColoursKeepThem) {
  Font font;
  ASSERT_EQ(font.Load(WritePicture("mono.bmp", Grid(40, true, 1).get()).c_str()), kNoError);
  const Color red{255, 0, 0};
  BitmapPtr out = Canvas();
  Bitmap target{out.get()};
  font.Textout(target, "!", 0, 0, red, -1, kAlignLeft);
  EXPECT_EQ(getpixel(out.get(), 1, 2), red);
  EXPECT_EQ(getpixel(out.get(), 1, 3), red);

  PALETTE palette{};
  palette[1].r = palette[2].g = 63;
  set_palette(palette);
  ASSERT_EQ(font.Load(WritePicture("color.bmp", Grid(40, true, 2).get()).c_str()), kNoError);
  font.Textout(target, "!", 0, 0, -1, -1, kAlignLeft);
  EXPECT_EQ(getpixel(out.get(), 1, 2), makecol(255, 0, 0));
  EXPECT_EQ(getpixel(out.get(), 1, 3), makecol(0, 255, 0));
}

TEST_F(FontTest, UnreadableFilesGiveBuiltInFont) {
  const BitmapPtr trueColor{create_bitmap_ex(24, 20, 20)};
  clear_to_color(trueColor.get(), makecol24(255, 255, 0));
  WritePicture("truecolor.bmp", trueColor.get());
  WritePicture("nomarks.bmp", Grid(3, false).get());
  const BitmapPtr allMarks{create_bitmap_ex(8, 9, 9)};
  clear_to_color(allMarks.get(), 255);
  WritePicture("allmarks.bmp", allMarks.get());
  dir.Write("text.bmp", "no picture");
  dir.Write("short.itf", std::string(2047, 'x'));
  dir.Write("empty.fnt", "");
  dir.Write("short.fnt", std::string(2000, 'x'));
  dir.Write("between.fnt", std::string(3000, 'x'));
  dir.Write("header.fnt", GrxHeader(8, 8, 0, 255, true).substr(0, 20));
  dir.Write("cut.fnt", GrxFont().substr(0, GrxFont().size() - 1));
  dir.Write("huge.fnt", GrxHeader(0xFFFF, 0xFFFF, 0, 0xFFFE, true));
  dir.Write("backward.fnt", GrxHeader(8, 8, 200, 100, true) + std::string(8000, 'x'));
  dir.Write("flat.fnt", GrxHeader(8, 0, 0, 255, true) + std::string(8000, 'x'));
  dir.Write("empty.txt", "");
  dir.Write("missing.txt", "nowhere.fnt 0x20 0x7F\n");
  dir.Write("wrong.txt", "short.fnt 0x20\nshort.fnt\n\n");
  dir.Write("itself.txt", "itself.TXT 0x20 0x7F\nitself.txt 0x20 0x7F\n");
  dir.Write("random.ttf", "no font");
  dir.Write("empty.ttf", "");
  std::filesystem::create_symlink("itself.txt", dir.Path("itself.TXT"));

  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(dir.Path())) {
    Font font;
    ASSERT_EQ(font.Load(kOutlineFont), kNoError);
    EXPECT_EQ(font.Load(entry.path().c_str()), kLoadError) << entry.path();
    EXPECT_TRUE(IsBuiltIn(font)) << entry.path();
    ++files;
  }
  EXPECT_EQ(files, 20);
}

TEST_F(FontTest, RandomBytesNeverStopReaders) {
  InstallBitmapGuard();
  std::mt19937 random{3};
  const BitmapPtr out = Canvas();
  Bitmap target{out.get()};
  for (const char* extension : {"bmp", "pcx", "tga"})
    WritePicture(std::string{"sound."} + extension, Grid(60).get());
  dir.Write("sound.fnt", GrxFont());
  dir.Write("sound.txt", "sound.fnt 0x41 0x42\nsound.tga 0x80 0xFF\n- 0x30\nsound.bmp 0x20\n");
  for (const char* extension : {"bmp", "pcx", "tga", "fnt", "txt"}) {
    const std::string sound = dir.Read(std::string{"sound."} + extension);
    for (int round = 0; round < 200; ++round) {
      std::string bytes = sound;
      for (int i = 0; i < 3; ++i)
        bytes[random() % std::min<std::size_t>(bytes.size(), 80)] = static_cast<char>(random());
      const std::string path = dir.Write(std::string{"damaged."} + extension, bytes);
      Font font;
      font.Load(round == 0 ? dir.Path(std::string{"sound."} + extension).c_str() : path.c_str());
      EXPECT_TRUE(round > 0 || !IsBuiltIn(font)) << extension;
      font.Textout(target, "Ab !", 0, 0, white, black, kAlignLeft);
    }
  }
}

TEST_F(FontTest, BorrowedFacesOutliveFont) {
  EXPECT_EQ(dir.Write("raw.itf", std::string(2048, '\x18')), dir.Path("raw.itf"));
  FONT* const raw = load_bios_font(dir.Path("raw.itf").c_str(), nullptr, nullptr);
  const std::string bytes = ReadFile(kOutlineFont);
  const auto outlines =
      EngineLoad(std::make_shared<std::vector<std::uint8_t>>(bytes.begin(), bytes.end()));
  ASSERT_NE(outlines, nullptr);
  {
    Font font;
    font.Set(raw);
    EXPECT_FALSE(font.IsEngine());
    font.Set(outlines.get());
    EXPECT_TRUE(font.IsScalable());
    EXPECT_EQ(font.SetSize(24), 0);
    font.Set(raw);
  }
  EXPECT_EQ(text_height(raw), 8);
  EXPECT_EQ(EngineTextHeight(*outlines), 24);
  destroy_font(raw);
}

TEST_F(FontTest, AlignmentAndBackgroundOfLibraryFonts) {
  Font font;
  const BitmapPtr left = Canvas(), right = Canvas(), centre = Canvas(), expected = Canvas();
  Bitmap leftTarget{left.get()}, rightTarget{right.get()}, centreTarget{centre.get()}, none;
  font.Textout(leftTarget, "Zel", 40, 5, white, blue, kAlignLeft);
  font.Textout(rightTarget, "Zel", 40 + 3 * kCell, 5, white, blue, kAlignRight);
  font.Textout(centreTarget, "Zel", 40 + 3 * kCell / 2, 5, white, blue, kAlignCentre);
  font.Textout(none, "Zel", 0, 0, white, blue, kAlignLeft);
  textout_ex(expected.get(), ::font, "Zel", 40, 5, white, blue);
  for (const BitmapPtr* drawn : {&left, &right, &centre})
    EXPECT_EQ(Picture(drawn->get()), Picture(expected.get()));
}

TEST_F(FontTest, SmoothOnlyWhereSettingAndFaceAllow) {
  Font font;
  ASSERT_EQ(font.Load(kOutlineFont), kNoError);
  font.SetSize(30);
  for (bool antialiasing : {true, false}) {
    settings.antialiasing = antialiasing;
    const BitmapPtr out = Canvas();
    Bitmap target{out.get()};
    font.Textout(target, "Zel", 2, 2, makecol(0, 255, 0), -1, kAlignLeft);
    std::string letters;
    for (const std::string& row : Picture(out.get())) letters += row;
    EXPECT_NE(letters.find('g'), std::string::npos);
    EXPECT_EQ(letters.find('?') != std::string::npos, antialiasing);
  }
}

TEST_F(FontTest, ShadowLiesBelowAndTakesBackground) {
  Font font;
  const BitmapPtr out = Canvas(), expected = Canvas(), printed = Canvas();
  Bitmap target{out.get()}, printTarget{printed.get()};
  font.TextoutShadow(target, "a1", {10, 5}, white, red, blue, kAlignLeft);
  textout_ex(expected.get(), ::font, "a1", 11, 6, red, blue);
  textout_ex(expected.get(), ::font, "a1", 10, 5, white, -1);
  font.TextoutShadowPrintf(printTarget, {10, 5}, white, red, blue, kAlignLeft, "%c%d", 'a', 1);
  EXPECT_EQ(Picture(out.get()), Picture(expected.get()));
  EXPECT_EQ(Picture(printed.get()), Picture(expected.get()));

  font.TextoutShadow(target, "a1", {10, 5}, white, -1, blue, kAlignLeft);
  textout_ex(expected.get(), ::font, "a1", 10, 5, white, blue);
  font.TextoutPrintf(printTarget, 10, 5, white, blue, kAlignLeft, "%s", "a1");
  EXPECT_EQ(Picture(out.get()), Picture(expected.get()));
  EXPECT_EQ(Picture(printed.get()), Picture(expected.get()));
}

TEST_F(FontTest, PrintedTextIsCutAtItsBuffer) {
  Font font;
  BitmapPtr out{create_bitmap(1, 1)};
  Bitmap target{out.get()};
  font.TextoutPrintf(target, 0, 0, white, -1, kAlignLeft, "%s%s", std::string(3000, 'x').c_str(),
                     "y");
}

TEST_F(FontTest, HotkeyIsUnderlined) {
  const struct {
    const char *text, *shown;
    int underlined;  // character, or -1
  } cases[] = {
      {"Save &As", "Save As", 5}, {"R&&D", "R&D", -1},
      {"&Open", "Open", 0},       {"Quit&", "Quit", -1},
      {"&&&x", "&x", 1},          {"&a&b", "ab", 1},
      {"plain", "plain", -1},     {"\xC3\xA9&\xC3\xA9", "\xC3\xA9\xC3\xA9", 1},
  };
  Font font;
  for (const auto& c : cases) {
    const int width = font.TextLength(c.shown);
    const BitmapPtr out = Canvas(), expected = Canvas();
    Bitmap target{out.get()};
    EXPECT_EQ(font.HotkeyTextout(target, c.text, 100, 6, white, red, blue, kAlignRight), width);
    font.TextoutShadow(*std::make_unique<Bitmap>(expected.get()), c.shown, {100 - width, 6}, white,
                       red, blue, kAlignLeft);
    const int left = 100 - width + c.underlined * kCell;
    if (c.underlined >= 0) hline(expected.get(), left, 6 + kCell, left + kCell - 1, white);
    EXPECT_EQ(Picture(out.get()), Picture(expected.get())) << c.text;
  }
}

TEST_F(FontTest, HotkeyTextMeasuresWithoutTargetAndCentresByHalf) {
  Font font;
  Bitmap none;
  EXPECT_EQ(font.HotkeyTextout(none, "R&&&D", 0, 0, white, -1, -1, kAlignLeft), 3 * kCell);
  const BitmapPtr out = Canvas(), expected = Canvas();
  Bitmap target{out.get()};
  font.HotkeyTextout(target, "abc", 60, 6, white, -1, -1, kAlignCentre);
  textout_ex(expected.get(), ::font, "abc", 60 - 3 * kCell / 2, 6, white, -1);
  EXPECT_EQ(Picture(out.get()), Picture(expected.get()));
}

TEST_F(FontTest, HotkeyTextIsCutAtAWholeCharacter) {
  Font font;
  Bitmap none;
  std::string text;
  for (int i = 0; i < 600; ++i) text += "&&\xC3\xA9";  // three bytes each without the marks
  EXPECT_EQ(font.HotkeyTextout(none, text.c_str(), 0, 0, white, -1, -1, kAlignLeft),
            2 * 341 * kCell);
  text = std::string(1022, 'x') + "\xC3\xA9";
  EXPECT_EQ(font.HotkeyTextout(none, text.c_str(), 0, 0, white, -1, -1, kAlignLeft), 1022 * kCell);
}

TEST_F(FontTest, LinesEndBeforeSeparatorThatDoesNotFit) {
  const struct {
    const char* text;
    int columns, bytes, taken;
  } cases[] = {
      {"one two", 7, 7, 7},             // all
      {"one two", 6, 3, 3},             // not half a word
      {"one two", 2, 3, 3},             // a word too long for any line
      {"one  two", 4, 4, 4},            // each separator is a piece of its own
      {"one\ntwo", 9, 4, 3},            // a line feed is taken
      {"one two\nx", 5, 3, 3},          // but not where its word does not fit
      {"one two\n", 7, 8, 7},           //
      {"\ntwo", 9, 1, 0},               //
      {"one\ttwo", 3, 3, 3},            //
      {"one", 0, 3, 3},                 //
      {"one", -5, 3, 3},                //
      {"", 5, 0, 0},                    //
      {"\xC3\xA9\xC3\xA9 x", 3, 4, 2},  // characters, not bytes
      {"\xC3\xA9\xC3\xA9 x", 4, 6, 4},  //
      {"ab\xE2\x82 cd", 3, 4, 3},       // a damaged character does not swallow the separator
      {"ab\xF0", 9, 3, 3},              // nor the end
  };
  Font font;
  for (const auto& c : cases) {
    int width = -1;
    EXPECT_EQ(font.WrapCount(c.text, c.columns * kCell, &width), c.bytes) << c.text << c.columns;
    EXPECT_EQ(width, c.taken * kCell) << c.text << c.columns;
  }
}

TEST_F(FontTest, MultilineTextIsAlignedInItsColumn) {
  Font font;
  const char* text = "  one two\n\n \tthree\nfour ";
  const Rows lines{"one", "two", "", "three", "four "};
  const int width = 5 * kCell;
  for (int align : {kAlignLeft, kAlignRight, kAlignCentre}) {
    const BitmapPtr out = Canvas(), expected = Canvas();
    Bitmap target{out.get()}, expectedTarget{expected.get()};
    font.MultilineTextout(target, text, white, red, -1, 30, 2, width, align);
    const int anchor = align == kAlignLeft    ? 30
                       : align == kAlignRight ? 30 + width
                                              : 30 + width / 2;
    for (std::size_t i = 0; i < lines.size(); ++i)
      font.TextoutShadow(expectedTarget, lines[i].c_str(),
                         {anchor, 2 + static_cast<int>(i) * kCell}, white, red, -1, align);
    EXPECT_EQ(Picture(out.get()), Picture(expected.get())) << align;
  }
  EXPECT_EQ(font.MultilineHeight(text, width), 5 * kCell);
  EXPECT_EQ(font.MultilineHeight("", width), 0);
  EXPECT_EQ(font.MultilineHeight("  \t ", width), 0);
  EXPECT_EQ(font.MultilineHeight("\n\n\n", width), 3 * kCell);
}

}  // namespace
}  // namespace zel
