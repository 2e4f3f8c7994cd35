// Small pictures written as letters, one string a row:
//   '.' the mask colour (magenta)   'r' red    'g' green   'b' blue   'w' white
//   'k' black                       'y' yellow 'c' cyan    '?' any other colour
#pragma once

#include <string>
#include <vector>

#include "toolkit/core/allegro.h"

namespace zel {

using Rows = std::vector<std::string>;

// A memory bitmap of the current colour depth; every row as long as the first, other letters are
// a test's mistake and come out as '?'.
BitmapPtr Paint(const Rows& rows);

// The letters of a bitmap of any depth.
Rows Picture(BITMAP* bitmap);

}  // namespace zel
