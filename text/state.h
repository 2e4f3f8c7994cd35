// What lives once in the program for terminals.
#pragma once

#include <termios.h>

#include <csignal>
#include <cstddef>
#include <string>
#include <vector>

namespace zel {

struct TextState {
  std::string outputFile, positionFile;  // that options name; the launcher's paths point into them
  std::vector<bool> lettersOfFont;       // by character; empty where the locale alone decides

  // The terminal as it was before, for the handlers of signals.
  bool hasModes = false;
  termios modes{};
  const char* leaving = "";  // what leaves a full screen
  std::size_t leavingSize = 0;
  volatile std::sig_atomic_t isResized = 0;
};
extern TextState textState;

}  // namespace zel
