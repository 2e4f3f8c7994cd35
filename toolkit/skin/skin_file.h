// The keys of a skin description file and the values of the built-in look, side by side.
#pragma once

#include <string>
#include <vector>

#include "toolkit/base/error.h"

namespace zel {

class SectionFile;
class Skin;

// The built-in values.
void ResetNamedColors(Skin& skin);
void ResetNumbers(Skin& skin);

// A key that a description may have.
struct SkinKey {
  enum Kind { kText, kFile, kFiles, kNumber, kColor, kFont };
  std::string section, key;
  Kind kind;
  int highest = -1;  // of a number that counts as absent when it is larger, or below 0
};
std::vector<SkinKey> SkinKeys();

// Reads a file, which was loaded from `path`, over the built-in look: the pictures and pointer
// shapes that it names, its fonts, colours and numbers. Stops at the first datafile that cannot be
// read.
Error ReadSkinFile(Skin& skin, const SectionFile& file, const char* path);

}  // namespace zel
