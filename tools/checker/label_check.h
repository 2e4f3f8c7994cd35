// Texts on the background.
#pragma once

#include "launcher/menu_config.h"
#include "tools/checker/menu_file.h"
#include "tools/checker/screen_view.h"

namespace zel {

// Says which texts of a menu, in all its languages, do not fit on the screen, lie over something or
// can hardly be read. The main menu's countdown is one of them.
void CheckLabels(ScreenView& view, const MenuFile& menu, const MenuLevel& level, bool isMain);

}  // namespace zel
