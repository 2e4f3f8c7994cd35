// A root dialog that runs on a fake machine, tick by tick, with mouse and keyboard in the test's
// hands.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "tests/support/allegro_fixture.h"
#include "tests/support/fake_machine.h"
#include "tests/support/fake_timers.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/core/startup.h"
#include "toolkit/skin/skin.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>

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
  bool MsgWantFocus() override { return Widget::MsgWantFocus(), wantsFocus; }
  bool MsgWantMouse() override { return wantsMouse; }
  bool MsgChar(int code) override { return Widget::MsgChar(code), usesKeys; }
  using Widget::SetOpaque;

  Color color;
  bool wantsFocus;
  bool wantsMouse = true;
  bool usesKeys = false;
  int draws = 0;
};

// Writes down what its widgets report and what it is told itself, as "a: LostMouse; b: GotMouse".
// Those that report the same one after the other stand together: "root, a: Click".
class Recorder : public Dialog {
 public:
  void Draw(Bitmap& canvas) override { canvas.clear_bitmap(); }
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override {
    if (watched.count(msg)) Note(sender, msg);
    if (onEvent) onEvent(sender, msg, static_cast<int>(arg1));
    Dialog::HandleEvent(sender, msg, arg1, arg2);
  }
  bool MsgClose() override { return closes; }
  // What was written since the last call.
  std::string Events() {
    last_ = 0;
    return std::exchange(log_, {});
  }
  std::string NameOf(const Widget* widget) const {
    const auto found = names.find(widget);
    return widget == this ? "root" : found != names.end() ? found->second : widget ? "?" : "nobody";
  }

  std::map<const Widget*, std::string> names;
  std::set<int> watched;
  std::function<void(Widget*, int, int)> onEvent;  // sender, message, first argument
  bool closes = true;

 private:
  static constexpr const char* kMessages[] = {
      "",          "Start",  "End",      "Draw",      "Click",    "DClick",    "Key",
      "Char",      "UChar",  "XChar",    "WantFocus", "GotFocus", "LostFocus", "GotMouse",
      "LostMouse", "Idle",   "Radio",    "Wheel",     "LPress",   "LRelease",  "MPress",
      "MRelease",  "RPress", "RRelease", "Timer",     "Tick",     "InitSkin",  "Activate",
      "",          "Scroll", "Move",     "Resize",    "Shape",    "MouseMove", "Close",
      "WantMouse", "WantTab"};

  void Note(const Widget* sender, int msg) {
    const std::string message = std::string{": "} + kMessages[msg];
    if (std::exchange(last_, msg) == msg)
      log_.insert(log_.size() - message.size(), ", " + NameOf(sender));
    else
      log_ += (log_.empty() ? "" : "; ") + NameOf(sender) + message;
  }

  std::string log_;
  int last_ = 0;
};

class StageTest : public AllegroFixture {
 protected:
  static constexpr int kWidth = 160;
  static constexpr int kHeight = 120;

  StageTest() {
    settings.yield = false;
    settings.mouseShadow = false;
    ChangeMode(16);
    install_keyboard();
    clear_keybuf();
    root.Resize(kWidth, kHeight);
    PutMouse(kWidth - 1, kHeight - 1);
  }
  ~StageTest() override {
    End();
    PutMouse(0, 0);
    mouse_b = 0;
    mouse_z = 0;
    SetShifts(0);
  }

  // Without it there is no skin, and so no pointer shape and no rule for the focus.
  void UseSkin() {
    SetCurrentSkin(std::make_unique<Skin>("default"));
    root.SetSkin(nullptr);
  }
  // From here on the root writes down these messages; Expect compares what it wrote since.
  void Watch(std::initializer_list<int> messages) {
    root.watched = messages;
    root.Events();
  }
  void Expect(const char* events, const char* what = "") {
    EXPECT_EQ(root.Events(), events) << what;
  }
  static void ChangeMode(int depth, Dialog* follower = nullptr) {
    ChangeScreenMode(GFX_AUTODETECT_FULLSCREEN, true, kWidth, kHeight, depth, follower);
  }
  void Start() {
    root.MsgStart();
    Tick();
  }
  // Before what a test has put into the root is gone.
  void End() {
    if (root.IsRunning()) root.MsgEnd();
  }
  void Tick(int times = 1) {
    for (; times > 0; --times) {
      clock.Tick(0);
      root.MsgIdle();
    }
  }

  // What happens while a dialog runs its own loop: one step before each of the next ticks. The
  // last one has to end the loop.
  void Script(std::vector<std::function<void()>> steps) {
    settings.yield = true;
    clock.onSleep = [this, steps = std::move(steps), done = std::make_shared<std::size_t>(0)] {
      const std::size_t step = (*done)++;
      if (step < steps.size()) {
        steps[step]();
      } else if (step > steps.size()) {
        ADD_FAILURE() << "still running";
        root.closes = true;
        machine.closeButton();
      }
      clock.Tick(0);
    };
  }

  // Each is followed by a tick.
  void MoveTo(int x, int y) {
    PutMouse(x, y);
    Tick();
  }
  void Press(int buttons = 1) {
    SetButtons(mouse_b | buttons);
    Tick();
  }
  void Release(int buttons = 1) {
    SetButtons(mouse_b & ~buttons);
    Tick();
  }
  void Click(int x, int y) {
    MoveTo(x, y);
    Press();
    Release();
  }
  void Type(int character, int scancode) {
    simulate_ukeypress(character, scancode);
    Tick();
  }
  void Key(int scancode) { Type(0, scancode); }
  static void SetShifts(int shifts) {
    key_shifts = shifts;
    _key_shifts = shifts;
  }
  // As Allegro does it, whatever changes.
  static void SetButtons(int buttons) {
    mouse_b = buttons;
    if (mouse_callback) mouse_callback(MOUSE_FLAG_LEFT_DOWN);
  }
  static void PutMouse(int x, int y) {
    mouse_x = x;
    mouse_y = y;
  }

  // The pixels of the screen.
  static int At(int x, int y) { return getpixel(screen, x, y); }

  FakeMachine machine;
  FakeTimers clock;
  Recorder root;
};

}  // namespace zel
