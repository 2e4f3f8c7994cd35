#include "toolkit/skin/builtin_look.h"

#include <sstream>

#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"

namespace zel {
namespace {

// Of all elements, in their order.
constexpr char kTiles[] =
    "60x48 58x58 14x14 13x13 68x68 18x20 14x18 11x22 15x14 15x14 15x14 15x14 32x8 60x60 18x12 "
    "16x16 60x60 60x60 60x60 60x60 8x14 14x8 13x13 16x16 14x12 14x12 12x12 16x16 16x16 16x16 12x12 "
    "12x8 12x12 8x2 2x8 14x14 60x60 18x14 22x11 -1x-1 -1x-1 -1x-1 -1x-1 -1x-1 -1x-1 -1x-1 ";

struct BuiltinLookTest : AllegroFixture {
  BuiltinLookTest() : AllegroFixture{32} {}

  // No two alike, unlike the built-in ones.
  const Color colors[kSkinColorCount] = {{200, 0, 0},    {0, 120, 0},   {255, 255, 0}, {0, 0, 255},
                                         {0, 200, 200},  {60, 60, 60},  {0, 60, 120},  {130, 0, 60},
                                         {250, 130, 60}, {60, 190, 120}};
};

TEST_F(BuiltinLookTest, EveryElementLooksAsInTheReferencePicture) {
  SkinBitmap sheet{90, 3000, kMemoryBitmap};
  sheet.clear_to_color(white);
  std::ostringstream tiles;
  int bottom = 0;
  for (int id = 0; id < kElementCount; ++id, ++bottom) {
    SkinBitmap element;
    DrawBuiltinElement(element, id, colors);
    element.blit(sheet, 0, 0, 0, bottom, element.Width(), element.Height());
    bottom += element.Height();
    tiles << element.GetTileWidth() << 'x' << element.GetTileHeight() << ' ';
  }
  EXPECT_EQ(tiles.str(), kTiles);
  ExpectLook("builtin_look", sheet.GetBitmap(), {0, 0, sheet.Width(), bottom});
}

TEST_F(BuiltinLookTest, WhatIsTransparentInPaletteModesIsTheFirstColour) {
  UseDepth(8);
  SkinBitmap element;
  DrawBuiltinElement(element, COMBO_BUTTON, colors);
  EXPECT_EQ(element.getpixel(0, 0), MASK_COLOR_8);
}

}  // namespace
}  // namespace zel
