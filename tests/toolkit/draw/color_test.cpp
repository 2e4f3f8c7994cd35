#include "toolkit/draw/color.h"

#include <tuple>
#include <utility>

#include "tests/support/allegro_fixture.h"
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
  set_palette(desktop_palette);
  for (int depth : {8, 15, 16, 24, 32}) {
    UseDepth(depth);
    EXPECT_EQ(orange, makecol_depth(depth, 255, 170, 0)) << depth;
    EXPECT_EQ(darkblue, makecol_depth(depth, 0, 0, 128)) << depth;
    const BitmapPtr bitmap{create_bitmap(1, 1)};
    EXPECT_EQ(magenta, bitmap_mask_color(bitmap.get())) << depth;
    EXPECT_EQ(Color{-1000000}.r() & ~255, 0) << "read within the palette";
  }
}

TEST_F(ColorTest, TintsAndMixesRoundTowardTheColour) {
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
  const Color light{255, 10, 0}, dark{80, 0, 10};
  EXPECT_EQ(MixNear(light, dark), (Color{197, 7, 3})) << "the step is rounded toward zero";
  EXPECT_EQ(MixNear(dark, light), (Color{138, 3, 7}));
  Color clear{1, 2, 3, 4};
  clear.SetA(200);
  EXPECT_EQ(clear, makeacol32(1, 2, 3, 200));
}

}  // namespace
}  // namespace zel
