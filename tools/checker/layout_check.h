// What is where on screens of every size.
#pragma once

#include <vector>

#include "toolkit/base/geometry.h"
#include "tools/checker/findings.h"
#include "tools/checker/menu_file.h"
#include "tools/checker/values.h"

namespace zel {

// Lays all menus out on these screens, as the launcher does with the settings and the current skin,
// which it loads anew for each zoom, and says what does not fit or can hardly be read. The
// settings' own screen is `own`. Where the look is not the one that is meant, nothing is said of
// texts and pictures. Leaves the screen of the settings as it was.
void CheckLayouts(Findings& findings, Pictures& pictures, const std::vector<MenuFile>& menus,
                  const std::vector<Size>& screens, Size own, bool isLook);

}  // namespace zel
