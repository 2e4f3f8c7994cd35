// Whether a menu leads anywhere.
#pragma once

namespace zel {

// True when a menu file, or one that its submenus lead to, has an item that can be chosen now or
// after waiting. Reads the files as the menu does, from the working directory, and shows nothing.
bool HasChoice(const char* menuFile);

}  // namespace zel
