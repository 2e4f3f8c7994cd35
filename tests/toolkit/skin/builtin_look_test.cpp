#include "toolkit/skin/builtin_look.h"

#include <sstream>

#include "imageformats/load.h"
#include "imageformats/register.h"
#include "tests/support/allegro_fixture.h"

namespace zel {
namespace {

constexpr char kReference[] = "tests/toolkit/skin/builtin_look.png";
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
  constexpr Size kCell{96, 120};
  constexpr int kColumns = 8;
  SkinBitmap sheet{kCell.w * kColumns, kCell.h * 6, kMemoryBitmap};
  sheet.clear_to_color(white);
  std::ostringstream tiles;
  for (int id = 0; id < kElementCount; ++id) {
    SkinBitmap element;
    DrawBuiltinElement(element, id, colors);
    element.blit(sheet, 0, 0, id % kColumns * kCell.w, id / kColumns * kCell.h, kCell.w, kCell.h);
    tiles << element.GetTileWidth() << 'x' << element.GetTileHeight() << ' ';
  }
  EXPECT_EQ(tiles.str(), kTiles);
  RegisterPictureFormats();
  const SkinBitmap reference{kReference};
  const std::string drawn = testing::TempDir() + "builtin_look.bmp";
  for (int i = 0; i < sheet.Width() * sheet.Height(); ++i) {
    const int x = i % sheet.Width(), y = i / sheet.Width();
    if (sheet.getpixel(x, y) == reference.getpixel(x, y)) continue;
    sheet.Save(drawn.c_str());
    FAIL() << kElementNames[y / kCell.h * kColumns + x / kCell.w] << " differs at " << x % kCell.w
           << ", " << y % kCell.h << ": compare " << drawn << " and " << kReference;
  }
}

TEST_F(BuiltinLookTest, WhatIsTransparentInPaletteModesIsTheFirstColour) {
  UseDepth(8);
  SkinBitmap element;
  DrawBuiltinElement(element, COMBO_BUTTON, colors);
  EXPECT_EQ(element.getpixel(0, 0), MASK_COLOR_8);
}

}  // namespace
}  // namespace zel
