// What a preview is to show.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/base/geometry.h"

namespace zel {

struct KeyStroke {
  int scancode = 0;   // Allegro's
  int character = 0;  // 0 for keys without one
};

struct Scene {
  Size size;                            // (0, 0): as the settings say
  int depth = 0;                        // likewise
  std::optional<double> zoom;           // likewise
  std::string look;                     // likewise
  const char* language = nullptr;       // null: that of the system
  std::string progress;                 // what the progress file says
  std::map<std::string, bool> assumed;  // files that items ask about, and whether they exist
  std::vector<int> select;              // the numbers of entries, those of submenus first
  std::string position;                 // without them: what the position file says
  std::vector<KeyStroke> keys;          // are pressed at the beginning
  int after = 0;                        // so many seconds later it is shown
};

}  // namespace zel
