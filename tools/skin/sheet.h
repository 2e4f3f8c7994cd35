// All of a skin on one picture.
#pragma once

#include <string>

#include "tools/skin/complaints.h"

namespace zel {

// Draws elements, pointer shapes, fonts and colours with their names, and each text on its ground
// with its contrast, into a PNG file.
void DrawSkinSheet(const std::string& skin, const std::string& png, Complaints& complaints);

}  // namespace zel
