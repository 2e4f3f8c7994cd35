// A root dialog that runs on a fake machine, tick by tick, with mouse and keyboard in the test's
// hands.
#pragma once

#include <functional>
#include <initializer_list>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "toolkit/core/dialog.h"
#include "toolkit/testing/fake_machine.h"
#include "toolkit/testing/fake_timers.h"

namespace zel {

// "GotMouse" for MSG_GOTMOUSE and so on; the number of what is no message of the toolkit.
std::string MessageName(int msg);

// Writes down what its widgets report and what it is told itself, as "a: LostMouse; b: GotMouse".
// Those that report the same one after the other stand together: "root, a: Click". What Activate
// and Scroll tell stands behind them, "a: Scroll 7", unless it is an Activate with 0. One whose
// name is empty is alone and needs none: "Activate; Activate 3".
class Recorder : public Dialog {
 public:
  void Draw(Bitmap& canvas) override { canvas.clear_bitmap(); }
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override;
  bool MsgClose() override { return closes; }
  // What was written since the last call.
  std::string Events();
  // "root" for itself, "nobody" for null, "?" for what has no name.
  std::string NameOf(const Widget* widget) const;

  std::map<const Widget*, std::string> names;
  std::set<int> watched;                           // messages
  bool onlyOfChildren = false;                     // not of what lies in them
  std::function<void(Widget*, int, int)> onEvent;  // sender, message, first argument
  bool closes = true;

 private:
  void Note(const Widget* sender, int msg, EventArg arg);

  std::string log_, last_;
};

// Has a screen of its own size, a keyboard and a mouse that begins in the lower right corner. Needs
// Allegro, and settings as a program start finds them, which it changes.
class Stage {
 public:
  static constexpr int kWidth = 160;
  static constexpr int kHeight = 120;

  Stage();
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  // Without it there is no skin, and so no pointer shape and no rule for the focus.
  void UseSkin();
  // From here on the root writes down these messages.
  void Watch(std::initializer_list<int> messages);
  static void ChangeMode(int depth, Dialog* follower = nullptr);
  void Start();
  // Before what a test has put into the root is gone.
  void End();
  void Tick(int times = 1);

  // What happens while a dialog runs its own loop: one step before each of the next ticks. The
  // last one has to end the loop; one that goes on is noted and closed by force.
  void Script(std::vector<std::function<void()>> steps);
  bool HasRunOn() const { return hasRunOn_; }

  // Each is followed by a tick.
  void MoveTo(int x, int y);
  void Press(int buttons = 1);
  void Release(int buttons = 1);
  void Click(int x, int y);
  void Type(int character, int scancode);
  void Key(int scancode) { Type(0, scancode); }

  // The pixels of the screen.
  static int At(int x, int y) { return getpixel(screen, x, y); }

  FakeMachine machine;
  FakeTimers clock;
  Recorder root;

 private:
  bool hasRunOn_ = false;
};

}  // namespace zel
