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

}  // namespace zel
