// A skin taken apart: pictures, and one text that says what they are.
#pragma once

#include <array>
#include <span>
#include <string>
#include <vector>

#include "toolkit/draw/datafile.h"
#include "toolkit/skin/skin_file.h"
#include "tools/skin/complaints.h"

namespace zel {

inline constexpr const char* kProjectFile = "skin.ini";
inline constexpr const char* kPaletteName = "XTRA_PALETTE";
inline constexpr int kSkinScales = 3;  // pictures at their size, at twice and at three times that

// What a directory itself is called; nothing for that of the system.
std::string DirectoryName(const std::string& directory);
// "disk@2x.bmp" for "disk.bmp" at the scale 2.
std::string AtScale(const std::string& path, int scale);

// A file that a text in a directory names.
std::string FileIn(const std::string& directory, const std::string& file);

// The two datafiles of a skin. KindOf says what they differ in.
enum SkinPart : int { kElementPart, kPointerPart, kSkinPartCount };

struct PartKind {
  const char* section;    // of the project's text, which lists the pictures
  const char* fileKey;    // of the description's section "Skin", which names the datafile
  const char* directory;  // where pictures are put
  const char* const* names;
  int nameCount;
  std::span<const ObjectNumber> numbers;  // in the order of the text
};
const PartKind& KindOf(SkinPart part);

struct ProjectPicture {
  std::string name;          // of the object
  std::string file;          // relative to the project's directory
  std::vector<int> numbers;  // as many of the kind's as are said
  int line = 0;              // of the text
};

// What goes into a datafile at one scale, in its order.
struct PictureList {
  bool isThere = false;
  int line = 0;
  std::vector<ProjectPicture> pictures;
};

// The text is the description of the skin, and behind it the sections "PACK", "ELEMENTS" and
// "POINTERS", which are about the datafiles and no part of it. "ELEMENTS@2x" and so on are there
// where pictures at that scale are not simply those of the same names at the same places.
struct Project {
  std::string description;
  std::vector<int> lines;  // those of the description, by their numbers in the project's text
  std::string name;        // of the description's file
  int packedFrom = 0;      // datafiles of that scale on are packed; 0: none
  std::array<std::array<PictureList, kSkinScales>, kSkinPartCount> lists;

  PictureList& List(SkinPart part, int scale) { return lists[part][scale - 1]; }
  const PictureList& List(SkinPart part, int scale) const { return lists[part][scale - 1]; }
};

// The description without sections that are about a project. `lines` is as in Project.
std::string WithoutProject(const std::string& text, std::vector<int>* lines = nullptr);

// The pictures of a list at another scale, in the files of that scale where `isThere` says so of
// them. A palette that has none is that of the first scale.
template <class IsThere>
std::vector<ProjectPicture> Derived(const PictureList& first, SkinPart part, int scale,
                                    IsThere isThere) {
  std::vector<ProjectPicture> derived;
  for (ProjectPicture picture : first.pictures) {
    const std::string file = AtScale(picture.file, scale);
    const bool isDrawn = isThere(picture, file);
    if (!isDrawn && picture.name != kPaletteName) continue;
    if (isDrawn) picture.file = file;
    for (std::size_t i = 0; i < picture.numbers.size(); ++i)
      if (KindOf(part).numbers[i].isPixels && picture.numbers[i] > 0) picture.numbers[i] *= scale;
    derived.push_back(std::move(picture));
  }
  return derived;
}

// Reads the text of a project's directory. What is wrong with it is said under the text's name.
Project ReadProject(const std::string& directory, Complaints& complaints);
// The text that ReadProject reads as this. Lists at other scales than the first are only written
// where they cannot be derived.
std::string ProjectText(const Project& project);

// A file name in a description that stays below the description's directory.
bool StaysBelow(const std::string& file);

// The datafile that a description names for a part; empty for none.
std::string DataFileOf(const std::string& description, SkinPart part);
// The fonts that a description names and that stay below its directory.
std::vector<std::string> FontsOf(const std::string& description);

}  // namespace zel
