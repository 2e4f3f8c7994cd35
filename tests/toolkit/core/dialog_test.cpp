#include "toolkit/core/dialog.h"

#include <random>

#include "tests/support/reference.h"
#include "tests/support/stage.h"
#include "toolkit/core/damage.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/testing/picture.h"

namespace zel {
namespace {

struct Idler : Widget {
  void MsgIdle() override { ++times; }
  int times = 0;
};

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
  root.ClearFlag(kFlagDirty), root.Remove(&popup);
  popup.Remove(&below);
  EXPECT_TRUE(root.Dirty());
  EXPECT_EQ(root.Events(), "");
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
  root.onEvent = [this, isOut = false](Widget*, int msg, int) mutable {
    if (msg == MSG_END && !std::exchange(isOut, true)) root.Remove(&below);
  };
  EXPECT_FALSE(popup.Add(&below)) << "somebody else has taken it out at its end";
  root.MsgEnd();
  EXPECT_EQ(root.Events(), "below, below, root: End");
  EXPECT_FALSE(root.IsRunning());
  auto container = std::make_unique<Dialog>();
  container->Add(&popup);
  EXPECT_EQ(popup.Execute(nullptr), nullptr) << "its container does not run";
  container.reset();
  EXPECT_TRUE(popup.IsRoot());
  popup.Centre();
  EXPECT_EQ(popup.GetRelativePos().x, (kWidth - popup.w()) / 2);
}

TEST_F(DialogTest, EventsGoUpUntilAnExitWidgetClosesItsDialog) {
  Patch exit{{5, 0, 5, 5}};
  exit.MakeExit();
  root.Add(&popup);
  Watch({MSG_ACTIVATE, MSG_CLOSE, MSG_WANTFOCUS});
  EXPECT_TRUE(popup.MsgWantFocus());
  for (Widget* sender : {&inside, &exit}) popup.HandleEvent(sender, MSG_ACTIVATE, 0, 0);
  EXPECT_EQ(root.Events(), "popup: WantFocus; inside: Activate; popup: Close")
      << "a dialog inside another one only says so";
  root.closes = false;
  root.HandleEvent(&exit, MSG_ACTIVATE, 0, 0);
  root.closes = true;
  root.HandleEvent(&inside, MSG_ACTIVATE, 0, 0);
  EXPECT_FALSE(popup.IsClosed() || root.IsClosed());
  Idler idler;
  popup.Add(&idler), popup.MsgIdle(), popup.MsgIdle(), idler.Hide(), popup.MsgIdle();
  EXPECT_EQ(idler.times, 2) << "what does not show has nothing to do";
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
  EXPECT_EQ(root.Events(), "root, below, ?, root, below, ?: Timer; below, ?, root: End");
  EXPECT_EQ(clock.sleeps, 3) << "once for every tick";
  EXPECT_EQ(clock.Count(), 1);
  EXPECT_TRUE(!CurrentPointer() && !CurrentScreenUpdate() && !below.HasFocus());
  EXPECT_EQ(root.Children().size(), 1u) << "the tooltip left again";
  EXPECT_EQ(machine.closeButton, nullptr);
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
  for (const bool loses : {true, false}) {
    machine.switchesInBackground = !loses;
    ChangeMode(loses ? 32 : 16, &root);
    Tick();
    clear_bitmap(screen);
    Tick();
    EXPECT_EQ(At(2, 2), 0);
    machine.SwitchIn();
    Tick();
    EXPECT_EQ(At(2, 2), loses ? int{below.color} : 0);
  }
  UseSkin();
  Skin own{"default"};
  Patch dressed{{70, 0, 5, 5}}, plain;
  dressed.SetSkin(&own);
  root.Add(&dressed), root.Add(&plain), Tick();
  EXPECT_TRUE(dressed.GetSkin() == &own && plain.GetSkin() == CurrentSkin());
  root.Remove(&dressed), Tick(), root.Add(&dressed), Tick();
  EXPECT_EQ(dressed.draws, 2);
  for (const bool inVideo : {false, true}) {
    settings.useVideoMemory = inVideo;
    root.SetSkin(&own), Tick(), Watch({MSG_INITSKIN});
    for (Skin* skin : {CurrentSkin(), &own}) skin->bitmaps[0]->Destroy();
    machine.switchesInBackground = false, ChangeMode(16), machine.SwitchIn(), Tick();
    for (Skin* skin : {CurrentSkin(), &own})
      EXPECT_EQ(skin->bitmaps[0]->IsEmpty(), !inVideo) << "what may be lost is loaded anew";
    EXPECT_EQ(root.Events().empty(), !inVideo) << "and taken anew";
  }
  root.SetSkin(nullptr);
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
  std::string seen = Play("lay shape");
  EXPECT_EQ(inside.Bounds(), Rect(25, 35, 20, 20));
  EXPECT_EQ(share.Bounds(), Rect(60, 45, 40, 30));
  ExpectText("taken_along", seen + '\n' + Play("widen centre dress") + '\n');
  EXPECT_EQ(popup.GetRelativePos(), (Point{0, 45}));
}

TEST_F(DialogTest, APopupTakesTheInputAndGivesItBack) {
  Patch beside{{100, 0, 60, 60}};
  root.names[&beside] = "beside";
  root.Add(&beside);
  root.Add(&popup);
  popup.Hide();
  EXPECT_TRUE(inside.Hidden());
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
  ExpectText("popped_up", root.Events() + '\n');
  EXPECT_EQ(popup.GetFlags() & (kFlagPoppedUp | kFlagFocus | kFlagMouse), 0u);
  EXPECT_EQ(popup.Children().size(), 1u) << "without its tooltip";
  steps["fly"] = [] { PutMouse({1, 1}), PressKey('y', KEY_Y); };
  root.onEvent = [this](Widget*, int msg, int) {
    if (msg == MSG_MOUSEMOVE) popup.Close();
  };
  Watch({MSG_CHAR}), Meanwhile("fly"), popup.Popup(&root, 20, 20, &inside), Tick();
  EXPECT_EQ(root.Events(), "below: Char") << "what came after its end";
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
  ExpectText("released_in_popup", Play("L L l L l") + '\n');
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
    EXPECT_EQ(At(0, 0), red) << "which shows as it was";
  };
  steps["button"] = [this] { machine.closeButton(); };
  for (const char* end : {"close", "button"}) {
    clear_to_color(screen, green);
    line(screen, 0, 0, kWidth, kHeight, red);
    const Rows before = Picture(screen);
    Meanwhile(std::string{"65,65 L 95,75 l look "} + end);
    EXPECT_EQ(popup.Popup(nullptr, 40, 40, &inside), &inside);
    EXPECT_EQ(CurrentScreenUpdate(), nullptr);
    EXPECT_EQ(Picture(screen), before);
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

// What is drawn where on a stage of 8 x 4 pixels: before each frame it is erased, so that the
// picture is what the frame has drawn.
class DamageTest : public StageTest {
 protected:
  DamageTest() {
    settings.showMouse = false;
    for (Patch* patch : {&red1, &blue1}) root.Add(patch);
    Start();
  }
  ~DamageTest() override { End(); }

  Rows Drawn() {
    BITMAP* canvas = CurrentScreenUpdate()->GetCanvas();
    clear_to_color(canvas, magenta);
    root.DrawDirty();
    CurrentScreenUpdate()->Redraw();
    BitmapPtr part{create_bitmap(8, 4)};
    blit(canvas, part.get(), 0, 0, 0, 0, 8, 4);
    return Picture(part.get());
  }

  Patch red1{{0, 0, 6, 3}, red}, blue1{{4, 1, 4, 3}, blue};
};

TEST_F(DamageTest, NoMoreIsDrawnThanWhatIsDirtyAndWhatLiesAboveIt) {
  EXPECT_EQ(Drawn(), Rows(4, "........")) << "nothing is dirty";
  blue1.Redraw();
  EXPECT_EQ(Drawn(), Rows({"........", "....bbbb", "....bbbb", "....bbbb"}));
  red1.Redraw();
  red1.RedrawPart({1, 1, 3, 2});
  EXPECT_EQ(Drawn(), Rows({"rrrrrr..", "rrrrbb..", "rrrrbb..", "........"}));
  red1.RedrawPart({1, 1, 4, 1});
  red1.RedrawPart({0, 0, 0, 9});
  EXPECT_EQ(Drawn(), Rows({"........", ".rrrb...", "........", "........"}));
  root.Redraw();
  EXPECT_EQ(Drawn(), Rows({"rrrrrrkk", "rrrrbbbb", "rrrrbbbb", "kkkkbbbb"}));
  root.BringToFront(&red1);
  EXPECT_EQ(Drawn(), Rows({"rrrrrr..", "rrrrrr..", "rrrrrr..", "........"}));
  root.BringToFront(&red1);
  EXPECT_EQ(Drawn(), Rows(4, "........")) << "it is there";
}

TEST_F(DamageTest, WhatIsCoveredIsNotDrawnAndForgets) {
  Dialog panel;
  Patch inPanel{{1, 1, 2, 2}, yellow}, cover{{0, 0, 8, 4}, green};
  panel.Add(&inPanel);
  root.Add(&panel);
  root.Add(&cover);
  panel.Shape(0, 0, 8, 4);
  cover.SetOpaque(true);
  Tick();
  red1.RedrawPart({0, 0, 9, 9});
  inPanel.Redraw();
  EXPECT_EQ(Drawn(), Rows(4, "........"));
  cover.Hide();
  EXPECT_EQ(Drawn(), Rows(4, "........"));
  red1.RedrawPart({0, 0, 1, 1});
  EXPECT_EQ(Drawn(), Rows({"r.......", ".yy.....", ".yy.....", "........"}));
  root.Redraw();
  EXPECT_EQ(Drawn(), Rows({"rrrrrrkk", "ryyrbbbb", "ryyrbbbb", "kkkkbbbb"}));
  inPanel.RedrawPart({0, 0, 1, 1});
  blue1.RedrawPart({0, 0, 9, 9});
  cover.Unhide();
  cover.Shape(0, 0, 6, 4);
  EXPECT_EQ(Drawn(), Rows({"gggggg..", "ggggggbb", "ggggggbb", "ggggggbb"}));
}

TEST_F(DamageTest, ALargeWidgetIsDrawnOnlyWhereItShows) {
  Patch large{{0, 0, 60, 60}, green}, cover{{10, 10, 20, 20}, blue};
  Dialog around;
  around.Add(&cover);
  root.Add(&large);
  root.Add(&around);
  around.Shape(0, 0, 25, 60);  // which cuts the cover
  cover.SetOpaque(true);
  Tick();
  EXPECT_TRUE(ShownPart(root, cover).Rects() == std::vector({Rect{10, 10, 20, 20}}));
  large.draws = 0;
  large.Redraw();
  Tick();
  EXPECT_EQ(large.draws, 4) << "on each side of the cover";
  cover.Shape(0, 0, 20, 20), Tick();
  large.draws = 0;
  large.Redraw();
  Tick();
  EXPECT_EQ(large.draws, 2) << "beside it and below";
}

// Drawn in full for each frame, or only where something has changed: it shows the same.
TEST_F(DamageTest, WhateverChangesEachWayOfUpdatingShowsIt) {
  std::string first;
  for (const int method : {1, 0, 2, 3}) {
    std::mt19937 random{24};
    const auto below = [&random](int n) { return static_cast<int>(random() % n); };
    const auto anywhere = [&] { return Rect{below(40), below(40), 1 + below(60), 1 + below(60)}; };
    root.MsgEnd();
    settings.screenUpdateMethod = method;
    root.MsgStart();
    Dialog panels[2];
    Patch patches[6];
    for (Dialog& panel : panels) root.Add(&panel), panel.Shape(anywhere());
    for (int i = 0; i < 6; ++i) {
      (i % 3 ? panels[i % 3 - 1] : static_cast<Dialog&>(root)).Add(&patches[i]);
      patches[i].Shape(anywhere());
      patches[i].SetAnimationProperties(60, 0);
    }
    std::string shown;
    for (int change = 0; change < 200; ++change) {
      Patch& patch = patches[below(6)];
      Widget& any = below(3) ? static_cast<Widget&>(patch) : panels[below(2)];
      const std::function<void()> kChanges[] = {
          [&] { any.Hide(), root.Redraw(); },
          [&] { any.Unhide(); },
          [&] { any.Shape(anywhere()), root.Redraw(); },
          [&] { any.GetParent()->BringToFront(&any); },
          [&] { patch.RedrawPart(anywhere()); },
          [&] { patch.color = 1 + below(60'000), patch.Redraw(); },
          [&] { patch.PlayAnimation(1 + below(26)), patch.Redraw(); },
          [&] { patch.SetOpaque(below(2) > 0); }};
      kChanges[below(std::size(kChanges))]();
      Tick();
      for (int y = 0; y < kHeight; ++y)
        shown.append(reinterpret_cast<const char*>(screen->line[y]), 2 * kWidth);
    }
    if (first.empty()) first = shown;
    EXPECT_TRUE(shown == first) << method;
  }
}

}  // namespace
}  // namespace zel
