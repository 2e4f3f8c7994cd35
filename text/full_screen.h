// The menu on the whole screen of a terminal.
#pragma once

#include "launcher/menu_session.h"
#include "text/screen.h"

namespace zel {

// A list, the hint of its current entry, and windows over them. Shows the session from where it is
// until an item is chosen; answers false when the terminal has ended before.
bool RunFullScreen(Screen& screen, MenuSession& session);

}  // namespace zel
