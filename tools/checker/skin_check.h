// The skin.
#pragma once

#include <string>

#include "toolkit/skin/skin.h"
#include "tools/checker/findings.h"

namespace zel {

// Says what is wrong with a description that is named in that place, with its fonts and datafiles.
// True where the look is as it says.
bool CheckSkin(Findings& findings, const Place& named, const std::string& name);

// The skin has neither pictures nor a height of rows, which then are those of the built-in look.
bool HasLowRows(const Skin& skin);

// Whether a text has a section that skins have.
bool DescribesSkin(const std::string& text);
bool IsSkinSection(const std::string& name);

inline constexpr double kLeastContrast = 2.5;  // below, text can hardly be read
// What an element looks like in the middle of a frame; no colour where it is transparent there.
Color MiddleOf(const Skin& skin, int element, int frame, int frames);

}  // namespace zel
