// The menu in lines that are never drawn over, for the plainest terminals and for pipes.
#pragma once

#include "launcher/menu_session.h"

namespace zel {

// A title, numbered entries, and a question. Shows the session from where it is until an item is
// chosen; answers false when the input or the output has ended before.
bool RunPlainLines(MenuSession& session);

}  // namespace zel
