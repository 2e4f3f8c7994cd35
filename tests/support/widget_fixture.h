// Widgets in a running root dialog with the built-in skin, used the way a person uses them.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "tests/support/allegro_fixture.h"
#include "tests/support/fake_machine.h"
#include "tests/support/fake_timers.h"
#include "tests/support/picture.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/screen_update.h"
#include "toolkit/core/startup.h"
#include "toolkit/skin/skin.h"

namespace zel {

// One report of a widget to its container.
struct Event {
  int msg;
  EventArg arg;
  bool operator==(const Event&) const = default;
};
using Events = std::vector<Event>;

// Notes what the widgets directly in it report: that they were pressed, chosen or scrolled, and the
// application's messages.
class RecordingDialog : public Dialog {
 public:
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override {
    const bool noted = msg == MSG_ACTIVATE || msg == MSG_SCROLL || msg >= kFirstApplicationMessage;
    if (noted && sender->GetParent() == this) {
      events_.push_back({msg, arg1});
      if (onEvent) onEvent(events_.back());
    }
    Dialog::HandleEvent(sender, msg, arg1, arg2);
  }
  // What was reported since the last call.
  Events Take() { return std::exchange(events_, {}); }

  std::function<void(Event)> onEvent;  // what the application does then

 private:
  Events events_;
};

// The root covers a screen of 320 x 200 pixels with 32 bits; the pointer begins in its last pixel.
// Widgets are added with Show. The test's own members are gone before the root is.
class WidgetFixture : public AllegroFixture {
 protected:
  WidgetFixture() : AllegroFixture{32} {
    MoveMouse(319, 199);
    root.MsgStart();
  }
  ~WidgetFixture() override {
    root.MsgEnd();
    MoveMouse(0, 0);
    mouse_b = 0;
    mouse_z = 0;
  }

  void Show(Widget& widget, const Rect& place) {
    widget.Shape(place);
    root.Add(&widget);
    Tick();
    root.Take();
  }
  void Tick(int times = 1) {
    for (int i = 0; i < times; ++i) root.MsgTick();
  }
  // The pointer, in pixels of the screen; the loop sees each step.
  void MoveTo(int x, int y) {
    MoveMouse(x, y);
    Tick();
  }
  void Hold(int x, int y) {
    MoveTo(x, y);
    mouse_b = 1;
    Tick();
  }
  void Release() {
    mouse_b = 0;
    Tick();
  }
  void Click(int x, int y) {
    Hold(x, y);
    Release();
  }
  void Wheel(int steps) {
    mouse_z = mouse_z + steps;
    Tick();
  }
  // A key with the character that it types; true when a widget or the root used it.
  bool Press(int scancode, int character = 0) { return root.HandleKey(character, scancode); }
  void PressTimes(int times, int scancode) {
    for (int i = 0; i < times; ++i) Press(scancode);
  }

  // The frame with all that is dirty drawn, without the pointer.
  BITMAP* Frame() {
    settings.showMouse = false;
    root.DrawDirty();
    settings.showMouse = true;
    return CurrentScreenUpdate()->GetCanvas();
  }
  // The widget alone, on magenta.
  static SkinBitmap Drawn(Widget& widget) {
    SkinBitmap canvas(widget.w(), widget.h(), kMemoryBitmap);
    canvas.clear_to_color(magenta);
    widget.Draw(canvas);
    return canvas;
  }
  // Dresses an element of the skin in a picture of letters.
  static void Dress(int element, const Rows& rows, Size tile) {
    SkinBitmap& bitmap = *CurrentSkin()->bitmaps[element];
    bitmap.Set(Paint(rows).get(), true, kMemoryBitmap);
    bitmap.SetTileSize(tile);
  }

 private:
  struct SkinnedScreen {
    SkinnedScreen() {
      ChangeScreenMode(0, true, 320, 200, 32, nullptr);
      SetCurrentSkin(std::make_unique<Skin>("default"));
    }
    ~SkinnedScreen() { SetCurrentSkin(nullptr); }
  };
  static void MoveMouse(int x, int y) {
    mouse_x = x;
    mouse_y = y;
  }

  FakeMachine machine_;
  FakeTimers timers_;
  SkinnedScreen screen_;

 protected:
  RecordingDialog root;
};

}  // namespace zel
