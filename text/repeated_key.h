// A key that would choose more than once because it is held, on a terminal, which does not tell
// when a key is let go of.
#pragma once

#include <cstdint>

namespace zel {

// A key that chooses and comes again sooner than anybody presses it twice, with no other key
// between, is its own repeat and counts no more. When it comes as the first key of all, and within
// a second, it may have been held since before the menu was there, so that it waits until that is
// known. Times are in milliseconds.
class RepeatedKey {
 public:
  static constexpr std::int64_t kWait = 300;  // longer than terminals wait before they repeat

  explicit RepeatedKey(std::int64_t now) : start_{now} {}

  static bool Chooses(int key) { return key == '\r' || key == '\n' || key == ' '; }

  // To be asked for every key in turn. False for what does not count, or not yet.
  bool Takes(int key, std::int64_t now);
  // A key that waits.
  bool IsWaiting() const { return waiting_ != 0; }
  // That key once it has waited for long enough, else 0.
  int TakeWaiting(std::int64_t now);

 private:
  std::int64_t start_;
  int last_ = 0;
  std::int64_t lastTime_ = 0;
  int waiting_ = 0;
  bool isFirst_ = true;
};

}  // namespace zel
