#include "toolkit/draw/cursor.h"

#include "tests/support/allegro_fixture.h"
#include "tests/support/picture.h"

namespace zel {
namespace {

class CursorTest : public AllegroFixture {
 protected:
  CursorTest() : AllegroFixture{32} {}

  // The first letter of the frame that shows, over so many ticks.
  std::string Shown(int ticks) {
    std::string shown;
    for (; ticks > 0; --ticks) {
      shown += Picture(cursor.GetFrame()->GetBitmap())[0][0];
      cursor.Update();
    }
    return shown;
  }

  Cursor cursor;
};

TEST_F(CursorTest, APictureIsCutIntoStripsThatTakeTurns) {
  const BitmapPtr picture = Paint({"rrwggwbbwk", "rrwggwbbwk"});
  const SkinBitmap holder(picture.get());
  cursor.Create(holder, 3);  // the tenth column is left over
  EXPECT_EQ(Picture(cursor.GetFrame()->GetBitmap()), Rows({"rrw", "rrw"}));
  EXPECT_EQ(Shown(4), "rgbr");
  settings.logicFrameRate = 50;
  cursor.Create(holder, 3);
  cursor.SetAnimationInterval(100);  // five ticks by frame
  EXPECT_EQ(Shown(18), "rrrrrgggggbbbbbrrr");
  for (const auto& [frames, width] : {std::pair{-5, 10}, {1, 10}, {1'000'000, 1}}) {
    cursor.Create(holder, frames);
    EXPECT_EQ(cursor.GetFrame()->Width(), width) << frames;
  }
  for (const int ms : {0, -1, 2147483647}) {
    cursor.SetAnimationInterval(ms);
    EXPECT_EQ(Shown(100).find('?'), std::string::npos);
  }
  cursor.Create(SkinBitmap(), 3);
  cursor.Update();
  EXPECT_TRUE(!cursor.GetFrame() && !cursor.GetShadow());
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
  cursor.SetShadow({.size = 1});
  cursor.Create(SkinBitmap(picture.get()), 1);
  const SkinBitmap& shadow = *cursor.GetShadow();
  ASSERT_TRUE(shadow.Width() == 5 && shadow.Height() == 5);
  for (int i = 0; i < 25; ++i) {
    const int alpha = Rect{1, 1, 2, 2}.Contains(Point{i % 5, i / 5}) ? 255 / 9 : 0;
    EXPECT_EQ(shadow.getpixel(i % 5, i / 5), Color(96, 96, 96, alpha)) << i;
  }
}

TEST_F(CursorTest, ShadowValuesComeFromTheMouseSection) {
  const auto expect = [](const std::string& values, Color color, int size, Point offset) {
    const CursorShadow look = CursorShadow::Read(SectionFile{"[MOUSE]\n" + values});
    EXPECT_EQ(look.GetColor(), color) << values;
    EXPECT_EQ(look.size, size) << values;
    EXPECT_EQ(look.offset, offset) << values;
  };
  UseDepth(15);
  const std::string offsets = "\nshadowOffsetX = -3\nshadowOffsetY = 4\n";
  expect("shadowColor = 10,20,30\nshadowSize = 5" + offsets, Color(10, 20, 30), 5, {-3, 4});
  expect("shadowColor = -1\nshadowSize = 2000000000", Color(96, 96, 96), 2, {2, 0});
  expect("shadowSize = -1\nshadowOffsetX = 99999999\nshadowOffsetY = -99999999", Color(96, 96, 96),
         2, {2, 0});
}

}  // namespace
}  // namespace zel
