// The life of a dialog: starting, the event loop, popping up, ending.
#include <utility>

#include "toolkit/core/dialog.h"
#include "toolkit/core/loop_state.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/core/screen_update.h"
#include "toolkit/core/settings.h"
#include "toolkit/skin/skin.h"
#include "toolkit/widgets/tooltip.h"

namespace zel {

LoopState loopState;

namespace {

void OnSwitchIn() { loopState.redrawEverything = true; }
void OnCloseButton() { loopState.closeRequested = true; }

bool SwitchingLosesTheScreen() {
  const int mode = get_display_switch_mode();
  return mode == SWITCH_AMNESIA || mode == SWITCH_BACKAMNESIA;
}

}  // namespace

void UpdateDoubleClickWindow() {
  loopState.doubleClickWindow = settings.Ticks(settings.doubleClickDelay);
}

int DoubleClickWindow() { return loopState.doubleClickWindow; }

void Dialog::CreateScreenUpdate() {
  if (!CurrentScreenUpdate()) InstallScreenUpdate(settings.screenUpdateMethod);
}

void Dialog::StartRoot() {
  loopState.logicTimer = InstallTimerEx(settings.UsableFrameRate());
  if (SwitchingLosesTheScreen()) set_display_switch_callback(SWITCH_IN, OnSwitchIn);
  set_close_button_callback(OnCloseButton);
  CreateScreenUpdate();
  SetSkin(skin);
  InitChangedSkins();
  if (!mousePointer) mousePointer = new MousePointer;
  mousePointer->SetScreenUpdate(CurrentScreenUpdate());
  if (settings.showMouse) mousePointer->Poll();
  SetCursor(MOUSE_NORMAL);
}

void Dialog::EndRoot() {
  RemoveTimer(loopState.logicTimer);
  loopState.logicTimer = LoopState::kNoRoot;
  remove_display_switch_callback(OnSwitchIn);
  set_close_button_callback(nullptr);
  if (mousePointer) mousePointer->Hide();
  delete std::exchange(mousePointer, nullptr);
  SetCurrentScreenUpdate(nullptr);
}

void Dialog::FindMouseAtStart() {
  UpdateDoubleClickWindow();
  loopState.doubleClick = DoubleClick::kNone;
  loopState.doubleClickCounter = 0;
  Widget* found = FindUnderPointer();
  SetMousePath(found);
  if (!focus) SetFocus(found);
}

void Dialog::MsgStart() {
  Widget::MsgStart();
  running = true;
  if (IsRoot()) StartRoot();
  SendToChildren(MSG_START);
  if (settings.showMouse) FindMouseAtStart();
  dragMode = kDragNone;
}

void Dialog::MsgEnd() {
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
    if (id == loopState.logicTimer) {
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

void Dialog::WaitForTick() {
  // Without a logic timer there may be no tick to wait for.
  if (!settings.yield || loopState.logicTimer < 0) return;
  while (NextTimerEvent() == kNoTimer) timerDriver.sleep();
}

void Dialog::MsgIdle() {
  if (IsRoot()) {
    if (loopState.redrawEverything) {
      loopState.redrawEverything = false;
      RestoreVideoMemory();
      Redraw();
    }
    const bool ticked = WorkOffTimers();
    if (ticked || settings.unlimitedFrameRate) {
      DrawDirty();
      if (ScreenUpdate* update = CurrentScreenUpdate()) update->Redraw();
    }
    WaitForTick();
    if (loopState.closeRequested) {
      loopState.closeRequested = false;
      Close();
    }
  }
  for (std::size_t i = 0; i < children.size(); ++i)
    if (!children[i]->Hidden()) children[i]->SendMessage(MSG_IDLE);
}

void Dialog::MsgTick() {
  Widget::MsgTick();
  if (IsRoot()) {
    InitChangedSkins();
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

Widget* Dialog::Execute(Widget* focusWidget) {
  Add(tooltipWidget_.get());
  SetFocus(focusWidget);
  closed = false;
  MsgStart();
  while (!closed) MsgIdle();
  Widget* last = focus;
  MsgEnd();
  Forget(tooltipWidget_.get());
  return last;
}

Widget* Dialog::RunPopup(int px, int py, Widget* focusWidget) {
  Dialog* root = parent;
  Widget* parentFocus = root->FocusWidget();
  if (px != kKeepPosition) SetX(px);
  if (py != kKeepPosition) SetY(py);
  closed = false;
  const std::uint32_t savedFlags = flags;
  SetFlag(kFlagPoppedUp);
  Add(tooltipWidget_.get());
  root->Add(this);
  SetFocus(focusWidget);
  while (!closed) root->MsgIdle();
  Widget* last = focus;
  root->Remove(this);
  Forget(tooltipWidget_.get());
  flags = savedFlags;
  root->SetFocus(parentFocus);
  return last;
}

Widget* Dialog::Popup(Dialog* over, int px, int py, Widget* focusWidget) {
  if (over) {
    parent = over->GetRoot();
    return RunPopup(px, py, focusWidget);
  }
  Dialog temporaryRoot;
  temporaryRoot.MsgStart();
  parent = &temporaryRoot;
  Widget* last = RunPopup(px, py, focusWidget);
  temporaryRoot.MsgEnd();
  return last;
}

Widget* Dialog::Popup(Dialog* over, Point pos, Widget* focusWidget) {
  return Popup(over, pos.x, pos.y, focusWidget);
}

}  // namespace zel
