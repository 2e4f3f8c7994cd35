// The keys that change the look.
#pragma once

#include "toolkit/base/messages.h"
#include "toolkit/core/widget.h"

namespace zel {

// Another look is wanted; the first argument is a LookStep.
inline constexpr int MSG_LOOK_WANTED = kFirstApplicationMessage + 2;

enum class LookStep { kNone, kNextSkin, kSmaller, kLarger };

// An invisible widget that turns F2, F3 and F4, and Ctrl with + and -, into MSG_LOOK_WANTED where
// there is a choice: in everything that takes keys. A key that is held counts once, as a change
// takes longer than it needs to repeat.
class LookKeys final : public Widget {
 public:
  bool MsgXChar(int code) override;

 private:
  int last_ = 0;           // scancode of the key that was used last
  unsigned releases_ = 0;  // of that key, then
};

}  // namespace zel
