#include "toolkit/skin/skin_bitmap.h"

#include <climits>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "tests/support/allegro_fixture.h"
#include "tests/support/picture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

class SkinBitmapTest : public AllegroFixture {
 protected:
  SkinBitmapTest() : AllegroFixture{32} {}
  ~SkinBitmapTest() override {
    screen = nullptr;
    gfx_driver = nullptr;
  }
};

TEST_F(SkinBitmapTest, BorrowedBitmapsOutliveTheirHolders) {
  BitmapPtr bitmap = Paint({"rg"});
  {
    SkinBitmap holder{bitmap.get()};
    holder.SetTileSize({3, 4});
    const SkinBitmap second{holder};
    EXPECT_EQ(second.GetBitmap(), bitmap.get());
    EXPECT_EQ(second.GetKind(), kMemoryBitmap);
    EXPECT_EQ(second.GetTileSize(), (Size{3, 4}));
    EXPECT_FALSE(holder.IsOwned());
    holder.Set(nullptr, false, kMemoryBitmap);
    EXPECT_TRUE(holder.IsEmpty());
    EXPECT_EQ(holder.GetKind(), kNoBitmap);
  }
  EXPECT_EQ(Picture(bitmap.get()), Rows({"rg"}));
}

TEST_F(SkinBitmapTest, CopiesHaveTheirOwnPixels) {
  BitmapPtr bitmap = Paint({"rg"});
  SkinBitmap holder;
  holder.Set(bitmap.get(), true, kNoBitmap);
  EXPECT_TRUE(holder.IsOwned());
  EXPECT_EQ(holder.GetKind(), kMemoryBitmap);
  clear_to_color(bitmap.get(), blue);
  EXPECT_EQ(Picture(holder.GetBitmap()), Rows({"rg"}));
  holder.Set(holder, true, kNoBitmap);  // its own bitmap is the source
  EXPECT_EQ(Picture(holder.GetBitmap()), Rows({"rg"}));
  BITMAP* before = holder.GetBitmap();
  holder.Set(before, false, kNoBitmap);
  EXPECT_TRUE(holder.IsOwned()) << "nobody else would destroy it";
}

TEST_F(SkinBitmapTest, MovingHandsOverTheBitmapAndItsOwner) {
  SkinBitmap first{2, 3, kMemoryBitmap};
  first.SetTileWidth(7);
  BITMAP* made = first.GetBitmap();
  SkinBitmap second{std::move(first)};
  EXPECT_TRUE(first.IsEmpty());
  EXPECT_FALSE(first.IsOwned());
  SkinBitmap third{1, 1, kMemoryBitmap};
  third = std::move(second);
  EXPECT_EQ(third.GetBitmap(), made);
  EXPECT_TRUE(third.IsOwned());
  EXPECT_EQ(third.GetTileWidth(), 7);
}

TEST_F(SkinBitmapTest, ImpossibleSizesLeaveTheHolderEmpty) {
  SkinBitmap holder{2, 2, kMemoryBitmap};
  for (Size size : {Size{0, 5}, Size{5, 0}, Size{-1, 5}, Size{65536, 65536}, Size{INT_MAX, 2}}) {
    holder.Create(size.w, size.h);
    EXPECT_TRUE(holder.IsEmpty()) << size.w;
    EXPECT_FALSE(holder.IsOwned());
    holder.CreateEx(32, size.w, size.h);
    EXPECT_TRUE(holder.IsEmpty()) << size.w;
  }
  holder.Create(2, 2, kVideoBitmap);  // no graphics mode, no video memory
  EXPECT_TRUE(holder.IsEmpty());
}

TEST_F(SkinBitmapTest, SubBitmapsShareThePixelsOfTheirParent) {
  BitmapPtr bitmap = Paint({"....", "....", "...."});
  SkinBitmap parent{bitmap.get()};
  SkinBitmap part;
  part.CreateSub(parent, 1, 1, INT_MAX, 2);
  ASSERT_EQ(part.Width(), 3);
  part.clear_to_color(red);
  EXPECT_EQ(Picture(bitmap.get()), Rows({"....", ".rrr", ".rrr"}));
  EXPECT_TRUE(SameBitmap(part.GetBitmap(), bitmap.get()));
  part.CreateSub(parent, 4, 0, 1, 1);
  EXPECT_TRUE(part.IsEmpty());
}

TEST_F(SkinBitmapTest, BitmapsAreTheSameByAddressOrSharedId) {
  BitmapPtr a = Paint({"r"}), b = Paint({"r"});
  EXPECT_TRUE(SameBitmap(a.get(), a.get()));
  EXPECT_FALSE(SameBitmap(a.get(), b.get())) << "an id of 0 is none";
  EXPECT_FALSE(SameBitmap(nullptr, nullptr));
  EXPECT_FALSE(IsScreen(a.get()));
  screen = a.get();
  EXPECT_TRUE(IsScreen(a.get()));
}

// Stands in for the screen: destroying it while a holder is emptied would be a use after free
// for every check that follows.
TEST_F(SkinBitmapTest, TheScreenAndItsPartsAreNeverDestroyed) {
  BitmapPtr fake = Paint({"rgb"});
  screen = fake.get();
  SkinBitmap holder;
  holder.CreateSub(SkinBitmap{screen}, 1, 0, 2, 1);
  BitmapPtr part{holder.GetBitmap()};
  ASSERT_TRUE(IsScreen(part.get()));
  holder.Destroy();
  EXPECT_TRUE(holder.IsEmpty());
  EXPECT_EQ(Picture(part.get()), Rows({"gb"}));
  EXPECT_EQ(Picture(screen), Rows({"rgb"}));
}

int videoBitmapsMade = 0;
BITMAP* MakeVideoBitmap(int w, int h) {
  ++videoBitmapsMade;
  BITMAP* bitmap = create_bitmap(w, h);
  bitmap->id |= BMP_ID_VIDEO;
  return bitmap;
}
void DestroyVideoBitmap(BITMAP* bitmap) {
  --videoBitmapsMade;
  bitmap->id = 0;
  destroy_bitmap(bitmap);
}

TEST_F(SkinBitmapTest, ACopyWithoutAKindIsOfTheKindOfItsSource) {
  GFX_DRIVER driver{};
  driver.create_video_bitmap = MakeVideoBitmap;
  driver.destroy_video_bitmap = DestroyVideoBitmap;
  gfx_driver = &driver;
  {
    const SkinBitmap source{2, 1, kVideoBitmap};
    SkinBitmap copy;
    copy.Set(source.GetBitmap(), true, kNoBitmap);
    EXPECT_EQ(copy.GetKind(), kVideoBitmap);
    EXPECT_NE(copy.GetBitmap(), source.GetBitmap());
    EXPECT_EQ(videoBitmapsMade, 2);
    SkinBitmap plain;
    plain.Set(source, true, kMemoryBitmap);
    EXPECT_EQ(SkinBitmap{plain.GetBitmap()}.GetKind(), kMemoryBitmap);
    EXPECT_EQ(SkinBitmap{source.GetBitmap()}.GetKind(), kVideoBitmap);
  }
  EXPECT_EQ(videoBitmapsMade, 0);
}

TEST_F(SkinBitmapTest, PicturesThatCannotBeLoadedLeaveTheHolderAsItWas) {
  const TempDir folder;
  const std::string picture = folder.Path("picture.bmp"), unknown = folder.Path("picture.unknown");
  const std::string broken = folder.Write("broken.bmp", "no picture");
  BitmapPtr bitmap = Paint({"rgb", "bgr"});
  EXPECT_TRUE(SkinBitmap{bitmap.get()}.Save(picture.c_str()));

  SkinBitmap holder;
  EXPECT_FALSE(holder.Load(picture.c_str(), kMemoryBitmap).IsError());
  EXPECT_EQ(holder.Load(folder.Path("absent.bmp").c_str(), kMemoryBitmap), kFileNotFoundError);
  EXPECT_EQ(holder.Load(nullptr, kMemoryBitmap), kFileNotFoundError);
  EXPECT_EQ(holder.Load(broken.c_str(), kMemoryBitmap), kLoadError);
  EXPECT_EQ(Picture(holder.GetBitmap()), Rows({"rgb", "bgr"}));
  EXPECT_TRUE(holder.IsOwned());
  EXPECT_FALSE(holder.Save(unknown.c_str()));
  EXPECT_TRUE(SkinBitmap{broken.c_str()}.IsEmpty());
}

TEST_F(SkinBitmapTest, EmptyHoldersDrawNothing) {
  BitmapPtr target = Paint({"r"});
  SkinBitmap empty;
  empty.Box3D(0, 0, 5, 5, red, green, blue);
  empty.Circle3D(3, 3, 3, red, green, blue);
  empty.DottedRect(0, 0, 5, 5, red);
  empty.clear_to_color(red);
  empty.set_clip_rect(0, 0, 1, 1);
  empty.blit(target.get(), 0, 0, 0, 0, 1, 1);
  empty.draw_sprite(target.get(), 0, 0);
  empty.DrawHFrame(target.get(), 0, 0, 0, 9, 4);
  empty.DrawArea(target.get(), 0, 0, 0, 0, 9, 9, 1, 4);
  EXPECT_EQ(empty.getpixel(0, 0), -1);
  EXPECT_FALSE(empty.Save("never.bmp"));
  SkinBitmap{target.get()}.DrawArea(empty, 0, 0, 0, 0, 9, 9, 1, 1);
  SkinBitmap{target.get()}.blit(empty, 0, 0, 0, 0, 1, 1);
  EXPECT_EQ(Picture(target.get()), Rows({"r"}));
}

TEST_F(SkinBitmapTest, MaskedCopiesNeedATargetOfTheSameDepth) {
  BitmapPtr source = Paint({"r.g"});
  SkinBitmap holder{source.get()};
  BitmapPtr target = Paint({"bbbb"});
  holder.masked_blit(SkinBitmap{target.get()}, 0, 0, 1, 0, 3, 1);
  EXPECT_EQ(Picture(target.get()), Rows({"brbg"}));
  BitmapPtr deep{create_bitmap_ex(8, 3, 1)};
  clear_bitmap(deep.get());
  holder.masked_blit(deep.get(), 0, 0, 0, 0, 3, 1);
  holder.draw_sprite(deep.get(), 0, 0);
  holder.DrawArea(deep.get(), 0, 0, 0, 0, 3, 1, 1, 1, true);
  EXPECT_EQ(getpixel(deep.get(), 0, 0), 0);
}

TEST_F(SkinBitmapTest, ArrowsPointInTheirDirection) {
  const struct {
    int direction;
    Rows picture;
  } cases[] = {
      {kArrowLeft, {"...r", "..rr", ".rrr", "rrrr", ".rrr", "..rr", "...r"}},
      {kArrowRight, {"r...", "rr..", "rrr.", "rrrr", "rrr.", "rr..", "r..."}},
      {kArrowUp, {"...r...", "..rrr..", ".rrrrr.", "rrrrrrr"}},
      {kArrowDown, {"rrrrrrr", ".rrrrr.", "..rrr..", "...r..."}},
      {4, {".."}},
  };
  for (const auto& c : cases) {
    SkinBitmap canvas{static_cast<int>(c.picture[0].size()), static_cast<int>(c.picture.size()),
                      kMemoryBitmap};
    canvas.clear_to_color(magenta);
    canvas.Arrow(0, 0, red, c.direction);
    EXPECT_EQ(Picture(canvas.GetBitmap()), c.picture);
  }
}

TEST_F(SkinBitmapTest, MarksAreThreeLinesThickAndStayInTheirSquare) {
  SkinBitmap canvas{9, 9, kMemoryBitmap};
  canvas.clear_to_color(magenta);
  canvas.XMark(4, 4, 6, red);
  EXPECT_EQ(Picture(canvas.GetBitmap()), Rows({".........",  //
                                               ".rr...rr.",  //
                                               ".rrr.rrr.",  //
                                               "..rrrrr..",  //
                                               "...rrr...",  //
                                               "..rrrrr..",  //
                                               ".rrr.rrr.",  //
                                               ".rr...rr.",  //
                                               "........."}));
  canvas.clear_to_color(magenta);
  canvas.CheckMark(1, 1, red);
  EXPECT_EQ(Picture(canvas.GetBitmap()), Rows({".........",  //
                                               ".......r.",  //
                                               "......rr.",  //
                                               ".r...rrr.",  //
                                               ".rr.rrr..",  //
                                               ".rrrrr...",  //
                                               "..rrr....",  //
                                               "...r.....",  //
                                               "........."}));
}

TEST_F(SkinBitmapTest, DottedRectanglesPaintEverySecondPixelOfTheirEdges) {
  SkinBitmap canvas{7, 5, kMemoryBitmap};
  canvas.clear_to_color(magenta);
  canvas.DottedRect(1, 0, 5, 3, red);
  EXPECT_EQ(Picture(canvas.GetBitmap()), Rows({".r.r.r.",  //
                                               ".......",  //
                                               ".r...r.",  //
                                               ".r.r.r.",  //
                                               "......."}));
  canvas.clear_to_color(magenta);
  canvas.DottedRect(INT_MIN + 1, 2, INT_MAX, 2, red);  // dots at odd x
  EXPECT_EQ(Picture(canvas.GetBitmap())[2], ".r.r.r.");
}

TEST_F(SkinBitmapTest, BevelsMixTheirColoursAtTheOuterLightAndTheInnerDarkEdge) {
  SkinBitmap canvas{6, 6, kMemoryBitmap};
  canvas.clear_to_color(magenta);
  // From yellow to black a third of the way and back.
  const Color outerLight{170, 170, 0}, innerDark{85, 85, 0};
  canvas.Box3D(0, 0, 4, 4, red, yellow, black);
  const Color o = outerLight, y = yellow, n = innerDark, k = black, r = red;
  const Color expected[5][5] = {{o, o, o, o, k},  //
                                {o, y, y, n, k},
                                {o, y, r, n, k},
                                {o, n, n, n, k},
                                {k, k, k, k, k}};
  for (int row = 0; row < 5; ++row)
    for (int column = 0; column < 5; ++column)
      EXPECT_EQ(canvas.getpixel(column, row), expected[row][column]) << column << ',' << row;
  EXPECT_EQ(canvas.getpixel(5, 5), magenta);

  canvas.clear_to_color(green);
  canvas.Box3D(0, 0, 5, 5, Color{}, yellow, black);
  EXPECT_EQ(canvas.getpixel(2, 2), green) << "no colour leaves the inside alone";
}

TEST_F(SkinBitmapTest, CircleBevelsAreLightAboveLeftAndDarkBelowRightAndFreeTheClip) {
  SkinBitmap canvas{15, 15, kMemoryBitmap};
  canvas.clear_to_color(blue);
  canvas.Circle3D(6, 6, 6, red, yellow, black);
  const Color outerLight{170, 170, 0}, innerDark{85, 85, 0};
  const struct {
    int x, y;
    Color color;
  } probes[] = {{0, 6, outerLight}, {6, 0, outerLight}, {1, 6, yellow},     {6, 1, yellow},
                {12, 6, black},     {6, 12, black},     {11, 6, innerDark}, {6, 11, innerDark},
                {2, 2, outerLight}, {10, 10, black},    {6, 6, red},        {0, 0, blue}};
  for (const auto& probe : probes)
    EXPECT_EQ(canvas.getpixel(probe.x, probe.y), probe.color) << probe.x << ',' << probe.y;
  EXPECT_EQ(canvas.GetBitmap()->cr, 15);
  EXPECT_EQ(canvas.GetBitmap()->cb, 15);
}

}  // namespace
}  // namespace zel
