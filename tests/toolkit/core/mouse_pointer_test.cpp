#include "toolkit/core/mouse_pointer.h"

#include "tests/support/reference.h"
#include "tests/support/stage.h"

namespace zel {
namespace {

// A white canvas in memory that notes what is reported as changed.
class MemoryCanvas : public ScreenUpdate {
 public:
  void Clear(int depth = 32) {
    canvas.CreateEx(depth, 64, 48);
    canvas.clear_to_color(white);
  }
  using ScreenUpdate::AddDirtyRect;
  void AddDirtyRect(const Rect& rect) override { dirty = rect; }
  int At(int x, int y) { return getpixel(GetCanvas(), x, y); }
  bool IsClear() { return Picture(GetCanvas()) == Rows(48, std::string(64, 'w')); }
  Rect dirty;
};

class MousePointerTest : public AllegroFixture {
 protected:
  MousePointerTest() : AllegroFixture{32} {
    canvas.Clear();
    pointer.SetScreenUpdate(&canvas);
    Fill(shape, 4, 3, red);
    shape.SetHotspot(1, 2);
    Put(20, 10);
  }
  ~MousePointerTest() override { Put(0, 0); }

  static void Fill(Cursor& cursor, int w, int h, Color color) {
    SkinBitmap picture(w, h, kMemoryBitmap);
    picture.clear_to_color(color);
    cursor.Create(picture, 1);
  }
  void Put(int x, int y) {
    mouse_x = x;
    mouse_y = y;
    pointer.Poll();
  }
  void Show() {
    pointer.SetCursor(&shape);
    pointer.Draw();
  }
  bool HidesWithoutATrace() {
    pointer.Hide();
    return pointer.IsHidden() && canvas.IsClear();
  }

  MemoryCanvas canvas;
  Cursor shape;
  MousePointer pointer;
};

TEST_F(MousePointerTest, TheHotspotLiesAtTheMouseAndTheShadowBeside) {
  const auto expect = [this](const char* picture, const Rect& changed) {
    Show();
    EXPECT_TRUE(!pointer.IsHidden() && canvas.dirty == changed) << picture;
    ExpectLook(picture, canvas.GetCanvas(), {4, 2, 28, 20});
    canvas.dirty = {};
    EXPECT_TRUE(HidesWithoutATrace() && canvas.dirty == changed) << picture;
  };
  expect("pointer_and_shadow", {19, 6, 8, 7});
  shape.SetShadow({.offset = {-9, 5}});  // now frame and shadow only have corners of the area
  expect("pointer_right_of_shadow", {8, 8, 15, 10});
  settings.mouseShadow = false;
  expect("pointer_alone", {8, 8, 15, 10});
}

TEST_F(MousePointerTest, HidingPutsBackWhatLayBeneath) {
  for (const Point p : {Point{63, 47}, Point{-3, 20}, Point{-10000, 30000}}) {
    Put(p.x, p.y);
    Show();
    Put(40, 30);
    pointer.Update();
    EXPECT_TRUE(HidesWithoutATrace()) << p.x << ' ' << p.y;
  }
  clear_to_color(canvas.GetCanvas(), yellow);
  pointer.Hide();
  EXPECT_EQ(canvas.At(40, 30), yellow) << "hiding twice brings back no old background";
  canvas.Clear();
  canvas.dirty = {};
  for (const bool attached : {true, false}) {
    settings.showMouse = !attached;
    pointer.SetScreenUpdate(attached ? &canvas : nullptr);
    Show();
    EXPECT_TRUE(HidesWithoutATrace() && canvas.dirty == Rect{});
  }
}

TEST_F(MousePointerTest, AChangeOfShapeOrDepthLeavesNoTrace) {
  Cursor large, empty;
  Fill(large, 20, 20, blue);
  for (Cursor* other : {&large, &empty, static_cast<Cursor*>(nullptr)}) {
    Show();
    pointer.SetCursor(other);
    EXPECT_EQ(canvas.At(20, 10), other == &large ? blue : white);
    EXPECT_NE(canvas.At(19, 9), red);
    pointer.Update();
    EXPECT_TRUE(HidesWithoutATrace());
  }
  Show();
  pointer.Hide();
  Fill(shape, 30, 20, green);
  pointer.Draw();
  EXPECT_TRUE(HidesWithoutATrace()) << "a shape that grew";
  for (const int depth : {16, 15, 24, 8, 32}) {
    Show();
    UseDepth(depth);
    canvas.Clear(depth);
    pointer.SetCursor(&shape);  // still drawn in the old depth
    Fill(shape, 4, 3, red);
    pointer.SetCursor(&shape);
    EXPECT_EQ(canvas.At(19, 8), red) << depth;
    EXPECT_TRUE(HidesWithoutATrace()) << depth;
  }
}

using RunningPointerTest = StageTest;

TEST_F(RunningPointerTest, LiesOverTheWidgetsInEveryModeAndTakesTheShapesOfTheSkin) {
  UseSkin();
  Patch patch{{0, 0, kWidth, kHeight}};
  root.Add(&patch);
  root.SetSkin(nullptr);
  Start();
  const auto& shapes = CurrentSkin()->cursors;
  EXPECT_EQ(CurrentPointer()->GetCursor(), shapes[MOUSE_NORMAL].get());
  for (const int depth : {16, 32, 16}) {
    ChangeMode(depth, &root);
    patch.color = green;
    MoveTo(30, 30);
    EXPECT_TRUE(At(30, 36) == white && At(31, 36) == black) << depth;
    MoveTo(90, 40);
    EXPECT_TRUE(At(30, 36) == green && At(31, 36) == green) << depth;
    for (const int index : {int{MOUSE_SELECT}, -1, 64}) patch.SetCursor(index);
    EXPECT_EQ(CurrentPointer()->GetCursor(), shapes[MOUSE_SELECT].get());
    CurrentPointer()->SetCursor(Skin("default").cursors[MOUSE_SELECT].get());
    EXPECT_EQ(CurrentPointer()->GetCursor(), shapes[MOUSE_SELECT].get()) << "that skin is gone";
  }
}

}  // namespace
}  // namespace zel
