#include "toolkit/core/mouse_pointer.h"

#include "tests/support/reference.h"
#include "tests/support/stage.h"
#include "toolkit/base/zoom.h"
#include "toolkit/core/tooltip.h"

namespace zel {
namespace {

// A pointer of 4 x 3 red pixels over white ones, on a screen with 32 bits.
class MousePointerTest : public StageTest {
 protected:
  MousePointerTest() {
    UseSkin();
    ChangeMode(32);
    settings.mouseShadow = true;
    ground.color = white;  // in this mode
    root.Add(&ground);
    Start();
    Fill(shape, 4, 3, red);
    shape.SetHotspot(1, 2);
    CurrentPointer()->SetCursor(&shape);
  }
  ~MousePointerTest() override { End(); }

  static void Fill(Cursor& cursor, int w, int h, Color color) {
    SkinBitmap picture(w, h, kMemoryBitmap);
    picture.clear_to_color(color);
    cursor.Create(picture, 1);
  }
  bool LeavesNoTrace() {
    MoveTo(-10000, 30000);
    return Picture(screen) == Rows(kHeight, std::string(kWidth, 'w'));
  }

  Patch ground{{0, 0, kWidth, kHeight}};
  Cursor shape;
};

TEST_F(MousePointerTest, TheHotspotLiesAtTheMouseAndTheShadowBeside) {
  const auto expect = [this](const char* picture) {
    MoveTo(20, 10);
    EXPECT_FALSE(CurrentPointer()->IsHidden());
    ExpectLook(picture, screen, {4, 2, 28, 20});
    EXPECT_TRUE(LeavesNoTrace()) << picture;
  };
  expect("pointer_and_shadow");
  shape.SetShadow({.offset = {-9, 5}});  // now frame and shadow only have corners of the area
  expect("pointer_right_of_shadow");
  settings.mouseShadow = false;
  expect("pointer_alone");
}

TEST_F(MousePointerTest, PutsBackWhatLayBeneath) {
  for (const Point p : {Point{kWidth - 1, kHeight - 1}, Point{-3, 20}, Point{10, -1}}) {
    MoveTo(p.x, p.y);
    EXPECT_NE(Picture(screen), Rows(kHeight, std::string(kWidth, 'w')));
    EXPECT_TRUE(LeavesNoTrace()) << p.x << ' ' << p.y;
  }
  MoveTo(20, 10);
  CurrentPointer()->Hide();
  EXPECT_TRUE(CurrentPointer()->IsHidden());
  clear_to_color(CurrentScreenUpdate()->GetCanvas(), yellow);
  CurrentPointer()->Hide();
  EXPECT_EQ(getpixel(CurrentScreenUpdate()->GetCanvas(), 20, 10), yellow) << "but only once";
  settings.showMouse = false;
  ground.Redraw();
  Tick();
  EXPECT_EQ(At(20, 10), white);
}

TEST_F(MousePointerTest, AChangeOfShapeOrDepthLeavesNoTrace) {
  Cursor large, tall, empty;
  Fill(large, 20, 20, blue), Fill(tall, 4, 20, blue);
  for (Cursor* other :
       {&tall, &large, &tall, &shape, &empty, static_cast<Cursor*>(nullptr), &shape}) {
    MoveTo(20, 10);
    const Color shown = !other || other == &empty ? white : other == &shape ? red : blue;
    CurrentPointer()->SetCursor(other);
    EXPECT_EQ(getpixel(CurrentScreenUpdate()->GetCanvas(), 20, 10), shown) << "at once";
    Tick();
    EXPECT_EQ(At(20, 10), shown);
    EXPECT_TRUE(LeavesNoTrace());
  }
  for (const int depth : {16, 15, 24, 8, 32}) {
    ChangeMode(depth, &root);
    ground.color = white;
    CurrentPointer()->SetCursor(&shape);  // still drawn in the old depth
    Fill(shape, depth, 20, red);
    MoveTo(20, 10);
    EXPECT_TRUE(At(19, 8) == red && At(18 + depth, 27) == red && LeavesNoTrace()) << depth;
  }
}

TEST_F(MousePointerTest, TakesTheShapesOfTheSkin) {
  const auto& shapes = CurrentSkin()->cursors;
  ground.SetCursor(MOUSE_ALTERNATIVE);
  EXPECT_EQ(CurrentPointer()->GetCursor(), shapes[0].get());
  for (const int index : {int{MOUSE_SELECT}, -1, 64}) ground.SetCursor(index);
  EXPECT_EQ(CurrentPointer()->GetCursor(), shapes[MOUSE_SELECT].get());
  CurrentPointer()->SetCursor(Skin("default").cursors[MOUSE_SELECT].get());
  EXPECT_EQ(CurrentPointer()->GetCursor(), shapes[MOUSE_SELECT].get()) << "that skin is gone";
  End();
  Start();
  EXPECT_EQ(CurrentPointer()->GetCursor(), shapes[MOUSE_NORMAL].get());
}

// Two widgets with a tip, a at 0..20 and b at 20..40.
class TooltipTest : public StageTest {
 protected:
  TooltipTest() {
    settings.tooltipAutohideDelay = 0;
    UseSkin();
    CurrentSkin()->focus = 2;  // stays where it is
    a.SetTooltip("a");
    b.SetTooltip("widest");
    root.Add(&tip);
    root.Add(&a);
    root.Add(&b);
    tip.Hide();
    Start();
  }
  ~TooltipTest() override { End(); }
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
  MoveTo(8, 28);
  EXPECT_EQ(root.MouseWidget(), &a) << "not the tip";
  root.BringToFront(&b);
  MoveTo(25, 5);  // another text, at once, and above what came meanwhile
  ExpectLook("tooltip_beside", screen, {0, 24, 90, 30});
  const Rect place = tip.Bounds();
  Dialog panel;
  root.Add(&panel), panel.Place(20, 10), panel.Add(&tip), tip.PlaceNearPointer();
  EXPECT_EQ(tip.Bounds(), place) << "wherever it is in";
  root.Add(&tip), root.Remove(&panel), tip.PlaceNearPointer(), Tick();
  tip.SetBackColor(green), Tick();
  EXPECT_EQ(At(place.x + 1, place.y + 1), green);
  tip.SetBorderColor(white), Tick();
  EXPECT_EQ(At(place.x, place.y), white);
  for (const int x : {50, 5, 50}) MoveTo(x, 5);
  EXPECT_EQ(TicksUntil(false), 10);
  MoveTo(5, 5);
  EXPECT_EQ(TicksUntil(true), 10);
  Press(2);
  Release(2);
  MoveTo(150, 5);
  EXPECT_TRUE(tip.Hidden());
}

TEST_F(TooltipTest, KeepsOnTheScreenAndWrapsLongTexts) {
  b.Shape(kWidth - 10, 0, 10, kHeight);
  b.SetTooltip("three lines of many words");
  MoveTo(kWidth - 3, kHeight - 50);
  TicksUntil(true);
  ExpectLook("tooltip_wrapped", screen, {40, 32, 120, 60});
  MoveTo(150, 5), TicksUntil(false);
  Skin& skin = *CurrentSkin();
  skin.tooltipBorderColor = red, skin.tooltipBackColor = cyan;
  skin.tooltipAnimationLength = 80, skin.tooltipAnimationType = 6;
  SetZoom(2);
  tip.MsgInitSkin();
  MoveTo(0, 5), TicksUntil(true);
  ExpectLook("tooltip_zoomed", screen, {0, 40, 60, 40});
  int ticks = 1;
  for (; tip.InTransition() && ticks < 99; ++ticks) Tick();
  EXPECT_EQ(ticks, 4);
  ExpectLook("tooltip_zoomed_whole", screen, {0, 40, 60, 40});
  MoveTo(150, 5), TicksUntil(false), MoveTo(0, 5), TicksUntil(true);
  ExpectLook("tooltip_zoomed", screen, {0, 40, 60, 40});
  SetZoom(1);
  settings.screenWidth = 2 * (5 * 8 + 12);
  for (const auto& [text, lines] :
       {std::pair{"two\nlines", 2}, {"thirty letters in three lines.", 3}}) {
    tip.SetText(text), tip.FitText();
    EXPECT_EQ(Point(tip.w(), tip.h()), Point(lines == 2 ? 52 : (30 * 8 + 12) / 2, lines * 8 + 6));
  }
  tip.Resize(9, 999), tip.PlaceNearPointer();
  EXPECT_EQ(tip.y(), 0);
  ChangeMode(32);
  Tooltip bare;
  bare.Resize(60, 30);
  Bitmap canvas{60, 30, kMemoryBitmap};
  bare.Draw(canvas);
  EXPECT_EQ(canvas.getpixel(2, 2), makecol(255, 255, 192));
}

}  // namespace
}  // namespace zel
