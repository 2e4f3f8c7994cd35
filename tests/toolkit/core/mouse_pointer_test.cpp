#include "toolkit/core/mouse_pointer.h"

#include "tests/support/reference.h"
#include "tests/support/stage.h"

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
  Cursor large, empty;
  Fill(large, 20, 20, blue);
  for (Cursor* other : {&large, &empty, static_cast<Cursor*>(nullptr), &shape}) {
    MoveTo(20, 10);
    CurrentPointer()->SetCursor(other);
    Tick();
    EXPECT_EQ(At(20, 10), other == &large ? blue : other == &shape ? red : white);
    EXPECT_TRUE(LeavesNoTrace());
  }
  for (const int depth : {16, 15, 24, 8, 32}) {
    ChangeMode(depth, &root);
    ground.color = white;
    CurrentPointer()->SetCursor(&shape);  // still drawn in the old depth
    Fill(shape, depth, 20, red);
    MoveTo(20, 10);
    EXPECT_TRUE(At(19, 8) == red && At(18 + depth, 27) == red) << depth;
    EXPECT_TRUE(LeavesNoTrace()) << depth;
  }
}

TEST_F(MousePointerTest, TakesTheShapesOfTheSkin) {
  const auto& shapes = CurrentSkin()->cursors;
  for (const int index : {int{MOUSE_SELECT}, -1, 64}) ground.SetCursor(index);
  EXPECT_EQ(CurrentPointer()->GetCursor(), shapes[MOUSE_SELECT].get());
  CurrentPointer()->SetCursor(Skin("default").cursors[MOUSE_SELECT].get());
  EXPECT_EQ(CurrentPointer()->GetCursor(), shapes[MOUSE_SELECT].get()) << "that skin is gone";
  End();
  Start();
  EXPECT_EQ(CurrentPointer()->GetCursor(), shapes[MOUSE_NORMAL].get());
}

}  // namespace
}  // namespace zel
