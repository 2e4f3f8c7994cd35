// What is fuzzed: each target feeds one reader with the bytes of a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace zel {

struct FuzzTarget {
  const char* name;
  const char* file;               // the name that the bytes get; the extension chooses the reader
  std::size_t longest;            // bytes that are worth trying
  void (*run)(const char* file);  // reads it, from the current directory
  const char* words;              // sources whose string constants are the words of the format
};

std::span<const FuzzTarget> FuzzTargets();
// Null for an unknown name.
const FuzzTarget* FindFuzzTarget(const char* name);

// Brings Allegro up and makes a directory of its own the current one, which goes when the process
// ends by itself. Once, before the first run; standard output is closed from then on.
void PrepareFuzzing();
// Runs a target on these bytes, in a colour depth and a text format that their number chooses. A
// fault ends the process.
void RunFuzzTarget(const FuzzTarget& target, std::span<const std::uint8_t> bytes);

}  // namespace zel
