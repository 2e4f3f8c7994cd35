// How a dialog works off what mouse and keyboard have done.
#include "toolkit/base/input.h"
#include "toolkit/base/settings.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/mouse_pointer.h"

namespace zel {

Dialog* Dialog::InputTarget() {
  Dialog* popup = AsDialog(focus);
  return popup && popup->TestFlag(kFlagPoppedUp) ? popup : this;
}

bool Dialog::WorkOffInput() {
  bool told = false;
  InputRecord record;
  const bool wasClosed = closed;
  // What comes meanwhile can wait for the next time: the ticks go on. What comes after the closing
  // is for nobody, or for the dialog below.
  for (int left = WaitingInput(); left > 0; --left) {
    if (closed != wasClosed || InputTarget()->closed || !TakeInput(record)) break;
    if (!HandleRecord(record)) continue;
    ApplyGeometry();
    told = true;
  }
  return told;
}

bool Dialog::HandleRecord(const InputRecord& record) {
  const HandledInput handled{record};
  bool told = record.kind != InputRecord::kKeyUp;
  if (MousePointer* pointer = settings.showMouse ? CurrentPointer() : nullptr) {
    const MouseState before = pointer->State();
    MouseState arrived = before;
    arrived.position = record.mouse.position;
    pointer->Follow(arrived);
    if (arrived.position != before.position) {
      TellMouse(before, false);
      told = true;
    }
    if (told && InputTarget()->closed) {
      // For whoever is below.
      PutBack(record);
      return true;
    }
    // Unless a popup has told what came later.
    if (record.kind == InputRecord::kMouse && pointer->State() == arrived) {
      pointer->Follow(record.mouse);
      TellMouse(arrived, false);
    }
  }
  if (record.kind != InputRecord::kCharacter) return told;
  if (settings.useKeyboard)
    InputTarget()->HandleKey(record.character, record.scancode);
  else
    GiveBack(record);
  return true;
}

}  // namespace zel
