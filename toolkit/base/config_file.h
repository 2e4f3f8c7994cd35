// Configuration files of any content, as Allegro's current configuration and on the disc.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "toolkit/base/section_file.h"

namespace zel {

inline constexpr std::size_t kLongestConfigFile = 128u << 10;  // bytes that are read

// Reads a file and makes it Allegro's current configuration under its name, as set_config_file
// does. A missing file is empty, and so is one that is longer than that.
//
// Allegro's own reader gets lost in damaged files: it writes past its buffer where a character
// meets the buffer's end, takes minutes for a line of a million spaces, and some bytes hold it up
// for ever. Such files become the current configuration as far as they make sense, but without a
// name, so that nothing that the program sets then is ever written over them.
SectionFile UseConfigFile(const char* path);

struct ConfigValue {
  std::string name;
  std::string value;
};

// Puts values into a section of a file of any size: in the places of the old ones, or else behind
// what the section has. All the rest of the file stays, byte by byte.
void SaveConfigFile(const char* path, const char* section, const std::vector<ConfigValue>& values);

}  // namespace zel
