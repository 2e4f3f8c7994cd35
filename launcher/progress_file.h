// How far other programs are with starting the system.
#pragma once

#include <cstdint>

#include "launcher/plain_file.h"

namespace zel {

// What the progress file says, as it says it.
struct ProgressValues {
  std::int32_t stepNumber = 12;  // all steps
  std::int32_t currentStep = 0;  // steps done, at most stepNumber
  std::int32_t progressHide = 1;
  std::int32_t progressInterval = 1000;  // milliseconds between two looks at the file

  bool Shows() const { return progressHide == 0; }
  // The interval, but a second for one that no timer can keep.
  int PollPeriod() const;
  friend bool operator==(const ProgressValues&, const ProgressValues&) = default;
};

// What the progress file says now. One that is missing, empty or no plain file hides the bar; a
// link to one counts where root made it.
ProgressValues ReadProgressFile();

// The progress file, which anybody may write at any time, and which says itself how often it is
// looked at. A large one is read no more often than every 100 ms, and only after it has changed.
class ProgressFile {
 public:
  // `now` is in milliseconds, by a clock that never goes back.
  const ProgressValues& Look(std::int64_t now);

 private:
  bool IsKnown(const FileStamp& stamp, std::int64_t now) const;

  ProgressValues values_;
  FileStamp stamp_;
  std::int64_t readAt_ = 0;
  bool isSettled_ =
      false;  // it was read again with the same stamp, later than that can hide a change
};

// A clock that never goes back, in milliseconds.
std::int64_t Milliseconds();

}  // namespace zel
