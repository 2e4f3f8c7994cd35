#include "toolkit/core/dialog.h"

#include "tests/support/stage.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/testing/picture.h"

namespace zel {
namespace {

class DialogTest : public StageTest {
 protected:
  DialogTest() {
    below.SetAnimationProperties(20, 6);
    popup.Resize(30, 30);
    popup.Add(&inside);
    root.names = {{&below, "below"}, {&popup, "popup"}, {&inside, "inside"}};
    steps["close"] = [this] { popup.Close(); };
    steps["leave"] = [this] { root.Close(); };
  }
  ~DialogTest() override { End(); }
  void StartWithFocus() {
    root.Add(&below);
    Start();
    root.SetFocus(&below);
  }

  Patch below{{0, 0, 60, 60}}, inside{{0, 0, 20, 20}, blue};
  Dialog popup;
};

TEST_F(DialogTest, AWidgetLivesInOneDialogWhichStartsAndEndsIt) {
  Watch({MSG_START, MSG_END, MSG_INITSKIN, MSG_DRAW});
  EXPECT_TRUE(popup.Add(&below) && root.Add(&below) && root.Add(&popup));
  EXPECT_FALSE(root.Add(&below) || root.Add(&root) || popup.Add(&root) || popup.Add(nullptr));
  root.Remove(&popup);
  popup.Remove(&below);
  Expect("");
  auto brief = std::make_unique<Patch>(Rect{70, 0, 20, 20});
  steps["start"] = [this] { root.MsgStart(); };
  steps["out"] = [this] { root.Remove(&below); };
  steps["in"] = [&] { root.Add(&below), root.Add(brief.get()); };
  EXPECT_EQ(Play("start out in"),
            "start(root: Start; below, below, root: InitSkin; below: Start; root, below: Draw) "
            "out(below: End; root: Draw) in(below: InitSkin; below: Start; ?: InitSkin; ?: Start; "
            "below, ?: Draw)");
  EXPECT_TRUE(At(12, 12) == red && At(75, 5) == red);
  brief.reset();
  Tick();
  EXPECT_EQ(At(75, 5), 0) << "what is destroyed is seen no longer";
  root.Events();
  root.MsgEnd();
  Expect("below, root: End");
}

TEST_F(DialogTest, EventsGoUpUntilAnExitWidgetClosesItsDialog) {
  Patch exit{{5, 0, 5, 5}};
  exit.MakeExit();
  root.Add(&popup);
  Watch({MSG_ACTIVATE, MSG_CLOSE});
  for (Widget* sender : {&inside, &exit}) popup.HandleEvent(sender, MSG_ACTIVATE, 0, 0);
  Expect("inside: Activate; popup: Close", "a dialog inside another one only says so");
  root.closes = false;
  root.HandleEvent(&exit, MSG_ACTIVATE, 0, 0);
  root.closes = true;
  root.HandleEvent(&inside, MSG_ACTIVATE, 0, 0);
  EXPECT_FALSE(popup.IsClosed() || root.IsClosed());
  root.HandleEvent(&exit, MSG_ACTIVATE, 0, 0);
  EXPECT_TRUE(root.IsClosed());
}

TEST_F(DialogTest, ExecuteRunsUntilItIsClosedAndAnswersTheFocus) {
  root.Add(&below);
  Watch({MSG_TIMER, MSG_END});
  steps["install"] = [] { InstallTimer(10); };
  steps["ring"] = [this] { clock.Tick(1, 2); };
  Meanwhile("install ring leave");
  EXPECT_EQ(root.Execute(&below), &below);
  Expect("root, below, ?, root, below, ?: Timer; below, ?, root: End");
  EXPECT_EQ(clock.sleeps, 3) << "once for every tick";
  EXPECT_EQ(clock.Count(), 1);
  EXPECT_TRUE(!CurrentPointer() && !CurrentScreenUpdate() && !below.HasFocus());
  EXPECT_EQ(root.Children().size(), 1u) << "the tooltip left again";
}

TEST_F(DialogTest, FramesAreDrawnAfterTicksAndInputAndWhenTheDisplayComesBack) {
  below.SetAnimationProperties(0, 0);
  machine.switchesInBackground = false;
  settings.screenUpdateMethod = 1;
  ChangeMode(16);
  StartWithFocus();
  const auto frames = [this](int ticks) {
    below.draws = 0;
    below.Redraw();
    clock.Tick(0, ticks);
    root.MsgIdle();
    return below.draws;
  };
  EXPECT_EQ(frames(0), 0);
  EXPECT_EQ(frames(3), 1) << "however many ticks";
  TypeKey('x', 0);
  EXPECT_EQ(frames(0), 1);
  settings.unlimitedFrameRate = true;
  EXPECT_EQ(frames(0), 1);
  for (const int depth : {16, 32}) {
    ChangeMode(depth, &root);
    Tick();
    clear_bitmap(screen);
    Tick();
    EXPECT_EQ(At(2, 2), 0);
    machine.SwitchIn();
    Tick();
    EXPECT_EQ(At(2, 2), below.color) << "also after a change of the mode";
  }
}

TEST_F(DialogTest, ADialogTakesWhatIsInItAlong) {
  Patch share{{0, 0, 1, 1}};
  root.names[&share] = "share";
  root.Add(&popup);
  popup.Add(&share);
  Start();
  Watch({MSG_MOVE, MSG_RESIZE, MSG_SHAPE, MSG_INITSKIN});
  steps["lay"] = [&] { inside.Place(5, 5), share.Shape(50, 25, 50, 50, true); };
  steps["shape"] = [this] { popup.Shape(20, 30, 80, 60); };
  steps["widen"] = [this] { popup.Resize(300, 30); };
  steps["centre"] = [this] { popup.Centre(); };
  steps["dress"] = [this] { inside.SetFlag(kFlagSkinChanged); };
  EXPECT_EQ(Play("lay shape"),
            "lay(inside: Move; share: Shape) shape(popup, inside, share, share: Shape)");
  EXPECT_EQ(inside.Bounds(), Rect(25, 35, 20, 20));
  EXPECT_EQ(share.Bounds(), Rect(60, 45, 40, 30));
  EXPECT_EQ(Play("widen centre dress"),
            "widen(popup: Resize; inside, share, share: Shape) "
            "centre(popup: Move; inside, share, share: Shape) dress(inside: InitSkin)");
  EXPECT_EQ(popup.GetRelativePos(), (Point{0, 45}));
}

TEST_F(DialogTest, APopupTakesTheInputAndGivesItBack) {
  Patch beside{{100, 0, 60, 60}};
  root.names[&beside] = "beside";
  root.Add(&beside);
  root.Add(&popup);
  popup.Hide();
  PutMouse({25, 25});
  StartWithFocus();
  Watch({MSG_END, MSG_GOTMOUSE, MSG_LOSTMOUSE, MSG_GOTFOCUS, MSG_LOSTFOCUS, MSG_LPRESS, MSG_CHAR});
  steps["x"] = [] { TypeKey('x', 0); };
  steps["close"] = [this] {
    EXPECT_EQ(At(25, 25), blue);
    popup.Close();
  };
  Meanwhile("wait L x 110,25 l L x close");
  EXPECT_EQ(popup.Popup(&root, 20, 20, &inside), &inside);
  Expect(
      "inside, popup: End; below: LostMouse; popup, inside: GotMouse; inside: GotFocus; "
      "below: LostFocus; popup: GotFocus; popup, inside: LPress; inside: Char; "
      "inside, popup: LostMouse; popup: LPress; inside: Char; inside, ?, popup: End; "
      "below: GotFocus; beside: GotMouse");
  EXPECT_EQ(popup.GetFlags() & (kFlagPoppedUp | kFlagFocus | kFlagMouse), 0u);
}

TEST_F(DialogTest, AReleaseThatAPopupSawIsMadeUpForButNoPressAndNotTheWheel) {
  StartWithFocus();
  MoveTo(10, 10);
  popup.Place(33, 44);
  Watch({MSG_LPRESS, MSG_LRELEASE, MSG_WHEEL, MSG_DCLICK});
  steps["turn"] = [] { mouse_z = 2; };
  root.onEvent = [&](Widget* sender, int msg, int) {
    if (sender != &below || msg != MSG_LPRESS) return;
    root.onEvent = nullptr;
    below.SetFlag(kFlagPressed);
    Meanwhile("l turn close");
    popup.Popup(&root, kKeepPosition, 50, nullptr);
    settings.yield = false;
  };
  EXPECT_EQ(Play("L L l L l"),
            "L(root, below: LPress; popup: LRelease; popup: Wheel; root, below: LRelease) "
            "L(root, below: LPress) l(root, below: LRelease) L(root, below: LPress) "
            "l(root, below: LRelease; root, below: DClick)");
  EXPECT_FALSE(root.TestFlag(kFlagPressed));
  EXPECT_EQ(popup.GetRelativePos(), (Point{33, 50}));
}

TEST_F(DialogTest, ASecondPopupHandsTheInputBackToTheFirst) {
  Dialog second;
  std::unique_ptr<Patch> field;
  StartWithFocus();
  steps["lose"] = [&] { field.reset(); };
  steps["leave"] = [&] {
    EXPECT_EQ(root.GetFocus(), &second);
    second.Close();
  };
  for (const char* inSecond : {"leave", "lose leave"}) {
    field = std::make_unique<Patch>(Rect{0, 0, 5, 5});
    popup.Add(field.get());
    steps["second"] = [&] {
      Meanwhile(inSecond);
      second.Popup(&popup, Point{5, kKeepPosition}, nullptr);
      EXPECT_TRUE(root.GetFocus() == &popup && popup.GetFocus() == field.get());
      Meanwhile("close");
    };
    Meanwhile("second");
    popup.Popup(&root, 40, 40, field.get());
    EXPECT_EQ(root.FocusWidget(), &below);
  }
  EXPECT_EQ(second.GetRelativePos(), (Point{5, 0}));
}

TEST_F(DialogTest, APopupRunsWithoutARootAndEndsWithIt) {
  UseSkin();
  CurrentSkin()->focus = 2;  // stays where it is
  popup.SetFlag(kFlagMovable);
  steps["look"] = [] {
    EXPECT_TRUE(At(45, 45) == green && At(75, 55) == blue) << "dragged over the screen";
  };
  steps["button"] = [this] { machine.closeButton(); };
  for (const char* end : {"close", "button"}) {
    clear_to_color(screen, green);
    Meanwhile(std::string{"65,65 L 95,75 l look "} + end);
    EXPECT_EQ(popup.Popup(nullptr, 40, 40, &inside), &inside);
    EXPECT_EQ(CurrentScreenUpdate(), nullptr);
    EXPECT_EQ(Picture(screen), Rows(kHeight, std::string(kWidth, 'g'))) << "as it was before";
    EXPECT_EQ(clock.Count(), 0);
  }
  Start();
  steps["execute"] = [this] {
    EXPECT_EQ(popup.GetRoot(), &root) << "there is only one root at a time";
    EXPECT_EQ(root.Execute(nullptr), root.GetFocus());
  };
  Dialog idle;
  for (Dialog* over : {static_cast<Dialog*>(nullptr), &idle, &popup}) {
    Meanwhile("execute close");
    popup.Popup(over, 40, 40, nullptr);
  }
  Meanwhile("execute close");
  popup.Execute(nullptr);
  steps["remove"] = [this] { root.Remove(&popup); };
  Meanwhile("remove");
  popup.Popup(&root, 40, 40, nullptr);
}

TEST_F(DialogTest, WhatFollowsTheClosingIsForNobody) {
  StartWithFocus();
  Watch({MSG_CHAR, MSG_LPRESS, MSG_MOUSEMOVE});
  root.onEvent = [this](Widget*, int msg, int) {
    if (msg == MSG_CHAR) root.Close();
  };
  TypeKey('x', KEY_X);
  TypeKey('y', KEY_Y);
  EXPECT_EQ(Play("wait 5,5 L"), "wait(below: Char)");
}

TEST_F(DialogTest, ADialogWhoseContainerIsGoneIsARootAgain) {
  auto container = std::make_unique<Dialog>();
  container->Add(&popup);
  EXPECT_EQ(popup.Execute(nullptr), nullptr) << "its container does not run";
  container.reset();
  EXPECT_TRUE(popup.IsRoot());
  popup.Centre();
  EXPECT_EQ(popup.GetRelativePos().x, (kWidth - popup.w()) / 2);
}

}  // namespace
}  // namespace zel
