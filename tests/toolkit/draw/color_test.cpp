#include "toolkit/draw/color.h"

#include <tuple>

#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

struct ColorTest : AllegroFixture {
  ColorTest() { UseDepth(32); }
};

TEST_F(ColorTest, TextsGiveThreeNumbersHoweverTheyAreSeparated) {
  const std::pair<const char*, Color> cases[] = {
      {"10;20 30", {10, 20, 30}}, {" 16, 16, 16", {16, 16, 16}},
      {"1,2,3,4", {1, 2, 3}},     {"255,255", {255, 255, 0}},
      {",,7", {7, 0, 0}},         {"010,0x10,9z", {10, 0, 9}},
      {"red", {0, 0, 0}},         {"-1", -1}};
  for (int format : {U_ASCII, U_UTF8, U_UNICODE}) {
    set_uformat(format);
    for (const auto& [text, color] : cases) EXPECT_EQ(Color::FromText(Ascii(text)), color) << text;
  }
  EXPECT_EQ(Color::FromText(nullptr), black);
}

TEST_F(ColorTest, NamedColoursBelongToTheCurrentPixelFormat) {
  std::string named;
  for (const Color color :
       {darkgray, gray, lightgray, orange, brown, violet, darkred, darkgreen, darkblue})
    named += Join(color.r(), color.g(), color.b()) + ' ';
  EXPECT_EQ(named,
            "96 96 96  128 128 128  192 192 192  255 170 0  150 96 0  144 0 168  128 0 0  "
            "0 128 0  0 0 128  ");
  set_palette(desktop_palette);
  for (int depth : {8, 15, 16, 24, 32}) {
    UseDepth(depth);
    EXPECT_EQ(orange, makecol_depth(depth, 255, 170, 0)) << depth;
    EXPECT_EQ(magenta, bitmap_mask_color(BitmapPtr{create_bitmap(1, 1)}.get())) << depth;
    EXPECT_EQ(Color{-1000000}.r() & ~255, 0) << "read within the palette";
  }
}

TEST_F(ColorTest, TintsMixesAndChannelsAreCountedToTheRightNumber) {
  const std::tuple<Color, int, Color> cases[] = {
      {{200, 100, 50}, 0, {200, 100, 50}},
      {{255, 0, 0}, 256, {0, 0, 128}},
      {{255, 0, 0}, 128, {127, 0, 64}},      // 127.5 loses its fraction
      {{100, 100, 100}, 256, {50, 50, 50}},  // no saturation, half the brightness
      {-1, 256, -1}};
  for (auto [color, alpha, expected] : cases) {
    color.Colorize({0, 0, 128}, alpha);
    EXPECT_EQ(color, expected) << alpha;
  }
  EXPECT_EQ(MixNear({255, 10, 0}, {80, 0, 10}), (Color{197, 7, 3})) << "rounded toward zero";
  EXPECT_EQ(MixNear({80, 0, 10}, {255, 10, 0}), (Color{138, 3, 7}));
  Color color{1, 2, 3, 4};
  EXPECT_EQ(color.a(), 4);
  color.SetA(200);
  EXPECT_EQ(color, makeacol32(1, 2, 3, 200));
  color.SetR(5);
  color.SetG(6);
  color.SetB(7);
  EXPECT_EQ(color, makecol(5, 6, 7));
  EXPECT_EQ(Color::FromHsv(240, 1, 1), blue);
}

}  // namespace
}  // namespace zel
