#include "tests/support/stage.h"
#include "toolkit/core/mouse_pointer.h"

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
    root.names = {{&a, 'a'}, {&b, 'b'}, {&c, 'c'}, {&panel, 'p'}, {&root, 'r'}};
    UseSkin();
    root.SetSkin(nullptr);
    CurrentSkin()->focus = 2;  // stays where it is
  }
  ~DialogMouseTest() override {
    if (root.IsRunning()) root.MsgEnd();
  }

  Dialog panel;
  Patch a{{0, 0, 20, 20}}, b{{20, 0, 20, 20}}, c{{80, 10, 20, 20}};
};

TEST_F(DialogMouseTest, ThePointerEntersAndLeavesFromTheInsideOut) {
  Watch({MSG_GOTMOUSE, MSG_LOSTMOUSE});
  PutMouse(15, 15);
  Start();
  Expect("p13 a13 ", "found at the start");
  const auto expect = [this](int x, int y, Widget* found, const char* events) {
    MoveTo(x, y);
    EXPECT_EQ(root.MouseWidget(), found);
    Expect(events);
  };
  expect(45, 15, &b, "a14 b13 ");
  expect(55, 15, &panel, "b14 ");
  expect(80, 30, &c, "p14 c13 ");  // all edges count
  expect(120, 100, nullptr, "c14 ");
}

TEST_F(DialogMouseTest, ADialogThatIsTakenInFindsThePointerAndTheFocusInItself) {
  root.MsgStart();
  PutMouse(15, 15);
  Tick();
  Watch({MSG_END, MSG_GOTMOUSE, MSG_LOSTMOUSE, MSG_GOTFOCUS, MSG_LOSTFOCUS});
  for (const bool outside : {false, true}) {
    root.Remove(&panel);
    Expect("a14 p14 a2 b2 p2 ");
    EXPECT_FALSE(a.HasFocus());
    if (outside) root.SetFocus(&c);
    root.Events();
    root.Add(&panel);
    Expect(outside ? "p13 a13 a11 " : "p13 a13 a11 p11 ");
  }
  root.MsgEnd();
  Patch cover{{10, 10, 20, 20}};
  root.Add(&cover);
  root.Events();
  Start();
  Expect("?13 ?11 ", "what covers it has both");
}

TEST_F(DialogMouseTest, WhatIsHiddenDisabledOrUnwillingIsPassedOver) {
  Patch above{{80, 10, 20, 20}};
  root.Add(&above);
  Start();
  Watch({MSG_CLICK, MSG_LPRESS, MSG_WHEEL});
  for (const int way : {0, 1, 2}) {
    mouse_z = way + 1;
    MoveTo(90, 20);
    Expect("r17 ?17 ");
    if (way == 0) above.Hide();
    if (way == 1) above.Disable();
    if (way == 2) above.wantsMouse = false;
    Click(90, 20);
    Expect("r4 c4 r18 c18 ", "even before the pointer moves");
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
  Expect("r4 c12 p11 p4 a11 a4 r18 p18 a18 ");
  Press(2 | 4);
  Expect("r4 p4 a4 r22 p22 a22 r4 p4 a4 r20 p20 a20 ");
  Release(1 | 2 | 4);
  Expect("r19 p19 a19 r23 p23 a23 r21 p21 a21 ");
  c.wantsFocus = false;
  Click(90, 20);
  Expect("r4 c4 r18 c18 r19 c19 ");
  root.SetFocus(&b);
  b.SetFlag(kFlagPressed);  // captures the buttons
  MoveTo(15, 15);
  root.Events();
  Release();
  root.MsgLPress();
  Expect("r18 p18 b18 a18 ");
  root.MsgEnd();
  Start();
  EXPECT_FALSE(root.TestFlag(kFlagPressed) || panel.TestFlag(kFlagPressed)) << "in a new run";
}

TEST_F(DialogMouseTest, ASecondPressInTimeIsADoubleClickOnTheNextTick) {
  settings.doubleClickDelay = 200;  // ten ticks
  PutMouse(90, 20);
  Start();
  const auto expect = [this](int first, int pause, int second, const char* events) {
    Watch({MSG_DCLICK});
    Press(first);
    Release(first);
    Tick(pause - 1);
    Press(second);
    Expect("");
    Release(second);
    Expect(events);
    Tick(12);
    Expect("");
  };
  for (const int button : {1, 2, 4}) {
    for (const int pause : {1, 2, 9}) expect(button, pause, button, "r5 c5 ");
    expect(button, 10, button, "");
    expect(button, 2, 7 - button, "");
  }
  expect(7, 2, 1, "r5 c5 ");  // the left one counts
  expect(7, 2, 4, "");
}

TEST_F(DialogMouseTest, MovesAndTurnsAreReportedAsDifferences) {
  PutMouse(60, 20);
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
  const char* const kFocused[] = {"c-apa--", "ccaaaaa", "ccccccc"};
  for (const int rule : {0, 1, 2}) {
    CurrentSkin()->focus = rule;
    root.SetFocus(&c);
    c.SetFlag(kFlagPressed);  // captures the mouse until the pointer is on nothing
    std::string focused;
    for (const int x : {15, 120, 15, 40, 15, 22, 120}) {
      if (x == 120) c.ClearFlag(kFlagPressed);
      MoveTo(x, 15);
      focused += root.FocusWidget() ? root.names[root.FocusWidget()] : '-';
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
  // What a move of (+3, +2) makes of a window at (40, 40) of 50 x 30 pixels.
  const auto expect = [&](int mode, int shape, const Rect& after) {
    window.Shape(40, 40, 50, 30);
    window.SetFlag(kFlagMovable | kFlagSizeable);
    root.SetFocus(&window);
    window.mode = mode;
    MoveTo(60, 50);
    MoveTo(61, 50);
    EXPECT_EQ(CurrentPointer()->GetCursor(), CurrentSkin()->cursors[shape].get()) << mode;
    Press();
    window.mode = kDragNone;
    MoveTo(64, 52);
    EXPECT_EQ(window.Bounds(), after) << mode;
    MoveTo(-300, -300);
    EXPECT_TRUE(window.x() >= 0 && window.y() >= 0 && window.w() >= 20 && window.h() >= 8) << mode;
    MoveTo(64, 52);
    EXPECT_EQ(window.Bounds(), after) << "the grip stays under the pointer: " << mode;
    window.ClearFlag(mode == kDragMove ? kFlagMovable : kFlagSizeable);
    MoveTo(70, 60);
    Release();
    MoveTo(60, 50);
    EXPECT_EQ(CurrentPointer()->GetCursor(), CurrentSkin()->cursors[4].get()) << "after " << mode;
    MoveTo(0, 0);
    EXPECT_EQ(window.Bounds(), after) << mode;
  };
  expect(kDragMove, 4, {43, 42, 50, 30});
  expect(kDragTopLeft, 6, {43, 42, 47, 28});
  expect(kDragTopRight, 7, {40, 42, 53, 28});
  expect(kDragBottomLeft, 7, {43, 40, 47, 32});
  expect(kDragBottomRight, 6, {40, 40, 53, 32});
  expect(kDragTop, 9, {40, 42, 50, 28});
  expect(kDragBottom, 9, {40, 40, 50, 32});
  expect(kDragLeft, 8, {43, 40, 47, 30});
  expect(kDragRight, 8, {40, 40, 53, 30});
}

}  // namespace
}  // namespace zel
