#include "launcher/has_choice.h"

#include <string>
#include <unordered_set>
#include <vector>

#include "launcher/menu_config.h"

namespace zel {

bool HasChoice(const char* menuFile) {
  constexpr std::uint32_t kDead = kItemSeparator | kItemDisabled;
  std::unordered_set<std::string> seen{menuFile};  // menus may contain each other
  std::vector<std::string> toRead{menuFile};
  while (!toRead.empty()) {
    MenuConfig menu;
    menu.ReadWithoutHints(toRead.back().c_str());
    toRead.pop_back();
    for (const auto& item : menu.items) {
      if (item->flags & kDead) continue;
      if (!(item->flags & kItemSubmenu)) return true;
      const std::string submenu = static_cast<const char*>(item->submenu);
      if (seen.insert(submenu).second) toRead.push_back(submenu);
    }
  }
  return false;
}

}  // namespace zel
