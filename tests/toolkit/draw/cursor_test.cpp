#include "toolkit/draw/cursor.h"

#include <climits>

#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"

namespace zel {
namespace {

class CursorTest : public AllegroFixture {
 protected:
  CursorTest() : AllegroFixture{32} {}

  // The first letter of the frame that shows, over so many ticks.
  std::string Shown(int ticks) {
    std::string shown;
    for (; ticks > 0; --ticks, cursor.Update())
      shown += Picture(cursor.GetFrame()->GetBitmap())[0][0];
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
  for (const int frames : {-5, 1, 1'000'000}) {
    cursor.Create(holder, frames);
    EXPECT_EQ(cursor.GetFrame()->Width(), frames > 1 ? 1 : 10) << frames;
  }
  for (const int ms : {0, -1, INT_MAX}) {
    cursor.SetAnimationInterval(ms);
    EXPECT_EQ(Shown(100).find('?'), std::string::npos);
  }
  cursor.SetHotspot(40'000, -40'000);
  EXPECT_EQ(cursor.GetHotspot(), (Point{32767, -32767}));
  cursor.Create(SkinBitmap(), 3);
  cursor.Update();
  EXPECT_TRUE(!cursor.GetFrame() && !cursor.GetShadow());
}

TEST_F(CursorTest, DefaultArrowIsBlackWithAWhiteOutline) {
  cursor.CreateDefault();
  ExpectLook("arrow", cursor.GetFrame()->GetBitmap(), {0, 0, 12, 21});
  EXPECT_TRUE(cursor.GetFrame()->Width() == 12 && cursor.GetFrame()->Height() == 21);
}

TEST_F(CursorTest, ShadowIsTheBlurredOutlineOfTheFrame) {
  const BitmapPtr picture = Paint({"yyyyy.yy", "........"});
  const std::string row = "1233322221", ninths = row + row + row + "0000000000";
  for (const bool isShown : {true, false}) {
    settings.mouseShadow = isShown;
    cursor.SetShadow({.size = 1});
    cursor.Create(SkinBitmap(picture.get()), 1);
    const SkinBitmap& shadow = *cursor.GetShadow();
    std::string found;
    for (int i = 0; i < shadow.Width() * shadow.Height(); ++i)
      found += std::to_string((Color{shadow.getpixel(i % 10, i / 10)}.a() + 5) * 9 / 255);
    EXPECT_EQ(found, isShown ? ninths : "0");
    EXPECT_EQ(shadow.getpixel(0, 0) & 0xFFFFFF, isShown ? 0x606060 : 0);
  }
}

TEST_F(CursorTest, ShadowValuesComeFromTheMouseSection) {
  const std::pair<const char*, const char*> cases[] = {
      {"shadowColor=10,20,30\nshadowSize=64\nshadowOffsetX=-256\nshadowOffsetY=256",
       "10 20 30 64 -256 256 "},
      {"shadowColor=-1\nshadowSize=65\nshadowOffsetX=-257", "96 96 96 2 2 0 "},
      {"shadowSize=-1\nshadowOffsetX=257\nshadowOffsetY=-257", "96 96 96 2 2 0 "}};
  for (const auto& [values, expected] : cases) {
    const CursorShadow look = CursorShadow::Read(SectionFile{std::string{"[MOUSE]\n"} + values});
    EXPECT_EQ(Join(look.red, look.green, look.blue, look.size, look.offset.x, look.offset.y),
              expected)
        << values;
  }
}

}  // namespace
}  // namespace zel
