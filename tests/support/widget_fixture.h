// Widgets in a running root dialog with the built-in skin, used the way a person uses them.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <sstream>
#include <string>

#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/startup.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/skin/skin.h"
#include "toolkit/testing/fake_machine.h"
#include "toolkit/testing/picture.h"

namespace zel {

// Notes what the widgets directly in it report: " A0" stands for MSG_ACTIVATE with 0, " S7" for
// MSG_SCROLL with 7.
class RecordingDialog : public Dialog {
 public:
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override {
    const bool isDirect = sender->GetParent() == this;
    Dialog::HandleEvent(sender, msg, arg1, arg2);
    if (!isDirect) return;
    if (msg == MSG_ACTIVATE || msg == MSG_SCROLL)
      events_ += (msg == MSG_SCROLL ? " S" : " A") + std::to_string(arg1);
    if (onEvent) onEvent(msg, static_cast<int>(arg1));
  }
  // What was reported since the last call.
  std::string Take() { return std::exchange(events_, {}); }

  std::function<void(int msg, int arg)> onEvent;  // what the application does at any report

 private:
  std::string events_;
};

// The root covers a screen of 320 x 200 pixels with 32 bits; the pointer begins at its end. The
// members of a test, added with Show, are gone before the root is.
class WidgetFixture : public AllegroFixture {
 protected:
  WidgetFixture() : AllegroFixture{32} {
    ChangeScreenMode(0, true, 320, 200, 32, nullptr);
    SetCurrentSkin(std::make_unique<Skin>("default"));
    root.emplace().MsgStart();
    Mouse(319, 199);
  }
  ~WidgetFixture() override {
    root->onEvent = nullptr;  // it may know what the test had
    Mouse(0, 0);
    root->MsgEnd();
    root.reset();
  }

  void Show(Widget& widget, const Rect& place) {
    widget.Shape(place);
    root->Add(&widget);
    Tick();
    root->Take();
  }
  void Tick(int times = 1) {
    while (times-- > 0) root->MsgTick();
  }
  // Moves the pointer, then presses (1) or lets go of its buttons and turns the wheel there; the
  // loop sees both steps.
  void Mouse(int x, int y, int buttons = 0, int wheel = 0) {
    mouse_x = x;
    mouse_y = y;
    Tick();
    mouse_b = buttons;
    mouse_z = mouse_z + wheel;
    Tick();
  }
  void Click(int x, int y) {
    Mouse(x, y, 1);
    Mouse(x, y);
  }
  void Drag(int x, int y, int toX, int toY) {
    Mouse(x, y, 1);
    Mouse(toX, toY, 1);
    Mouse(toX, toY);
  }
  // Does what the words of a script stand for; answers what there is to see and what was reported
  // after each.
  using Steps = std::map<std::string, std::function<void()>>;
  std::string Play(const std::string& script, const Steps& steps,
                   const std::function<std::string()>& look) {
    std::istringstream words{script};
    std::string seen;
    root->Take();
    for (std::string word; words >> word;) {
      steps.at(word)();
      seen += (seen.empty() ? "" : ", ") + look() + root->Take();
    }
    return seen;
  }
  // A key and the character that it types; true when a widget or the root used it.
  bool Press(int scancode, int character = 0) { return root->HandleKey(character, scancode); }

  // The frame with all that is dirty drawn, without the pointer.
  Rows Frame() {
    settings.showMouse = false;
    root->DrawDirty();
    settings.showMouse = true;
    return Picture(CurrentScreenUpdate()->GetCanvas());
  }
  // What shows there, without the pointer, is the reference picture.
  void ExpectShown(const std::string& picture, const Rect& part) {
    Frame();
    ExpectLook(picture, CurrentScreenUpdate()->GetCanvas(), part);
  }
  // Whether drawing what is dirty has drawn all that changed.
  bool DrawsEnough() {
    const Rows inPart = Frame();
    root->Redraw();
    return inPart == Frame();
  }
  // The pixels that are brought to the screen when that is drawn.
  int Copied() {
    Frame();
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
  // Dresses an element of the skin in a picture of letters.
  static void Dress(int element, const Rows& rows, Size tile = {1, 1}) {
    SkinBitmap& bitmap = *CurrentSkin()->bitmaps[element];
    bitmap.Set(Paint(rows).get(), true, kMemoryBitmap);
    bitmap.SetTileSize(tile);
  }

  FakeMachine machine;
  std::optional<RecordingDialog> root;
};

}  // namespace zel
