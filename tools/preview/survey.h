// Which menus there are, and which screens they are made for.
#pragma once

#include <string>
#include <vector>

#include "toolkit/base/geometry.h"
#include "tools/preview/scene.h"

namespace zel {

struct Survey {
  struct Menu {
    std::string file;
    std::string title;      // UTF-8
    std::string position;   // where a person is who has just opened it, as position files say it
    std::string complaint;  // what keeps it from being read, or nothing
    std::vector<std::string> assumed;  // files that are missing here and would hide the way to it
  };
  std::string complaint;  // what keeps the rest from being known, or nothing
  std::vector<Menu> menus;
  std::vector<Size> sizes;
};

// Reads the menus that can be reached in the current directory, on a system that has the files
// which items ask about, in a process of its own: this one stays as it is. The screens are the
// three usual ones, that of the settings and those that menu.cfg has sections for, or the one of
// the scene.
Survey SurveyMenus(const Scene& scene);

}  // namespace zel
