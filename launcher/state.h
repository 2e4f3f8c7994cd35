// What the parts of the launcher share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "launcher/layout.h"
#include "launcher/looks.h"
#include "launcher/progress_file.h"
#include "toolkit/base/text.h"
#include "toolkit/draw/color.h"

namespace zel {

class MenuScreen;

// Texts of the process's language.
struct Catalogues {
  bool areOpen = false;
  // What Allegro gets for them, by the catalogue's text; none while they are for a terminal.
  std::optional<std::map<const char*, std::string>> forAllegro;
};

// Where the menu file says none.
inline Color DefaultBackLineColor() { return {200, 100, 100}; }

inline constexpr std::size_t kOutputBytes = 256;  // with the terminator

struct LauncherState {
  // Of the entry that leads out of a submenu.
  Color backLineColor = DefaultBackLineColor();
  char languageCode[3] = {};             // "de" from LANG=de_DE
  MenuScreen* runningScreen = nullptr;   // while it runs
  std::int32_t exitCode = 0;             // of the current item; what the process returns
  FixedText<kOutputBytes> outputString;  // of the current item
  bool mousePending = false;             // no mouse driver yet: its server was not running at start
  char savedDirectory[260] = {};         // the working directory at start, in raw bytes

  bool hasBackLineColor = false;     // the menu file says it
  bool isInEnglish = false;          // whatever the language file says
  bool hintsNeedConversion = false;  // from the encoding of the language to the text format
  int heldMouse = -1;                // a descriptor of the removed mouse's device, or -1
  ScreenLayout layout;               // of the screen there is
  Catalogues catalogues;
  LayoutValues layoutValues;  // of the menu files read so far
  Looks looks;
  ProgressValues progressValues;
};

inline LauncherState launcherState;

}  // namespace zel
