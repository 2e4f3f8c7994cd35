#include "tests/support/stage.h"
#include "toolkit/core/event_loop.h"

namespace zel {
namespace {

// Drags whatever the test says.
struct Draggable : Dialog {
  int GetDragMode() override { return mode; }
  int mode = kDragNone;
};

// Two patches side by side in a panel, and one beside the panel:
//   x 10..30 a, 30..50 b, both in the panel of 10..60; c at 80..100; y 10..30
class DialogMouseTest : public StageTest {
 protected:
  DialogMouseTest() {
    panel.Shape(10, 10, 50, 20);
    panel.Add(&a);
    panel.Add(&b);
    root.Add(&panel);
    root.Add(&c);
    root.names = {{&a, "a"}, {&b, "b"}, {&c, "c"}, {&panel, "panel"}};
    UseSkin();
    CurrentSkin()->focus = 2;  // stays where it is
  }
  ~DialogMouseTest() override { End(); }

  Dialog panel;
  Patch a{{0, 0, 20, 20}}, b{{20, 0, 20, 20}}, c{{80, 10, 20, 20}};
};

TEST_F(DialogMouseTest, ThePointerEntersAndLeavesFromTheInsideOut) {
  Watch({MSG_GOTMOUSE, MSG_LOSTMOUSE});
  PutMouse({15, 15});
  Start();
  Expect("panel, a: GotMouse", "found at the start");
  const auto expect = [this](int x, int y, Widget* found, const char* events) {
    MoveTo(x, y);
    EXPECT_EQ(root.MouseWidget(), found);
    Expect(events);
  };
  expect(45, 15, &b, "a: LostMouse; b: GotMouse");
  expect(55, 15, &panel, "b: LostMouse");
  expect(80, 30, &c, "panel: LostMouse; c: GotMouse");  // all edges count
  expect(120, 100, nullptr, "c: LostMouse");
}

TEST_F(DialogMouseTest, ADialogThatIsTakenInFindsThePointerAndTheFocusInItself) {
  root.MsgStart();
  PutMouse({15, 15});
  Tick();
  Watch({MSG_END, MSG_GOTMOUSE, MSG_LOSTMOUSE, MSG_GOTFOCUS, MSG_LOSTFOCUS});
  for (const bool outside : {false, true}) {
    root.Remove(&panel);
    Expect("a, panel: LostMouse; a, b, panel: End");
    EXPECT_FALSE(a.HasFocus());
    if (outside) root.SetFocus(&c);
    root.Events();
    root.Add(&panel);
    Expect(outside ? "panel, a: GotMouse; a: GotFocus" : "panel, a: GotMouse; a, panel: GotFocus");
  }
  root.MsgEnd();
  Patch cover{{10, 10, 20, 20}};
  root.Add(&cover);
  root.Events();
  Start();
  Expect("?: GotMouse; ?: GotFocus", "what covers it has both");
}

TEST_F(DialogMouseTest, WhatIsHiddenDisabledOrUnwillingIsPassedOver) {
  Patch above{{80, 10, 20, 20}};
  root.Add(&above);
  Start();
  Watch({MSG_CLICK, MSG_LPRESS, MSG_WHEEL});
  for (const int way : {0, 1, 2}) {
    mouse_z = way + 1;
    MoveTo(90, 20);
    Expect("root, ?: Wheel");
    if (way == 0) above.Hide();
    if (way == 1) above.Disable();
    if (way == 2) above.wantsMouse = false;
    Click(90, 20);
    Expect("root, c: Click; root, c: LPress", "even before the pointer moves");
    above.Unhide();
    above.Enable();
  }
}

TEST_F(DialogMouseTest, AClickGivesTheFocusAndIsPassedOn) {
  Start();
  root.SetFocus(&c);
  MoveTo(15, 15);
  Watch({4, 18, 19, 20, 21, 22, 23, MSG_GOTFOCUS, MSG_LOSTFOCUS});
  Press();
  Expect(
      "root: Click; c: LostFocus; panel: GotFocus; panel: Click; a: GotFocus; a: Click; root, "
      "panel, a: LPress");
  Press(2 | 4);
  Expect(
      "root, panel, a: Click; root, panel, a: RPress; root, panel, a: Click; root, panel, a: "
      "MPress");
  Release(1 | 2 | 4);
  Expect("root, panel, a: LRelease; root, panel, a: RRelease; root, panel, a: MRelease");
  c.wantsFocus = false;
  Click(90, 20);
  Expect("root, c: Click; root, c: LPress; root, c: LRelease");
  root.SetFocus(&b);
  b.SetFlag(kFlagPressed);  // captures the buttons
  MoveTo(15, 15);
  root.Events();
  Release();
  root.MsgLPress();
  Expect("root, panel, b, a: LPress");
  root.MsgEnd();
  Start();
  EXPECT_FALSE(root.TestFlag(kFlagPressed) || panel.TestFlag(kFlagPressed)) << "in a new run";
}

TEST_F(DialogMouseTest, ASecondPressInTimeIsADoubleClickOnTheNextTick) {
  settings.doubleClickDelay = 219;
  PutMouse({90, 20});
  Start();
  EXPECT_EQ(DoubleClickWindow(), 10);
  Watch({MSG_DCLICK});
  for (const int button : {1, 2, 4}) {
    for (int press = 0; press < 2; ++press) Release(button), Press(button);
    Expect("");
    Tick();
    Expect("root, c: DClick");
  }
}

TEST_F(DialogMouseTest, MovesAndTurnsAreReportedAsDifferences) {
  PutMouse({60, 20});
  Start();
  std::vector<int> values;
  root.onEvent = [&](Widget* sender, int msg, int value) {
    if (sender == &c && (msg == MSG_WHEEL || msg == MSG_MOUSEMOVE)) values.push_back(value);
  };
  MoveTo(90, 20);
  mouse_z = 3;
  MoveTo(95, 20);
  mouse_z = -1;
  Tick();
  EXPECT_EQ(values, std::vector({30, 5, 3, -4}));
}

TEST_F(DialogMouseTest, TheFocusFollowsThePointerAsTheSkinSays) {
  b.wantsFocus = false;
  Patch cover{{20, 0, 5, 50}, green, false};
  root.Add(&cover);
  Start();
  const char* const kFocused[] = {"cnapann", "ccaaaaa", "ccccccc"};
  for (const int rule : {0, 1, 2}) {
    CurrentSkin()->focus = rule;
    root.SetFocus(&c);
    c.SetFlag(kFlagPressed);  // captures the mouse until the pointer is on nothing
    std::string focused;
    for (const int x : {15, 120, 15, 40, 15, 22, 120}) {
      if (x == 120) c.ClearFlag(kFlagPressed);
      MoveTo(x, 15);
      focused += root.NameOf(root.FocusWidget())[0];
    }
    EXPECT_EQ(focused, kFocused[rule]);
  }
}

TEST_F(DialogMouseTest, HandlersMayDestroyWhatTheyHandle) {
  CurrentSkin()->focus = 1;
  for (const int fatal : {13, 14, MSG_MOUSEMOVE, MSG_GOTFOCUS, 4, 18, 19, MSG_DCLICK}) {
    auto inner = std::make_unique<Patch>(Rect{0, 0, 20, 20});
    auto outer = std::make_unique<Patch>(Rect{80, 40, 20, 20});
    panel.Add(inner.get());
    root.Add(outer.get());
    Start();
    root.onEvent = [&](Widget* sender, int msg, int) {
      if (msg != fatal) return;
      if (sender == inner.get()) inner.reset();
      if (sender == outer.get()) outer.reset();
    };
    for (const Point p : {Point{15, 15}, Point{90, 50}, Point{0, 0}})
      for (int click = 0; click < 2; ++click) Click(p.x, p.y);
    EXPECT_EQ(inner, nullptr) << fatal;
    EXPECT_EQ(outer, nullptr) << fatal;
    root.onEvent = nullptr;
    root.MsgEnd();
  }
}

TEST_F(DialogMouseTest, DraggingMovesOrResizesADialog) {
  Draggable window;
  root.Add(&window);
  Start();
  const auto& shapes = CurrentSkin()->cursors;
  // What a move of (+3, +2) makes of a window at (40, 40) of 50 x 30 pixels.
  const auto expect = [&](int mode, int shape, const Rect& after) {
    window.Shape(40, 40, 50, 30);
    window.SetFlag(kFlagMovable | kFlagSizeable);
    root.SetFocus(&window);
    window.mode = mode;
    MoveTo(60, 50);
    EXPECT_EQ(CurrentPointer()->GetCursor(), shapes[shape].get()) << mode;
    Press();
    window.mode = kDragNone;
    const int draws = b.draws;
    MoveTo(63, 52);
    EXPECT_EQ(window.Bounds(), after) << mode;
    MoveTo(-300, -300);
    MoveTo(63, 52);
    EXPECT_EQ(window.Bounds(), after) << "the grip stays under the pointer: " << mode;
    EXPECT_GT(b.draws, draws) << "what it covered shows again";
    window.ClearFlag(mode == kDragMove ? kFlagMovable : kFlagSizeable);
    MoveTo(70, 60);
    Release();
    MoveTo(0, 0);
    EXPECT_EQ(CurrentPointer()->GetCursor(), shapes[MOUSE_NORMAL].get()) << "after " << mode;
    EXPECT_EQ(window.Bounds(), after) << "neither without the flag nor after the release: " << mode;
  };
  expect(kDragMove, MOUSE_NORMAL, {43, 42, 50, 30});
  expect(kDragTopLeft, MOUSE_SIZE_DIAGONAL1, {43, 42, 47, 28});
  expect(kDragBottomRight, MOUSE_SIZE_DIAGONAL1, {40, 40, 53, 32});
}

}  // namespace
}  // namespace zel
