#include "toolkit/skin/elements.h"

namespace zel {

const char* const kElementNames[kElementCount] = {
    "BOX",          "BOX_SHADDOW",  "BUTTON",
    "CHECKBOX",     "CLEAR_BACK",   "COMBO_BUTTON",
    "HSLIDER_BACK", "HSLIDER_GRIP", "ICONEXIT",
    "ICONMAX",      "ICONMIN",      "ICONRESTORE",
    "LIST",         "MENU_BACK",    "MENU_BUTTON",
    "MENU_ITEM",    "PANEL_GROOVE", "PANEL_RAISED",
    "PANEL_RIDGE",  "PANEL_SUNKEN", "PROGRESSH",
    "PROGRESSV",    "RADIO",        "SCROLL_DOWN",
    "SCROLL_HBACK", "SCROLL_HGRIP", "SCROLL_HGRIPOVERLAY",
    "SCROLL_LEFT",  "SCROLL_RIGHT", "SCROLL_UP",
    "SCROLL_VBACK", "SCROLL_VGRIP", "SCROLL_VGRIPOVERLAY",
    "SEPARATORH",   "SEPARATORV",   "TAB_BUTTON",
    "TAB_WINDOW",   "VSLIDER_BACK", "VSLIDER_GRIP",
    "WINBOTTOM",    "WINDOW",       "WINGRIP",
    "WINLEFT",      "WINRIGHT",     "WINTEXT",
    "WINTOP",
};

const Size kElementGrids[kElementCount] = {
    {1, 1},  // BOX
    {1, 1},  // BOX_SHADDOW
    {1, 4},  // BUTTON
    {2, 4},  // CHECKBOX
    {1, 1},  // CLEAR_BACK
    {1, 4},  // COMBO_BUTTON
    {1, 4},  // HSLIDER_BACK
    {1, 4},  // HSLIDER_GRIP
    {1, 4},  // ICONEXIT
    {1, 4},  // ICONMAX
    {1, 4},  // ICONMIN
    {1, 4},  // ICONRESTORE
    {1, 8},  // LIST
    {1, 1},  // MENU_BACK
    {1, 2},  // MENU_BUTTON
    {1, 7},  // MENU_ITEM
    {1, 1},  // PANEL_GROOVE
    {1, 1},  // PANEL_RAISED
    {1, 1},  // PANEL_RIDGE
    {1, 1},  // PANEL_SUNKEN
    {1, 2},  // PROGRESSH
    {2, 1},  // PROGRESSV
    {2, 4},  // RADIO
    {1, 4},  // SCROLL_DOWN
    {1, 4},  // SCROLL_HBACK
    {1, 4},  // SCROLL_HGRIP
    {1, 4},  // SCROLL_HGRIPOVERLAY
    {1, 4},  // SCROLL_LEFT
    {1, 4},  // SCROLL_RIGHT
    {1, 4},  // SCROLL_UP
    {1, 4},  // SCROLL_VBACK
    {1, 4},  // SCROLL_VGRIP
    {1, 4},  // SCROLL_VGRIPOVERLAY
    {1, 1},  // SEPARATORH
    {1, 1},  // SEPARATORV
    {1, 4},  // TAB_BUTTON
    {1, 1},  // TAB_WINDOW
    {4, 1},  // VSLIDER_BACK
    {4, 1},  // VSLIDER_GRIP
    {1, 2},  // WINBOTTOM
    {1, 1},  // WINDOW
    {1, 2},  // WINGRIP
    {2, 1},  // WINLEFT
    {2, 1},  // WINRIGHT
    {1, 2},  // WINTEXT
    {1, 2},  // WINTOP
};

}  // namespace zel
