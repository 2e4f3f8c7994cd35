// The loop that runs a root dialog, and what all dialogs share while one runs.
#pragma once

#include <atomic>
#include <memory>

#include "toolkit/core/double_click.h"
#include "toolkit/core/mouse_pointer.h"

namespace zel {

class Dialog;
class Widget;

enum class TipState { kIdle, kWaiting, kShown, kLeaving };

// There is one for the process: no more than one root runs. One pass of it works off the timers
// that have run off (the logic timer's become ticks), tells the input, draws a frame if there was a
// tick or input, and waits for more. Popups run inside the root's passes.
//
// Owns the pointer while a root runs.
class EventLoop {
 public:
  // The dialog that runs, from Start to End; null when none does.
  Dialog* Root() const { return root_; }
  MousePointer* Pointer() const { return pointer_.get(); }

  // Begin and end a root's time: logic timer, screen update, skin, pointer, input.
  void Start(Dialog& root);
  void End();
  // Before the first pass, so that there is a picture before the first tick.
  void DrawFirstFrame(Dialog& root);
  void Pass(Dialog& root);

  // The next pass redraws everything, or closes the root. For Allegro's callbacks.
  void RedrawEverything() { redrawsEverything_ = true; }
  void RequestClose() { closeRequested_ = true; }
  // Has the running root redraw everything when the display comes back without its contents.
  // Allegro forgets such callbacks with every change of the display-switch mode.
  void WatchDisplaySwitches();

  DoubleClicks doubleClicks;
  TipState tipState = TipState::kIdle;  // of all tooltips
  Widget* lastFocus = nullptr;          // the widget that last lost the focus

 private:
  static constexpr int kNoRoot = -2;

  // True when there was a tick.
  bool WorkOffTimers(Dialog& root);
  // Until there is a tick or input.
  void Wait(Dialog& root) const;

  Dialog* root_ = nullptr;
  int logicTimer_ = kNoRoot;
  std::atomic<bool> redrawsEverything_ = false;
  std::atomic<bool> closeRequested_ = false;
  std::unique_ptr<MousePointer> pointer_;
};

// The process's.
EventLoop& Loop();

// The window for a double click in logic ticks, from Settings::doubleClickDelay; set when a root
// starts, and again by whoever switches the mouse on later.
void UpdateDoubleClickWindow();
int DoubleClickWindow();

// Loads the current skin and that of a root anew, for another mode or where their bitmaps may be
// lost, and dresses the root in it.
void ReloadSkins(Dialog& root);

}  // namespace zel
