#include "toolkit/core/dialog.h"

#include <random>

#include "tests/support/stage.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/draw/screen_update.h"

namespace zel {
namespace {

class DialogTest : public StageTest {
 protected:
  DialogTest() {
    below.SetAnimationProperties(20, 6);
    popup.Resize(30, 30);
    popup.Add(&inside);
    root.names = {{&below, 'b'}, {&popup, 'p'}, {&inside, 'i'}, {&root, 'r'}};
  }
  ~DialogTest() override {
    if (root.IsRunning()) root.MsgEnd();
  }
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
  EXPECT_TRUE(popup.Add(&below));
  EXPECT_TRUE(root.Add(&below));
  root.Add(&popup);
  for (Widget* unfit : {static_cast<Widget*>(&below), static_cast<Widget*>(&root)})
    EXPECT_FALSE(root.Add(unfit));
  EXPECT_FALSE(popup.Add(&root) || popup.Add(nullptr));
  root.Remove(&popup);
  popup.Remove(&below);
  EXPECT_EQ(below.GetParent(), &root);
  Expect("");
  root.MsgStart();
  Expect("r1 b26 b26 r26 b1 ");
  EXPECT_TRUE(below.TestFlag(kFlagStartAnimation));
  Tick();
  Expect("r3 b3 ");
  EXPECT_EQ(At(12, 12), red);
  root.Remove(&below);
  Expect("b2 ");
  EXPECT_EQ(below.GetParent(), nullptr);
  {
    Patch shortLived{{70, 0, 20, 20}};
    root.Add(&below);
    root.Add(&shortLived);
    Expect("b26 b1 ?26 ?1 ");
    Tick();
    EXPECT_EQ(At(75, 5), red);
  }
  Tick();
  EXPECT_EQ(At(75, 5), 0) << "what is destroyed is seen no longer";
  root.Events();
  root.MsgEnd();
  Expect("b2 r2 ");
}

TEST_F(DialogTest, EventsGoUpUntilAnExitWidgetClosesItsDialog) {
  Patch exit{{5, 0, 5, 5}};
  exit.MakeExit();
  root.Add(&popup);
  root.names[&exit] = 'e';
  Watch({MSG_ACTIVATE, MSG_CLOSE});
  for (Widget* sender : {&inside, &exit}) popup.HandleEvent(sender, MSG_ACTIVATE, 0, 0);
  Expect("i27 p34 ", "a dialog inside another one only says so");
  EXPECT_FALSE(popup.IsClosed());
  for (const bool willing : {false, true}) {
    root.closes = willing;
    root.HandleEvent(&inside, MSG_ACTIVATE, 0, 0);
    EXPECT_FALSE(root.IsClosed());
    root.HandleEvent(&exit, MSG_ACTIVATE, 0, 0);
    EXPECT_EQ(root.IsClosed(), willing);
  }
}

TEST_F(DialogTest, ExecuteRunsUntilItIsClosedAndAnswersTheFocus) {
  root.Add(&below);
  int other = kNoTimer;
  std::vector<int> ids;
  root.onEvent = [&](Widget* sender, int msg, int id) {
    if (msg == MSG_TIMER && sender == &root) ids.push_back(id);
  };
  Script({[&] { other = InstallTimer(10); }, [&] { clock.Tick(1, 2); }, [&] { root.Close(); }});
  EXPECT_EQ(root.Execute(&below), &below);
  EXPECT_EQ(ids, std::vector({other, other}));
  EXPECT_EQ(clock.sleeps, 3) << "once for every tick";
  EXPECT_EQ(clock.Count(), 1);
  EXPECT_EQ(CurrentPointer(), nullptr);
  EXPECT_EQ(CurrentScreenUpdate(), nullptr);
  EXPECT_FALSE(below.HasFocus());
  EXPECT_EQ(root.Children().size(), 1u) << "the tooltip left again";
}

TEST_F(DialogTest, FramesAreDrawnAfterTicksAndWhenTheDisplayComesBack) {
  below.SetAnimationProperties(0, 0);
  machine.switchesInBackground = false;
  settings.screenUpdateMethod = 1;
  ChangeMode(16);
  StartWithFocus();
  for (const int ticks : {0, 3}) {
    below.Redraw();
    clock.Tick(0, ticks);
    root.MsgIdle();
    EXPECT_EQ(below.draws, ticks ? 2 : 1) << "one frame, however many ticks";
  }
  settings.unlimitedFrameRate = true;
  below.Redraw();
  root.MsgIdle();
  EXPECT_EQ(below.draws, 3);
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
  machine.closeButton();
  Tick();
  EXPECT_TRUE(root.IsClosed());
}

TEST_F(DialogTest, ADialogTakesWhatIsInItAlong) {
  Patch share{{0, 0, 1, 1}};
  popup.Shape(10, 10, 50, 40);
  inside.Place(5, 5);
  popup.Add(&share);
  share.Shape(50, 25, 50, 50, true);
  root.Add(&popup);
  Start();
  EXPECT_EQ(share.Bounds(), Rect(35, 20, 25, 20));
  popup.Shape(20, 30, 80, 60);
  Tick();
  EXPECT_EQ(inside.Bounds(), Rect(25, 35, 20, 20));
  EXPECT_EQ(share.Bounds(), Rect(60, 45, 40, 30));
  EXPECT_FALSE(share.TestFlag(kFlagMoved) || share.TestFlag(kFlagResized));
  popup.Resize(300, 30);
  popup.Centre();
  EXPECT_EQ(popup.GetRelativePos(), (Point{0, 45}));
}

TEST_F(DialogTest, APopupTakesTheInputAndGivesItBack) {
  Patch other{{100, 0, 60, 60}};
  root.Add(&other);
  root.Add(&popup);
  popup.Hide();
  PutMouse(25, 25);
  StartWithFocus();
  Watch({MSG_END, MSG_GOTMOUSE, MSG_LOSTMOUSE, MSG_GOTFOCUS, MSG_LOSTFOCUS, MSG_LPRESS, MSG_CHAR});
  const auto press = [&](const char* soFar, int x) {
    Expect(soFar);
    PutMouse(x, 25);
    SetButtons(1 - mouse_b);
    simulate_ukeypress('x', 0);
  };
  Script({[&] { press("i2 p2 b14 p13 i13 i11 b12 p11 ", 25); }, [&] { press("p18 i18 i7 ", 110); },
          [&] { press("i14 p14 i7 ", 110); }, [&] { press("p18 i7 ", 110); },
          [&] {
            EXPECT_EQ(At(25, 25), blue);
            popup.Close();
          }});
  EXPECT_EQ(popup.Popup(&root, 20, 20, &inside), &inside);
  Expect("i7 i2 ?2 p2 b11 ?13 ");
  EXPECT_EQ(popup.GetFlags() & (kFlagPoppedUp | kFlagFocus | kFlagMouse), 0u);
  EXPECT_TRUE(popup.IsRoot());
  EXPECT_EQ(root.Children().size(), 2u);
  settings.yield = false;
  Tick();
  EXPECT_EQ(At(25, 25), red);
}

TEST_F(DialogTest, AReleaseThatAPopupSawIsMadeUpForButNoPressAndNotTheWheel) {
  StartWithFocus();
  MoveTo(10, 10);
  Watch({MSG_LPRESS, MSG_LRELEASE, MSG_WHEEL});
  root.onEvent = [&](Widget* sender, int msg, int) {
    if (sender != &below || msg != MSG_LPRESS) return;
    below.SetFlag(kFlagPressed);
    Script({[] { mouse_b = 0; }, [] { mouse_z = 2; }, [&] { popup.Close(); }});
    popup.Popup(&root, 50, 50, nullptr);
  };
  Press();
  Expect("r18 b18 p19 p17 r19 b19 ");
  EXPECT_FALSE(root.TestFlag(kFlagPressed));
  root.onEvent = nullptr;
  settings.yield = false;
  Watch({MSG_DCLICK});
  for (const char* events : {"", "r5 b5 "}) {
    Press();
    Release();
    Expect(events, "the press before the popup counts no more");
  }
}

TEST_F(DialogTest, APopupKeepsItsPositionOrCountsFromTheFarEdge) {
  Start();
  const auto expect = [this](Point at, Point seen) {
    popup.Place(33, 44);
    Script({[&] {
      EXPECT_EQ(Point({inside.x(), inside.y()}), seen);
      popup.Close();
    }});
    popup.Popup(&root, at, nullptr);
  };
  expect({5, 7}, {5, 7});
  expect({kKeepPosition, 9}, {33, 9});
  expect({8, kKeepPosition}, {8, 44});
  expect({-40, -50}, {120, 70});
}

TEST_F(DialogTest, ASecondPopupHandsTheInputBackToTheFirst) {
  Dialog second;
  StartWithFocus();
  for (const bool focusIsGone : {false, true}) {
    auto field = std::make_unique<Patch>(Rect{0, 0, 5, 5});
    popup.Add(field.get());
    const auto inSecond = [&] {
      EXPECT_EQ(root.GetFocus(), &second);
      if (focusIsGone) field.reset();
      second.Close();
    };
    Script({[&] {
      Script({inSecond});
      second.Popup(&popup, 0, 0, nullptr);
      EXPECT_EQ(root.GetFocus(), &popup);
      EXPECT_EQ(popup.GetFocus(), field.get());
      Script({[&] { popup.Close(); }});
    }});
    popup.Popup(&root, 40, 40, field.get());
    EXPECT_EQ(root.FocusWidget(), &below);
  }
}

TEST_F(DialogTest, APopupRunsWithoutARootAndEndsWithIt) {
  for (const bool byButton : {false, true}) {
    clear_to_color(screen, green);
    popup.SetFlag(kFlagMovable);
    PutMouse(65, 65);
    Script({[] { mouse_b = 1; }, [] { PutMouse(95, 75); }, [] { mouse_b = 0; },
            [&] {
              EXPECT_TRUE(At(45, 45) == green && At(75, 55) == blue) << "dragged over the screen";
              byButton ? machine.closeButton() : popup.Close();
            }});
    EXPECT_EQ(popup.Popup(nullptr, 40, 40, &inside), &inside);
    EXPECT_EQ(CurrentScreenUpdate(), nullptr);
    EXPECT_EQ(At(75, 55), green);
    EXPECT_EQ(clock.Count(), 0);
  }
  Start();
  const auto inPopup = [&] {
    EXPECT_EQ(popup.GetRoot(), &root) << "there is only one root at a time";
    EXPECT_EQ(root.Execute(nullptr), root.GetFocus());
    popup.Close();
  };
  Dialog idle;
  for (Dialog* over : {static_cast<Dialog*>(nullptr), &idle, &popup}) {
    Script({inPopup});
    popup.Popup(over, 40, 40, nullptr);
  }
  Script({inPopup});
  popup.Execute(nullptr);
  Script({[&] { root.Remove(&popup); }});
  popup.Popup(&root, 40, 40, nullptr);
}

TEST_F(DialogTest, WhatFollowsTheClosingIsForNobody) {
  StartWithFocus();
  Watch({MSG_CHAR, MSG_LPRESS, MSG_MOUSEMOVE});
  root.onEvent = [&](Widget* sender, int msg, int) {
    if (sender == &below && (msg == MSG_CHAR || msg == MSG_LPRESS)) root.Close();
  };
  simulate_ukeypress('x', KEY_X);
  simulate_ukeypress('y', KEY_Y);
  clock.Tick(0, 3);
  root.MsgIdle();
  PutMouse(5, 5);
  mouse_b = 1;
  Tick();
  Expect("b7 ");
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

TEST_F(DialogTest, WhatIsDirtyInPartsIsPaintedWholeOnNewGround) {
  settings.screenUpdateMethod = kDoubleBuffering;
  Patch above{{10, 10, 20, 20}, green};
  StartWithFocus();
  root.Add(&above);
  Tick(2);
  above.RedrawPart({0, 0, 5, 5});
  Tick();
  EXPECT_EQ(At(25, 25), green);
}

// A scene whose picture is known: patches and dialogs of patches in painting order.
class Scene : public Recorder {
 public:
  explicit Scene(std::mt19937& source) : random{source} {
    for (int i = 0; i < 15; ++i) {
      if (i % 5 == 0) {
        Add(dialogs.emplace_back(std::make_unique<Dialog>()).get());
        dialogs.back()->Shape(RandomRect());
      }
      Patch& patch = *patches.emplace_back(std::make_unique<Patch>(RandomRect(), RandomColor()));
      patch.SetAnimationProperties(60, 0);
      patch.SetOpaque(Below(2) > 0);
      static_cast<Dialog&>(i % 2 ? *this : *dialogs.back()).Add(&patch);
    }
  }

  // Something happens to one of the widgets. Whoever uncovers something redraws what was below.
  void Change() {
    Patch& patch = *patches[Below(15)];
    Widget& any = Below(3) ? static_cast<Widget&>(patch) : *dialogs[Below(3)];
    const std::function<void()> kChanges[] = {
        [&] { any.Hide(), Redraw(); },
        [&] { any.Unhide(); },
        [&] { any.Shape(RandomRect()), Redraw(); },
        [&] { any.GetParent()->BringToFront(&any); },
        [&] {
          patch.RedrawPart({2, 2, 5, 5}), patch.RedrawPart({0, 4, 9, 2});
        },
        [&] { patch.color = RandomColor(), patch.Redraw(); },
        [&] { patch.PlayAnimation(1 + Below(26)), patch.Redraw(); },
        [&] { patch.SetOpaque(Below(2) > 0); },
        [&] { any.Redraw(); }};
    kChanges[Below(std::size(kChanges))]();
  }

  // What the dialog shows at a point; 0 where it shows nothing.
  static int ColorAt(const Dialog& dialog, const Rect& pixel) {
    for (auto i = dialog.Children().rbegin(); i != dialog.Children().rend(); ++i) {
      int color = 0;
      if ((*i)->Hidden()) continue;
      if (const Dialog* inner = AsDialog(*i))
        color = ColorAt(*inner, pixel);
      else if ((*i)->Overlaps(pixel) && pixel.x < dialog.x2() && pixel.y < dialog.y2())
        color = static_cast<const Patch*>(*i)->color;
      if (color != 0) return color;
    }
    return 0;
  }

 private:
  int Below(std::size_t n) { return static_cast<int>(random() % n); }
  Rect RandomRect() { return {Below(40), Below(40), 1 + Below(60), 1 + Below(60)}; }
  Color RandomColor() { return 1 + Below(60'000); }

  std::mt19937& random;
  std::vector<std::unique_ptr<Dialog>> dialogs;
  std::vector<std::unique_ptr<Patch>> patches;
};

TEST_F(DialogTest, WhateverChangesTheScreenShowsIt) {
  std::mt19937 random{24};
  settings.showMouse = false;
  for (int round = 0; round < 12; ++round) {
    settings.screenUpdateMethod = round % 4;
    Scene scene{random};
    scene.Resize(kWidth, kHeight);
    scene.MsgStart();
    for (int change = 0; change < 60; ++change) {
      for (unsigned n = random() % 4; n > 0; --n) scene.Change();
      // A transition may go on into the next change.
      const bool settles = random() % 3 == 0;
      for (int tick = 0; tick < (settles ? 5 : 1); ++tick) {
        clock.Tick(0);
        scene.MsgIdle();
      }
      for (int i = 0; settles && i < kWidth * kHeight; ++i) {
        const Rect pixel{i % kWidth, i / kWidth, 1, 1};
        ASSERT_EQ(At(pixel.x, pixel.y), Scene::ColorAt(scene, pixel)) << round << '/' << change;
      }
    }
    scene.MsgEnd();
  }
}

}  // namespace
}  // namespace zel
