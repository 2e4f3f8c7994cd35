#include "toolkit/skin/builtin_look.h"

#include <iterator>

namespace zel {
namespace {

constexpr int kStates = kDrawStates;
constexpr Color kNoFill{};

enum class Bevel { kRaised, kSunken, kFlat };

// The box of one frame.
struct FrameStyle {
  Bevel bevel;
  SkinColor fill;
};

// The frames of an element in a row or a column, one per drawing state.
struct FrameRow {
  int w, h;          // one box
  int stepX, stepY;  // from one frame to the next
};
constexpr FrameRow Stacked(int w, int h) { return {w, h, 0, h}; }
constexpr FrameRow SideBySide(int w, int h) { return {w, h, w, 0}; }

constexpr FrameStyle kButtonStyles[kStates] = {
    {Bevel::kRaised, kDeselect},
    {Bevel::kSunken, kSelect},
    {Bevel::kRaised, kFace},
    {Bevel::kRaised, kFocusColor},
};
constexpr FrameStyle kIconStyles[kStates] = {
    {Bevel::kRaised, kFace},
    {Bevel::kSunken, kFace},
    {Bevel::kRaised, kFace},
    {Bevel::kRaised, kFace},
};
constexpr FrameStyle kScrollButtonStyles[kStates] = {
    {Bevel::kRaised, kDeselect},
    {Bevel::kSunken, kSelect},
    {Bevel::kFlat, kFace},
    {Bevel::kRaised, kFocusColor},
};
constexpr FrameStyle kScrollGripStyles[kStates] = {
    {Bevel::kRaised, kDeselect},
    {Bevel::kSunken, kSelect},
    {Bevel::kFlat, kFace},
    {Bevel::kRaised, kSelect},
};
// The inside of check boxes and radio buttons, and the colour of signs on any element.
constexpr SkinColor kCheckFills[kStates] = {kSunken, kSelect, kFace, kFocusColor};
constexpr SkinColor kSignColors[kStates] = {kFontFace, kFontFace, kDisable, kFontFace};

// An element being drawn.
class Canvas {
 public:
  Canvas(SkinBitmap& bitmap, const Color (&colors)[kSkinColorCount])
      : bitmap{bitmap}, colors_{colors} {}

  Color operator[](SkinColor color) const { return colors_[color]; }

  // The colour that masked drawing leaves out; in an 8-bit mode it is an index, not magenta.
  Color Transparent() const {
    return bitmap.IsEmpty() ? Color{} : Color{bitmap_mask_color(bitmap.GetBitmap())};
  }

  void Box(int x1, int y1, int x2, int y2, Bevel bevel, Color fill) {
    const Color light = colors_[bevel == Bevel::kRaised ? kShad1 : kShad2];
    const Color dark = colors_[bevel == Bevel::kSunken ? kShad1 : kShad2];
    bitmap.Box3D(x1, y1, x2, y2, fill, light, dark);
  }
  void Frames(const FrameRow& row, const FrameStyle (&styles)[kStates]) {
    for (int k = 0; k < kStates; ++k) {
      const int x = k * row.stepX, y = k * row.stepY;
      Box(x, y, x + row.w - 1, y + row.h - 1, styles[k].bevel, colors_[styles[k].fill]);
    }
  }
  void RaisedFace(int x1, int y1, int x2, int y2) {
    Box(x1, y1, x2, y2, Bevel::kRaised, colors_[kFace]);
  }
  // Stacked frames without a border.
  template <std::size_t kFrames>
  void Fills(int w, int h, const SkinColor (&fills)[kFrames]) {
    for (std::size_t k = 0; k < kFrames; ++k) {
      const int y = static_cast<int>(k) * h;
      bitmap.rectfill(0, y, w - 1, y + h - 1, colors_[fills[k]]);
    }
  }
  // Two rectangles one pixel apart that together look cut into the face or raised from it.
  void Etched(int x, int y, int x2, int y2, SkinColor upper, SkinColor lower) {
    bitmap.rect(x + 1, y + 1, x2 + 1, y2 + 1, colors_[lower]);
    bitmap.rect(x, y, x2, y2, colors_[upper]);
  }

  SkinBitmap& bitmap;

 private:
  const Color (&colors_)[kSkinColorCount];
};

void DrawNothing(Canvas&) {}
void DrawTransparent(Canvas& c) { c.bitmap.clear_to_color(c.Transparent()); }
void DrawRaisedFace(Canvas& c) { c.RaisedFace(0, 0, c.bitmap.Width() - 1, c.bitmap.Height() - 1); }

void DrawBoxShadow(Canvas& c) {
  c.RaisedFace(0, 0, 62, 62);
  c.bitmap.hline(1, 63, 63, black);
  c.bitmap.vline(63, 1, 63, black);
}

void DrawCheckBox(Canvas& c) {
  constexpr int kSize = 13, kMarkX = 19, kMarkY = 6, kMarkSize = 6;
  for (int k = 0; k < kStates; ++k) {
    const int y = kSize * k;
    for (int x : {0, kSize})
      c.Box(x, y, x + kSize - 1, y + kSize - 1, Bevel::kSunken, c[kCheckFills[k]]);
    c.bitmap.XMark(kMarkX, y + kMarkY, kMarkSize, c[kSignColors[k]]);
  }
}

void DrawRadio(Canvas& c) {
  constexpr int kSize = 13, kRadius = 6, kDotRadius = 2;
  constexpr int kPlainX = kRadius, kSelectedX = kSize + kRadius;
  for (int k = 0; k < kStates; ++k) {
    const int y = kSize * k + kRadius;
    for (int x : {kPlainX, kSelectedX})
      c.bitmap.Circle3D(x, y, kRadius, c[kCheckFills[k]], c[kShad2], c[kShad1]);
    c.bitmap.circlefill(kSelectedX, y, kDotRadius, c[kSignColors[k]]);
  }
}

void DrawComboButton(Canvas& c) {
  DrawTransparent(c);
  for (int k = 0; k < kStates; ++k) c.bitmap.Arrow(4, 20 * k + 9, c[kSignColors[k]], kArrowDown);
}

void DrawBox(Canvas& c) { c.Etched(0, 3, 62, 62, kShad2, kShad1); }
void DrawButton(Canvas& c) { c.Frames(Stacked(18, 18), kButtonStyles); }
void DrawClearBack(Canvas& c) { c.Fills(72, 72, {kBack}); }
void DrawHSliderGrip(Canvas& c) { c.Frames(Stacked(11, 22), kButtonStyles); }
void DrawGroove(Canvas& c) { c.Etched(0, 0, 62, 62, kShad1, kShad2); }
void DrawRidge(Canvas& c) { c.Etched(0, 0, 62, 62, kShad2, kShad1); }
void DrawPanelSunken(Canvas& c) { c.Box(0, 0, 63, 63, Bevel::kSunken, c[kSunken]); }
void DrawScrollHGrip(Canvas& c) { c.Frames(Stacked(18, 16), kScrollGripStyles); }
void DrawScrollVGrip(Canvas& c) { c.Frames(Stacked(16, 12), kScrollGripStyles); }
void DrawVSliderGrip(Canvas& c) { c.Frames(SideBySide(22, 11), kButtonStyles); }
void DrawList(Canvas& c) {
  c.Fills(36, 12, {kSunken, kFace, kSunken, kFace, kSelect, kSelect, kFace, kFace});
}
void DrawMenuButton(Canvas& c) { c.Fills(18, 12, {kDeselect, kSelect}); }
void DrawWinGrip(Canvas& c) { c.Fills(30, 18, {kSelect, kShad2}); }

constexpr FrameRow kIconFrames = Stacked(15, 14);

void DrawIconExit(Canvas& c) {
  c.Frames(kIconFrames, kIconStyles);
  for (int k = 0; k < kStates; ++k)
    c.bitmap.XMark(7, kIconFrames.stepY * k + 7, 6, c[kSignColors[k]]);
}

void DrawIconWindow(Canvas& c) {
  c.Frames(kIconFrames, kIconStyles);
  for (int k = 0; k < kStates; ++k) {
    const int y = kIconFrames.stepY * k;
    c.bitmap.rect(3, y + 3, 10, y + 10, c[kSignColors[k]]);
    c.bitmap.hline(3, y + 4, 10, c[kSignColors[k]]);
  }
}

void DrawIconMin(Canvas& c) {
  c.Frames(kIconFrames, kIconStyles);
  for (int k = 0; k < kStates; ++k) {
    const int y = kIconFrames.stepY * k;
    c.bitmap.rect(3, y + 9, 10, y + 10, c[kSignColors[k]]);
  }
}

void DrawMenuItem(Canvas& c) {
  constexpr int kFrame = 16;
  constexpr SkinColor kFills[] = {kFace, kSelect, kFace, kFace, kSelect, kFace, kSelect};
  for (std::size_t k = 0; k < std::size(kFills); ++k) {
    const int y = static_cast<int>(k) * kFrame;
    c.bitmap.rectfill(2, y + 2, 45, y + 13, c[kFills[k]]);
  }
  c.bitmap.hline(4, 38, 43, c[kShad2]);
  c.bitmap.hline(4, 39, 43, c[kShad1]);
  c.bitmap.Arrow(40, 53, c[kFontFace], kArrowRight);
  c.bitmap.Arrow(40, 69, c[kSunken], kArrowRight);
  c.bitmap.CheckMark(5, 85, c[kFontFace]);
  c.bitmap.CheckMark(5, 101, c[kSunken]);
}

void DrawProgressH(Canvas& c) {
  DrawTransparent(c);
  c.Box(0, 0, 11, 17, Bevel::kSunken, c[kFace]);
  c.bitmap.rectfill(2, 20, 10, 33, c[kSelect]);
}

void DrawProgressV(Canvas& c) {
  DrawTransparent(c);
  c.Box(0, 0, 17, 11, Bevel::kSunken, c[kFace]);
  c.bitmap.rectfill(20, 2, 34, 9, c[kSelect]);
}

template <ArrowDirection kDirection>
void DrawScrollButton(Canvas& c) {
  constexpr FrameRow kFrames = Stacked(16, 16);
  constexpr bool kUpright = kDirection == kArrowUp || kDirection == kArrowDown;
  constexpr Point kCentred = kUpright ? Point{4, 6} : Point{6, 4};
  c.Frames(kFrames, kScrollButtonStyles);
  for (int k = 0; k < kStates; ++k) {
    const int pressed = k == kSelected ? 1 : 0;
    c.bitmap.Arrow(kCentred.x + pressed, kCentred.y + kFrames.stepY * k, c[kSignColors[k]],
                   kDirection);
  }
}

void DrawSeparatorH(Canvas& c) {
  c.bitmap.hline(0, 0, 11, c[kShad2]);
  c.bitmap.hline(0, 1, 11, c[kShad1]);
}

void DrawSeparatorV(Canvas& c) {
  c.bitmap.vline(0, 0, 11, c[kShad2]);
  c.bitmap.vline(1, 0, 11, c[kShad1]);
}

// Every tab reaches into the frame below, which is drawn over it, so its lower border is cut off.
// The bottom row of a tab that is not selected is the upper border of the page.
void DrawTabButton(Canvas& c) {
  constexpr int kRight = 17, kFrame = 18;
  constexpr int kBottoms[kStates] = {19, 38, 55, 74};
  DrawTransparent(c);
  for (int k = 0; k < kStates; ++k) c.RaisedFace(0, kFrame * k, kRight, kBottoms[k]);
  for (int k = 0; k < kStates; ++k) {
    const int y = kFrame * k + kFrame - 1;
    if (k != kSelected) c.bitmap.hline(1, y, kRight - 1, c[kShad1]);
    c.bitmap.putpixel(0, y, c.Transparent());
    c.bitmap.putpixel(kRight, y, c.Transparent());
  }
}

void DrawHSliderBack(Canvas& c) {
  for (int k = 0; k < kStates; ++k) c.Box(0, 22 * k + 9, 17, 22 * k + 12, Bevel::kSunken, kNoFill);
}

void DrawVSliderBack(Canvas& c) {
  for (int k = 0; k < kStates; ++k) c.Box(22 * k + 9, 0, 22 * k + 12, 17, Bevel::kSunken, kNoFill);
}

// The left and right borders of these boxes lie outside of the bitmap.
void DrawWinBottom(Canvas& c) {
  c.RaisedFace(-2, 0, 31, 7);
  c.RaisedFace(-2, -2, 31, 3);
}

void DrawWinTop(Canvas& c) {
  c.RaisedFace(-2, 0, 31, 7);
  c.RaisedFace(-2, 4, 31, 10);
}

struct Element {
  ElementIndex id;
  int w, h;
  Size tile;
  void (*draw)(Canvas&);  // on a bitmap filled with kFace
};

constexpr Size kThird{-1, -1};

// By ElementIndex.
constexpr Element kElements[] = {
    {BOX, 64, 64, {60, 48}, DrawBox},
    {BOX_SHADDOW, 64, 64, {58, 58}, DrawBoxShadow},
    {BUTTON, 18, 72, {14, 14}, DrawButton},
    {CHECKBOX, 26, 52, {13, 13}, DrawCheckBox},
    {CLEAR_BACK, 72, 72, {68, 68}, DrawClearBack},
    {COMBO_BUTTON, 18, 80, {18, 20}, DrawComboButton},
    {HSLIDER_BACK, 18, 88, {14, 18}, DrawHSliderBack},
    {HSLIDER_GRIP, 11, 88, {11, 22}, DrawHSliderGrip},
    {ICONEXIT, 15, 56, {15, 14}, DrawIconExit},
    {ICONMAX, 15, 56, {15, 14}, DrawIconWindow},
    {ICONMIN, 15, 56, {15, 14}, DrawIconMin},
    {ICONRESTORE, 15, 56, {15, 14}, DrawIconWindow},
    {LIST, 36, 96, {32, 8}, DrawList},
    {MENU_BACK, 64, 64, {60, 60}, DrawRaisedFace},
    {MENU_BUTTON, 18, 24, {18, 12}, DrawMenuButton},
    {MENU_ITEM, 48, 112, {16, 16}, DrawMenuItem},
    {PANEL_GROOVE, 64, 64, {60, 60}, DrawGroove},
    {PANEL_RAISED, 64, 64, {60, 60}, DrawRaisedFace},
    {PANEL_RIDGE, 64, 64, {60, 60}, DrawRidge},
    {PANEL_SUNKEN, 64, 64, {60, 60}, DrawPanelSunken},
    {PROGRESSH, 12, 36, {8, 14}, DrawProgressH},
    {PROGRESSV, 36, 12, {14, 8}, DrawProgressV},
    {RADIO, 26, 52, {13, 13}, DrawRadio},
    {SCROLL_DOWN, 16, 64, {16, 16}, DrawScrollButton<kArrowDown>},
    {SCROLL_HBACK, 18, 64, {14, 12}, DrawNothing},
    {SCROLL_HGRIP, 18, 64, {14, 12}, DrawScrollHGrip},
    {SCROLL_HGRIPOVERLAY, 16, 64, {12, 12}, DrawTransparent},
    {SCROLL_LEFT, 16, 64, {16, 16}, DrawScrollButton<kArrowLeft>},
    {SCROLL_RIGHT, 16, 64, {16, 16}, DrawScrollButton<kArrowRight>},
    {SCROLL_UP, 16, 64, {16, 16}, DrawScrollButton<kArrowUp>},
    {SCROLL_VBACK, 16, 64, {12, 12}, DrawNothing},
    {SCROLL_VGRIP, 16, 48, {12, 8}, DrawScrollVGrip},
    {SCROLL_VGRIPOVERLAY, 16, 64, {12, 12}, DrawTransparent},
    {SEPARATORH, 12, 2, {8, 2}, DrawSeparatorH},
    {SEPARATORV, 2, 12, {2, 8}, DrawSeparatorV},
    {TAB_BUTTON, 18, 72, {14, 14}, DrawTabButton},
    {TAB_WINDOW, 64, 64, {60, 60}, DrawRaisedFace},
    {VSLIDER_BACK, 88, 18, {18, 14}, DrawVSliderBack},
    {VSLIDER_GRIP, 88, 11, {22, 11}, DrawVSliderGrip},
    {WINBOTTOM, 30, 8, kThird, DrawWinBottom},
    {WINDOW, 30, 30, kThird, DrawNothing},
    {WINGRIP, 30, 36, kThird, DrawWinGrip},
    {WINLEFT, 8, 72, kThird, DrawRaisedFace},
    {WINRIGHT, 8, 72, kThird, DrawRaisedFace},
    {WINTEXT, 12, 17, kThird, DrawTransparent},
    {WINTOP, 30, 8, kThird, DrawWinTop},
};

constexpr bool IsInOrder() {
  for (int id = 0; id < kElementCount; ++id)
    if (kElements[id].id != id) return false;
  return true;
}
static_assert(std::size(kElements) == kElementCount && IsInOrder());

}  // namespace

void DrawBuiltinElement(SkinBitmap& target, int id, const Color (&colors)[kSkinColorCount]) {
  const Element& element = kElements[id];
  target.Create(element.w, element.h, kMemoryBitmap);
  target.SetTileSize(element.tile);
  target.clear_to_color(colors[kFace]);
  Canvas canvas{target, colors};
  element.draw(canvas);
}

}  // namespace zel
