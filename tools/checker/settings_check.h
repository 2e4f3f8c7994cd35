// The settings file.
#pragma once

#include "tools/checker/findings.h"

namespace zel {

inline constexpr const char* kSettingsFile = "zel.cfg";

// Says what is wrong with the file of settings, and loads it. Answers the line that names the skin,
// 1 where none does, or 0 where the file cannot be read.
int CheckSettings(Findings& findings);

}  // namespace zel
