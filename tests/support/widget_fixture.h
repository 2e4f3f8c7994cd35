// Widgets in a running root dialog with the built-in skin, used the way a person uses them.
#pragma once

#include <cstdio>
#include <functional>
#include <sstream>
#include <string>

#include "tests/support/reference.h"
#include "tests/support/stage.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/testing/picture.h"

namespace zel {

// The root, and in it a black ground, cover a screen of 320 x 200 pixels with 32 bits; the pointer
// begins at its end. The root writes down what the widgets directly in it choose and scroll to.
class WidgetFixture : public StageTest {
 protected:
  WidgetFixture() {
    ground.wantsMouse = false;
    ChangeScreenMode(0, true, 320, 200, 32, nullptr);
    root.Resize(320, 200);
    root.onlyOfChildren = true;
    Watch({MSG_ACTIVATE, MSG_SCROLL});
    PutMouse({319, 199});
    UseSkin();
    root.Add(&ground);
    root.names[&ground] = "ground";
    Start();
    steps = {{"shift", [] { HoldShifts(KB_SHIFT_FLAG); }},
             {"press", [this] { Mouse(mouse_x, mouse_y, 1); }},
             {"release", [this] { Mouse(mouse_x, mouse_y); }},
             {"leave", [this] { root.ChangeFocus(root.FocusWidget(), nullptr); }},
             {"restart", [this] { root.MsgEnd(), root.MsgStart(), root.Events(); }}};
    const std::pair<const char*, int> keys[] = {
        {"left", KEY_LEFT},          {"right", KEY_RIGHT},   {"up", KEY_UP},
        {"down", KEY_DOWN},          {"home", KEY_HOME},     {"end", KEY_END},
        {"pageup", KEY_PGUP},        {"pagedown", KEY_PGDN}, {"enter", KEY_ENTER},
        {"space", KEY_SPACE},        {"escape", KEY_ESC},    {"delete", KEY_DEL},
        {"backspace", KEY_BACKSPACE}};
    for (const auto& [word, key] : keys)
      steps[word] = [this, key] { Type(key == KEY_SPACE ? ' ' : 0, Turned(key)); };
  }
  ~WidgetFixture() override {
    root.onEvent = nullptr;  // it may know what the test had
    End();
  }

  void Show(Widget& widget, const Rect& place) {
    root.names.try_emplace(&widget);
    widget.Shape(place);
    root.Add(&widget);
    widget.SetSkin(nullptr);
    Tick();
    EXPECT_TRUE(IsDressed(widget)) << "it would be dressed with every tick";
  }
  // Draws nothing, unlike the loop's.
  void Tick(int times = 1) {
    while (times-- > 0) root.MsgTick();
  }
  // Moves the pointer, then presses (1) or lets go of its buttons and turns the wheel there; the
  // loop sees both steps.
  void Mouse(int x, int y, int buttons = 0, int wheel = 0) {
    PutMouse({x, y});
    Tick();
    mouse_z = mouse_z + wheel;
    HoldButtons(buttons);
    Tick();
  }
  // Plays a script of words: keys, "shift" for the keys until the step ends, texts to be typed,
  // "20,30" for where the pointer goes, "press", "release", "wheel-2", "wait8" for so many ticks,
  // "leave" when the focus does, "restart" for the root, and the test's own in `steps`. A step is
  // one word, or several that are joined by '+'. Answers how it looks after each step, and in
  // brackets what was reported meanwhile. Each repaints all that changed.
  std::string Play(const std::string& script) {
    std::istringstream all{script};
    std::string seen;
    root.Events();
    for (std::string step; all >> step;) {
      std::istringstream words{step};
      for (std::string word; std::getline(words, word, '+');) Act(word);
      HoldShifts(0);
      EXPECT_TRUE(DrawsEnough()) << step << " in " << script;
      const std::string events = root.Events();
      seen += (seen.empty() ? "" : ", ") + look() + (events.empty() ? "" : " (" + events + ')');
    }
    return seen;
  }
  // What the scripts answer is the reference text of that name.
  void ExpectPlays(const std::string& name, std::initializer_list<const char*> scripts) {
    std::string seen;
    for (const char* script : scripts) seen += script + (": " + Play(script)) + '\n';
    ExpectText(name, seen);
  }

  // The frame with all that is dirty drawn, without the pointer.
  BITMAP* Drawn() {
    CurrentPointer()->Hide();
    settings.showMouse = false;
    root.DrawDirty();
    settings.showMouse = true;
    return CurrentScreenUpdate()->GetCanvas();
  }
  Rows Frame() { return Picture(Drawn()); }
  // What shows there, without the pointer, is the reference picture.
  void ExpectShown(const std::string& picture, const Rect& part) {
    ExpectLook(picture, Drawn(), part);
  }
  // Whether drawing what is dirty has drawn all that changed.
  bool DrawsEnough() {
    const auto pixels = [this] {
      return std::string{static_cast<const char*>(Drawn()->dat), 320 * 200 * 4};
    };
    const std::string inPart = pixels();
    root.Redraw();
    return inPart == pixels();
  }
  void Check() { EXPECT_TRUE(DrawsEnough()); }
  // The pixels that are brought to the screen when that is drawn.
  int Copied() {
    Drawn();
    auto* update = static_cast<DirtyRectangles*>(CurrentScreenUpdate());
    int pixels = 0;
    for (const Rect& rect : update->Pending()) pixels += rect.w * rect.h;
    update->Redraw();
    return pixels;
  }
  // The widget alone, on magenta.
  static Rows Shown(Widget& widget) {
    SkinBitmap canvas(widget.w(), widget.h(), kMemoryBitmap);
    canvas.clear_to_color(magenta);
    widget.Draw(canvas);
    return Picture(canvas.GetBitmap());
  }
  // Letters of 2 x 3 pixels for the texts of a set in one state.
  static void TakeSmallFont(int set, int state) {
    CurrentSkin()->fonts[2]->Load(ZEL_PICTURES "/../toolkit/draw/samples/small.fnt");
    CurrentSkin()->fontIndex[set][state] = 2;
  }
  // Dresses an element of the skin in a picture of letters.
  static void Dress(int element, const Rows& rows, Size tile = {1, 1}) {
    SkinBitmap& bitmap = *CurrentSkin()->bitmaps[element];
    bitmap.Set(Paint(rows).get(), true, kMemoryBitmap);
    bitmap.SetTileSize(tile);
  }

  std::function<std::string()> look = [] { return ""; };  // what Play answers
  Patch ground{{0, 0, 320, 200}, black, false};
  bool isTransposed = false;  // scripts are played as if the screen were turned over

 private:
  static bool IsDressed(Widget& widget) {
    bool isDressed = !widget.TestFlag(kFlagSkinChanged);
    if (const Dialog* dialog = AsDialog(&widget))
      for (Widget* child : dialog->Children()) isDressed = isDressed && IsDressed(*child);
    return isDressed;
  }
  // Left and up change places, right and down as well.
  int Turned(int key) const {
    return isTransposed && key >= KEY_LEFT && key <= KEY_DOWN ? KEY_LEFT + (key - KEY_LEFT + 2) % 4
                                                              : key;
  }
  void Act(const std::string& word) {
    int x = 0, y = 0;
    if (steps.count(word))
      steps.at(word)();
    else if (std::sscanf(word.c_str(), "%d,%d", &x, &y) == 2)
      PutMouse(isTransposed ? Point{y, x} : Point{x, y}), Tick();
    else if (std::sscanf(word.c_str(), "wheel%d", &x) == 1)
      Mouse(mouse_x, mouse_y, mouse_b, isTransposed ? -x : x);
    else if (std::sscanf(word.c_str(), "wait%d", &x) == 1)
      Tick(x);
    else
      for (const char* at = word.c_str(); const int character = ugetxc(&at);) Type(character, 0);
  }
};

}  // namespace zel
