// What the parts of the launcher share.
#pragma once

#include <cstdint>

#include "launcher/layout.h"
#include "launcher/looks.h"
#include "toolkit/base/text.h"
#include "toolkit/draw/color.h"

namespace zel {

class MenuScreen;

struct LauncherState {
  Color backLineColor{200, 100, 100};   // of the entry that leads out of a submenu
  bool hasBackLineColor = false;        // the menu file says it
  char languageCode[3] = {};            // "de" from LANG=de_DE
  bool isInEnglish = false;             // whatever the language file says
  bool hintsNeedConversion = false;     // from the encoding of the language to the text format
  MenuScreen* runningScreen = nullptr;  // while it runs
  std::int32_t exitCode = 0;            // of the current item; what the process returns
  FixedText<256> outputString;          // of the current item
  ScreenLayout layout;                  // of the screen there is
  Looks looks;
  bool mousePending = false;      // no mouse driver yet: its server was not running at start
  int heldMouse = -1;             // a descriptor of the removed mouse's device, or -1
  char savedDirectory[260] = {};  // the working directory at start, in raw bytes
};

inline LauncherState launcherState;

}  // namespace zel
