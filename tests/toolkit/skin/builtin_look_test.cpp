#include "toolkit/skin/builtin_look.h"

#include <sstream>
#include <string>

#include "tests/support/allegro_fixture.h"

namespace zel {
namespace {

// Colours that stay apart in every depth, as letters: f face, t fontface, L shad1, D shad2,
// x disable, s select, e deselect, o focus, u sunken, b back; k black and '.' transparent. Thirds
// divide the shades evenly into L, l, d, D.
struct Look {
  Color colors[kSkinColorCount] = {
      {200, 0, 0},  {0, 120, 0},  {255, 255, 0}, {0, 0, 255},    {0, 200, 200},
      {60, 60, 60}, {0, 60, 120}, {130, 0, 60},  {250, 130, 60}, {60, 190, 120},
  };

  char ToLetter(int pixel) const {
    const Color more[] = {{170, 170, 85}, {85, 85, 170}, black, magenta};
    for (int i = 0; i < kSkinColorCount + 4; ++i)
      if (pixel == (i < 4 ? more[i] : colors[i - 4])) return "ldk.ftLDxseoub"[i];
    return '?';
  }
  // "l17D" is 17 pixels of l and one of D.
  std::string RowOrColumn(const SkinBitmap& element, bool isRow, int at) const {
    const int length = isRow ? element.Width() : element.Height();
    const auto letter = [&](int i) {
      return ToLetter(isRow ? element.getpixel(i, at) : element.getpixel(at, i));
    };
    std::string runs;
    for (int start = 0, end = 1; start < length; start = end++) {
      while (end < length && letter(end) == letter(start)) ++end;
      runs += letter(start) + (end - start > 1 ? std::to_string(end - start) : "");
    }
    return runs;
  }
};

// The size and the tile of every element, then some of its rows ("=") and columns ("|").
constexpr char kElements[] = R"(
BOX 64x64,60x48 2=f64 3=D63f 4=DL61DL 62=D63L 63=fL63 0|f3D60f
BOX_SHADDOW 64x64,58x58 0=l62Df 31=lLf59dDk 63=fk63 63|fk63
BUTTON 18x72,14x14 0=l17D 17=D18 18=d17L 9|lLe14dDdDs14lLlLf14dDlLo14dD
CHECKBOX 26x52,13x13 3=dDu9lLdDut2u3t2ulL 5=dDu9lLdDu2t5u2lL 6=dDu9lLdDu3t3u3lL
  6|dDu9lLdDs9lLdDf9lLdDo9lL 19|dDu3t3u3lLdDs3t3s3lLdDf3x3f3lLdDo3t3o3lL
CLEAR_BACK 72x72,68x68 71=b72 71|b72
COMBO_BUTTON 18x80,18x20 8=.18 9=.4t7.7 10=.5t5.8 11=.6t3.9 12=.7t.10 7|.9t4.16t4.16x4.16t4.7
HSLIDER_BACK 18x88,14x18 9=d17L 10=dD15lL 9|f9dDlLf18dDlLf18dDlLf18dDlLf9
HSLIDER_GRIP 11x88,11x22 0=l10D 5|lLe18dDdDs18lLlLf18dDlLo18dD
ICONEXIT 15x56,15x14 4=lLf2t2f3t2f2dD 7|lLf4t3f3dDdDf4t3f3lLlLf4x3f3dDlLf4t3f3dD
ICONMAX 15x56,15x14 7=lLftf6tf2dD 5|lLft2f5tfdDdDft2f5tflLlLfx2f5xfdDlLft2f5tfdD
ICONMIN 15x56,15x14 9=lLft8f2dD 5|lLf7t2fdDdDf7t2flLlLf7x2fdDlLf7t2fdD
ICONRESTORE 15x56,15x14 7=lLftf6tf2dD 5|lLft2f5tfdDdDft2f5tflLlLfx2f5xfdDlLft2f5tfdD
LIST 36x96,32x8 95=f36 35|u12f12u12f12s24f24  MENU_BACK 64x64,60x60 31=lLf60dD 31|lLf60dD
MENU_BUTTON 18x24,18x12 23=s18 17|e12s12
MENU_ITEM 48x112,16x16 2|f18s12f36s12f20s12f2 18=f2s44f2 38=f4D40f4 39=f4L40f4 53=f40tf7 56=f40t4f4
  72=f2s38u4s2f2 85=f11tf36 86=f10t2f36 88=f5t2ft3f37 89=f5t5f38 91=f7tf40 105=f2s3u5s36f2
PANEL_GROOVE 64x64,60x60 0=L63f 31=LDf60LD 63=fD63 31|LDf60LD
PANEL_RAISED 64x64,60x60 31=lLf60dD 31|lLf60dD
PANEL_RIDGE 64x64,60x60 0=D63f 31=DLf60DL 63=fL63 31|DLf60DL
PANEL_SUNKEN 64x64,60x60 31=dDu60lL 31|dDu60lL
PROGRESSH 12x36,8x14 0=d11L 20=.2s9. 5|dDf14lL.2s14.2
PROGRESSV 36x12,14x8 5=dDf14lL.2s15. 20|.2s8.2
RADIO 26x52,13x13 0=f4d5f8d5f4 2=f2dDu5Duf4dDu5Duf2 6=dDu9lLdDu2t5u2lL 10=f2ulu5lLf4ulu5lLf2
  6|dDu9lLdDs9lLdDf9lLdDo9lL 19|dDu2t5u2lLdDs2t5s2lLdDf2x5f2lLdDo2t5o2lL
SCROLL_DOWN 16x64,16x16 6=lLe2t7e3dD 22=dDs3t7s2lL 7|lLe4t4e4dDdDs4t3s5lLD2f4x4f4D2lLo4t4o4dD
SCROLL_HBACK 18x64,14x12 63=f18 17|f64
SCROLL_HGRIP 18x64,14x12 0=l17D 9|lLe12dDdDs12lLD2f12D2lLs12dD
SCROLL_HGRIPOVERLAY 16x64,12x12 63=.16 15|.64
SCROLL_LEFT 16x64,16x16 4=lLe7te4dD 7=lLe4t4e4dD 10=lLe7te4dD 23=dDs5t4s3lL 39=D2f4x4f4D2
SCROLL_RIGHT 16x64,16x16 4=lLe4te7dD 7=lLe4t4e4dD 10=lLe4te7dD 55=lLo4t4o4dD
SCROLL_UP 16x64,16x16 6=lLe5te6dD 8=lLe3t5e4dD 9=lLe2t7e3dD  SCROLL_VBACK 16x64,12x12 0=f16 15|f64
SCROLL_VGRIP 16x48,12x8 0=l15D 7|lLe8dDdDs8lLD2f8D2lLs8dD
SCROLL_VGRIPOVERLAY 16x64,12x12 63=.16 15|.64  SEPARATORH 12x2,8x2 0=D12 1=L12
SEPARATORV 2x12,2x8 0|D12 1|L12
TAB_BUTTON 18x72,14x14 9|lLf15LlLf16lLf15LlLf15L 16=lLf14dD 17=.L16. 35=.Lf14d. 71=.L16.
TAB_WINDOW 64x64,60x60 31=lLf60dD 31|lLf60dD
VSLIDER_BACK 88x18,18x14 9=f9dDlLf18dDlLf18dDlLf18dDlLf9 9|d17L
VSLIDER_GRIP 88x11,22x11 5=lLe18dDdDs18lLlLf18dDlLo18dD 5|lLe7dD
WINBOTTOM 30x8,-1x-1 3=D30 15|f2dDf2dD  WINDOW 30x30,-1x-1 29=f30 29|f30
WINGRIP 30x36,-1x-1 17=s30 29|s18D18  WINLEFT 8x72,-1x-1 35=lLf4dD 3|lLf68dD
WINRIGHT 8x72,-1x-1 35=lLf4dD 3|lLf68dD  WINTEXT 12x17,-1x-1 16=.12 11|.17
WINTOP 30x8,-1x-1 4=l30 15|lLf2lLf2
)";

struct BuiltinLookTest : AllegroFixture {};

TEST_F(BuiltinLookTest, EveryElementShowsItsFrames) {
  for (int depth : {16, 24, 32}) {
    UseDepth(depth);
    const Look look;
    std::istringstream expected{kElements};
    for (int id = 0; id < kElementCount; ++id) {
      SkinBitmap element;
      DrawBuiltinElement(element, id, look.colors);
      const auto [w, h] = element.GetTileSize();
      std::ostringstream sizes;
      sizes << element.Width() << 'x' << element.Height() << ',' << w << 'x' << h;
      std::string name, runs;
      expected >> name >> runs;
      EXPECT_EQ(name + runs, kElementNames[id] + sizes.str());
      char sign;
      for (int at; expected >> at >> sign >> runs;)
        EXPECT_EQ(look.RowOrColumn(element, sign == '=', at), runs) << name << at << sign << depth;
      expected.clear();  // the next element's name was no number
    }
  }
  UseDepth(8);
  SkinBitmap element;
  DrawBuiltinElement(element, COMBO_BUTTON, Look{}.colors);
  EXPECT_EQ(element.getpixel(0, 0), MASK_COLOR_8) << "what is transparent in palette modes";
}

}  // namespace
}  // namespace zel
