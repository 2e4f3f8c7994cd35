#include "toolkit/draw/skin_bitmap.h"

#include <algorithm>
#include <climits>
#include <string>
#include <utility>

#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"
#include "tests/support/temp_files.h"
#include "toolkit/draw/bitmap_guard.h"
#include "toolkit/testing/fake_machine.h"
#include "toolkit/testing/picture.h"

namespace zel {
namespace {

struct SkinBitmapTest : AllegroFixture {
  SkinBitmapTest() { UseDepth(32); }

  // What it holds, and how.
  static std::string Held(const SkinBitmap& holder) {
    if (holder.IsEmpty()) return "nothing";
    const char* const kinds[] = {" memory", " system", " video", " none"};
    return (holder.IsOwned() ? "own" : "other's") + std::string{kinds[holder.GetKind()]} +
           " bitmap, tile " + std::to_string(holder.GetTileWidth()) + 'x' +
           std::to_string(holder.GetTileHeight());
  }
};

TEST_F(SkinBitmapTest, HoldersBorrowCopyOrTakeOver) {
  const BitmapPtr bitmap = Paint({"rg"});
  {
    SkinBitmap holder{bitmap.get()};
    holder.SetTileSize({3, 4});
    EXPECT_EQ(Held(SkinBitmap{holder}), "other's memory bitmap, tile 3x4");
    holder.Set(nullptr, false, kMemoryBitmap);
    EXPECT_TRUE(holder.IsEmpty() && holder.GetKind() == kNoBitmap);
  }
  SkinBitmap copy;
  copy.Set(bitmap.get(), true, kNoBitmap);
  clear_to_color(bitmap.get(), blue);  // it outlived its holders
  copy.Set(copy, true, kNoBitmap);     // its own bitmap is the source
  copy.Set(copy.GetBitmap(), false, kNoBitmap);
  EXPECT_EQ(Held(copy), "own memory bitmap, tile -1x-1") << "nobody else would destroy it";
  copy.SetTileWidth(7);
  SkinBitmap moved{std::move(copy)}, last{1, 1, kMemoryBitmap};
  last = std::move(moved);
  EXPECT_EQ(Held(copy) + ", " + Held(moved) + ", " + Held(last),
            "nothing, nothing, own memory bitmap, tile 7x-1");
  EXPECT_EQ(Picture(last.GetBitmap()), Rows({"rg"}));
  last.Create(2, 2, kVideoBitmap);
  EXPECT_TRUE(last.IsEmpty()) << "no graphics mode, no video memory";
}

TEST_F(SkinBitmapTest, SizesThatOverflowOrFillTheMemoryAreRefused) {
  InstallBitmapGuard();
  EXPECT_TRUE(IsPossibleBitmap(32, 8192, 8192) && IsPossibleBitmap(15, 8192, 16384));
  constexpr int kRefused[][3] = {{32, 8192, 8193}, {15, 8192, 16385}, {32, INT_MAX, INT_MAX},
                                 {8, -1, 1},       {8, 1, -1},        {8, 0, 5},
                                 {8, 5, 0},        {32, 65536, 65536}};
  for (const auto& [depth, w, h] : kRefused) {
    EXPECT_EQ(IsPossibleBitmap(depth, w, h), std::min(w, h) == 0) << w << ' ' << h;
    SkinBitmap made{1, 1, kMemoryBitmap}, ofDepth{1, 1, kMemoryBitmap};
    made.Create(w, h);
    ofDepth.CreateEx(depth, w, h);
    EXPECT_EQ(Held(made) + Held(ofDepth), "nothingnothing") << w << ' ' << h;
  }
  EXPECT_FALSE(IsPossibleBitmap(0, 1, 1));
  EXPECT_TRUE(!create_bitmap(32768, 32769) && BitmapPtr{create_bitmap(3, 2)});
  EXPECT_EQ(create_bitmap(65536, 65536), nullptr) << "also after a bitmap was made";
}

// Destroying the screen or its part while a holder is emptied would be a use after free for the
// checks that follow.
TEST_F(SkinBitmapTest, TheScreenIsNeverDestroyedAndVideoBitmapsAreCopiedAsSuch) {
  const FakeMachine machine;
  set_gfx_mode(GFX_AUTODETECT_FULLSCREEN, 4, 3, 0, 0);
  SkinBitmap holder, other{1, 1, kMemoryBitmap};
  holder.CreateSub(SkinBitmap{screen}, 1, 1, INT_MAX, 2);
  const BitmapPtr part{holder.GetBitmap()};
  holder.clear_to_color(red);
  holder.Destroy();
  EXPECT_EQ(Picture(part.get()), Rows({"rrr", "rrr"}));
  EXPECT_EQ(Picture(screen), Rows({"kkkk", "krrr", "krrr"}));
  EXPECT_TRUE(IsScreen(part.get()) && IsScreen(screen) && !IsScreen(other.GetBitmap()));
  const int outside[][4] = {{4, 0, 1, 1},  {0, 3, 1, 1}, {-1, 0, 2, 2},
                            {0, -1, 2, 2}, {0, 0, 0, 1}, {0, 0, 1, 0}};
  for (const auto& [x, y, w, h] : outside) {
    holder.CreateSub(SkinBitmap{screen}, x, y, w, h);
    EXPECT_TRUE(holder.IsEmpty()) << x << y;
  }
  holder.Load("tests/imageformats/samples/from_the_top.bmp", kVideoBitmap);
  other.Set(holder.GetBitmap(), true, kNoBitmap);
  EXPECT_EQ(Held(other), "own video bitmap, tile -1x-1");
  other.Set(holder, true, kMemoryBitmap);
  holder.Destroy();
  EXPECT_EQ(Held(SkinBitmap{other.GetBitmap()}), "other's memory bitmap, tile -1x-1");
  EXPECT_EQ(machine.videoPages, 0);
}

TEST_F(SkinBitmapTest, PicturesThatCannotBeLoadedLeaveTheHolderAndEmptyHoldersDrawNothing) {
  const TempFile broken{"no picture", "a.bmp"};
  SkinBitmap empty, full{1, 1, kMemoryBitmap};
  full.clear_to_color(red);
  EXPECT_EQ(full.Load("absent.bmp", kMemoryBitmap), kFileNotFoundError);
  EXPECT_EQ(full.Load(nullptr, kMemoryBitmap), kFileNotFoundError);
  EXPECT_EQ(full.Load(broken.Path(), kMemoryBitmap), kLoadError);
  EXPECT_FALSE(full.Save("picture.unknown") || empty.Save("a.bmp"));
  empty.Box3D(0, 0, 5, 5, red, green, blue);
  empty.draw_trans_sprite(full, 0, 0);
  empty.DrawArea(full, 0, 0, 0, 0, 9, 9, 1, 4);
  full.DrawArea(empty, 0, 0, 0, 0, 9, 9, 1, 1);
  EXPECT_EQ(Picture(full.GetBitmap()), Rows({"r"}));
}

TEST_F(SkinBitmapTest, MaskedCopiesNeedATargetOfTheirDepthOpacityGoesToAllButPalettes) {
  SkinBitmap source{3, 1, kMemoryBitmap}, target;
  source.clear_to_color({0, 0, 255, 128});
  for (int depth : {15, 16, 24, 8}) {
    target.CreateEx(depth, 2, 1);
    target.clear_bitmap();
    source.DrawArea(target, 0, 0, 0, 0, 3, 1, 1, 1, true);
    source.draw_sprite(target, 0, 0);
    EXPECT_EQ(target.getpixel(0, 0), 0) << depth;
    set_alpha_blender();
    source.draw_trans_sprite(target, 1, 0);
    EXPECT_NEAR(getb_depth(depth, target.getpixel(1, 0)), depth == 8 ? 0 : 118, 12) << depth;
  }
  source.CreateEx(8, 1, 1);
  source.clear_to_color(5);
  source.draw_lit_sprite(target, 0, 0, 9);
  EXPECT_EQ(target.getpixel(0, 0), 5) << "no mixing with a palette";
}

TEST_F(SkinBitmapTest, MarksPaintWithinTheBitmap) {
  SkinBitmap canvas{7, 5, kMemoryBitmap};
  canvas.clear_to_color(magenta);
  canvas.DottedRect(1, 0, 5, 3, red);
  canvas.DottedRect(INT_MIN + 1, 4, INT_MAX, 4, red);  // dots at odd x
  EXPECT_EQ(Picture(canvas.GetBitmap()),
            Rows({".r.r.r.", ".......", ".r...r.", ".r.r.r.", ".r.r.r."}));
  for (int i = -9; i < 99; ++i) canvas.Circle3D(i % 9, i / 9, 0, red, white, green);
  EXPECT_EQ(Picture(canvas.GetBitmap()), Rows(5, "ggggggg"));
}

TEST_F(SkinBitmapTest, CopiesWhatAllegroCopies) {
  constexpr int kStarts[] = {-3, 0, 2}, kSizes[][2] = {{0, 3}, {5, 4}, {20, 20}};
  const Rows rows = {"rgbcyk", "gbcykr", "bcykrg", "cykrgb", "ykrgbc", "krgbcy"};
  for (int i = 0; i < 3 * 3 * 3 * 3 * 3; ++i) {
    UseDepth(i % 2 ? 16 : 24);
    const BitmapPtr source = Paint(rows), copied = Paint(Rows(9, "wwwwww"));
    const BitmapPtr expected = Paint(Rows(9, "wwwwww"));
    for (BITMAP* out : {copied.get(), expected.get()})
      set_clip_rect(out, i % 2, i % 3, 4, 6 + i % 3);
    const int sx = kStarts[i % 3], sy = kStarts[i / 3 % 3], x = kStarts[i / 9 % 3];
    const int y = kStarts[i / 27 % 3], w = kSizes[i / 81][0], h = kSizes[i / 81][1];
    SkinBitmap target{copied.get()};
    SkinBitmap{source.get()}.blit(target, sx, sy, x, y, w, h);
    ::blit(source.get(), expected.get(), sx, sy, x, y, w, h);
    EXPECT_EQ(Picture(copied.get()), Picture(expected.get())) << i;
  }
}

TEST_F(SkinBitmapTest, BoxesStayWithinTheClipRectangle) {
  for (int top = 0; top < 12; ++top) {
    UseDepth(top % 2 ? 16 : 24);
    SkinBitmap clipped{9, 12, kMemoryBitmap}, whole{9, 12, kMemoryBitmap},
        expected{9, 12, kMemoryBitmap};
    for (SkinBitmap* bitmap : {&clipped, &whole, &expected}) bitmap->clear_to_color(blue);
    clipped.set_clip_rect(2, top, 6, top + 3);
    for (SkinBitmap* bitmap : {&clipped, &whole}) bitmap->Box3D(1, 1, 7, 10, red, yellow, black);
    whole.blit(expected, 2, top, 2, top, 5, 4);
    EXPECT_EQ(Picture(clipped.GetBitmap()), Picture(expected.GetBitmap())) << top;
  }
}

// Frames with each tile, from left to right, fitted to each length, downwards, within a clip
// rectangle: copied as they are, into another depth, and masked; then those of one direction.
TEST_F(SkinBitmapTest, FramesAreFittedByRepeatingTheirTiles) {
  constexpr int kTiles[] = {-1, 0, 1, 3, 9}, kLengths[] = {0, 3, 5, 9, 17}, kCell = 18;
  for (const char* kind : {"plain", "converted", "masked"}) {
    UseDepth(kind == std::string{"converted"} ? 16 : 24);
    const BitmapPtr picture = Paint({"rgbcyk.rbgc", "gbcykr.bgcr", "bcykrg.gcrb", "cykrgb.crbg"});
    SkinBitmap art{22, 12, kMemoryBitmap};
    art.clear_to_color(white);
    ::blit(picture.get(), art.GetBitmap(), 0, 0, 11, 8, 11, 4);
    UseDepth(24);
    SkinBitmap out{5 * kCell, 7 * kCell, kMemoryBitmap};
    out.clear_to_color(black);
    for (int i = 0; i < 5 * 7; ++i) {
      const int tile = i % 5, length = i / 5, x = tile * kCell, y = length * kCell;
      art.SetTileSize({kTiles[tile], kTiles[(tile + length) % 5]});
      out.set_clip_rect(x + tile % 3, y + length % 2, x + 14, y + 12 + length);
      const bool masked = kind == std::string{"masked"};
      if (length < 5)
        art.DrawArea(out, 1, 2, x + length - 2, y + tile - 2, kLengths[length],
                     kLengths[(length + tile) % 5], 2, 3, masked);
      if (length == 5) art.DrawHFrame(out, 2, x + tile - 3, y, kLengths[4 - tile], 3, masked);
      if (length == 6) art.DrawVFrame(out, 1, x, y + tile - 3, kLengths[4 - tile], 2, masked);
    }
    ExpectLook("frames_" + std::string{kind}, out.GetBitmap(), {0, 0, out.Width(), out.Height()});
  }
}

TEST_F(SkinBitmapTest, AreasFarLargerThanTheTargetOnlyDrawWhatIsVisible) {
  const BitmapPtr art = Paint({"rgbcy"}), out = Paint({"......"});
  SkinBitmap holder{art.get()};
  holder.SetTileSize({3, 1});
  holder.DrawArea(out.get(), 0, 0, INT_MIN, INT_MIN, INT_MAX, INT_MAX, 1, 1);
  holder.DrawHFrame(out.get(), 0, 0, INT_MAX, INT_MIN, 1);
  holder.DrawHSlice(out.get(), {0, 0, INT_MAX, INT_MAX, INT_MAX}, INT_MIN, INT_MIN, INT_MAX, false);
  holder.DrawVSlice(out.get(), {-5, -5, INT_MIN, INT_MIN, INT_MIN}, 0, 0, INT_MAX, true);
  EXPECT_EQ(Picture(out.get()), Rows({"......"}));
  holder.DrawHFrame(out.get(), 0, -3000001, 0, INT_MAX, 1);
  EXPECT_EQ(Picture(out.get()), Rows({"gbcgbc"})) << "the tiles keep their phase";
}

}  // namespace
}  // namespace zel
