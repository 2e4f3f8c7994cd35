// The life of a dialog: starting, running as a root or popped up over one, ending.
#include <cstdio>
#include <memory>

#include "toolkit/base/input.h"
#include "toolkit/base/process.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/dialog_run.h"
#include "toolkit/core/event_loop.h"
#include "toolkit/core/input_router.h"
#include "toolkit/core/mouse_path.h"
#include "toolkit/draw/screen_update.h"

namespace zel {
namespace {

bool CanRun() {
  if (system_driver && !process.HasEnded()) return true;
  std::fputs("Zel: A dialog needs the toolkit. Call InstallToolkit before.\n", stderr);
  return false;
}

// The root of a popup over no dialog: shows what was on the screen, and leaves it there.
class ScreenRoot final : public Dialog {
 public:
  ScreenRoot() {
    ground_.Create(w(), h());
    SkinBitmap{screen}.blit(ground_, 0, 0, 0, 0, w(), h());
  }
  void Draw(Bitmap& canvas) override { ground_.blit(canvas, 0, 0, 0, 0, w(), h()); }
  void MsgEnd() override {
    Dialog::MsgEnd();
    ground_.blit(screen, 0, 0, 0, 0, w(), h());
  }

 private:
  SkinBitmap ground_;
};

}  // namespace

void Dialog::CreateScreenUpdate() {
  if (!CurrentScreenUpdate()) InstallScreenUpdate(settings.screenUpdateMethod);
}

void Dialog::MsgStart() {
  Widget::MsgStart();
  running = true;
  if (IsRoot()) Loop().Start(*this);
  SendToChildren(MSG_START);
  if (settings.showMouse) MousePath::FindAtStart(*this);
  dragMode = kDragNone;
  // A press that the end cut off does not go on.
  ClearFlag(kFlagPressed);
}

void Dialog::MsgEnd() {
  SetDragMode(kDragNone);
  focus = nullptr;
  mouse = nullptr;
  SendToChildren(MSG_END);
  running = false;
  Widget::MsgEnd();
  if (IsRoot()) Loop().End();
}

void Dialog::MsgIdle() {
  if (IsRoot()) Loop().Pass(*this);
  ForEachChild([](Widget* child) {
    if (!child->Hidden()) child->SendMessage(MSG_IDLE);
  });
}

void Dialog::MsgTick() {
  Widget::MsgTick();
  if (IsRoot()) {
    InitChangedSkins();
    InputRouter{*this}.WorkOff();
    if (settings.showMouse) HandleMouse();
    if (settings.useKeyboard) HandleKeyboard();
    ApplyGeometry();
  }
  SendToChildren(MSG_TICK);
}

void Dialog::Close() {
  if (!MsgClose()) return;
  if (!IsRoot() && !TestFlag(kFlagPoppedUp))
    Report(MSG_CLOSE);
  else
    closed = true;
}

DialogRun& Dialog::RunParts() {
  if (!run_) run_ = std::make_unique<DialogRun>();
  return *run_;
}

void Dialog::PutTooltipAway() {
  Tooltip& tip = run_->tooltip;
  if (!tip.Hidden()) tip.HideTip();
  Forget(&tip);
}

Widget* Dialog::Execute(Widget* focusWidget) {
  // A second root would take timer, screen update and pointer away from the first.
  if (Dialog* root = Loop().Root()) return Popup(root, kKeepPosition, kKeepPosition, focusWidget);
  if (!IsRoot() || !CanRun()) return nullptr;
  Dialog::Add(&RunParts().tooltip);
  SetFocus(focusWidget);
  closed = false;
  MsgStart();
  if (!closed) Loop().DrawFirstFrame(*this);
  while (!closed) MsgIdle();
  Widget* last = focus;
  MsgEnd();
  PutTooltipAway();
  return last;
}

Widget* Dialog::RunPopup(Dialog& root, int px, int py, Widget* focusWidget) {
  Widget* const outerFocus = root.FocusWidget();
  Widget* const outerChild = root.focus;
  const bool rootWasClosed = root.closed;
  const HandledInput nothing;
  // What opened the popup may still be held; so may what closes it.
  RunParts().joystick = InputRouter{root}.Target().RunParts().joystick;
  if (Dialog* around = Around()) around->Dialog::Remove(this);
  parent = &root;
  if (px != kKeepPosition) SetX(px);
  if (py != kKeepPosition) SetY(py);
  closed = false;
  const std::uint32_t savedFlags = flags;
  // Unseen, it could not be closed.
  if (Hidden()) Unhide();
  SetFlag(kFlagPoppedUp);
  Dialog::Add(&RunParts().tooltip);
  root.Dialog::Add(this);
  SetFocus(focusWidget);
  while (!closed && root.closed == rootWasClosed && root.HasChild(this)) root.MsgIdle();
  Widget* last = focus;
  root.Dialog::Remove(this);
  PutTooltipAway();
  flags = savedFlags;
  if (root.Contains(outerFocus)) root.SetFocus(outerFocus);
  // A popup below this one stays the one that the input is for.
  if (!root.focus && root.Contains(outerChild)) root.SetFocus(outerChild);
  Dialog& below = InputRouter{root}.Target();
  below.RunParts().joystick = RunParts().joystick;
  MousePath{below}.TakeBack();
  return last;
}

Widget* Dialog::Popup(Dialog* over, int px, int py, Widget* focusWidget) {
  Dialog* root = over ? over->GetRoot() : nullptr;
  if (!root || !root->IsRunning()) root = Loop().Root();
  if (root == this) return focus;
  if (root) return RunPopup(*root, px, py, focusWidget);
  if (!CanRun()) return nullptr;
  ScreenRoot temporaryRoot;
  temporaryRoot.Dialog::Add(&temporaryRoot.RunParts().tooltip);
  temporaryRoot.MsgStart();
  Widget* last = RunPopup(temporaryRoot, px, py, focusWidget);
  temporaryRoot.MsgEnd();
  return last;
}

Widget* Dialog::Popup(Dialog* over, Point pos, Widget* focusWidget) {
  return Popup(over, pos.x, pos.y, focusWidget);
}

}  // namespace zel
