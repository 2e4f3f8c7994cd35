#include "toolkit/skin/builtin_look.h"

#include <cctype>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/allegro_fixture.h"

namespace zel {
namespace {

// Colours that stay apart in every depth. The shades are those that thirds divide evenly.
struct Look {
  Color colors[kSkinColorCount] = {
      {200, 0, 0},     // face
      {0, 120, 0},     // fontface
      {255, 255, 0},   // shad1
      {0, 0, 255},     // shad2
      {0, 200, 200},   // disable
      {60, 60, 60},    // select
      {0, 60, 120},    // deselect
      {130, 0, 60},    // focus
      {250, 130, 60},  // sunken
      {60, 190, 120},  // back
  };
  Color nearLight{170, 170, 85}, nearDark{85, 85, 170};

  Color OfLetter(char letter) const {
    switch (letter) {
      case 'f':
        return colors[kFace];
      case 't':
        return colors[kFontFace];
      case 'L':
        return colors[kShad1];
      case 'D':
        return colors[kShad2];
      case 'x':
        return colors[kDisable];
      case 's':
        return colors[kSelect];
      case 'e':
        return colors[kDeselect];
      case 'o':
        return colors[kFocusColor];
      case 'u':
        return colors[kSunken];
      case 'b':
        return colors[kBack];
      case 'l':
        return nearLight;
      case 'd':
        return nearDark;
      case 'k':
        return black;
      case '.':
        return magenta;
    }
    return Color{};
  }
  char ToLetter(int pixel) const {
    for (char letter : std::string{"ftLDxseoubldk."})
      if (OfLetter(letter) == pixel) return letter;
    return '?';
  }
};

// "l17 D" is 17 pixels of l and one of D.
std::string Unrolled(const std::string& runs) {
  std::string pixels;
  for (std::size_t i = 0; i < runs.size();) {
    const char letter = runs[i++];
    if (letter == ' ') continue;
    int count = 0;
    while (i < runs.size() && std::isdigit(static_cast<unsigned char>(runs[i])))
      count = count * 10 + (runs[i++] - '0');
    pixels.append(static_cast<std::size_t>(count ? count : 1), letter);
  }
  return pixels;
}

enum Direction { kRow, kColumn };

// One row or column of an element. A letter is a colour of Look.
struct Line {
  int id;
  Direction direction;
  int at;
  const char* pixels;
};

const Line kLines[] = {
    {BOX, kRow, 2, "f64"},
    {BOX, kRow, 3, "D63 f"},
    {BOX, kRow, 4, "D L61 D L"},
    {BOX, kRow, 62, "D63 L"},
    {BOX, kRow, 63, "f L63"},
    {BOX, kColumn, 0, "f3 D60 f"},
    {BOX_SHADDOW, kRow, 0, "l62 D f"},
    {BOX_SHADDOW, kRow, 31, "l L f59 d D k"},
    {BOX_SHADDOW, kRow, 63, "f k63"},
    {BOX_SHADDOW, kColumn, 63, "f k63"},
    {BUTTON, kRow, 0, "l17 D"},
    {BUTTON, kRow, 17, "D18"},
    {BUTTON, kRow, 18, "d17 L"},
    {BUTTON, kColumn, 9, "l L e14 d D  d D s14 l L  l L f14 d D  l L o14 d D"},
    {CHECKBOX, kRow, 3, "d D u9 l L  d D u t2 u3 t2 u l L"},
    {CHECKBOX, kRow, 6, "d D u9 l L  d D u3 t3 u3 l L"},
    {CHECKBOX, kRow, 10, "d D u9 l L  d D u9 l L"},
    {CHECKBOX, kColumn, 6, "d D u9 l L  d D s9 l L  d D f9 l L  d D o9 l L"},
    {CHECKBOX, kColumn, 19,
     "d D u3 t3 u3 l L  d D s3 t3 s3 l L  d D f3 x3 f3 l L  d D o3 t3 o3 l L"},
    {CLEAR_BACK, kRow, 71, "b72"},
    {CLEAR_BACK, kColumn, 71, "b72"},
    {COMBO_BUTTON, kRow, 9, ".4 t7 .7"},
    {COMBO_BUTTON, kRow, 12, ".7 t .10"},
    {COMBO_BUTTON, kColumn, 7, ".9 t4 .16 t4 .16 x4 .16 t4 .7"},
    {HSLIDER_BACK, kRow, 9, "d17 L"},
    {HSLIDER_BACK, kRow, 10, "d D15 l L"},
    {HSLIDER_BACK, kColumn, 9, "f9 d D l L f18 d D l L f18 d D l L f18 d D l L f9"},
    {HSLIDER_GRIP, kRow, 0, "l10 D"},
    {HSLIDER_GRIP, kColumn, 5, "l L e18 d D  d D s18 l L  l L f18 d D  l L o18 d D"},
    {ICONEXIT, kRow, 4, "l L f2 t2 f3 t2 f2 d D"},
    {ICONEXIT, kColumn, 7,
     "l L f4 t3 f3 d D  d D f4 t3 f3 l L  l L f4 x3 f3 d D  l L f4 t3 f3 d D"},
    {ICONMAX, kRow, 7, "l L f t f6 t f2 d D"},
    {ICONMAX, kColumn, 5,
     "l L f t2 f5 t f d D  d D f t2 f5 t f l L  l L f x2 f5 x f d D  l L f t2 f5 t f d D"},
    {ICONMIN, kRow, 9, "l L f t8 f2 d D"},
    {ICONMIN, kColumn, 5, "l L f7 t2 f d D  d D f7 t2 f l L  l L f7 x2 f d D  l L f7 t2 f d D"},
    {ICONRESTORE, kRow, 7, "l L f t f6 t f2 d D"},
    {ICONRESTORE, kColumn, 5,
     "l L f t2 f5 t f d D  d D f t2 f5 t f l L  l L f x2 f5 x f d D  l L f t2 f5 t f d D"},
    {LIST, kRow, 95, "f36"},
    {LIST, kColumn, 35, "u12 f12 u12 f12 s24 f24"},
    {MENU_BACK, kRow, 31, "l L f60 d D"},
    {MENU_BACK, kColumn, 31, "l L f60 d D"},
    {MENU_BUTTON, kColumn, 17, "e12 s12"},
    {MENU_ITEM, kColumn, 2, "f18 s12 f36 s12 f20 s12 f2"},
    {MENU_ITEM, kRow, 18, "f2 s44 f2"},
    {MENU_ITEM, kRow, 38, "f4 D40 f4"},
    {MENU_ITEM, kRow, 39, "f4 L40 f4"},
    {MENU_ITEM, kRow, 53, "f40 t f7"},
    {MENU_ITEM, kRow, 56, "f40 t4 f4"},
    {MENU_ITEM, kRow, 72, "f2 s38 u4 s2 f2"},
    {MENU_ITEM, kRow, 85, "f11 t f36"},
    {MENU_ITEM, kRow, 89, "f5 t5 f38"},
    {MENU_ITEM, kRow, 105, "f2 s3 u5 s36 f2"},
    {PANEL_GROOVE, kRow, 0, "L63 f"},
    {PANEL_GROOVE, kRow, 31, "L D f60 L D"},
    {PANEL_GROOVE, kRow, 63, "f D63"},
    {PANEL_GROOVE, kColumn, 31, "L D f60 L D"},
    {PANEL_RAISED, kRow, 31, "l L f60 d D"},
    {PANEL_RAISED, kColumn, 31, "l L f60 d D"},
    {PANEL_RIDGE, kRow, 0, "D63 f"},
    {PANEL_RIDGE, kRow, 31, "D L f60 D L"},
    {PANEL_RIDGE, kRow, 63, "f L63"},
    {PANEL_RIDGE, kColumn, 31, "D L f60 D L"},
    {PANEL_SUNKEN, kRow, 31, "d D u60 l L"},
    {PANEL_SUNKEN, kColumn, 31, "d D u60 l L"},
    {PROGRESSH, kRow, 0, "d11 L"},
    {PROGRESSH, kRow, 20, ".2 s9 ."},
    {PROGRESSH, kColumn, 5, "d D f14 l L .2 s14 .2"},
    {PROGRESSV, kRow, 5, "d D f14 l L .2 s15 ."},
    {PROGRESSV, kColumn, 20, ".2 s8 .2"},
    {RADIO, kRow, 6, "d D u9 l L  d D u2 t5 u2 l L"},
    {RADIO, kColumn, 6, "d D u9 l L  d D s9 l L  d D f9 l L  d D o9 l L"},
    {RADIO, kColumn, 19, "d D u2 t5 u2 l L  d D s2 t5 s2 l L  d D f2 x5 f2 l L  d D o2 t5 o2 l L"},
    {SCROLL_DOWN, kRow, 6, "l L e2 t7 e3 d D"},
    {SCROLL_DOWN, kRow, 22, "d D s3 t7 s2 l L"},
    {SCROLL_DOWN, kColumn, 7,
     "l L e4 t4 e4 d D  d D s4 t3 s5 l L  D2 f4 x4 f4 D2  l L o4 t4 o4 d D"},
    {SCROLL_HBACK, kRow, 63, "f18"},
    {SCROLL_HBACK, kColumn, 17, "f64"},
    {SCROLL_HGRIP, kRow, 0, "l17 D"},
    {SCROLL_HGRIP, kColumn, 9, "l L e12 d D  d D s12 l L  D2 f12 D2  l L s12 d D"},
    {SCROLL_HGRIPOVERLAY, kColumn, 15, ".64"},
    {SCROLL_LEFT, kRow, 4, "l L e7 t e4 d D"},
    {SCROLL_LEFT, kRow, 7, "l L e4 t4 e4 d D"},
    {SCROLL_LEFT, kRow, 23, "d D s5 t4 s3 l L"},
    {SCROLL_LEFT, kRow, 39, "D2 f4 x4 f4 D2"},
    {SCROLL_RIGHT, kRow, 4, "l L e4 t e7 d D"},
    {SCROLL_RIGHT, kRow, 7, "l L e4 t4 e4 d D"},
    {SCROLL_RIGHT, kRow, 55, "l L o4 t4 o4 d D"},
    {SCROLL_UP, kRow, 6, "l L e5 t e6 d D"},
    {SCROLL_UP, kRow, 9, "l L e2 t7 e3 d D"},
    {SCROLL_VBACK, kRow, 0, "f16"},
    {SCROLL_VBACK, kColumn, 15, "f64"},
    {SCROLL_VGRIP, kRow, 0, "l15 D"},
    {SCROLL_VGRIP, kColumn, 7, "l L e8 d D  d D s8 l L  D2 f8 D2  l L s8 d D"},
    {SCROLL_VGRIPOVERLAY, kColumn, 15, ".64"},
    {SEPARATORH, kRow, 0, "D12"},
    {SEPARATORH, kRow, 1, "L12"},
    {SEPARATORV, kColumn, 0, "D12"},
    {SEPARATORV, kColumn, 1, "L12"},
    {TAB_BUTTON, kColumn, 9, "l L f15 L  l L f16  l L f15 L  l L f15 L"},
    {TAB_BUTTON, kRow, 16, "l L f14 d D"},
    {TAB_BUTTON, kRow, 17, ". L16 ."},
    {TAB_BUTTON, kRow, 35, ". L f14 d ."},
    {TAB_BUTTON, kRow, 71, ". L16 ."},
    {TAB_WINDOW, kRow, 31, "l L f60 d D"},
    {TAB_WINDOW, kColumn, 31, "l L f60 d D"},
    {VSLIDER_BACK, kRow, 9, "f9 d D l L f18 d D l L f18 d D l L f18 d D l L f9"},
    {VSLIDER_BACK, kColumn, 9, "d17 L"},
    {VSLIDER_GRIP, kRow, 5, "l L e18 d D  d D s18 l L  l L f18 d D  l L o18 d D"},
    {VSLIDER_GRIP, kColumn, 5, "l L e7 d D"},
    {WINBOTTOM, kRow, 3, "D30"},
    {WINBOTTOM, kColumn, 15, "f2 d D f2 d D"},
    {WINDOW, kRow, 29, "f30"},
    {WINDOW, kColumn, 29, "f30"},
    {WINGRIP, kRow, 17, "s30"},
    {WINGRIP, kColumn, 29, "s18 D18"},
    {WINLEFT, kRow, 35, "l L f4 d D"},
    {WINLEFT, kColumn, 3, "l L f68 d D"},
    {WINRIGHT, kRow, 35, "l L f4 d D"},
    {WINRIGHT, kColumn, 3, "l L f68 d D"},
    {WINTEXT, kRow, 16, ".12"},
    {WINTEXT, kColumn, 11, ".17"},
    {WINTOP, kRow, 4, "l30"},
    {WINTOP, kColumn, 15, "l L f2 l L f2"},
};

class BuiltinLookTest : public AllegroFixture, public testing::WithParamInterface<int> {
 protected:
  BuiltinLookTest() : AllegroFixture{GetParam()} {}
};

TEST_P(BuiltinLookTest, EveryElementShowsItsFrames) {
  const Look look;
  bool seen[kElementCount] = {};
  for (const Line& line : kLines) {
    SkinBitmap element;
    DrawBuiltinElement(element, line.id, look.colors);
    const int length = line.direction == kRow ? element.Width() : element.Height();
    std::string pixels;
    for (int i = 0; i < length; ++i) {
      const int pixel =
          line.direction == kRow ? element.getpixel(i, line.at) : element.getpixel(line.at, i);
      pixels += look.ToLetter(pixel);
    }
    EXPECT_EQ(pixels, Unrolled(line.pixels))
        << kElementNames[line.id] << (line.direction == kRow ? " row " : " column ") << line.at;
    seen[line.id] = true;
  }
  for (int id = 0; id < kElementCount; ++id) EXPECT_TRUE(seen[id]) << kElementNames[id];
}

INSTANTIATE_TEST_SUITE_P(Depths, BuiltinLookTest, testing::Values(16, 32));

class BuiltinElementsTest : public AllegroFixture {};

TEST_F(BuiltinElementsTest, EdgesAreAsWideAsTheBevels) {
  const struct {
    int id;
    Size frame, tile;
  } cases[] = {
      {BOX, {64, 64}, {60, 48}},          {BUTTON, {18, 18}, {14, 14}},
      {CHECKBOX, {13, 13}, {13, 13}},     {COMBO_BUTTON, {18, 20}, {18, 20}},
      {HSLIDER_BACK, {18, 22}, {14, 18}}, {LIST, {36, 12}, {32, 8}},
      {PROGRESSH, {12, 18}, {8, 14}},     {SCROLL_VGRIP, {16, 12}, {12, 8}},
      {SEPARATORV, {2, 12}, {2, 8}},      {TAB_BUTTON, {18, 18}, {14, 14}},
      {WINTOP, {30, 8}, {10, 2}},         {MENU_BUTTON, {18, 12}, {18, 12}},
  };
  const Look look;
  for (const auto& c : cases) {
    SkinBitmap element;
    DrawBuiltinElement(element, c.id, look.colors);
    EXPECT_EQ(element.TileWidthOf(c.frame.w), c.tile.w) << kElementNames[c.id];
    EXPECT_EQ(element.TileHeightOf(c.frame.h), c.tile.h) << kElementNames[c.id];
  }
}

TEST_F(BuiltinElementsTest, TransparentPartsLetTheBackgroundThroughInEveryDepth) {
  for (int depth : {8, 15, 16, 24, 32}) {
    UseDepth(depth);
    const Look look;
    SkinBitmap element, canvas{18, 20, kMemoryBitmap};
    DrawBuiltinElement(element, COMBO_BUTTON, look.colors);
    canvas.clear_to_color(yellow);
    element.DrawAreaMasked(canvas, 0, 0, 0, 0, 18, 20, 1, 4);
    EXPECT_EQ(canvas.getpixel(0, 0), yellow) << depth;
    EXPECT_EQ(canvas.getpixel(7, 9), look.colors[kFontFace]) << depth;
  }
}

TEST_F(BuiltinElementsTest, NumbersThatAreNoElementChangeNothing) {
  SkinBitmap element{3, 3, kMemoryBitmap};
  for (int id : {-1, int{kElementCount}, 1000}) {
    DrawBuiltinElement(element, id, Look{}.colors);
    EXPECT_EQ(element.Width(), 3);
  }
}

}  // namespace
}  // namespace zel
