// What a menu item waits for before it counts as chosen.
#pragma once

#include <cstdint>

#include "launcher/menu_config.h"

namespace zel {

// Waits until an item's file is there, or another is gone, or its time is over. Borrows the item.
class ItemWait {
 public:
  static constexpr int kPeriod = 50;  // milliseconds between two checks
  static bool IsNeeded(const MenuItem& item);

  explicit ItemWait(const MenuItem& item);

  // True when the waiting is over. Each call counts as one period, also the first.
  bool Check();
  // What is said meanwhile.
  const char* Message() const;
  bool HasTimeout() const { return hasTimeout_; }
  // What shows of the time that is left.
  int Seconds() const;

 private:
  bool FilesAreReady() const;

  const MenuItem& item_;
  bool hasTimeout_ = false;
  std::int32_t remaining_ = -1;  // milliseconds, a second more than what shows
};

}  // namespace zel
