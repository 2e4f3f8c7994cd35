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
    {1, 1},                        // BOX
    {1, 1},                        // BOX_SHADDOW
    {1, kDrawStates},              // BUTTON
    {kToggleFrames, kDrawStates},  // CHECKBOX
    {1, 1},                        // CLEAR_BACK
    {1, kDrawStates},              // COMBO_BUTTON
    {1, kDrawStates},              // HSLIDER_BACK
    {1, kDrawStates},              // HSLIDER_GRIP
    {1, kDrawStates},              // ICONEXIT
    {1, kDrawStates},              // ICONMAX
    {1, kDrawStates},              // ICONMIN
    {1, kDrawStates},              // ICONRESTORE
    {1, kListStates},              // LIST
    {1, 1},                        // MENU_BACK
    {1, 2},                        // MENU_BUTTON
    {1, 7},                        // MENU_ITEM
    {1, 1},                        // PANEL_GROOVE
    {1, 1},                        // PANEL_RAISED
    {1, 1},                        // PANEL_RIDGE
    {1, 1},                        // PANEL_SUNKEN
    {1, kBarFrames},               // PROGRESSH
    {kBarFrames, 1},               // PROGRESSV
    {kToggleFrames, kDrawStates},  // RADIO
    {1, kDrawStates},              // SCROLL_DOWN
    {1, kDrawStates},              // SCROLL_HBACK
    {1, kDrawStates},              // SCROLL_HGRIP
    {1, kDrawStates},              // SCROLL_HGRIPOVERLAY
    {1, kDrawStates},              // SCROLL_LEFT
    {1, kDrawStates},              // SCROLL_RIGHT
    {1, kDrawStates},              // SCROLL_UP
    {1, kDrawStates},              // SCROLL_VBACK
    {1, kDrawStates},              // SCROLL_VGRIP
    {1, kDrawStates},              // SCROLL_VGRIPOVERLAY
    {1, 1},                        // SEPARATORH
    {1, 1},                        // SEPARATORV
    {1, kDrawStates},              // TAB_BUTTON
    {1, 1},                        // TAB_WINDOW
    {kDrawStates, 1},              // VSLIDER_BACK
    {kDrawStates, 1},              // VSLIDER_GRIP
    {1, kWindowStates},            // WINBOTTOM
    {1, 1},                        // WINDOW
    {1, kWindowStates},            // WINGRIP
    {kWindowStates, 1},            // WINLEFT
    {kWindowStates, 1},            // WINRIGHT
    {1, kWindowStates},            // WINTEXT
    {1, kWindowStates},            // WINTOP
};

}  // namespace zel
