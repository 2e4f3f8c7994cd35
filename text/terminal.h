// The terminal of the process: standard input and output.
#pragma once

#include <termios.h>

#include <cstdint>
#include <optional>
#include <string>

namespace zel {

// Takes the terminal over while it lives: no key sends a signal or ends the input. Afterwards it is
// as it was before, also when a signal ends the process; then there is no output file either.
class Terminal {
 public:
  Terminal();
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal();

  // What has to be written before a signal's end, to leave a full screen; text that lives as long.
  static void LeaveWith(const std::string& text);

  // Waits for input, for milliseconds; a change of the terminal's size ends it early, too.
  enum class Event { kNone, kInput, kResized, kGone };
  static Event Wait(std::int64_t milliseconds);

  // Columns and rows, as the terminal says; 0 where it says nothing.
  struct Size {
    int columns = 0, rows = 0;
  };
  static Size GetSize();
};

}  // namespace zel
