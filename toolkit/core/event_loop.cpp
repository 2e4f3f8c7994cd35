#include "toolkit/core/event_loop.h"

#include "toolkit/base/console_switch.h"
#include "toolkit/base/display_link.h"
#include "toolkit/base/input.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/timers.h"
#include "toolkit/core/core_part.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/input_router.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

void OnSwitchIn() { Loop().RedrawEverything(); }
void OnCloseButton() { Loop().RequestClose(); }

bool SwitchingLosesTheScreen() {
  const int mode = get_display_switch_mode();
  return mode == SWITCH_AMNESIA || mode == SWITCH_BACKAMNESIA;
}

void DrawFrame(Dialog& root) {
  root.DrawDirty();
  if (ScreenUpdate* update = CurrentScreenUpdate()) update->Redraw();
  TalkToDisplay();
}

}  // namespace

void ReloadSkins(Dialog& root) {
  Skin* const current = CurrentSkin();
  Skin* const own = root.GetSkin();
  if (current) current->Reload();
  if (own && own != current) own->Reload();
  root.SetSkin(own);
}

EventLoop& Loop() { return process.Of<CorePart>().loop; }

void UpdateDoubleClickWindow() {
  Loop().doubleClicks.SetWindow(settings.Ticks(settings.doubleClickDelay));
}

int DoubleClickWindow() { return Loop().doubleClicks.Window(); }

void EventLoop::WatchDisplaySwitches() {
  if (!root_) return;
  remove_display_switch_callback(NoteReturn);
  set_display_switch_callback(SWITCH_IN, NoteReturn);
  remove_display_switch_callback(OnSwitchIn);
  if (SwitchingLosesTheScreen()) set_display_switch_callback(SWITCH_IN, OnSwitchIn);
}

void EventLoop::Start(Dialog& root) {
  root_ = &root;
  redrawsEverything_ = false;
  closeRequested_ = false;
  logicTimer_ = InstallTimerEx(settings.UsableFrameRate());
  WatchDisplaySwitches();
  set_close_button_callback(OnCloseButton);
  root.CreateScreenUpdate();
  root.SetSkin(root.GetSkin());
  root.InitChangedSkins();
  if (!pointer_) pointer_ = std::make_unique<MousePointer>();
  pointer_->SetScreenUpdate(CurrentScreenUpdate());
  if (settings.showMouse) pointer_->Poll();
  root.SetCursor(MOUSE_NORMAL);
  StartInput();
  LinkDisplay();
}

void EventLoop::End() {
  EndInput();
  RemoveTimer(logicTimer_);
  logicTimer_ = kNoRoot;
  root_ = nullptr;
  remove_display_switch_callback(NoteReturn);
  remove_display_switch_callback(OnSwitchIn);
  set_close_button_callback(nullptr);
  if (pointer_) pointer_->Hide();
  pointer_.reset();
  SetCurrentScreenUpdate(nullptr);
}

bool EventLoop::WorkOffTimers(Dialog& root) {
  bool ticked = false;
  for (int id = NextTimerEvent(); id != kNoTimer; id = NextTimerEvent()) {
    if (id == logicTimer_) {
      root.MsgTick();
      ticked = true;
    } else {
      root.MsgTimer(id);
    }
    ConsumeTimerEvent(id);
  }
  ResetTimerBacklog();
  return ticked;
}

void EventLoop::Wait(Dialog& root) const {
  // Without a logic timer there may be no tick to wait for.
  if (!settings.yield || logicTimer_ < 0 || InputRouter{root}.Target().IsClosed()) return;
  while (!InputWaits() && NextTimerEvent() == kNoTimer) timerDriver.sleep();
}

// As the first tick would find it.
void EventLoop::DrawFirstFrame(Dialog& root) {
  root.InitChangedSkins();
  root.ApplyGeometry();
  DrawFrame(root);
}

void EventLoop::Pass(Dialog& root) {
  if (redrawsEverything_.exchange(false)) {
    if (settings.useVideoMemory) ReloadSkins(root);
    root.Redraw();
  }
  const bool ticked = WorkOffTimers(root);
  const bool told = InputRouter{root}.WorkOff();
  if (ticked || told || settings.unlimitedFrameRate) DrawFrame(root);
  Wait(root);
  MakeConsoleSwitches();
  if (closeRequested_.exchange(false)) root.Close();
}

}  // namespace zel
