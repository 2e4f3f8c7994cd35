#include "toolkit/skin/skin.h"
#include "toolkit/base/zoom.h"

#include <algorithm>
#include <cstdio>
#include <tuple>

#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"
#include "tests/support/temp_files.h"
#include "toolkit/draw/engine_font.h"

namespace zel {
namespace {

// Datafiles; their pictures are green all over.
//
//   elements.dat       BUTTON with TCKX 5 and TCKY 6, LIST with TCKX 5 and an empty TCKY, BOX of 8
//   bits
//                      with TCKY "010", a MENU_BACK that is no picture, and a palette
//   palette.dat        the default palette in reverse order, but for the first colour
//   short_palette.dat  five bytes of one
//   cursors.dat        MOUSE_NORMAL, MOUSE_HOURGLASS with FCSX 3, FCSY 4 and FRMS 3, and MOUSE_MOVE
//                      with FCSX 3, FDUR 40 and FRMS 3, all 12 x 8 pixels
//   both.dat           BUTTON, and MOUSE_NORMAL of 4 x 4 pixels with FCSX 3
const std::string kSamples = "tests/toolkit/skin/samples/";

std::string Hex(Color color) {
  char text[8] = "-";
  if (color.IsSet())
    std::snprintf(text, sizeof text, "%02x%02x%02x", color.r(), color.g(), color.b());
  return text;
}

// Numbers in the order of every_key.cfg, which has values that count from 1, and the rows' height;
// colours; for each text set font, text colour and shadow by state; the heights of the fonts; the
// elements with size, tile size and a pixel; and the pointer shapes with width, hotspot, how many
// ticks their first frame stays, and the width, size, offset and colour of the shadow.
std::string ValuesOf(const Skin& s) {
  std::string text =
      Join(s.dottedRect, s.focus, s.wallpaperStyle, s.buttonDisplacement, s.buttonAnimationType,
           s.buttonAnimationLength, s.boxOffset.x, s.boxOffset.y, s.boxAlignment, s.windowTextPos.x,
           s.windowTextPos.y, s.windowExitPos.x, s.windowExitPos.y, s.windowMaxPos.x,
           s.windowMaxPos.y, s.windowMinPos.x, s.windowMinPos.y, s.windowAlignment,
           s.windowTextBack, s.windowAnimationType, s.windowAnimationLength, s.comboAnimationType,
           s.comboAnimationLength, s.menuHeight, s.menuDelay, s.menuAnimationType,
           s.menuAnimationLength, s.tooltipAnimationType, s.tooltipAnimationLength, s.listHeight);
  for (const Color color : s.colors) text += Hex(color) + ' ';
  for (const Color color : {s.boxBackColor, s.tooltipBackColor, s.tooltipBorderColor})
    text += Hex(color) + ' ';
  for (int set = 0; set < kTextSetCount; ++set)
    for (int state = 0; state < kDrawStates; ++state)
      text += (state == 0 ? '\n' : ' ') + std::to_string(s.fontIndex[set][state]) + ':' +
              Hex(s.fontColor[set][state]) + '/' + Hex(s.shadowColor[set][state]);
  text += '\n';
  for (int i = 0; i < Skin::kSkinFonts; ++i) text += Join(s.fonts[i]->TextHeight());
  for (int id = 0; id < kElementCount; ++id) {
    const SkinBitmap& element = *s.bitmaps[id];
    text += std::string{"\n"} + kElementNames[id] + ' ';
    text +=
        Join(element.Width(), element.Height(), element.GetTileWidth(), element.GetTileHeight()) +
        Hex(element.getpixel(1, 1));
  }
  for (int shape = 0; shape < kCursorCount; ++shape) {
    Cursor& cursor = *s.cursors[shape];
    const SkinBitmap* const first = cursor.GetFrame();
    text += std::string{"\n"} + kCursorNames[shape] + ' ';
    if (!first) continue;
    int ticks = 0;
    for (; ticks < 9 && cursor.GetFrame() == first; ++ticks) cursor.Update();
    const CursorShadow look = cursor.GetShadowLook();
    text += Join(first->Width(), cursor.GetHotspot().x, cursor.GetHotspot().y, ticks,
                 cursor.GetShadow()->Width(), look.size, look.offset.x, look.offset.y,
                 Hex(look.GetColor()));
  }
  return text + '\n';
}

// What the skin says of menus, in the order of the sample's keys.
std::string MenuValuesOf(const Skin& skin) {
  MenuLook m = skin.menu;
  std::string text;
  for (const Color* color : m.Colors()) text += Hex(*color) + ' ';
  return text +
         Join(m.iconX, m.textX, m.markX, m.fieldX, m.fieldY, m.fieldRadius, m.fieldBorderWidth,
              m.separatorHeight, m.wraps, m.icons, m.titleFont, m.titleHeight, m.titleX,
              m.titleAlignment, m.borderWidth, m.radius, m.paddingX, m.paddingY, m.hintX, m.hintY,
              m.picture, m.windowBorderWidth, m.countdownFont, m.leastContrast, m.hasGroupBorder,
              m.hasLabels) +
         Hex(skin.fontColor[kPlainText][kNormal]) + '\n';
}

struct SkinTest : AllegroFixture {
  SkinTest() : AllegroFixture{32} { EngineInit(); }

  // A skin file of this text beside the files that were written before.
  std::unique_ptr<Skin> Make(const std::string& text) const {
    return std::make_unique<Skin>(files.Write("skin.cfg", text).c_str());
  }
  std::unique_ptr<Skin> MakeWith(const std::string& data, const std::string& cursors,
                                 const std::string& text) const {
    for (const std::string& name : {data, cursors}) files.Write(name, ReadFile(kSamples + name));
    return Make("[Skin]\nmain_data=" + data + "\ncursors=" + cursors + '\n' + text);
  }

  TempDir files;
};

TEST_F(SkinTest, BuiltinLookComesWithoutAFile) {
  for (const char* name : {"default", ""}) {
    const Skin skin(name);
    EXPECT_TRUE(!skin.GetError().IsError() && !skin.skinFile && !skin.title);
    ExpectText("skin_default", ValuesOf(skin));
    EXPECT_EQ(Join(skin.bitmaps.size(), skin.cursors.size(), skin.fonts.size()), "1024 64 64 ");
    EXPECT_TRUE(skin.bitmaps[kElementCount]->IsEmpty() && !skin.cursors[kCursorCount]->GetFrame());
  }
}

TEST_F(SkinTest, AFileWithoutSensibleKeysHasDefaultsOfItsOwn) {
  RGB entry{40, 40, 40, 0};
  set_color(0, &entry);
  const auto skin = Make("[LIST]\nfont1=64\nfont2=-1\nf_col1=zebra\n[MENU]\nheight=2000000000\n");
  ExpectText("skin_of_a_file_without_keys", ValuesOf(*skin));
  EXPECT_STREQ(*skin->title, "");
  get_color(0, &entry);
  EXPECT_EQ(entry.r + entry.g + entry.b, 0);
  set_uformat(U_ASCII_CP);  // where the default of each key is a converted text
  EXPECT_EQ(Make("")->fonts[0]->TextHeight(), 8);
}

TEST_F(SkinTest, EveryValueIsReadFromItsKey) {
  files.Write("outline.ttf", ReadFile("data/skin/fonts/DejaVuSans.ttf"));
  files.Write("eastern.ttf", ReadFile("data/skin/fonts/DroidSansFallbackFull.ttf"));
  const auto skin = Make(ReadFile(kSamples + "every_key.cfg"));
  ExpectText("skin_of_every_key", ValuesOf(*skin));
  EXPECT_EQ(std::string(*skin->title), std::string(511, 'x'));
  const Font& font = *skin->fonts[4];
  EXPECT_GT(font.TextLength("\u4E2D"), font.TextLength("\uE000")) << "a box";
}

TEST_F(SkinTest, WhatItSaysOfMenusCountsUnlessItIsNonsense) {
  std::string seen = MenuValuesOf(Skin{"default"});
  for (const char* sample : {"menu_keys.cfg", "menu_nonsense.cfg", "menu_highest.cfg",
                             "menu_too_high.cfg", "menu_plain.cfg"})
    seen += MenuValuesOf(*Make(ReadFile(kSamples + sample)));
  SetZoom(2);
  ExpectText("skin_of_menus", seen + MenuValuesOf(*Make(ReadFile(kSamples + "menu_keys.cfg"))));
}

TEST_F(SkinTest, WithoutPicturesTheBuiltinOnesFollowTheHeightOfRowsWhichIsThatOfTheTextAtLeast) {
  files.Write("outline.ttf", ReadFile("data/skin/fonts/DejaVuSans.ttf"));
  const std::string font = "[FONT0]\nfile=outline.ttf\nsize=36\n[LIST]\nheight=";
  ExpectText("skin_of_large_print", ValuesOf(*Make(font + "44")));
  const std::string keys = "\n[WINDOW]\ntextY=3\n";
  const auto low = Make(font + "20" + keys), with = MakeWith("both.dat", "both.dat", font + "44");
  EXPECT_EQ(Join(low->listHeight, low->bitmaps[WINGRIP]->Height(), low->windowTextPos.y),
            "36 72 3 ");
  EXPECT_EQ(Join(with->listHeight, with->bitmaps[WINGRIP]->Height()), "44 36 ");
  std::string heights;
  for (const char* said : {"400", "401", "1", "0", "-1"})
    heights += Join(Make("[LIST]\nheight=" + std::string{said})->listHeight);
  EXPECT_EQ(heights, "400 0 8 0 0 ") << "in pixels, from the height of the text to 400";
}

TEST_F(SkinTest, TilesAndShapesAreTakenFromKeysOrElseFromPropertiesOrElseFromDefaults) {
  const char* text =
      "[TILING]\nBUTTON_TCKX=0\nBUTTON_TCKY=-1\nLIST_TCKX=3\nTAB_WINDOW_TCKX=9\n"
      "[CURSOR]\nMOUSE_MOVE_FCSX=6\nMOUSE_MOVE_FRMS=4\nMOUSE_HOURGLASS_FDUR=60\n"
      "[COLORS]\nface=1,1,1\n[MOUSE]\n";
  const std::pair<int, const char*> rows[] = {
      {15, "shadowColor=88,24,120\nshadowSize=64\nshadowOffsetX=-256\nshadowOffsetY=256"},
      {16, "shadowColor=-1\nshadowSize=65\nshadowOffsetX=-257"},
      {24, "shadowSize=-1\nshadowOffsetX=257\nshadowOffsetY=-257"},
      {32, "shadowSize = 0\nshadowColor = 1,2,3"}};
  for (const auto& [depth, shadow] : rows) {
    UseDepth(depth);
    const auto skin = MakeWith("elements.dat", "cursors.dat", std::string{text} + shadow);
    EXPECT_EQ(skin->GetError(), kNoError);
    ExpectText("skin_of_datafiles_" + std::to_string(depth), ValuesOf(*skin));
    skin->ResetControls();
    const Size tile = skin->bitmaps[BOX]->GetTileSize();
    skin->Reset();
    EXPECT_EQ(Join(tile.w, tile.h, skin->cursors[MOUSE_MOVE]->GetShadowLook().size), "-1 -1 2 ");
  }
  EXPECT_EQ(MakeWith("short_palette.dat", "short_palette.dat", text)->GetError(), kNoError);
}

TEST_F(SkinTest, APaletteOfADatafileLeavesTheLookOfWhatWasLoaded) {
  UseDepth(8);
  set_palette(black_palette);
  auto skin = MakeWith("palette.dat", "palette.dat", "");
  EXPECT_EQ(skin->bitmaps[CLEAR_BACK]->getpixel(5, 5), Color(180, 180, 180));
  set_palette(default_palette);
  skin = Make("[COLORS]\nface=0,255,0\n[MENU]\nheight=44\nf_col1=255,0,0\n");
  const auto look = [&skin] {
    const SkinBitmap& arrow = *skin->cursors[MOUSE_NORMAL]->GetFrame();
    return ValuesOf(*skin) + Hex(arrow.getpixel(0, 0)) +
           (arrow.getpixel(9, 0) == magenta ? "-" : "");
  };
  const std::string before = look();
  std::string palette = ReadFile(kSamples + "palette.dat");
  EXPECT_EQ(skin->LoadData(files.Write("good.dat", palette).c_str()), kNoError);
  EXPECT_EQ(look(), before);
  set_palette(black_palette);
  *(palette.end() - 3) = 64;
  EXPECT_EQ(skin->LoadData(files.Write("too_bright.dat", palette).c_str()), kNoError);
  RGB last;
  get_color(255, &last);
  EXPECT_EQ(Join(last.r, last.g, last.b), Join('\0', '\0', '\0'));
}

TEST_F(SkinTest, LoadingStopsAtTheFirstFileThatIsMissingOrUnreadable) {
  files.Write("garbage.dat", "this is no datafile");
  // The colour is read between the datafiles.
  for (const auto& [line, error, back] : {std::tuple{"main_data = none.dat", kSkinDataError, 180},
                                          {"main_data = garbage.dat", kLoadError, 180},
                                          {"cursors = none.dat", kFileNotFoundError, 1},
                                          {"cursors = garbage.dat", kLoadError, 1}}) {
    const auto skin = Make("[Skin]\ntitle=T\n" + std::string{line} + "\n[COLORS]\nback=1,1,1\n");
    EXPECT_EQ(skin->GetError(), error) << line;
    EXPECT_FALSE(skin->title);
    const std::string before = ValuesOf(*skin);
    for (const char* none : {"none.cfg", static_cast<const char*>(nullptr)})
      EXPECT_EQ(skin->Load(none), kSkinFileError);
    EXPECT_EQ(Join(ValuesOf(*skin) == before, skin->colors[kBack].r()), Join(true, back)) << line;
    for (const auto& [index, indexError] :
         {std::pair{64, kIndexError}, {-1, kIndexError}, {63, kFileNotFoundError}}) {
      EXPECT_EQ(skin->SetCursorBitmap("none", index, 1, 20), indexError) << index;
      EXPECT_EQ(skin->SetFontFile("none", index, 12), indexError) << index;
    }
  }
}

TEST_F(SkinTest, ReloadRepeatsTheLoadInTheNewDepthAndAnotherFileForgetsTheFirst) {
  const auto skin = MakeWith("both.dat", "both.dat",
                             "[COLORS]\nselect = 255,0,0\nbuiltin = 1\n[MENU]\nheight = 44\n");
  UseDepth(16);
  skin->Reload();
  ExpectText("skin_reloaded", ValuesOf(*skin));
  skin->Colorize(blue, 256);
  ExpectText("skin_colorized", ValuesOf(*skin));
  const std::string other = files.Write("other.cfg", "");
  EXPECT_EQ(skin->Load(other.c_str()), kNoError);
  EXPECT_EQ(*skin->skinFile, other);
  EXPECT_EQ(ValuesOf(*skin), ValuesOf(*Make("")));
  skin->Unload();
  EXPECT_TRUE(skin->bitmaps[BOX]->IsEmpty() && !skin->cursors[MOUSE_NORMAL]->GetFrame());
  const std::string colors = "[COLORS]\nface=1,1,90\nshad1=90,1,1\nshad2=1,90,1\nback=90,90,1\n";
  const auto plain = Make(colors), old = MakeWith("cursors.dat", "cursors.dat", colors),
             bare = MakeWith("cursors.dat", "cursors.dat", colors + "builtin=1\n");
  EXPECT_EQ(skin->Load(files.Path("skin.cfg").c_str()), kNoError);
  EXPECT_EQ(ValuesOf(*skin), ValuesOf(*bare)) << "what a datafile before brought counts no longer";
  int same = 0;  // of the first element, which the datafile does not bring
  for (int i = 0; i < 64; ++i) {
    const int wanted = plain->bitmaps[BOX]->getpixel(i, i);
    EXPECT_EQ(bare->bitmaps[BOX]->getpixel(i, i), wanted) << i;
    same += old->bitmaps[BOX]->getpixel(i, i) == wanted;
  }
  EXPECT_LT(same, 64);
}

TEST_F(SkinTest, AShapeAndAFontAreReplacedByThoseOfFilesAndAreZoomed) {
  SetZoom(2);
  Skin skin("default");
  const std::string shape = files.Path("shape.bmp");
  save_bitmap(shape.c_str(), Paint({"rrggbbb"}).get(), nullptr);
  EXPECT_EQ(skin.SetCursorBitmap(shape.c_str(), MOUSE_MOVE, 3, 150), kNoError);
  EXPECT_EQ(skin.SetFontFile("data/skin/fonts/DejaVuSans.ttf", 3, 14), kNoError);
  Cursor& cursor = *skin.cursors[MOUSE_MOVE];
  std::string shown;
  for (int tick = 0; tick < 10; ++tick, cursor.Update())
    shown += Picture(cursor.GetFrame()->GetBitmap()).back().back();
  EXPECT_EQ(Join(skin.fonts[3]->TextHeight(), cursor.GetFrame()->Width(), shown),
            "28 4 rrrrrrrrgg ");
}

TEST_F(SkinTest, EveryBuiltinElementLooksAsInTheReferencePicture) {
  const WorkingDir here;
  Skin skin("default");
  // No two alike, unlike the built-in ones.
  const Color colors[kSkinColorCount] = {{200, 0, 0},    {0, 120, 0},   {255, 255, 0}, {0, 0, 255},
                                         {0, 200, 200},  {60, 60, 60},  {0, 60, 120},  {130, 0, 60},
                                         {250, 130, 60}, {60, 190, 120}};
  std::copy(std::begin(colors), std::end(colors), skin.colors);
  skin.GenerateDefaultBitmaps();
  const auto expectSheet = [&skin](const char* name) {
    skin.DumpBitmaps();
    const SkinBitmap sheet{"log.bmp"};
    ExpectLook(name, sheet.GetBitmap(), {0, 0, sheet.Width(), sheet.Height()});
  };
  expectSheet("builtin_look");
  skin.Colorize({0, 60, 120}, 200);  // begins anew
  expectSheet("builtin_look_tinted");
  SetZoom(1.27);
  skin.Reload();
  expectSheet("builtin_look_zoomed");
  SetZoom(1);
  UseDepth(8);
  for (const int id : {-1, int{COMBO_BUTTON}, int{kElementCount}}) skin.GenerateDefaultBitmap(id);
  EXPECT_EQ(skin.bitmaps[COMBO_BUTTON]->getpixel(0, 0), MASK_COLOR_8) << "transparent";
}

// Each frame of an element is rounded for itself: of other frames there would be another size.
TEST_F(SkinTest, ElementsAreZoomedFrameByFrame) {
  SetZoom(1.27);
  ExpectText("skin_zoomed", ValuesOf(Skin{"default"}));
  const auto load = [this] {
    return ValuesOf(*MakeWith("elements.dat", "cursors.dat",
                              "[TILING]\nBUTTON_TCKX=1\n[CURSOR]\nMOUSE_MOVE_FCSX=2\n"));
  };
  const std::string small = load();  // and with pictures of twice the size
  for (const std::string name : {"elements", "cursors"})
    files.Write(name + "@2x.dat", ReadFile(kSamples + name + ".dat"));
  ExpectText("skin_of_datafiles_zoomed", small + load());
}

}  // namespace
}  // namespace zel
