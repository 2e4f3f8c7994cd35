#include "toolkit/skin/skin.h"

#include <filesystem>
#include <random>

#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"
#include "toolkit/skin/datafile.h"

namespace zel {
namespace {

// Builds a datafile in memory, as described under "Datafile formats" in Allegro's manual.
class DatafileBuilder {
 public:
  DatafileBuilder& Property(const char* id, const std::string& text) {
    properties_ += std::string{"prop"} + id + Number(text.size(), 4) + text;
    return *this;
  }
  // The properties given before are those of this object.
  DatafileBuilder& Object(const std::string& name, const char* type, const std::string& content) {
    Property("NAME", name);
    objects_ += properties_ + type + Number(content.size(), 4) + Number(content.size(), 4);
    objects_ += content;
    properties_.clear();
    ++count_;
    return *this;
  }
  // A 24-bit picture of one colour.
  DatafileBuilder& Picture(const std::string& name, int w, int h, const std::string& rgb) {
    std::string pixels;
    for (int i = 0; i < w * h; ++i) pixels += rgb;
    return Object(name, "BMP ", BitmapHeader(24, w, h) + pixels);
  }
  // A picture in the colours of a palette, all of them of this index.
  DatafileBuilder& PalettedPicture(const std::string& name, int w, int h, int index) {
    return Object(name, "BMP ",
                  BitmapHeader(8, w, h) +
                      std::string(static_cast<std::size_t>(w * h), static_cast<char>(index)));
  }

  static std::string BitmapHeader(int bits, int w, int h) {
    return Number(bits, 2) + Number(w, 2) + Number(h, 2);
  }
  static std::string Number(std::size_t value, int bytes) {
    std::string text;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
      text += static_cast<char>(value >> shift);
    return text;
  }
  std::string List() const { return Number(count_, 4) + objects_; }
  std::string File() const { return "slh.ALL." + List(); }

 private:
  std::string properties_;
  std::string objects_;
  std::size_t count_ = 0;
};

const std::string kRedPixel{"\xff\0\0", 3};
const std::string kGreenPixel{"\0\xff\0", 3};

class SkinTest : public AllegroFixture {
 protected:
  SkinTest() : AllegroFixture{32} { cursorShadow = CursorShadow{}; }
  ~SkinTest() override { cursorShadow = CursorShadow{}; }

  // A skin file of this text beside the files that were written before.
  std::unique_ptr<Skin> Make(const std::string& text) const {
    return std::make_unique<Skin>(files_.Write("skin.cfg", text).c_str());
  }
  std::unique_ptr<Skin> MakeWithData(const DatafileBuilder& data,
                                     const std::string& moreText = "") const {
    files_.Write("data.dat", data.File());
    return Make("[Skin]\nmain_data = data.dat\n" + moreText);
  }
  std::unique_ptr<Skin> MakeWithCursors(const DatafileBuilder& data,
                                        const std::string& moreText = "") const {
    files_.Write("cursors.dat", data.File());
    return Make("[Skin]\ncursors = cursors.dat\n" + moreText);
  }
  static int PixelOf(const Skin& skin, int id, int x, int y) {
    return skin.bitmaps[id]->getpixel(x, y);
  }

  TempDir files_;
};

TEST_F(SkinTest, BuiltinLookComesWithoutAFile) {
  for (const char* name : {"default", ""}) {
    Skin skin(name);
    EXPECT_FALSE(skin.GetError().IsError());
    EXPECT_EQ(skin.skinFile, nullptr);
    EXPECT_EQ(skin.dottedRect, 1);
    EXPECT_EQ(skin.focus, 0);
    EXPECT_EQ(skin.boxOffset, (Point{10, 1}));
    EXPECT_EQ(skin.windowMinPos, (Point{-56, 6}));
    EXPECT_EQ(skin.menuDelay, 300);
    EXPECT_EQ(skin.boxBackColor, Color(210, 210, 210));
    EXPECT_EQ(skin.tooltipBackColor, Color(255, 255, 192));
    for (int id = 0; id < kElementCount; ++id) EXPECT_FALSE(skin.bitmaps[id]->IsEmpty()) << id;
    EXPECT_TRUE(skin.bitmaps[kElementCount]->IsEmpty());
    EXPECT_EQ(skin.bitmaps.size(), 1024u);
    EXPECT_EQ(PixelOf(skin, CLEAR_BACK, 5, 5), Color(180, 180, 180));
    EXPECT_EQ(skin.cursors[MOUSE_ALTERNATIVE]->GetFrame(), nullptr);
    for (int i = MOUSE_CROSSHAIR; i < kCursorCount; ++i)
      EXPECT_EQ(skin.cursors[i]->GetFrame()->Width(), 12) << i;
  }
}

TEST_F(SkinTest, BuiltinTextColoursDependOnTheState) {
  Skin skin("default");
  const Color text{16, 16, 16}, disabled{128, 128, 128};
  for (const int set : {kBoxText, kListText, kPlainText}) {
    EXPECT_EQ(skin.fontColor[set][kNormal], text);
    EXPECT_EQ(skin.fontColor[set][kSelected], text);
    EXPECT_EQ(skin.fontColor[set][kFocused], text);
    EXPECT_EQ(skin.fontColor[set][kDisabled], disabled);
    EXPECT_EQ(skin.shadowColor[set][kNormal], -1);
    EXPECT_EQ(skin.shadowColor[set][kDisabled], white);
  }
  EXPECT_EQ(skin.fontColor[kHyperText][kNormal], Color(0, 0, 128));
  EXPECT_EQ(skin.fontColor[kHyperText][kSelected], Color(128, 0, 128));
  EXPECT_EQ(skin.fontColor[kHyperText][kFocused], Color(128, 0, 128));
  EXPECT_EQ(skin.fontColor[kHyperText][kDisabled], disabled);
}

TEST_F(SkinTest, MissingFileIsAnErrorAndChangesNothing) {
  Skin empty(files_.Path("none.cfg").c_str());
  EXPECT_EQ(empty.GetError(), Error(kSkinFileError));
  EXPECT_TRUE(empty.bitmaps[BOX]->IsEmpty());
  EXPECT_EQ(empty.fontColor[kBoxText][kNormal], black);
  EXPECT_EQ(empty.colors[kFace], -1);

  auto skin = Make("[Skin]\ntitle = Kept\n[MENU]\nheight = 33\n");
  EXPECT_EQ(skin->Load(files_.Path("none.cfg").c_str()), Error(kSkinFileError));
  EXPECT_EQ(skin->Load(nullptr), Error(kSkinFileError));
  EXPECT_EQ(skin->GetError(), Error(kSkinFileError));
  EXPECT_EQ(skin->menuHeight, 33);
  EXPECT_FALSE(skin->bitmaps[BOX]->IsEmpty());
}

TEST_F(SkinTest, ColoursAloneRecolourTheBuiltinLook) {
  const auto skin = Make("[COLORS]\nback = 1,2,3\nface = 40 50 60\nselect = 10,20\n");
  EXPECT_FALSE(skin->GetError().IsError());
  EXPECT_EQ(PixelOf(*skin, CLEAR_BACK, 5, 5), Color(1, 2, 3));
  EXPECT_EQ(PixelOf(*skin, WINDOW, 5, 5), Color(40, 50, 60));
  EXPECT_EQ(skin->colors[kSelect], Color(10, 20, 0));
  EXPECT_EQ(skin->colors[kShad2], Color(80, 80, 80));
  EXPECT_EQ(skin->cursors[MOUSE_NORMAL]->GetFrame()->Width(), 12);
  EXPECT_FALSE(skin->fonts[7]->IsEngine());
}

TEST_F(SkinTest, AFileWithoutKeysHasDefaultsOfItsOwn) {
  const auto skin = Make("# nothing\n");
  EXPECT_FALSE(skin->GetError().IsError());
  EXPECT_EQ(skin->dottedRect, 0);
  EXPECT_EQ(skin->focus, 1);
  EXPECT_EQ(skin->boxOffset, (Point{6, 1}));
  EXPECT_EQ(skin->boxBackColor, Color(222, 222, 222));
  EXPECT_EQ(skin->fontColor[kBoxText][kNormal], Color(32, 32, 32));
  EXPECT_EQ(skin->fontColor[kBoxText][kSelected], Color(16, 16, 16));  // boxes know no such state
  EXPECT_EQ(skin->fontColor[kListText][kNormal], black);
  EXPECT_EQ(skin->fontColor[kListText][kDisabled], gray);
  EXPECT_EQ(skin->shadowColor[kBoxText][kDisabled], white);
  EXPECT_EQ(skin->shadowColor[kListText][kDisabled], -1);
  EXPECT_EQ(skin->fontColor[kPlainText][kNormal], Color(16, 16, 16));
  EXPECT_STREQ(*skin->title, "");
}

TEST_F(SkinTest, EveryNumberIsReadFromItsKey) {
  const auto skin = Make(
      "[Skin]\ndottedRect=1\nfocus=2\n[WALLPAPER]\nstyle=3\n"
      "[BUTTON]\ndisplacement=4\nanimationType=5\nanimationLength=6\n"
      "[BOX]\noffX=7\noffY=8\nalignment=9\n"
      "[WINDOW]\ntextX=10\ntextY=11\nexitX=12\nexitY=13\nmaxX=14\nmaxY=15\nminX=16\nminY=17\n"
      "alignment=18\ntextBack=19\nanimationType=20\nanimationLength=21\n"
      "[COMBOBOX]\nanimationType=22\nanimationLength=23\n"
      "[MENU]\nheight=24\ndelay=25\nanimationType=26\nanimationLength=27\n"
      "[TOOLTIP]\nanimationType=28\nanimationLength=29\n");
  const std::vector<int> values = {skin->dottedRect,
                                   skin->focus,
                                   skin->wallpaperStyle,
                                   skin->buttonDisplacement,
                                   skin->buttonAnimationType,
                                   skin->buttonAnimationLength,
                                   skin->boxOffset.x,
                                   skin->boxOffset.y,
                                   skin->boxAlignment,
                                   skin->windowTextPos.x,
                                   skin->windowTextPos.y,
                                   skin->windowExitPos.x,
                                   skin->windowExitPos.y,
                                   skin->windowMaxPos.x,
                                   skin->windowMaxPos.y,
                                   skin->windowMinPos.x,
                                   skin->windowMinPos.y,
                                   skin->windowAlignment,
                                   skin->windowTextBack,
                                   skin->windowAnimationType,
                                   skin->windowAnimationLength,
                                   skin->comboAnimationType,
                                   skin->comboAnimationLength,
                                   skin->menuHeight,
                                   skin->menuDelay,
                                   skin->menuAnimationType,
                                   skin->menuAnimationLength,
                                   skin->tooltipAnimationType,
                                   skin->tooltipAnimationLength};
  for (std::size_t i = 0; i < values.size(); ++i) EXPECT_EQ(values[i], i + 1);
}

TEST_F(SkinTest, FontsAreLoadedFromBesideTheSkinFile) {
  files_.Write("tall.fnt", std::string(4096, '\x18'));  // 256 characters of 8 x 16 pixels
  const auto skin = Make("[FONT2]\nfile=tall.fnt\n[FONT3]\nfile=none.fnt\nsize=30\n");
  EXPECT_FALSE(skin->GetError().IsError());
  EXPECT_EQ(skin->fonts[2]->TextHeight(), 16);
  EXPECT_EQ(skin->fonts[3]->TextHeight(), 8);
}

TEST_F(SkinTest, TextSetsAreReadByStateAndSection) {
  const auto skin = Make(
      "[TEXT]\nfont1=1\nfont4=4\nf_col2=1,1,1\ns_col3=2,2,2\n"
      "[BOX]\nfont1=5\nf_col2=3,3,3\ns_col1=4,4,4\ns_col2=-1\n");
  EXPECT_EQ(skin->fontIndex[kEditText][kNormal], 1);
  EXPECT_EQ(skin->fontIndex[kEditText][kFocused], 4);
  EXPECT_EQ(skin->fontColor[kEditText][kSelected], Color(1, 1, 1));
  EXPECT_EQ(skin->shadowColor[kEditText][kDisabled], Color(2, 2, 2));
  EXPECT_EQ(skin->fontIndex[kBoxText][kNormal], 5);
  EXPECT_EQ(skin->fontColor[kBoxText][kDisabled], Color(3, 3, 3));
  EXPECT_EQ(skin->shadowColor[kBoxText][kNormal], Color(4, 4, 4));
  EXPECT_EQ(skin->shadowColor[kBoxText][kDisabled], -1);
  EXPECT_EQ(skin->fontIndex[kTabText][kNormal], 0);
}

TEST_F(SkinTest, SenselessNumbersGiveTheDefaults) {
  const auto skin = Make(
      "[LIST]\nfont1=64\nfont2=-1\nfont3=2000000000\nf_col1=zebra\n[MENU]\nheight=2000000000\n"
      "delay=-2000000000\n[FONT0]\nsize=-7\nfile=\n");
  for (int state = 0; state < kDrawStates; ++state) EXPECT_EQ(skin->fontIndex[kListText][state], 0);
  EXPECT_EQ(skin->fontColor[kListText][kNormal], black);
  EXPECT_EQ(skin->menuHeight, 16);
  EXPECT_EQ(skin->menuDelay, 300);
}

TEST_F(SkinTest, TitleIsCutTo511Bytes) {
  EXPECT_EQ(std::string(*Make("[Skin]\ntitle = " + std::string(600, 'x') + "\n")->title),
            std::string(511, 'x'));
}

TEST_F(SkinTest, PicturesComeFromTheDatafileBesideTheSkinFile) {
  const auto skin =
      MakeWithData(DatafileBuilder().Picture("BUTTON", 12, 8, kRedPixel), "[COLORS]\nface=1,1,1\n");
  EXPECT_FALSE(skin->GetError().IsError());
  EXPECT_EQ(skin->bitmaps[BUTTON]->Width(), 12);
  EXPECT_EQ(skin->bitmaps[BUTTON]->Height(), 8);
  EXPECT_EQ(PixelOf(*skin, BUTTON, 11, 7), red);
  EXPECT_EQ(skin->bitmaps[BUTTON]->GetTileSize(), (Size{-1, -1}));
  // What the datafile does not hold stays as it was drawn, in the built-in colours.
  EXPECT_EQ(PixelOf(*skin, WINDOW, 5, 5), Color(210, 210, 210));
  EXPECT_EQ(skin->colors[kFace], Color(1, 1, 1));
}

TEST_F(SkinTest, PicturesTakeTheDepthOfTheMode) {
  for (const int depth : {15, 16, 24}) {
    UseDepth(depth);
    const auto skin = MakeWithData(DatafileBuilder().Picture("BUTTON", 2, 2, kGreenPixel));
    EXPECT_EQ(bitmap_color_depth(skin->bitmaps[BUTTON]->GetBitmap()), depth);
    EXPECT_EQ(PixelOf(*skin, BUTTON, 1, 1), green) << depth;
  }
}

TEST_F(SkinTest, TileSizesComeFromTheSkinFileOrElseFromTheProperties) {
  DatafileBuilder data;
  data.Property("TCKX", "5").Property("TCKY", "6").Picture("BUTTON", 12, 12, kRedPixel);
  data.Property("TCKX", "5").Property("TCKY", "").Picture("LIST", 12, 12, kRedPixel);
  data.Property("TCKX", "7").Property("TCKY", "010").Picture("BOX", 12, 12, kRedPixel);
  const auto skin = MakeWithData(
      data, "[TILING]\nBUTTON_TCKX=0\nBUTTON_TCKY=-1\nLIST_TCKX=3\nTAB_WINDOW_TCKX=9\n");
  EXPECT_EQ(skin->bitmaps[BUTTON]->GetTileSize(), (Size{0, 6}));
  EXPECT_EQ(skin->bitmaps[LIST]->GetTileSize(), (Size{3, -1}));
  EXPECT_EQ(skin->bitmaps[BOX]->GetTileSize(), (Size{7, 10}));
  EXPECT_EQ(skin->bitmaps[TAB_WINDOW]->GetTileSize(), (Size{60, 60}));  // not in the datafile
}

TEST_F(SkinTest, PalettedPicturesAreConvertedWithTheirOwnPalette) {
  // A palette object holds Allegro's RGB structures: components 0..63 and a filler.
  std::string colors(256 * 4, '\0');
  colors[4 * 7 + 1] = 63;
  DatafileBuilder data;
  data.PalettedPicture("BUTTON", 4, 4, 7).Object("XTRA_PALETTE", "PAL ", colors);
  const auto skin = MakeWithData(data);
  EXPECT_EQ(PixelOf(*skin, BUTTON, 1, 1), green);
}

TEST_F(SkinTest, LoadingLeavesPaletteEntry0Black) {
  const RGB light{40, 40, 40, 0};
  set_color(0, &light);
  Make("");
  RGB entry{1, 1, 1, 0};
  get_color(0, &entry);
  EXPECT_EQ(entry.r + entry.g + entry.b, 0);
}

TEST_F(SkinTest, CursorsTakeKeysBeforePropertiesBeforeDefaults) {
  DatafileBuilder data;
  data.Picture("MOUSE_NORMAL", 12, 8, kRedPixel);
  data.Property("FCSX", "3").Property("FCSY", "4").Property("FRMS", "3").Property("FDUR", "100");
  data.Picture("MOUSE_HOURGLASS", 12, 8, kRedPixel);
  data.Property("FCSX", "3").Property("FRMS", "2");
  data.Picture("MOUSE_MOVE", 12, 8, kRedPixel);
  const auto skin =
      MakeWithCursors(data, "[CURSOR]\nMOUSE_MOVE_FCSX=6\nMOUSE_MOVE_FRMS=4\nMOUSE_MOVE_FDUR=10\n");
  EXPECT_FALSE(skin->GetError().IsError());
  EXPECT_EQ(skin->cursors[MOUSE_NORMAL]->GetFrame()->Width(), 12);
  EXPECT_EQ(skin->cursors[MOUSE_NORMAL]->GetHotspot(), (Point{0, 0}));
  EXPECT_EQ(skin->cursors[MOUSE_HOURGLASS]->GetFrame()->Width(), 4);
  EXPECT_EQ(skin->cursors[MOUSE_HOURGLASS]->GetHotspot(), (Point{3, 4}));
  EXPECT_EQ(skin->cursors[MOUSE_MOVE]->GetFrame()->Width(), 3);
  EXPECT_EQ(skin->cursors[MOUSE_MOVE]->GetHotspot(), (Point{6, 0}));
  EXPECT_EQ(skin->cursors[MOUSE_UNAVAILABLE]->GetFrame()->Height(), 21);  // the built-in arrow
}

TEST_F(SkinTest, ShadowValuesAreThereBeforeTheCursorsAreMade) {
  const auto skin = MakeWithCursors(DatafileBuilder().Picture("MOUSE_NORMAL", 4, 4, kRedPixel),
                                    "[MOUSE]\nshadowSize = 5\nshadowColor = 1,2,3\n");
  EXPECT_EQ(skin->cursors[MOUSE_NORMAL]->GetShadow()->Width(), 14);
  EXPECT_EQ(Color(skin->cursors[MOUSE_NORMAL]->GetShadow()->getpixel(7, 7)).b(), 3);
}

TEST_F(SkinTest, MissingAndUnreadableDatafilesHaveErrorsOfTheirOwn) {
  files_.Write("garbage.dat", "this is no datafile");
  EXPECT_EQ(Make("[Skin]\nmain_data = none.dat\n")->GetError(), Error(kSkinDataError));
  EXPECT_EQ(Make("[Skin]\nmain_data = garbage.dat\n")->GetError(), Error(kLoadError));
  EXPECT_EQ(Make("[Skin]\ncursors = none.dat\n")->GetError(), Error(kFileNotFoundError));
  EXPECT_EQ(Make("[Skin]\ncursors = garbage.dat\n")->GetError(), Error(kLoadError));
  EXPECT_EQ(Make("")->LoadCursors(nullptr), Error(kFileNotFoundError));

  // Loading stops there, with what was loaded before.
  const auto skin = Make("[Skin]\ncursors = none.dat\ntitle = T\n[COLORS]\nback = 1,2,3\n");
  EXPECT_EQ(PixelOf(*skin, CLEAR_BACK, 5, 5), Color(1, 2, 3));
  EXPECT_EQ(skin->title, nullptr);
  EXPECT_EQ(Make("[Skin]\nmain_data = none.dat\n[COLORS]\nback = 1,2,3\n")->colors[kBack],
            Color(180, 180, 180));
}

TEST_F(SkinTest, ReloadRepeatsTheLoadInTheNewDepth) {
  DatafileBuilder data;
  data.Picture("BUTTON", 3, 3, kGreenPixel);
  auto fromFile = MakeWithData(data, "[COLORS]\nselect = 255,0,0\n");
  Skin builtin("default");
  const Cursor* arrow = builtin.cursors[MOUSE_NORMAL].get();
  UseDepth(16);
  fromFile->Reload();
  builtin.Reload();
  EXPECT_EQ(PixelOf(*fromFile, BUTTON, 1, 1), green);
  EXPECT_EQ(fromFile->colors[kSelect], red);
  EXPECT_EQ(bitmap_color_depth(builtin.bitmaps[BOX]->GetBitmap()), 16);
  EXPECT_EQ(builtin.colors[kShad1], white);
  EXPECT_EQ(builtin.cursors[MOUSE_NORMAL].get(), arrow);
  EXPECT_EQ(bitmap_color_depth(builtin.cursors[MOUSE_NORMAL]->GetFrame()->GetBitmap()), 16);
}

TEST_F(SkinTest, LoadingAnotherFileForgetsTheFirst) {
  DatafileBuilder cursors;
  cursors.Property("FCSX", "3").Picture("MOUSE_NORMAL", 4, 4, kRedPixel);
  auto skin = MakeWithCursors(cursors, "[MENU]\nheight = 44\n");
  const std::string other = files_.Write("other.cfg", "[BUTTON]\ndisplacement = 7\n");
  EXPECT_FALSE(skin->Load(other.c_str()).IsError());
  EXPECT_EQ(*skin->skinFile, other);
  EXPECT_EQ(skin->menuHeight, 16);
  EXPECT_EQ(skin->buttonDisplacement, 7);
  EXPECT_EQ(skin->cursors[MOUSE_NORMAL]->GetFrame()->Width(), 12);
  EXPECT_EQ(skin->cursors[MOUSE_NORMAL]->GetHotspot(), (Point{0, 0}));
}

TEST_F(SkinTest, UnloadEmptiesEverythingButKeepsTheHolders) {
  Skin skin("default");
  const SkinBitmap* box = skin.bitmaps[BOX].get();
  skin.Unload();
  EXPECT_EQ(skin.bitmaps[BOX].get(), box);
  EXPECT_TRUE(box->IsEmpty());
  EXPECT_EQ(skin.cursors[MOUSE_NORMAL]->GetFrame(), nullptr);
}

TEST_F(SkinTest, ColorizeTintsElementsAndColoursButNotTheTransparentPixels) {
  Skin skin("default");
  const Color tint{0, 0, 255};
  Color expected{180, 180, 180};
  expected.Colorize(tint, 128);
  skin.Colorize(tint, 128);
  EXPECT_EQ(skin.colors[kBack], expected);
  EXPECT_EQ(PixelOf(skin, CLEAR_BACK, 5, 5), expected);
  EXPECT_EQ(PixelOf(skin, WINTEXT, 5, 5), magenta);
  skin.Colorize(tint, 0);
  EXPECT_EQ(PixelOf(skin, CLEAR_BACK, 5, 5), Color(180, 180, 180));
}

TEST_F(SkinTest, CursorAndFontSlotsAreCheckedBeforeTheirFiles) {
  Skin skin("default");
  for (const int index : {64, -1}) {
    EXPECT_EQ(skin.SetCursorBitmap("none.bmp", index, 1, 20), Error(kIndexError));
    EXPECT_EQ(skin.SetFontFile("none.ttf", index, 12), Error(kIndexError));
  }
  EXPECT_EQ(skin.SetCursorBitmap(files_.Path("none.bmp").c_str(), 3, 1, 20),
            Error(kFileNotFoundError));
  EXPECT_EQ(skin.SetCursorBitmap(files_.Write("bad.bmp", "BMxx").c_str(), 3, 1, 20),
            Error(kLoadError));

  const std::string picture = files_.Path("shape.bmp");
  skin.bitmaps[CLEAR_BACK]->Save(picture.c_str());
  EXPECT_EQ(skin.SetCursorBitmap(picture.c_str(), 63, 2, 20), Error(kNoError));
  EXPECT_EQ(skin.cursors[63]->GetFrame()->Width(), 36);
}

TEST_F(SkinTest, DumpLaysTheElementsOutOnePixelApart) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(files_.Path());
  Skin skin("default");
  skin.DumpBitmaps();
  const SkinBitmap sheet("log.bmp");
  std::filesystem::current_path(before);
  ASSERT_EQ(sheet.Width(), 320);
  ASSERT_EQ(sheet.Height(), 480);
  EXPECT_EQ(sheet.getpixel(2, 30), PixelOf(skin, BOX, 2, 30));
  EXPECT_EQ(sheet.getpixel(64, 30), yellow);
  EXPECT_EQ(sheet.getpixel(65, 0), PixelOf(skin, BOX_SHADDOW, 0, 0));
  EXPECT_EQ(sheet.getpixel(319, 479), yellow);
}

TEST_F(SkinTest, DatafilesThatLieAboutThemselvesAreRefused) {
  const auto isSound = [this](const std::string& content) {
    return IsSoundDatafile(files_.Write("data.dat", content).c_str());
  };
  const auto withObject = [](const char* type, const std::string& content) {
    return DatafileBuilder().Object("X", type, content).File();
  };
  const auto header = DatafileBuilder::BitmapHeader;
  const std::string pixels(12, 'x');

  const std::string good = DatafileBuilder().Picture("BOX", 4, 4, kRedPixel).File();
  EXPECT_TRUE(isSound(good));
  EXPECT_TRUE(isSound(DatafileBuilder().File()));
  EXPECT_TRUE(isSound(withObject("info", "any")));
  EXPECT_TRUE(isSound(withObject("BMP ", header(24, 2, 2) + pixels)));
  EXPECT_TRUE(isSound(withObject("FILE", DatafileBuilder().Object("Y", "DATA", "z").List())));
  for (std::size_t length = 0; length < good.size(); ++length)
    EXPECT_FALSE(isSound(good.substr(0, length))) << length;

  EXPECT_FALSE(isSound(withObject("BMP ", header(24, 2, 3) + pixels)));
  EXPECT_FALSE(isSound(withObject("BMP ", header(24, 0, 2) + pixels)));
  EXPECT_FALSE(isSound(withObject("BMP ", header(12, 2, 2) + pixels)));
  EXPECT_FALSE(isSound(withObject("BMP ", "x")));
  EXPECT_FALSE(isSound(withObject("FILE", std::string{"\0\0\0\1", 4})));
  for (const char* type : {"RLE ", "CMP ", "XCMP", "FONT", "SAMP", "MIDI"})
    EXPECT_FALSE(isSound(withObject(type, std::string(64, '\x7f')))) << type;
  EXPECT_FALSE(isSound("slh.ALL." + DatafileBuilder::Number(0xFFFFFFFF, 4)));
  EXPECT_FALSE(isSound("slh.ALL." + DatafileBuilder::Number(1, 4) + "propNAME" +
                       DatafileBuilder::Number(0xFFFFFFFF, 4)));
}

TEST_F(SkinTest, ObjectsOfTheWrongKindAreLeftOut) {
  DatafileBuilder data;
  data.Object("XTRA_PALETTE", "PAL ", "short").Object("BOX", "DATA", "no picture");
  const auto skin = MakeWithData(data);
  EXPECT_FALSE(skin->GetError().IsError());
  EXPECT_EQ(skin->bitmaps[BOX]->Width(), 64);
}

// What a damaged file gives does not matter, only that it ends with a skin or an error.
TEST_F(SkinTest, DamagedFilesNeverHarm) {
  std::mt19937 random{4711};
  const auto damage = [&random](std::string content) {
    for (int i = 0; i < 4; ++i) content[random() % content.size()] = static_cast<char>(random());
    return content;
  };
  DatafileBuilder data;
  data.Property("TCKX", "5").Picture("BUTTON", 6, 6, kRedPixel);
  data.Property("FRMS", "3").Property("FDUR", "50").Picture("MOUSE_NORMAL", 9, 3, kGreenPixel);
  const std::string skinText =
      "[Skin]\nmain_data = data.dat\ncursors = data.dat\n[CURSOR]\nMOUSE_NORMAL_FCSX = 2\n"
      "[LIST]\nfont1 = 3\nf_col1 = 1,2,3\n[MOUSE]\nshadowSize = 3\n[FONT1]\nsize = 12\n";
  int loaded = 0;
  for (int round = 0; round < 300; ++round) {
    files_.Write("data.dat", damage(data.File()));
    const auto skin = Make(round % 2 ? skinText : damage(skinText));
    if (!skin->GetError().IsError()) ++loaded;
    ASSERT_FALSE(skin->bitmaps[BUTTON]->IsEmpty());
    ASSERT_NE(skin->cursors[MOUSE_NORMAL]->GetFrame(), nullptr);
    skin->cursors[MOUSE_NORMAL]->Update();
  }
  EXPECT_GT(loaded, 0);
}

}  // namespace
}  // namespace zel
