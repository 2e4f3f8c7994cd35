// The codes of keys and of what happens instead of one.
#pragma once

namespace zel {

// Beside characters, which are their bytes.
enum Key : int {
  kKeyNone = -1,
  kKeyDown = 1000,
  kKeyUp,
  kKeyPageDown,
  kKeyPageUp,
  kKeyHome,
  kKeyEnd,
  kKeyHelp,
  kKeyOther,
};

inline constexpr int kCtrlC = 3, kTab = 9, kCtrlL = 12, kEscape = 27;
// What is no key: the terminal is gone, or has another size.
inline constexpr int kGone = -2, kResized = -3;

// Whether it ends the waiting of an item.
constexpr bool EndsWaiting(int key) {
  switch (key) {
    case kGone:
    case '\r':
    case '\n':
    case ' ':
    case kEscape:
    case kCtrlC:
    case 'c':
    case 'C':
      return true;
    default:
      return false;
  }
}

}  // namespace zel
