#include "toolkit/core/mouse_pointer.h"

#include "tests/support/stage.h"

namespace zel {
namespace {

// A grey memory canvas that notes what is reported as changed.
class MemoryCanvas : public ScreenUpdate {
 public:
  void Clear(int depth = 32) {
    canvas.CreateEx(depth, 64, 48);
    canvas.clear_to_color(gray);
  }
  using ScreenUpdate::AddDirtyRect;
  void AddDirtyRect(const Rect& rect) override { dirty = rect; }
  int At(int x, int y) { return getpixel(GetCanvas(), x, y); }
  // True when all pixels outside of an area are grey.
  bool IsClear(const Rect& but = {}) {
    for (int y = 0; y < canvas.Height(); ++y)
      for (int x = 0; x < canvas.Width(); ++x)
        if (At(x, y) != gray && !but.Overlaps({x, y, 1, 1})) return false;
    return true;
  }
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
  Show();
  EXPECT_FALSE(pointer.IsHidden());
  EXPECT_EQ(canvas.dirty, Rect(19, 6, 8, 7));
  EXPECT_TRUE(canvas.IsClear(canvas.dirty));
  EXPECT_TRUE(canvas.At(19, 8) == red && canvas.At(22, 10) == red);
  EXPECT_TRUE(canvas.At(19, 7) != red && canvas.At(23, 10) != red);
  // The shadow of 8 x 7 pixels starts at (19 + 2 - 2, 8 - 2); its pixel (4, 6) covers 1 row of 4.
  const int alpha = 255 * 4 / 25;
  EXPECT_NEAR(getr(canvas.At(23, 12)), 128 + (96 - 128) * alpha / 255, 1);
  canvas.dirty = {};
  EXPECT_TRUE(HidesWithoutATrace());
  EXPECT_EQ(canvas.dirty, Rect(19, 6, 8, 7));

  shape.SetShadow({.offset = {-9, 5}});  // now frame and shadow only have corners of the area
  Show();
  EXPECT_EQ(canvas.dirty, Rect(8, 8, 15, 10));
  EXPECT_TRUE(HidesWithoutATrace());
  settings.mouseShadow = false;
  Fill(shape, 4, 3, red);
  Show();
  EXPECT_TRUE(canvas.IsClear({19, 8, 4, 3}));
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
    EXPECT_EQ(canvas.At(20, 10), other == &large ? blue : gray);
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
