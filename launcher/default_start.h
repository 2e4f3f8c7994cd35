// The entry that is chosen by itself when nobody is there.
#pragma once

#include <cstdint>
#include <string>

#include "launcher/menu_session.h"

namespace zel {

// Counts down to the default of the menu file that is open, unless somebody stops it. Nothing is
// counted where the file names no entry that can be chosen or no time, and where the session has
// come back to the place of an earlier choice, if the file does not want it there, too.
//
// Times are in milliseconds, by a clock of the caller's that never goes back.
class DefaultStart {
 public:
  static constexpr int kLongest = 24 * 60 * 60;  // seconds; longer waits for ever

  void Begin(const MenuSession& session, std::int64_t now);
  bool IsCounting() const { return entry_ >= 0; }
  // For good.
  void Stop() { entry_ = -1; }
  // The entry that is to be chosen now, which ends the counting; else -1.
  int Look(std::int64_t now);
  // When the number of seconds changes next, while it counts.
  std::int64_t Next() const { return next_; }
  int Seconds() const { return seconds_; }
  // A text with the entry's title for %1 and the seconds for %2.
  std::string Filled(const char* text) const;

 private:
  int entry_ = -1;
  int seconds_ = 0;  // left
  std::int64_t next_ = 0;
  std::string title_;
};

}  // namespace zel
