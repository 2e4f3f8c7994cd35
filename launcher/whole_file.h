// Files that are read at once.
#pragma once

#include <string>

namespace zel {

// The text of a file, without a byte order mark. Empty for one that is missing, no plain file or
// longer than 32 megabytes.
std::string ReadWhole(const char* fileName);

}  // namespace zel
