#include "toolkit/core/cursor.h"

#include "tests/support/allegro_fixture.h"
#include "tests/support/picture.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/core/settings.h"

namespace zel {
namespace {

// A memory canvas that notes what is reported as changed.
class MemoryCanvas : public ScreenUpdate {
 public:
  MemoryCanvas(int w, int h, int depth = 32) { Resize(w, h, depth); }
  void Resize(int w, int h, int depth) {
    canvas.CreateEx(depth, w, h);
    canvas.clear_to_color(gray);
  }
  using ScreenUpdate::AddDirtyRect;
  void AddDirtyRect(const Rect& rect) override { dirty.push_back(rect); }
  int At(int x, int y) { return getpixel(GetCanvas(), x, y); }
  bool IsUntouched() {
    for (int y = 0; y < canvas.Height(); ++y)
      for (int x = 0; x < canvas.Width(); ++x)
        if (At(x, y) != gray) return false;
    return true;
  }

  std::vector<Rect> dirty;
};

class CursorTest : public AllegroFixture {
 protected:
  CursorTest() : AllegroFixture{32} { cursorShadow = CursorShadow{}; }
  ~CursorTest() override { cursorShadow = CursorShadow{}; }

  static SkinBitmap Filled(int w, int h, Color color) {
    SkinBitmap picture(w, h, kMemoryBitmap);
    picture.clear_to_color(color);
    return picture;
  }
  static void ReadShadow(const std::string& config) {
    set_config_data(config.c_str(), static_cast<int>(config.size()));
    cursorShadow.Read();
  }
  static Color ShadowAt(Cursor& cursor, int x, int y) {
    return Color{cursor.GetShadow()->getpixel(x, y)};
  }
};

TEST_F(CursorTest, FreshCursorHasNoFrameAndSurvivesTicks) {
  Cursor cursor;
  cursor.Update();
  EXPECT_EQ(cursor.GetFrame(), nullptr);
  EXPECT_EQ(cursor.GetShadow(), nullptr);
}

TEST_F(CursorTest, CutsAPictureIntoStrips) {
  const BitmapPtr picture = Paint({"rrwggwbbwk", "rrwggwbbwk"});
  Cursor cursor;
  cursor.Create(SkinBitmap(picture.get()), 3);  // the tenth column is left over
  for (const Rows& expected :
       {Rows{"rrw", "rrw"}, {"ggw", "ggw"}, {"bbw", "bbw"}, {"rrw", "rrw"}}) {
    EXPECT_EQ(Picture(cursor.GetFrame()->GetBitmap()), expected);
    cursor.Update();
  }
}

TEST_F(CursorTest, FrameCountsThatDoNotFitThePictureAreBroughtToOnesThatDo) {
  const SkinBitmap picture = Filled(4, 2, red);
  Cursor cursor;
  for (const int count : {0, -5}) {
    cursor.Create(picture, count);
    EXPECT_EQ(cursor.GetFrame()->Width(), 4) << count;
  }
  cursor.Create(picture, 1000000);
  EXPECT_EQ(cursor.GetFrame()->Width(), 1);
  cursor.Create(SkinBitmap(), 3);
  EXPECT_EQ(cursor.GetFrame(), nullptr);
}

TEST_F(CursorTest, AnimationKeepsItsIntervalAndWrapsAround) {
  settings.logicFrameRate = 50;
  const BitmapPtr picture = Paint({"rgb"});
  Cursor cursor;
  cursor.Create(SkinBitmap(picture.get()), 3);
  cursor.SetAnimationInterval(100);  // five ticks by frame
  std::string shown;
  for (int tick = 0; tick < 18; ++tick) {
    shown += Picture(cursor.GetFrame()->GetBitmap())[0];
    cursor.Update();
  }
  EXPECT_EQ(shown, "rrrrrgggggbbbbbrrr");
}

TEST_F(CursorTest, SenselessIntervalsStillLeaveAFrameToShow) {
  Cursor cursor;
  cursor.Create(Filled(4, 1, red), 4);
  for (const int ms : {0, -1, 1, 2147483647}) {
    cursor.SetAnimationInterval(ms);
    for (int tick = 0; tick < 100; ++tick) cursor.Update();
    EXPECT_EQ(cursor.GetFrame()->getpixel(0, 0), red) << ms;
  }
}

TEST_F(CursorTest, DefaultArrowIsBlackWithAWhiteOutline) {
  Cursor cursor;
  cursor.CreateDefault();
  const Rows expected = {
      "w...........", "ww..........", "wkw.........", "wkkw........", "wkkkw.......",
      "wkkkkw......", "wkkkkkw.....", "wkkkkkkw....", "wkkkkkkkw...", "wkkkkkkkkw..",
      "wkkkkkkkkkw.", "wkkkkkkwwwww", "wkkkwkkw....", "wkkwwkkw....", "wkw..wkkw...",
      "ww...wkkw...", "w.....wkkw..", "......wkkw..", ".......wkkw.", ".......wkkw.",
      "........ww..",
  };
  EXPECT_EQ(Picture(cursor.GetFrame()->GetBitmap()), expected);
}

TEST_F(CursorTest, ShadowIsTheBlurredOutlineOfTheFrame) {
  Cursor cursor;
  SkinBitmap picture = Filled(3, 3, magenta);
  picture.putpixel(1, 1, yellow);
  cursorShadow.size = 1;
  cursor.Create(picture, 1);
  const SkinBitmap& shadow = *cursor.GetShadow();
  ASSERT_EQ(shadow.Width(), 5);
  ASSERT_EQ(shadow.Height(), 5);
  for (int y = 0; y < 5; ++y) {
    for (int x = 0; x < 5; ++x) {
      const bool near = x >= 1 && x <= 3 && y >= 1 && y <= 3;
      EXPECT_EQ(ShadowAt(cursor, x, y).a(), near ? 255 / 9 : 0) << x << ' ' << y;
      EXPECT_EQ(ShadowAt(cursor, x, y).r(), 96);
      EXPECT_EQ(ShadowAt(cursor, x, y).g(), 96);
      EXPECT_EQ(ShadowAt(cursor, x, y).b(), 96);
    }
  }
}

TEST_F(CursorTest, ShadowsArePlaceholdersWhileSwitchedOff) {
  settings.mouseShadow = false;
  Cursor cursor;
  cursor.CreateDefault();
  EXPECT_EQ(cursor.GetShadow()->Width(), 1);
  EXPECT_EQ(cursor.GetShadow()->Height(), 1);
}

TEST_F(CursorTest, ShadowValuesComeFromTheMouseSection) {
  ReadShadow(
      "[MOUSE]\nshadowColor = 10,20,30\nshadowSize = 5\nshadowOffsetX = -3\n"
      "shadowOffsetY = 4\n");
  EXPECT_EQ(cursorShadow.GetColor(), Color(10, 20, 30));
  EXPECT_EQ(cursorShadow.size, 5);
  EXPECT_EQ(cursorShadow.offset, (Point{-3, 4}));
}

TEST_F(CursorTest, MissingAndSenselessShadowValuesGiveTheDefaults) {
  for (const char* config :
       {"", "[MOUSE]\nshadowSize = -1\nshadowOffsetX = 99999999\nshadowOffsetY = -99999999\n",
        "[MOUSE]\nshadowSize = 2000000000\n"}) {
    cursorShadow = {1, 2, 3, 4, {5, 6}};
    ReadShadow(config);
    EXPECT_EQ(cursorShadow.GetColor(), Color(96, 96, 96)) << config;
    EXPECT_EQ(cursorShadow.size, 2) << config;
    EXPECT_EQ(cursorShadow.offset, (Point{2, 0})) << config;
  }
}

TEST_F(CursorTest, InitialShadowColourFollowsThePixelFormat) {
  for (const int depth : {15, 16, 24, 32}) {
    UseDepth(depth);
    EXPECT_EQ(cursorShadow.GetColor(), makecol(96, 96, 96)) << depth;
  }
}

class MousePointerTest : public CursorTest {
 protected:
  MousePointerTest() {
    MoveMouse(20, 10);
    pointer.SetScreenUpdate(&canvas);
    shape.Create(Filled(4, 3, red), 1);
    shape.SetHotspot(1, 2);
    pointer.Poll();
  }
  ~MousePointerTest() override {
    MoveMouse(0, 0);
    mouse_b = 0;
    mouse_z = 0;
  }

  static void MoveMouse(int x, int y) {
    mouse_x = x;
    mouse_y = y;
  }
  void Show() {
    pointer.SetCursor(&shape);
    pointer.Draw();
  }

  MemoryCanvas canvas{64, 48};
  Cursor shape;
  MousePointer pointer;
};

TEST_F(MousePointerTest, FollowsTheMouseFromOutsideTheScreen) {
  EXPECT_EQ(MousePointer{}.GetMousePosition(), (Point{-10000, -10000}));
  MoveMouse(7, 8);
  mouse_b = 5;
  mouse_z = -2;
  pointer.Poll();
  EXPECT_EQ(pointer.GetMousePosition(), (Point{7, 8}));
  EXPECT_EQ(pointer.GetButtons(), 5);
  EXPECT_EQ(pointer.GetWheel(), -2);
}

TEST_F(MousePointerTest, DrawsTheFrameWithItsHotspotAtTheMouse) {
  pointer.SetCursor(&shape);
  EXPECT_TRUE(pointer.IsHidden());
  pointer.Draw();
  EXPECT_FALSE(pointer.IsHidden());
  EXPECT_EQ(canvas.At(19, 8), red);
  EXPECT_EQ(canvas.At(22, 10), red);
  EXPECT_NE(canvas.At(18, 8), red);
  EXPECT_NE(canvas.At(23, 10), red);
}

TEST_F(MousePointerTest, BlendsTheShadowBesideTheFrame) {
  Show();
  // The shadow of 8 x 7 pixels starts at (19 + 2 - 2, 8 - 2); its pixel (4, 6) covers 1 row of 4.
  const int alpha = 255 * 4 / 25;
  const int expected = 128 + (96 - 128) * alpha / 255;
  EXPECT_NEAR(getr(canvas.At(23, 12)), expected, 1);
  EXPECT_LT(getr(canvas.At(24, 9)), 120);  // beside the frame, well inside the shadow
  EXPECT_EQ(canvas.At(18, 9), gray);
  EXPECT_EQ(canvas.At(27, 9), gray);
}

TEST_F(MousePointerTest, ReportsTheAreaOfFrameAndShadowTogether) {
  Show();
  ASSERT_EQ(canvas.dirty.size(), 1u);
  EXPECT_EQ(canvas.dirty[0], Rect(19, 6, 8, 7));
  pointer.Hide();
  ASSERT_EQ(canvas.dirty.size(), 2u);
  EXPECT_EQ(canvas.dirty[1], Rect(19, 6, 8, 7));

  cursorShadow.offset = {-9, 5};  // now frame and shadow only have corners of the area
  shape.Create(Filled(4, 3, red), 1);
  Show();
  EXPECT_EQ(canvas.dirty.back(), Rect(8, 8, 15, 10));
  pointer.Hide();
  EXPECT_TRUE(canvas.IsUntouched());
}

TEST_F(MousePointerTest, HideRestoresWhatLayBeneathEvenAfterTheMouseMoved) {
  Show();
  MoveMouse(40, 30);
  pointer.Update();
  pointer.Hide();
  EXPECT_TRUE(pointer.IsHidden());
  EXPECT_TRUE(canvas.IsUntouched());
  pointer.Draw();
  EXPECT_EQ(canvas.At(39, 28), red);
}

TEST_F(MousePointerTest, WorksAtAndBeyondTheEdgesOfTheScreen) {
  for (const Point p : {Point{0, 0}, Point{63, 47}, Point{-3, 20}, Point{-10000, 30000}}) {
    MoveMouse(p.x, p.y);
    pointer.Poll();
    Show();
    pointer.Hide();
    EXPECT_TRUE(canvas.IsUntouched()) << p.x << ' ' << p.y;
  }
}

TEST_F(MousePointerTest, HidingTwiceDoesNotBringBackAnOldBackground) {
  Show();
  pointer.Hide();
  clear_to_color(canvas.GetCanvas(), yellow);
  pointer.Hide();
  EXPECT_EQ(canvas.At(20, 10), yellow);
}

TEST_F(MousePointerTest, ChangingTheShapeWhileShowingLeavesNoTraceOfTheOld) {
  Show();
  Cursor large;
  large.Create(Filled(20, 20, blue), 1);
  pointer.SetCursor(&large);
  EXPECT_FALSE(pointer.IsHidden());
  EXPECT_EQ(canvas.At(20, 10), blue);
  EXPECT_NE(canvas.At(19, 9), red);
  pointer.Hide();
  EXPECT_TRUE(canvas.IsUntouched());
}

TEST_F(MousePointerTest, AShapeThatGrewIsStillRestoredWhole) {
  Show();
  pointer.Hide();
  shape.Create(Filled(30, 20, green), 1);
  pointer.Draw();
  pointer.Hide();
  EXPECT_TRUE(canvas.IsUntouched());
}

TEST_F(MousePointerTest, EmptyAndMissingShapesDrawNothing) {
  Cursor empty;
  for (Cursor* nothing : {&empty, static_cast<Cursor*>(nullptr)}) {
    Show();
    pointer.SetCursor(nothing);
    pointer.Update();
    pointer.Draw();
    EXPECT_TRUE(canvas.IsUntouched());
    pointer.Hide();
  }
}

TEST_F(MousePointerTest, DrawsNothingWhileTheSettingsHideTheMouseOrWithoutACanvas) {
  settings.showMouse = false;
  Show();
  EXPECT_TRUE(canvas.IsUntouched());
  EXPECT_TRUE(pointer.IsHidden());
  pointer.Hide();
  EXPECT_TRUE(canvas.dirty.empty());

  settings.showMouse = true;
  pointer.SetScreenUpdate(nullptr);
  Show();
  pointer.Hide();
  EXPECT_TRUE(pointer.IsHidden());
}

TEST_F(MousePointerTest, WithoutShadowOnlyTheFrameIsDrawn) {
  settings.mouseShadow = false;
  shape.Create(Filled(4, 3, red), 1);
  Show();
  for (int y = 0; y < 48; ++y) {
    for (int x = 0; x < 64; ++x) {
      const bool inFrame = x >= 19 && x <= 22 && y >= 8 && y <= 10;
      EXPECT_EQ(canvas.At(x, y), inFrame ? red : gray);
    }
  }
}

TEST_F(MousePointerTest, FollowsAChangeOfTheColourDepth) {
  Show();
  for (const int depth : {16, 15, 24, 8, 32}) {
    UseDepth(depth);
    canvas.Resize(64, 48, depth);
    pointer.SetCursor(&shape);  // still drawn in the old depth
    shape.Create(Filled(4, 3, red), 1);
    pointer.SetCursor(&shape);
    EXPECT_EQ(canvas.At(19, 8), red) << depth;
    pointer.Hide();
    EXPECT_TRUE(canvas.IsUntouched()) << depth;
    pointer.Draw();
  }
}

}  // namespace
}  // namespace zel
