// What items do when they are chosen.
#pragma once

#include <vector>

#include "tools/checker/findings.h"
#include "tools/checker/menu_file.h"

namespace zel {

// Says that nothing of the main menu can be chosen.
void CheckAnyChoice(Findings& findings, const MenuFile& menu);

// Says which items of a menu do not show, and which keys of them do not do what they seem to.
void CheckItems(Findings& findings, const MenuFile& menu);

// Says which choices of all menus scripts cannot tell from one another.
void CheckChoices(Findings& findings, const std::vector<MenuFile>& menus);

// Says which submenus lead back to themselves.
void CheckCircles(Findings& findings, const std::vector<MenuFile>& menus);

}  // namespace zel
