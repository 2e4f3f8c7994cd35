#include "toolkit/core/tooltip.h"

#include "tests/support/reference.h"
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

  Patch a{{0, 0, 20, 60}}, b{{20, 0, 20, 60}, blue};
  Tooltip tip;
};

TEST_F(TooltipTest, ShowsAboveEverythingAfterTheDelayOfRest) {
  MoveTo(5, 5);
  Tick(9);
  MoveTo(6, 5);
  EXPECT_EQ(TicksUntil(true), 10);
  Tick(500);
  ExpectLook("tooltip", screen, {0, 24, 60, 30});
  settings.tooltipAutohideDelay = 100;
  EXPECT_EQ(TicksUntil(false), 5 + 10) << "its time, and that of leaving";
  Tick(50);
  EXPECT_TRUE(tip.Hidden() && At(7, 26) == red);
}

TEST_F(TooltipTest, FollowsThePointerAndLeavesWithIt) {
  MoveTo(5, 5);
  TicksUntil(true);
  root.BringToFront(&b);
  MoveTo(25, 5);  // another text, at once, and above what came meanwhile
  ExpectLook("tooltip_beside", screen, {0, 24, 90, 30});
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
  ExpectLook("tooltip_wrapped", screen, {40, 60, 120, 60});
  tip.SetText("two\nlines");
  tip.FitText();
  EXPECT_EQ(Point(tip.w(), tip.h()), Point(5 * 8 + 12, 2 * 8 + 6));
}

}  // namespace
}  // namespace zel
