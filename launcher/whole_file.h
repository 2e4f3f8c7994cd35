// Files that are read at once.
#pragma once

#include <string>

namespace zel {

// The bytes of a file, or of an object in a datafile ("menus.dat#main"). Empty for a file that is
// missing, empty or no plain file; what lies beyond 32 megabytes is left out.
std::string ReadWhole(const char* fileName);

}  // namespace zel
