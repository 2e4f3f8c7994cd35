#include "toolkit/skin/builtin_look.h"

#include <sstream>

#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"

namespace zel {
namespace {

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
    tiles << kElementNames[id] << ' ' << element.GetTileWidth() << 'x' << element.GetTileHeight()
          << '\n';
  }
  ExpectText("builtin_tiles", tiles.str());
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
