// The pictures that make up a skin, by index.
#pragma once

#include "toolkit/base/geometry.h"

namespace zel {

enum ElementIndex : int {
  BOX,
  BOX_SHADDOW,
  BUTTON,
  CHECKBOX,
  CLEAR_BACK,
  COMBO_BUTTON,
  HSLIDER_BACK,
  HSLIDER_GRIP,
  ICONEXIT,
  ICONMAX,
  ICONMIN,
  ICONRESTORE,
  LIST,
  MENU_BACK,
  MENU_BUTTON,
  MENU_ITEM,
  PANEL_GROOVE,
  PANEL_RAISED,
  PANEL_RIDGE,
  PANEL_SUNKEN,
  PROGRESSH,
  PROGRESSV,
  RADIO,
  SCROLL_DOWN,
  SCROLL_HBACK,
  SCROLL_HGRIP,
  SCROLL_HGRIPOVERLAY,
  SCROLL_LEFT,
  SCROLL_RIGHT,
  SCROLL_UP,
  SCROLL_VBACK,
  SCROLL_VGRIP,
  SCROLL_VGRIPOVERLAY,
  SEPARATORH,
  SEPARATORV,
  TAB_BUTTON,
  TAB_WINDOW,
  VSLIDER_BACK,
  VSLIDER_GRIP,
  WINBOTTOM,
  WINDOW,
  WINGRIP,
  WINLEFT,
  WINRIGHT,
  WINTEXT,
  WINTOP,
  kElementCount,
};

// "BOX" and so on: the object names in a bitmap datafile and the key stems of the section "TILING".
extern const char* const kElementNames[kElementCount];

// The columns and rows of frames in each.
extern const Size kElementGrids[kElementCount];

// The named colours of a skin, in the order of Skin::colors.
enum SkinColor : int {
  kFace,
  kFontFace,
  kShad1,
  kShad2,
  kDisable,
  kSelect,
  kDeselect,
  kFocusColor,
  kSunken,
  kBack,
  kSkinColorCount,
};

// The text sets of a skin: font, text colour and shadow colour by drawing state of a kind of
// widget.
enum TextSet : int {
  kBoxText,
  kButtonText,
  kCheckBoxText,
  kRadioText,
  kListText,
  kWindowText,
  kMenuText,
  kEditText,  // section "TEXT": edit boxes and text viewers
  kProgressText,
  kHyperText,
  kTabText,
  kTooltipText,
  kPlainText,  // no section
  kTextSetCount,
};

// The drawing states of a text set.
enum DrawState : int {
  kNormal = 0,
  kSelected = 1,  // or pressed
  kDisabled = 2,
  kFocused = 3,
  kDrawStates = 4,
};

// The frames of elements: one per DrawState in one direction, or of their own.
inline constexpr int kToggleFrames = 2;  // check boxes and radio buttons: off, on
inline constexpr int kListStates = 8;    // of "LIST"; an item is drawn in one of these states
inline constexpr int kBarFrames = 2;     // of a progress bar: track, filled part
inline constexpr int kWindowStates = 2;  // of a window's parts: active, inactive

}  // namespace zel
