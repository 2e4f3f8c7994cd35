// The toolkit's stage as a fixture, and a widget to put on it.
#pragma once

#include "tests/support/allegro_fixture.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/core/startup.h"
#include "toolkit/skin/skin.h"
#include "toolkit/testing/hands.h"
#include "toolkit/testing/stage.h"

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

class StageTest : public AllegroFixture, protected Stage {
 protected:
  ~StageTest() override { EXPECT_FALSE(HasRunOn()); }

  // Compares what the root wrote since it was told to watch.
  void Expect(const char* events, const char* what = "") {
    EXPECT_EQ(root.Events(), events) << what;
  }
};

}  // namespace zel
