// The life of a dialog: starting, the event loop, popping up, ending.
#include <cstdio>
#include <memory>

#include "toolkit/base/display_link.h"
#include "toolkit/base/input.h"
#include "toolkit/base/settings.h"
#include "toolkit/core/core_part.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/core/tooltip.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/skin/skin.h"

namespace zel {

LoopState& Loop() { return process.Of<CorePart>().loop; }

namespace {

void OnSwitchIn() { Loop().redrawEverything = true; }
void OnCloseButton() { Loop().closeRequested = true; }

bool SwitchingLosesTheScreen() {
  const int mode = get_display_switch_mode();
  return mode == SWITCH_AMNESIA || mode == SWITCH_BACKAMNESIA;
}

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
  void Draw(Bitmap& canvas) override {
    canvas.clear_bitmap();
    ground_.blit(canvas, 0, 0, 0, 0, w(), h());
  }
  void MsgEnd() override {
    Dialog::MsgEnd();
    ground_.blit(screen, 0, 0, 0, 0, w(), h());
  }

 private:
  SkinBitmap ground_;
};

}  // namespace

void WatchDisplaySwitches() {
  if (!Loop().root) return;
  remove_display_switch_callback(OnSwitchIn);
  if (SwitchingLosesTheScreen()) set_display_switch_callback(SWITCH_IN, OnSwitchIn);
}

void UpdateDoubleClickWindow() {
  Loop().doubleClickWindow = settings.Ticks(settings.doubleClickDelay);
}

int DoubleClickWindow() { return Loop().doubleClickWindow; }

void Dialog::CreateScreenUpdate() {
  if (!CurrentScreenUpdate()) InstallScreenUpdate(settings.screenUpdateMethod);
}

void Dialog::StartRoot() {
  Loop().root = this;
  Loop().redrawEverything = false;
  Loop().closeRequested = false;
  Loop().logicTimer = InstallTimerEx(settings.UsableFrameRate());
  WatchDisplaySwitches();
  set_close_button_callback(OnCloseButton);
  CreateScreenUpdate();
  SetSkin(skin);
  InitChangedSkins();
  if (!Loop().pointer) Loop().pointer = std::make_unique<MousePointer>();
  Loop().pointer->SetScreenUpdate(CurrentScreenUpdate());
  if (settings.showMouse) Loop().pointer->Poll();
  SetCursor(MOUSE_NORMAL);
  StartInput();
  LinkDisplay();
}

void Dialog::EndRoot() {
  EndInput();
  RemoveTimer(Loop().logicTimer);
  Loop().logicTimer = LoopState::kNoRoot;
  Loop().root = nullptr;
  remove_display_switch_callback(OnSwitchIn);
  set_close_button_callback(nullptr);
  if (MousePointer* pointer = CurrentPointer()) pointer->Hide();
  Loop().pointer.reset();
  SetCurrentScreenUpdate(nullptr);
}

void Dialog::MsgStart() {
  Widget::MsgStart();
  running = true;
  if (IsRoot()) StartRoot();
  SendToChildren(MSG_START);
  if (settings.showMouse) FindMouseAtStart();
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
  if (IsRoot()) EndRoot();
}

void Dialog::RestoreVideoMemory() {
  if (!settings.useVideoMemory) return;
  Skin* current = CurrentSkin();
  if (current) current->Reload();
  if (skin && skin != current) skin->Reload();
  SetSkin(skin);
}

bool Dialog::WorkOffTimers() {
  bool ticked = false;
  for (int id = NextTimerEvent(); id != kNoTimer; id = NextTimerEvent()) {
    if (id == Loop().logicTimer) {
      MsgTick();
      ticked = true;
    } else {
      MsgTimer(id);
    }
    ConsumeTimerEvent(id);
  }
  ResetTimerBacklog();
  return ticked;
}

void Dialog::Wait() {
  // Without a logic timer there may be no tick to wait for.
  if (!settings.yield || Loop().logicTimer < 0 || InputTarget()->closed) return;
  while (!InputWaits() && NextTimerEvent() == kNoTimer) timerDriver.sleep();
}

void Dialog::DrawFrame() {
  DrawDirty();
  if (ScreenUpdate* update = CurrentScreenUpdate()) update->Redraw();
  TalkToDisplay();
}

// As the first tick would find it.
void Dialog::DrawFirstFrame() {
  InitChangedSkins();
  ApplyGeometry();
  DrawFrame();
}

void Dialog::MsgIdle() {
  if (IsRoot()) {
    if (Loop().redrawEverything) {
      Loop().redrawEverything = false;
      RestoreVideoMemory();
      Redraw();
    }
    const bool ticked = WorkOffTimers();
    const bool told = WorkOffInput();
    if (ticked || told || settings.unlimitedFrameRate) DrawFrame();
    Wait();
    if (Loop().closeRequested) {
      Loop().closeRequested = false;
      Close();
    }
  }
  ForEachChild([](Widget* child) {
    if (!child->Hidden()) child->SendMessage(MSG_IDLE);
  });
}

void Dialog::MsgTick() {
  Widget::MsgTick();
  if (IsRoot()) {
    InitChangedSkins();
    WorkOffInput();
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

void Dialog::PutTooltipAway() {
  if (!tooltipWidget_->Hidden()) tooltipWidget_->HideTip();
  Forget(tooltipWidget_.get());
}

Widget* Dialog::Execute(Widget* focusWidget) {
  // A second root would take timer, screen update and pointer away from the first.
  if (Loop().root) return Popup(Loop().root, kKeepPosition, kKeepPosition, focusWidget);
  if (!IsRoot() || !CanRun()) return nullptr;
  Dialog::Add(tooltipWidget_.get());
  SetFocus(focusWidget);
  closed = false;
  MsgStart();
  if (!closed) DrawFirstFrame();
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
  joystickHeld = root.InputTarget()->joystickHeld;
  if (!IsRoot() && parent) parent->Dialog::Remove(this);
  parent = &root;
  if (px != kKeepPosition) SetX(px);
  if (py != kKeepPosition) SetY(py);
  closed = false;
  const std::uint32_t savedFlags = flags;
  // Unseen, it could not be closed.
  if (Hidden()) Unhide();
  SetFlag(kFlagPoppedUp);
  Dialog::Add(tooltipWidget_.get());
  root.Dialog::Add(this);
  SetFocus(focusWidget);
  while (!closed && root.closed == rootWasClosed && root.IsChild(this)) root.MsgIdle();
  Widget* last = focus;
  root.Dialog::Remove(this);
  PutTooltipAway();
  flags = savedFlags;
  if (root.Contains(outerFocus)) root.SetFocus(outerFocus);
  // A popup below this one stays the one that the input is for.
  if (!root.focus && root.Contains(outerChild)) root.SetFocus(outerChild);
  Dialog* below = root.InputTarget();
  below->joystickHeld = joystickHeld;
  below->TakeInputBack();
  return last;
}

Widget* Dialog::Popup(Dialog* over, int px, int py, Widget* focusWidget) {
  Dialog* root = over ? over->GetRoot() : nullptr;
  if (!root || !root->IsRunning()) root = Loop().root;
  if (root == this) return focus;
  if (root) return RunPopup(*root, px, py, focusWidget);
  if (!CanRun()) return nullptr;
  ScreenRoot temporaryRoot;
  temporaryRoot.Dialog::Add(temporaryRoot.tooltipWidget_.get());
  temporaryRoot.MsgStart();
  Widget* last = RunPopup(temporaryRoot, px, py, focusWidget);
  temporaryRoot.MsgEnd();
  return last;
}

Widget* Dialog::Popup(Dialog* over, Point pos, Widget* focusWidget) {
  return Popup(over, pos.x, pos.y, focusWidget);
}

}  // namespace zel
