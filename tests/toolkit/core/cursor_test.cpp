#include "toolkit/core/cursor.h"

#include "tests/support/allegro_fixture.h"
#include "tests/support/picture.h"

namespace zel {
namespace {

class CursorTest : public AllegroFixture {
 protected:
  CursorTest() : AllegroFixture{32} { cursorShadow = CursorShadow{}; }
  ~CursorTest() override { cursorShadow = CursorShadow{}; }

  // The first letter of the frame that shows, over so many ticks.
  std::string Shown(int ticks) {
    std::string shown;
    for (; ticks > 0; --ticks) {
      shown += Picture(cursor.GetFrame()->GetBitmap())[0][0];
      cursor.Update();
    }
    return shown;
  }
  static void ReadShadow(const std::string& config) {
    set_config_data(config.c_str(), static_cast<int>(config.size()));
    cursorShadow.Read();
  }

  Cursor cursor;
};

TEST_F(CursorTest, APictureIsCutIntoStripsThatTakeTurns) {
  cursor.Update();
  EXPECT_EQ(cursor.GetFrame(), nullptr);
  EXPECT_EQ(cursor.GetShadow(), nullptr);
  const BitmapPtr picture = Paint({"rrwggwbbwk", "rrwggwbbwk"});
  const SkinBitmap holder(picture.get());
  cursor.Create(holder, 3);  // the tenth column is left over
  EXPECT_EQ(Picture(cursor.GetFrame()->GetBitmap()), Rows({"rrw", "rrw"}));
  EXPECT_EQ(Shown(4), "rgbr");
  settings.logicFrameRate = 50;
  cursor.Create(holder, 3);
  cursor.SetAnimationInterval(100);  // five ticks by frame
  EXPECT_EQ(Shown(18), "rrrrrgggggbbbbbrrr");
  const struct { int frames, width; } kCounts[] = {{0, 10}, {-5, 10}, {1, 10}, {1'000'000, 1}};
  for (const auto& [frames, width] : kCounts) {
    cursor.Create(holder, frames);
    EXPECT_EQ(cursor.GetFrame()->Width(), width) << frames;
  }
  for (const int ms : {0, -1, 1, 2147483647}) {
    cursor.SetAnimationInterval(ms);
    EXPECT_EQ(Shown(100).find('?'), std::string::npos);
  }
  cursor.Create(SkinBitmap(), 3);
  EXPECT_EQ(cursor.GetFrame(), nullptr);
}

TEST_F(CursorTest, DefaultArrowIsBlackWithAWhiteOutline) {
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
  const BitmapPtr picture = Paint({"...", ".y.", "..."});
  cursorShadow.size = 1;
  cursor.Create(SkinBitmap(picture.get()), 1);
  const SkinBitmap& shadow = *cursor.GetShadow();
  ASSERT_EQ(Point({shadow.Width(), shadow.Height()}), (Point{5, 5}));
  for (int y = 0; y < 5; ++y) {
    for (int x = 0; x < 5; ++x) {
      const bool near = x >= 1 && x <= 3 && y >= 1 && y <= 3;
      EXPECT_EQ(shadow.getpixel(x, y), Color(96, 96, 96, near ? 255 / 9 : 0)) << x << ' ' << y;
    }
  }
  settings.mouseShadow = false;
  cursor.CreateDefault();
  EXPECT_EQ(cursor.GetShadow()->Width(), 1) << "a placeholder";
}

TEST_F(CursorTest, ShadowValuesComeFromTheMouseSection) {
  for (const int depth : {15, 16, 24, 32}) {
    UseDepth(depth);
    EXPECT_EQ(cursorShadow.GetColor(), makecol(96, 96, 96)) << depth;
  }
  ReadShadow(
      "[MOUSE]\nshadowColor = 10,20,30\nshadowSize = 5\nshadowOffsetX = -3\n"
      "shadowOffsetY = 4\n");
  EXPECT_EQ(cursorShadow.GetColor(), Color(10, 20, 30));
  EXPECT_EQ(cursorShadow.size, 5);
  EXPECT_EQ(cursorShadow.offset, (Point{-3, 4}));
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

}  // namespace
}  // namespace zel
