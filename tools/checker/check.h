// Looking for mistakes in a menu tree.
#pragma once

#include <vector>

#include "tools/checker/findings.h"

namespace zel {

// Reads the settings, the skin and every menu file that can be reached from menu.cfg, all in the
// current directory, and answers what a person would see or a script would stumble over: in all
// languages, for the screen size of the settings, the three usual ones and those that have a
// section. Without settings, of screens only for the last ones.
//
// Allegro is installed, with the picture formats. Leaves the settings as it read them, and the skin
// current.
std::vector<Finding> CheckTree();

}  // namespace zel
