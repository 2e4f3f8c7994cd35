// Files that are read at once.
#pragma once

#include <cstddef>
#include <string>

namespace zel {

inline constexpr std::size_t kLongestWholeFile = std::size_t{32} << 20;

// The text of a file, without a byte order mark. Empty for one that is missing, no plain file or
// longer than that.
std::string ReadWhole(const char* fileName);

}  // namespace zel
