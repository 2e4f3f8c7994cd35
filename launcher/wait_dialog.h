// The window that waits for files.
#pragma once

#include "launcher/held_key.h"
#include "launcher/item_wait.h"
#include "launcher/look_keys.h"
#include "launcher/progress.h"
#include "toolkit/base/timers.h"
#include "toolkit/widgets/accelerator.h"
#include "toolkit/widgets/button.h"
#include "toolkit/widgets/dialog_template.h"
#include "toolkit/widgets/window.h"

namespace zel {

class MenuScreen;

// How wide its message is, in dialog units.
inline constexpr int kWaitMessageWidth = 120;

// An invisible widget that uses up the repeats of the key that has opened its dialog.
class OpeningKey final : public Widget {
 public:
  OpeningKey() { heldKey_.HoldAny(); }
  bool MsgXChar(int code) override;
  void MsgTick() override;

 private:
  HeldKey heldKey_;
};

// Waits until a menu item's file is there, or another is gone, or its time is over; the user may
// cancel it. Borrows the item. Holds a timer while it lives.
class WaitDialog final : public Window {
 public:
  explicit WaitDialog(const MenuItem& menuItem);
  ~WaitDialog() override;

  void MsgTimer(int id) override;
  void MsgInitSkin() override;
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override;

  // True when the waiting is over. Each call counts as one period of the timer, also the one before
  // Run.
  bool Check();
  // Shows the window over the screen until the waiting is over, also by the time limit; false when
  // it was cancelled.
  bool Run(Dialog& screen);

 private:
  void SetUpControls();
  void FitMessage(Label& message);
  void SetUpClock();
  void PlaceBusyBar();
  // To the font of another look.
  void Fit();

  DialogUnits units_;
  Button* cancelButton_ = nullptr;
  Accelerator accelerator_;
  bool waiting_ = true;
  int timer_ = kNoTimer;
  Label* countdown_ = nullptr;
  ItemWait wait_;
  BusyBar busyBar_;
  DialogTemplate form_;
  OpeningKey openingKey_;
  LookKeys lookKeys_;
};

}  // namespace zel
