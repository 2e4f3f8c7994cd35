// The description of a look.
#pragma once

#include <string>
#include <vector>

#include "tools/skin/look.h"

namespace zel {

// What a description names.
struct LookNames {
  std::string title, elements, pointers, font, bold;
  std::vector<std::string> fallbacks;
};

std::string DescribeLook(const Look& look, const LookNames& names);

// The colours that texts, panels and entries have in it.
std::vector<Color> LookTextColors(const LookColors& colors);

}  // namespace zel
