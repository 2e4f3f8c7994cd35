#include "text/repeated_key.h"

#include <utility>

namespace zel {
namespace {

constexpr std::int64_t kFirstSecond = 1000;

}  // namespace

bool RepeatedKey::Takes(int key, std::int64_t now) {
  waiting_ = 0;
  const bool isFirst = std::exchange(isFirst_, false) && now - start_ < kFirstSecond;
  const bool isRepeat = key == last_ && now - lastTime_ < kWait;
  last_ = key;
  lastTime_ = now;
  if (!Chooses(key)) return true;
  if (isFirst) waiting_ = key;
  return !isFirst && !isRepeat;
}

int RepeatedKey::TakeWaiting(std::int64_t now) {
  return waiting_ != 0 && now - lastTime_ >= kWait ? std::exchange(waiting_, 0) : 0;
}

}  // namespace zel
