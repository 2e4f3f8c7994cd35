// From a project to a skin, and back.
#pragma once

#include <string>

#include "tools/skin/complaints.h"

namespace zel {

// Makes the description and the datafiles of a project's directory in another one, which may be the
// same, and copies fonts there. Nothing is written when something is wrong with the project. What
// zel-check would say of the skin is said, too.
void PackSkin(const std::string& directory, const std::string& target, Complaints& complaints);

// Makes a project of a skin in a new or empty directory. Packed again it gives the same skin, to
// the byte where it was packed by PackSkin.
void UnpackSkin(const std::string& skin, const std::string& directory, Complaints& complaints);

}  // namespace zel
