// The window that says what the keys do.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "launcher/look_keys.h"
#include "toolkit/widgets/button.h"
#include "toolkit/widgets/window.h"

namespace zel {

// An invisible widget that tells its parent MSG_ACTIVATE for every key that nobody else used, but
// for repeats of the one that was down when it was made.
class AnyKey final : public Widget {
 public:
  explicit AnyKey(int scancodeDown);
  bool MsgXChar(int code) override;

 private:
  int down_;           // scancode
  unsigned releases_;  // of that key, at the beginning
};

// Shows one line for each kind of keys, until any key is pressed.
class HelpDialog final : public Window {
 public:
  // Opened by that key.
  explicit HelpDialog(int scancode);

  void MsgInitSkin() override;
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override;

  // Shows the window over the screen until it is closed.
  void Run(Dialog& screen);

 private:
  // As large as the texts, in the middle of the screen.
  void Fit();

  std::vector<std::unique_ptr<Label>> lines_;
  Button button_;
  LookKeys lookKeys_;
  AnyKey anyKey_;
};

}  // namespace zel
