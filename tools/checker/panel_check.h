// What is in panels: rows, titles, icons and lines.
#pragma once

#include "toolkit/base/geometry.h"
#include "tools/checker/menu_file.h"
#include "tools/checker/screen_view.h"

namespace zel {

// Say what does not fit a panel at this place, in pixels of the file. Other menus than the main one
// have a way back in their first row.
void CheckMenuPanel(ScreenView& view, const MenuFile& menu, const Rect& place, bool hasWayBack);
void CheckHintPanel(ScreenView& view, const MenuFile& menu, const Rect& place);

// Where many icons are too large alike, it is the rows that are too low: says so when all screens
// have been looked at.
void SayLargeIcons(ScreenView& view);

}  // namespace zel
