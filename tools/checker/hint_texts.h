// Files of explanations.
#pragma once

#include <vector>

#include "toolkit/skin/skin.h"
#include "tools/checker/findings.h"
#include "tools/checker/letters.h"
#include "tools/checker/menu_file.h"

namespace zel {

// Says which explanations do not show as they are written, and which are missing or too many.
void CheckHints(Findings& findings, Letters& letters, const std::vector<MenuFile>& menus,
                const Skin* skin);

}  // namespace zel
