// The settings file.
#pragma once

#include "tools/checker/findings.h"

namespace zel {

inline constexpr const char* kSettingsSection = "Toolkit";

inline constexpr const char* kSettingsFile = "zel.cfg";

// The lines that name skins; 1 where none does.
struct SkinLines {
  bool isRead = true;  // the file is sound, and what is meant for it is in its section
  int skinPath = 1, looks = 1;
};

// Says what is wrong with the file of settings, and loads it.
SkinLines CheckSettings(Findings& findings);

}  // namespace zel
