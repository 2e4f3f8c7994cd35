// What all dialogs of the process share while a root runs.
#pragma once

#include <memory>

#include "toolkit/core/mouse_pointer.h"

namespace zel {

class Dialog;
class Widget;

enum class DoubleClick { kNone, kLeftOnce, kRightOnce, kMiddleOnce, kDetected };
enum class TipState { kIdle, kWaiting, kShown, kLeaving };

struct LoopState {
  static constexpr int kNoRoot = -2;

  // The next press is the first one again.
  void ForgetPresses() {
    doubleClick = DoubleClick::kNone;
    doubleClickCounter = 0;
    pressedSinceTick = false;
  }

  Dialog* root = nullptr;  // the one that runs
  int logicTimer = kNoRoot;
  DoubleClick doubleClick = DoubleClick::kNone;
  int doubleClickCounter = 0;              // logic ticks since the first press
  int doubleClickWindow = 0;               // logic ticks
  bool pressedSinceTick = false;           // which the next tick then does not count
  volatile bool redrawEverything = false;  // set by Allegro's display-switch callback
  volatile bool closeRequested = false;    // set by Allegro's close-button callback
  Widget* lastFocus = nullptr;             // the widget that last lost the focus
  TipState tipState = TipState::kIdle;     // of all tooltips
  std::unique_ptr<MousePointer> pointer;   // while a root runs
};

// The process's.
LoopState& Loop();

// Has the running root redraw everything when the display comes back without its contents. Allegro
// forgets such callbacks with every change of the display-switch mode.
void WatchDisplaySwitches();

}  // namespace zel
