// The skin.
#pragma once

#include <memory>

#include "toolkit/skin/skin.h"
#include "tools/checker/findings.h"

namespace zel {

// Says what is wrong with the description that the settings name in that place, with its fonts and
// datafiles. True where the look is as they say.
bool CheckSkin(Findings& findings, const Place& named);

inline constexpr double kLeastContrast = 2.5;  // below, text can hardly be read
// How well a text can be read on a ground, from 1 to 21: the quotient of their luminances.
double Contrast(Color text, Color ground);
// What an element looks like in the middle of a frame; no colour where it is transparent there.
Color MiddleOf(const Skin& skin, int element, int frame, int frames);

}  // namespace zel
