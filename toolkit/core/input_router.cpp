#include "toolkit/core/input_router.h"

#include "toolkit/base/allegro.h"
#include "toolkit/base/input.h"
#include "toolkit/base/settings.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/dialog_run.h"
#include "toolkit/core/event_loop.h"
#include "toolkit/core/mouse_path.h"

namespace zel {
namespace {

struct ButtonRow {
  int button;
  void (Widget::*press)();
  void (Widget::*release)();
};
constexpr ButtonRow kButtons[] = {
    {kLeftButton, &Widget::MsgLPress, &Widget::MsgLRelease},
    {kRightButton, &Widget::MsgRPress, &Widget::MsgRRelease},
    {kMiddleButton, &Widget::MsgMPress, &Widget::MsgMRelease},
};

void DispatchButtons(Dialog& target, int before, int now) {
  for (const ButtonRow& row : kButtons) {
    const bool wasDown = before & row.button;
    const bool isDown = now & row.button;
    if (isDown && !wasDown) {
      target.MsgClick();
      (target.*row.press)();
    } else if (wasDown && !isDown) {
      (target.*row.release)();
    }
  }
}

}  // namespace

Dialog& InputRouter::Target() const {
  Dialog* popup = AsDialog(root_.GetFocus());
  return popup && popup->TestFlag(kFlagPoppedUp) ? *popup : root_;
}

bool InputRouter::WorkOff() {
  bool told = false;
  InputRecord record;
  const bool wasClosed = root_.IsClosed();
  // What comes meanwhile can wait for the next time: the ticks go on. What comes after the closing
  // is for nobody, or for the dialog below.
  for (int left = WaitingInput(); left > 0; --left) {
    if (root_.IsClosed() != wasClosed || Target().IsClosed() || !TakeInput(record)) break;
    if (!Tell(record)) continue;
    root_.ApplyGeometry();
    told = true;
  }
  return told;
}

bool InputRouter::Tell(const InputRecord& record) {
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
    if (told && Target().IsClosed()) {
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
    Target().HandleKey(record.character, record.scancode);
  else
    GiveBack(record);
  return true;
}

void InputRouter::LookAtMouse() {
  MousePointer* pointer = CurrentPointer();
  if (!pointer || Target().IsClosed()) return;
  const MouseState before = pointer->State();
  if (mouse_needs_poll()) poll_mouse();
  pointer->Update();
  // What has been recorded meanwhile is told from the records.
  if (InputWaits()) pointer->Follow(before);
  TellMouse(before, true);
}

void InputRouter::TellMouse(const MouseState& before, bool inTick) {
  Dialog& target = Target();
  DoubleClicks& doubleClicks = Loop().doubleClicks;
  // Taken now: what follows may run a popup, which gets what happens meanwhile.
  const MouseState now = CurrentPointer()->State();
  const int pressed = now.buttons & ~before.buttons;
  const int turned = now.wheel - before.wheel;
  const Point moved{now.position.x - before.position.x, now.position.y - before.position.y};

  // Under the resting pointer, widgets may have come, gone, or become able to be pressed.
  Widget* under = target.MouseWidget();
  const bool restsAndActs = moved == Point{} && (pressed != 0 || turned != 0);
  if (restsAndActs || (under && !IfUsable(under))) MousePath{target}.Follow({});
  if (target.IsClosed()) return;
  const bool isDouble = doubleClicks.Note(pressed, inTick);
  DispatchButtons(target, before.buttons, now.buttons);
  // Unless a popup came in between.
  if (isDouble && doubleClicks.Take() && !target.IsClosed()) target.MsgDClick();
  if (target.IsClosed()) return;
  if (moved != Point{}) target.MsgMouseMove(moved);
  if (turned != 0) target.MsgWheel(turned);
}

void InputRouter::LookAtKeyboard() {
  Dialog& target = Target();
  if (target.IsClosed()) return;
  if (const int scancode = target.RunParts().joystick.Poll()) {
    target.HandleKey(0, scancode);
    return;
  }
  if (!keypressed()) return;
  int scancode;
  const int character = ureadkey(&scancode);
  target.HandleKey(character, scancode);
}

}  // namespace zel
