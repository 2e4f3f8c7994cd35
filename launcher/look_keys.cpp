#include "launcher/look_keys.h"

#include "launcher/state.h"
#include "toolkit/base/allegro.h"
#include "toolkit/base/input.h"

namespace zel {
namespace {

// With other modifiers the keys switch consoles, and close windows.
LookStep StepOf(int scancode, int character) {
  const int shifts = Shifts() & (KB_SHIFT_FLAG | KB_CTRL_FLAG | KB_ALT_FLAG);
  if (shifts == 0 && scancode == KEY_F2) return LookStep::kNextSkin;
  if (shifts == 0 && scancode == KEY_F3) return LookStep::kSmaller;
  if (shifts == 0 && scancode == KEY_F4) return LookStep::kLarger;
  if (!(shifts & KB_CTRL_FLAG) || (shifts & KB_ALT_FLAG)) return LookStep::kNone;
  if (character == '+' || scancode == KEY_EQUALS || scancode == KEY_PLUS_PAD)
    return LookStep::kLarger;
  if (character == '-' || scancode == KEY_MINUS || scancode == KEY_MINUS_PAD)
    return LookStep::kSmaller;
  return LookStep::kNone;
}

}  // namespace

bool LookKeys::MsgXChar(int code) {
  const int scancode = code >> 8;
  const LookStep step = StepOf(scancode, code & 0xFF);
  const Looks& looks = launcherState.looks;
  const bool isThere = step == LookStep::kNextSkin ? looks.HasLooks() : looks.HasSizes();
  if (step == LookStep::kNone || !isThere) return false;
  const bool isHeld = scancode == last_ && Releases(scancode) == releases_ && IsDown(scancode);
  if (isHeld) return true;
  last_ = scancode;
  releases_ = Releases(scancode);
  Report(MSG_LOOK_WANTED, static_cast<EventArg>(step));
  return true;
}

}  // namespace zel
