#include "toolkit/widgets/accelerator.h"

#include "toolkit/base/input.h"
#include "toolkit/core/dialog.h"

namespace zel {
namespace {

// Shift, control, alt, the two flag keys and the menu key; not the locks.
constexpr int kComparedShifts = 63;

}  // namespace

void Accelerator::Setup(int newScancode, int newShifts, Widget* newTarget) {
  scancode = newScancode;
  shifts = newShifts;
  target = newTarget;
}

bool Accelerator::MsgXChar(int code) {
  if (code >> 8 != scancode || (Shifts() & kComparedShifts) != shifts) return false;
  if (target && target->Disabled()) return false;
  if (!GetParent()) return false;
  GetParent()->HandleEvent(target ? target : this, MSG_ACTIVATE, 0, 0);
  return true;
}

}  // namespace zel
