// The keys of a skin description file and the values of the built-in look, side by side.
#pragma once

#include <string>
#include <vector>

#include "toolkit/base/error.h"
#include "toolkit/base/geometry.h"
#include "toolkit/draw/datafile.h"

namespace zel {

class SectionFile;
class Skin;

// The built-in values.
void ResetNamedColors(Skin& skin);
void ResetNumbers(Skin& skin);

// The tile of an element: what the description says or else its picture, in pixels of that times
// `scale`; -1 where neither says one.
Size ReadTile(const SectionFile& file, const char* element, const Datafile::Object& picture,
              int scale = 1);

// A key that a description may have.
struct SkinKey {
  enum Kind { kText, kFile, kFiles, kNumber, kColor, kFont };
  std::string section, key;
  Kind kind;
  int highest = -1;  // of a number that counts as absent when it is larger, or below 0
};
std::vector<SkinKey> SkinKeys();

// Keys of the section "Skin" that name its datafiles.
inline constexpr const char* kElementsKey = "main_data";
inline constexpr const char* kPointersKey = "cursors";

// A number of an object in a datafile: a property of it, before which a key of the description
// goes, the object's name with `_` and the property in a section of its own.
struct ObjectNumber {
  const char* section;
  char property[5];
  int fallback;
  bool isPixels = false;
};
// Of elements: the width and the height of the tile.
inline constexpr ObjectNumber kTileNumbers[] = {{"TILING", "TCKX", -1, true},
                                                {"TILING", "TCKY", -1, true}};
// Of pointer shapes: the place of the hotspot, the frames, and how long each shows.
inline constexpr ObjectNumber kPointerNumbers[] = {{"CURSOR", "FCSX", 0, true},
                                                   {"CURSOR", "FCSY", 0, true},
                                                   {"CURSOR", "FRMS", 1},
                                                   {"CURSOR", "FDUR", 20}};
// The key of such a number.
std::string KeyOf(const char* object, const ObjectNumber& number);

// Reads a file, which was loaded from `path`, over the built-in look: the pictures and pointer
// shapes that it names, its fonts, colours and numbers. Stops at the first datafile that cannot be
// read.
Error ReadSkinFile(Skin& skin, const SectionFile& file, const char* path);

}  // namespace zel
