#include "toolkit/skin/color.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/support/allegro_fixture.h"
#include "toolkit/core/text.h"

namespace zel {
namespace {

class ColorTest : public AllegroFixture {
 protected:
  ColorTest() : AllegroFixture{32} {}
};

TEST_F(ColorTest, TextsGiveThreeNumbersHoweverTheyAreSeparated) {
  const struct {
    const char* text;
    Color expected;
  } cases[] = {
      {"10,20,30", {10, 20, 30}}, {"10;20;30", {10, 20, 30}},
      {"10 20 30", {10, 20, 30}}, {" 16, 16, 16", {16, 16, 16}},
      {"1,2,3,4", {1, 2, 3}},     {"255,255", {255, 255, 0}},
      {",,7", {7, 0, 0}},         {"", {0, 0, 0}},
      {"red", {0, 0, 0}},         {"010,0x10,9z", {10, 0, 9}},
      {"0,0,0", black},
  };
  for (const auto& c : cases) EXPECT_EQ(Color::FromText(c.text), c.expected) << c.text;
  EXPECT_EQ(Color::FromText(nullptr), black);
}

TEST_F(ColorTest, MinusOneIsNoColourInEveryTextFormat) {
  for (int format : {U_ASCII, U_UTF8, U_UNICODE}) {
    set_uformat(format);
    EXPECT_EQ(Color::FromText(Ascii("-1")), -1);
    EXPECT_EQ(Color::FromText(Ascii("1, 2;3")), (Color{1, 2, 3}));
  }
  EXPECT_FALSE(Color{}.IsSet());
  EXPECT_TRUE(black.IsSet());
  EXPECT_EQ(black, 0);
}

TEST_F(ColorTest, NamedColoursBelongToTheCurrentPixelFormat) {
  EXPECT_EQ(orange, makecol32(255, 170, 0));
  for (int depth : {15, 16, 24}) {
    UseDepth(depth);
    EXPECT_EQ(brown, makecol_depth(depth, 150, 96, 0));
    EXPECT_EQ(darkblue, makecol_depth(depth, 0, 0, 128));
    BitmapPtr bitmap{create_bitmap(1, 1)};
    EXPECT_EQ(magenta, bitmap_mask_color(bitmap.get()));
  }
  set_palette(desktop_palette);
  UseDepth(8);
  EXPECT_EQ(green, makecol8(0, 255, 0));
  EXPECT_LT(green, PAL_SIZE);
}

TEST_F(ColorTest, ComponentsAreReadAndReplacedOneByOne) {
  Color color{1, 2, 3, 4};
  EXPECT_EQ(color, makeacol32(1, 2, 3, 4));
  EXPECT_EQ(color.a(), 4);
  color.SetA(200);
  EXPECT_EQ(color, makeacol32(1, 2, 3, 200));
  EXPECT_EQ(color.a(), 200);
  color.SetR(10);
  color.SetG(20);
  color.SetB(30);
  EXPECT_EQ(color, makecol(10, 20, 30));
  EXPECT_EQ(Color::FromHsv(120, 1, 1), green);
}

TEST_F(ColorTest, ColorizeTakesTheHueOfTheTintByTheShareOfAlpha) {
  const Color tint{0, 0, 128};
  const struct {
    Color color;
    int alpha;
    Color expected;
  } cases[] = {
      {{200, 100, 50}, 0, {200, 100, 50}},
      {{255, 0, 0}, 256, {0, 0, 128}},
      {{255, 0, 0}, 128, {127, 0, 64}},      // 127.5 loses its fraction
      {{100, 100, 100}, 256, {50, 50, 50}},  // no saturation, half the brightness
  };
  for (const auto& c : cases) {
    Color color = c.color;
    color.Colorize(tint, c.alpha);
    EXPECT_EQ(color, c.expected) << c.color.r() << " by " << c.alpha;
  }
  Color none;
  none.Colorize(tint, 256);
  EXPECT_FALSE(none.IsSet());
}

TEST_F(ColorTest, MixingRoundsTheStepTowardZero) {
  const Color light{255, 10, 0}, dark{80, 0, 10};
  EXPECT_EQ(MixNear(light, dark), (Color{197, 7, 3}));
  EXPECT_EQ(MixNear(dark, light), (Color{138, 3, 7}));
}

TEST_F(ColorTest, ValuesOfAnotherDepthAreReadWithinThePalette) {
  UseDepth(8);
  for (Color strange : {Color{}, Color{0xFFFFFF}, Color{-1000000}}) {
    EXPECT_GE(strange.r(), 0);
    EXPECT_LE(strange.b(), 255);
  }
}

}  // namespace
}  // namespace zel
