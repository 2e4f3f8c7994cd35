// Values as skin files spell them.
#pragma once

#include "toolkit/base/section_file.h"
#include "toolkit/draw/color.h"

namespace zel {

// The largest number that makes sense anywhere in a skin, and far from what sums of pixels or of
// milliseconds could overflow.
inline constexpr int kLargestSkinValue = 1000000;

// `fallback` when the key is absent or its value lies outside lowest..highest.
int ReadSkinInt(const SectionFile& file, const char* section, const char* key, int fallback,
                int lowest = -kLargestSkinValue, int highest = kLargestSkinValue);
// A colour text (see Color::FromText); `fallback` is such a text too.
Color ReadSkinColor(const SectionFile& file, const char* section, const char* key,
                    const char* fallback);

}  // namespace zel
