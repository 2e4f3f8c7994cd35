// The terminal of the process: standard input and output.
#pragma once

#include <cstdint>
#include <string>

namespace zel {

// Milliseconds between two looks at the progress file, whatever that asks for: a terminal shows no
// more.
inline constexpr int kShortestPoll = 100;

// Takes the terminal over while it lives: no key sends a signal or ends the input. Afterwards it is
// as it was before, also when a signal or a lack of memory ends the process; then there is no
// output file either.
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

  // Writes all of it; false when the terminal has ended.
  static bool Write(const std::string& text);

  // Columns and rows, as the terminal says; 0 where it says nothing.
  struct Size {
    int columns = 0, rows = 0;
  };
  static constexpr Size kUsualSize{80, 24};
  static Size GetSize();
};

}  // namespace zel
