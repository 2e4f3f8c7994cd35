// What people read, in every language.
#pragma once

#include <vector>

#include "toolkit/skin/skin.h"
#include "tools/checker/findings.h"
#include "tools/checker/menu_file.h"

namespace zel {

// Says which texts of menus and of their files of explanations do not show as they are written, and
// which are missing or too many. Without a skin nothing is said of its fonts, and without settings
// that are read nothing of letters that encodings lack.
void CheckTexts(Findings& findings, const std::vector<MenuFile>& menus, const Skin* skin,
                bool areSettingsRead);

}  // namespace zel
