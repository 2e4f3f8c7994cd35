// Files that a tool is to read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace zel {

// What keeps a regular file of so many bytes at most from being read, as the end of a sentence:
// "there is no such file". Nothing where it can be read.
std::string WhyNoFile(const std::string& path, std::uint64_t limit = UINT64_MAX);

// Likewise of a text.
std::string WhyNoText(const std::string& path, std::size_t limit);

}  // namespace zel
