// The menu for those who listen or read with their fingers: one entry at a time, in lines of text
// that a screen reader speaks as they are written, and with the cursor on the line that a braille
// display shows.
#pragma once

#include "launcher/menu_session.h"

namespace zel {

// "Title, kind, number of how many", then below it the hint. Shows the session from where it is
// until an item is chosen; answers false when the input or the output has ended before.
bool RunSpokenLines(MenuSession& session);

}  // namespace zel
