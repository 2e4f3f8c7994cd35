// The toolkit's stage as a fixture, and a widget to put on it.
#pragma once

#include <cstdio>
#include <sstream>

#include "tests/support/allegro_fixture.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/core/startup.h"
#include "toolkit/skin/skin.h"
#include "toolkit/testing/hands.h"
#include "toolkit/testing/stage.h"

namespace zel {

// "exit dirty" for the flags of a widget; "bit16" for one that means something in its kind only.
inline std::string FlagNames(std::uint32_t flags) {
  static constexpr const char* kNames[] = {
      "exit",      "selected", "focus",   "mouse",       "hidden",       "disabled",
      "dirty",     "bit7",     "moved",   "resized",     "skin changed", "starts to move",
      "container", "window",   "pressed", "sizes itself"};
  std::string names;
  for (std::size_t bit = 0; bit < 32; ++bit)
    if (flags >> bit & 1)
      names += (names.empty() ? "" : ", ") +
               (bit < std::size(kNames) ? kNames[bit] : "bit" + std::to_string(bit));
  return names.empty() ? "none" : names;
}

// Paints its area in one colour and counts how often.
class Patch : public Widget {
 public:
  explicit Patch(const Rect& area = {}, Color fill = red, bool focusable = true)
      : color{fill}, wantsFocus{focusable} {
    Shape(area);
  }
  void Draw(Bitmap& canvas) override {
    ++draws;
    canvas.clear_to_color(color);
  }
  // Who hears of it may destroy the patch.
  bool MsgWantFocus() override {
    return wantsFocus ? !Widget::MsgWantFocus() : Widget::MsgWantFocus();
  }
  bool MsgWantMouse() override { return Widget::MsgWantMouse() && wantsMouse; }
  bool MsgChar(int code) override { return Widget::MsgChar(code), usesKeys; }
  bool MsgXChar(int code) override { return Widget::MsgXChar(code), usesKeys; }
  using Widget::SetOpaque;

  Color color;
  bool wantsFocus;
  bool wantsMouse = true;
  bool usesKeys = false;
  int draws = 0;
};

class StageTest : public AllegroFixture, protected Stage {
 protected:
  StageTest() {
    for (const int button : {0, 1, 2}) {
      steps[{"LRM"[button]}] = [button] { HoldButtons(mouse_b | 1 << button); };
      steps[{"lrm"[button]}] = [button] { HoldButtons(mouse_b & ~(1 << button)); };
    }
  }
  ~StageTest() override { EXPECT_FALSE(HasRunOn()); }

  // Which of the skin's shapes the pointer has.
  static int PointerShape() {
    int shape = 0;
    while (CurrentSkin()->cursors[shape].get() != CurrentPointer()->GetCursor()) ++shape;
    return shape;
  }
  // Does what the words of a script stand for, and lets the clock tick after each: "15,20" puts the
  // pointer there, "L", "R" and "M" press a button, "l", "r" and "m" let go of it, "wait" does
  // nothing, a test may have steps of its own. Answers which of them made the root write something,
  // and what: "15,20(a: GotMouse)".
  std::string Play(const std::string& script) {
    std::istringstream words{script};
    std::string told;
    for (std::string word; words >> word;) {
      Do(word);
      Tick();
      const std::string events = root.Events();
      if (!events.empty()) told += (told.empty() ? "" : " ") + word + '(' + events + ')';
    }
    return told;
  }
  // The same while a dialog runs its own loop: the last word has to end it.
  void Meanwhile(const std::string& script) {
    std::istringstream words{script};
    std::vector<std::function<void()>> acts;
    for (std::string word; words >> word;) acts.push_back([this, word] { Do(word); });
    Script(acts);
  }

  std::map<std::string, std::function<void()>> steps{{"wait", [] {}}};

 private:
  void Do(const std::string& word) {
    int x = 0, y = 0;
    if (std::sscanf(word.c_str(), "%d,%d", &x, &y) == 2)
      PutMouse({x, y});
    else
      steps.at(word)();
  }
};

}  // namespace zel
