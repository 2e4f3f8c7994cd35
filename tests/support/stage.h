// A root dialog that runs on a fake machine, tick by tick, with mouse and keyboard in the test's
// hands.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "tests/support/allegro_fixture.h"
#include "tests/support/fake_machine.h"
#include "tests/support/fake_timers.h"
#include "toolkit/core/dialog.h"
#include "toolkit/skin/skin.h"

namespace zel {

// Paints its area in one colour and counts how often.
class Patch : public Widget {
 public:
  explicit Patch(const Rect& area, Color fill = red, bool focusable = true)
      : color{fill}, wantsFocus{focusable} {
    Shape(area);
  }
  void Draw(Bitmap& canvas) override {
    ++draws;
    canvas.clear_to_color(color);
  }
  bool MsgWantFocus() override {
    Widget::MsgWantFocus();
    return wantsFocus;
  }
  bool MsgWantMouse() override { return wantsMouse; }
  bool MsgChar(int code) override {
    Widget::MsgChar(code);
    return usesKeys;
  }
  using Widget::SetOpaque;

  Color color;
  bool wantsFocus;
  bool wantsMouse = true;
  bool usesKeys = false;
  int draws = 0;
};

// Writes down what its widgets report and what it is told itself.
class Recorder : public Dialog {
 public:
  void Draw(Bitmap& canvas) override { canvas.clear_bitmap(); }
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override {
    if (watched.count(msg)) {
      const auto name = names.find(sender);
      log += name != names.end() ? name->second : '?';
      log += std::to_string(msg) + ' ';
    }
    if (onEvent) onEvent(sender, msg, static_cast<int>(arg1));
    Dialog::HandleEvent(sender, msg, arg1, arg2);
  }
  bool MsgClose() override { return closes; }
  // What was written since the last call: "a13 b14 ", names and message numbers.
  std::string Events() { return std::exchange(log, {}); }

  std::map<const Widget*, char> names;
  std::set<int> watched;
  std::function<void(Widget*, int, int)> onEvent;  // sender, message, first argument
  bool closes = true;

 private:
  std::string log;
};

class StageTest : public AllegroFixture {
 protected:
  static constexpr int kWidth = 160;
  static constexpr int kHeight = 120;

  StageTest();
  ~StageTest() override;

  // Without it there is no skin, and so no pointer shape and no rule for the focus.
  static void UseSkin() { SetCurrentSkin(std::make_unique<Skin>("default")); }
  // From here on the root writes down these messages; Expect compares what it wrote since.
  void Watch(std::initializer_list<int> messages);
  void Expect(const char* events, const char* what = "");
  static void ChangeMode(int depth, Dialog* follower = nullptr);
  void Start();
  void Tick(int times = 1);

  // What happens while a dialog runs its own loop: one step before each of the next ticks. The
  // last one has to end the loop.
  void Script(std::vector<std::function<void()>> steps);

  // Each is followed by a tick.
  void MoveTo(int x, int y);
  void Press(int buttons = 1);
  void Release(int buttons = 1);
  void Click(int x, int y);
  void Type(int character, int scancode);
  void Key(int scancode) { Type(0, scancode); }
  static void PutMouse(int x, int y);

  // The pixels of the screen.
  static int At(int x, int y) { return getpixel(screen, x, y); }

  FakeMachine machine;
  FakeTimers clock;
  Recorder root;
};

}  // namespace zel
