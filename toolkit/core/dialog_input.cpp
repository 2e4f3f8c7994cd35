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
  // What comes meanwhile can wait for the next time: the ticks go on. What comes after the closing
  // is for nobody, or for the dialog below.
  for (int left = WaitingInput(); left > 0 && !InputTarget()->closed; --left) {
    if (!TakeInput(record)) break;
    HandleRecord(record);
    ApplyGeometry();
    told = true;
  }
  return told;
}

void Dialog::HandleRecord(const InputRecord& record) {
  const HandledInput handled{record};
  if (settings.showMouse && mousePointer) {
    const MouseState before = mousePointer->State();
    MouseState arrived = before;
    arrived.position = record.mouse.position;
    mousePointer->Follow(arrived);
    if (arrived.position != before.position) TellMouse(before, false);
    if (record.kind == InputRecord::kMouse && !InputTarget()->closed) {
      mousePointer->Follow(record.mouse);
      TellMouse(arrived, false);
    }
  }
  if (record.kind != InputRecord::kCharacter) return;
  Dialog* target = InputTarget();
  if (settings.useKeyboard && !target->closed)
    target->HandleKey(record.character, record.scancode);
  else
    GiveBack(record);
}

}  // namespace zel
