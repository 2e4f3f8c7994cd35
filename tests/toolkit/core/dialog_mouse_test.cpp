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

TEST_F(DialogMouseTest, WhatLiesUnderThePointerIsToldEverything) {
  Patch above{{80, 10, 20, 20}};
  root.Add(&above);
  root.names[&above] = "above";
  settings.doubleClickDelay = 79;
  PutMouse({15, 15});
  Watch({MSG_GOTMOUSE, MSG_LOSTMOUSE, MSG_GOTFOCUS, MSG_LOSTFOCUS, MSG_CLICK, MSG_DCLICK, MSG_WHEEL,
         MSG_LPRESS, MSG_LRELEASE, MSG_MPRESS, MSG_MRELEASE, MSG_RPRESS, MSG_RRELEASE});
  Start();
  Expect("panel, a: GotMouse; a, panel: GotFocus");
  EXPECT_EQ(DoubleClickWindow(), 3);
  std::vector<int> values;
  root.onEvent = [&](Widget* sender, int msg, int value) {
    if (sender == &root && (msg == MSG_WHEEL || msg == MSG_MOUSEMOVE)) values.push_back(value);
  };
  steps["turn"] = [] { mouse_z = mouse_z + 2; };
  steps["back"] = [] { mouse_z = mouse_z - 3; };
  EXPECT_EQ(Play("45,15 55,15 80,30 L l 120,100 turn"),
            "45,15(a: LostMouse; b: GotMouse) 55,15(b: LostMouse) "
            "80,30(panel: LostMouse; above: GotMouse) "
            "L(root: Click; a, panel: LostFocus; above: GotFocus; above: Click; "
            "root, above: LPress) l(root, above: LRelease) 120,100(above: LostMouse) "
            "turn(root: Wheel)");
  steps["hide"] = [&] { above.Hide(); };
  steps["disable"] = [&] { above.Disable(); };
  steps["refuse"] = [&] { above.wantsMouse = false; };
  steps["show"] = [&] { above.Unhide(), above.Enable(); };
  EXPECT_EQ(Play("90,20 back hide L l show turn disable R r show turn refuse M m"),
            "90,20(above: GotMouse) back(root, above: Wheel) hide(above: LostMouse; c: GotMouse) "
            "L(root: Click; above: LostFocus; c: GotFocus; c: Click; root, c: LPress) "
            "l(root, c: LRelease) turn(c: LostMouse; above: GotMouse; root, above: Wheel) "
            "disable(above: LostMouse; c: GotMouse) R(root, c: Click; root, c: RPress) "
            "r(root, c: RRelease) turn(c: LostMouse; above: GotMouse; root, above: Wheel) "
            "M(above: LostMouse; c: GotMouse; root, c: Click; root, c: MPress) "
            "m(root, c: MRelease)");
  steps["capture"] = [this] {
    b.SetFlag(kFlagPressed);
    a.wantsFocus = false;
    root.SetFocus(&b);
  };
  steps["press"] = [] { PutMouse({15, 15}), HoldButtons(1); };
  EXPECT_EQ(Play("capture press R M r m l"),
            "capture(b: GotFocus; c: LostFocus; panel: GotFocus) "
            "press(c: LostMouse; panel, a: GotMouse; root, panel, a: Click; "
            "root, panel, b, a: LPress) "
            "R(root, panel, a: Click; root, panel, b, a: RPress) "
            "M(root, panel, a: Click; root, panel, b, a: MPress) r(root, panel, b, a: RRelease) "
            "m(root, panel, b, a: MRelease) l(root, panel, b, a: LRelease)");
  EXPECT_EQ(values, std::vector({30, 10, 25, 40, 2, -30, -3, 2, 2, -75}));
  Watch({MSG_DCLICK, MSG_MOUSEMOVE});
  EXPECT_EQ(Play("L l L wait l R r R wait r M m M wait m 45,15 55,15"),
            "wait(root, panel, a: DClick) wait(root, panel, a: DClick) "
            "wait(root, panel, a: DClick) 45,15(root, panel, b, a, b: MouseMove) "
            "55,15(root, panel, b: MouseMove)");
  root.MsgEnd();
  Start();
  EXPECT_FALSE(root.TestFlag(kFlagPressed) || panel.TestFlag(kFlagPressed)) << "in a new run";
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
  for (const int fatal : {MSG_GOTMOUSE, MSG_LOSTMOUSE, MSG_MOUSEMOVE, MSG_GOTFOCUS, MSG_CLICK,
                          MSG_LPRESS, MSG_LRELEASE, MSG_DCLICK}) {
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

TEST_F(DialogMouseTest, DraggingMovesTheEdgesOfItsModeAndNoOthers) {
  Draggable window;
  root.Add(&window);
  Start();
  const struct {
    int mode, cursor;
    Rect little, upAndLeft, downAndRight;  // by (3, 2) pixels, by -300 each, by 300 each
  } kRows[] = {
      {kDragMove, MOUSE_NORMAL, {11, 11, 50, 30}, {0, 0, 50, 30}, {308, 309, 50, 30}},
      {kDragTopLeft, MOUSE_SIZE_DIAGONAL1, {11, 11, 47, 28}, {0, 0, 58, 39}, {38, 31, 20, 8}},
      {kDragTopRight, MOUSE_SIZE_DIAGONAL2, {8, 11, 53, 28}, {8, 0, 20, 39}, {8, 31, 350, 8}},
      {kDragBottomLeft, MOUSE_SIZE_DIAGONAL2, {11, 9, 47, 32}, {0, 9, 58, 8}, {38, 9, 20, 330}},
      {kDragBottomRight, MOUSE_SIZE_DIAGONAL1, {8, 9, 53, 32}, {8, 9, 20, 8}, {8, 9, 350, 330}},
      {kDragTop, MOUSE_SIZE_VERTICAL, {8, 11, 50, 28}, {8, 0, 50, 39}, {8, 31, 50, 8}},
      {kDragBottom, MOUSE_SIZE_VERTICAL, {8, 9, 50, 32}, {8, 9, 50, 8}, {8, 9, 50, 330}},
      {kDragLeft, MOUSE_SIZE_HORIZONTAL, {11, 9, 47, 30}, {0, 9, 58, 30}, {38, 9, 20, 30}},
      {kDragRight, MOUSE_SIZE_HORIZONTAL, {8, 9, 53, 30}, {8, 9, 20, 30}, {8, 9, 350, 30}}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.mode);
    window.Shape(8, 9, 50, 30);
    window.SetFlag(kFlagMovable | kFlagSizeable);
    MoveTo(20, 20);
    window.mode = row.mode;  // its shape may have changed under the resting pointer
    Press();
    EXPECT_EQ(CurrentPointer()->GetCursor(), CurrentSkin()->cursors[row.cursor].get());
    window.mode = kDragNone;
    const int draws = b.draws;
    MoveTo(-280, -280);
    EXPECT_EQ(window.Bounds(), row.upAndLeft);
    MoveTo(320, 320);
    EXPECT_EQ(window.Bounds(), row.downAndRight);
    MoveTo(23, 22);
    EXPECT_EQ(window.Bounds(), row.little) << "the grip stays under the pointer";
    EXPECT_GT(b.draws, draws) << "what it covered shows again";
    window.ClearFlag(row.mode == kDragMove ? kFlagMovable : kFlagSizeable);
    MoveTo(30, 20);
    Release();
    MoveTo(0, 0);
    EXPECT_EQ(CurrentPointer()->GetCursor(), CurrentSkin()->cursors[MOUSE_NORMAL].get());
    EXPECT_EQ(window.Bounds(), row.little) << "neither without the flag nor after the release";
  }
  EXPECT_EQ(Dragged(kDragTopLeft, {2, 2, 9, 4}, {-3, -3}, {20, 8}), Rect(0, 0, 20, 8));
}

}  // namespace
}  // namespace zel
