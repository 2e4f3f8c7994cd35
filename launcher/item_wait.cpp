#include "launcher/item_wait.h"

#include <algorithm>
#include <limits>

#include "launcher/texts.h"

namespace zel {
namespace {

constexpr int kSecond = 1000;  // milliseconds

}  // namespace

bool ItemWait::IsNeeded(const MenuItem& item) {
  return !item.waitForFile.IsEmpty() || !item.waitWhileFile.IsEmpty();
}

ItemWait::ItemWait(const MenuItem& item) : item_{item} {
  if (item_.timeout <= 0) return;
  constexpr int kLongest = (std::numeric_limits<std::int32_t>::max() - kSecond) / kSecond;
  hasTimeout_ = true;
  // Each number from the limit to 0 shows for a second.
  remaining_ = std::min(item_.timeout, kLongest) * kSecond + kSecond;
}

bool ItemWait::FilesAreReady() const {
  if (!item_.waitWhileFile.IsEmpty()) return !ItemFileExists(item_.waitWhileFile);
  return ItemFileExists(item_.waitForFile);
}

bool ItemWait::Check() {
  const bool ready = FilesAreReady();
  if (!hasTimeout_) return ready;
  remaining_ -= kPeriod;
  return ready || remaining_ < 1;
}

const char* ItemWait::Message() const {
  return item_.waitText.IsEmpty() ? Text(kWaitingText) : item_.waitText.c_str();
}

int ItemWait::Seconds() const { return remaining_ / kSecond; }

}  // namespace zel
