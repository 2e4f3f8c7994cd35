// What menus in lines say by themselves.
#pragma once

#include <cstdint>
#include <string>

#include "launcher/progress_file.h"

namespace zel {

// Seconds between two lines that say how many are left.
inline constexpr int kCountdownStep = 10;

// How far other programs are.
class ProgressNews {
 public:
  // In milliseconds between two lines.
  explicit ProgressNews(std::int64_t pause) : pause_{pause} {}

  // Milliseconds between two looks.
  int PollPeriod() const;
  // A line, when it is time to say so again; else empty. While `isHeld` there is none, and what
  // would have been said is not forgotten.
  std::wstring Look(bool isHeld = false);

 private:
  std::int64_t pause_;
  ProgressFile file_;
  ProgressValues values_, told_;
  std::int64_t toldAt_ = 0, lookAt_ = 0;
};

}  // namespace zel
