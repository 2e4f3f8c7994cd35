#include "toolkit/core/tooltip.h"

#include "tests/support/stage.h"

namespace zel {
namespace {

// Two widgets with a tip, a at 0..20 and b at 20..40.
class TooltipTest : public StageTest {
 protected:
  TooltipTest() {
    settings.tooltipAutohideDelay = 0;
    UseSkin();
    a.SetTooltip("a");
    b.SetTooltip("wider");
    root.Add(&tip);
    root.Add(&a);
    root.Add(&b);
    tip.Hide();
    Start();
  }
  ~TooltipTest() override {
    tip.HideTip();
    root.MsgEnd();
  }
  // The ticks after which the tip shows or hides.
  int TicksUntil(bool shown) {
    int ticks = 0;
    for (; tip.Hidden() == shown && ticks < 999; ++ticks) Tick();
    return ticks;
  }

  Patch a{{0, 0, 20, 20}}, b{{20, 0, 20, 20}};
  Tooltip tip;
};

TEST_F(TooltipTest, ShowsAboveEverythingAfterTheDelayOfRest) {
  MoveTo(5, 5);
  Tick(9);
  MoveTo(6, 5);
  EXPECT_EQ(TicksUntil(true), 10);
  EXPECT_EQ(tip.GetRelativePos(), (Point{6, 25})) << "below the pointer";
  EXPECT_EQ(root.Children().back(), &tip);
  Tick(500);
  EXPECT_EQ(At(7, 26), Color(255, 255, 192));
  EXPECT_EQ(At(6, 25), black);
  settings.tooltipAutohideDelay = 100;
  EXPECT_EQ(TicksUntil(false), 5 + 10) << "its time, and that of leaving";
  Tick(50);
  EXPECT_TRUE(tip.Hidden() && At(7, 26) == 0);
}

TEST_F(TooltipTest, FollowsThePointerAndLeavesWithIt) {
  MoveTo(5, 5);
  TicksUntil(true);
  const int width = tip.w();
  root.BringToFront(&b);
  MoveTo(25, 5);
  EXPECT_GT(tip.w(), width) << "the other text, at once";
  EXPECT_EQ(tip.GetRelativePos().x, 25);
  EXPECT_EQ(root.Children().back(), &tip) << "above what came meanwhile";
  for (const int x : {50, 5, 50}) MoveTo(x, 5);
  EXPECT_EQ(TicksUntil(false), 10);
  MoveTo(5, 5);
  TicksUntil(true);
  Press(2);
  Release(2);
  MoveTo(150, 5);
  EXPECT_TRUE(tip.Hidden());
}

TEST_F(TooltipTest, KeepsOnTheScreenAndWrapsLongTexts) {
  b.Shape(kWidth - 10, kHeight - 10, 10, 10);
  b.SetTooltip("three lines of many words");
  MoveTo(kWidth - 3, kHeight - 5);
  TicksUntil(true);
  EXPECT_EQ(Point(tip.x2(), tip.y2()), Point(kWidth, kHeight - 5 - 8));
  EXPECT_EQ(tip.h(), tip.GetFont(0).TextHeight() * 3 + 6);
  tip.SetText("two\nlines");
  tip.FitText();
  EXPECT_EQ(Point(tip.w(), tip.h()), Point(5 * 8 + 12, 2 * 8 + 6));
}

}  // namespace
}  // namespace zel
