// How well a text can be told from its ground.
#pragma once

#include "toolkit/draw/color.h"

namespace zel {

// What is read without strain, and what can be told from its ground at all.
inline constexpr double kReadableContrast = 4.5, kVisibleContrast = 3;

// The ratio of the two colours' luminances, 1 to 21; 7 is read also by those who see badly.
double Contrast(Color a, Color b);

// The text's colour or, where that has less contrast to the ground, the nearest on the way to white
// or black that has it; the better of those two where none has.
Color WithContrast(Color text, Color ground, double least);
// The same on the way to white or to black, as `lightens` says.
Color WithContrast(Color text, Color ground, double least, bool lightens);

}  // namespace zel
