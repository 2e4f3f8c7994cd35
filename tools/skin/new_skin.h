// A skin of one's own to begin with.
#pragma once

#include <string>

#include "toolkit/draw/color.h"
#include "tools/skin/complaints.h"

namespace zel {

// What is not said is taken from a skin or, without one, chosen to the rest.
struct SkinWishes {
  std::string from;  // a description
  std::string title, font;
  // Colours as they are written.
  std::string ground, text, accent;
  int size = 0;  // of a line of text, in pixels
};

inline constexpr int kSmallestText = 8, kLargestText = 64;

// "23,45,67" or "#172d43"; no colour for anything else.
Color ReadColor(const std::string& text);

// Makes a project in a new or empty directory, with all elements and pointer shapes at three sizes,
// and packs it there.
void NewSkin(const std::string& directory, const SkinWishes& wishes, Complaints& complaints);

}  // namespace zel
