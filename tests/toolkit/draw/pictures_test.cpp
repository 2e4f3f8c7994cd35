#include <algorithm>
#include <climits>
#include <cmath>
#include <random>
#include <string>
#include <tuple>
#include <utility>

#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"
#include "tests/support/temp_files.h"
#include "toolkit/base/text.h"
#include "toolkit/draw/bitmap_guard.h"
#include "toolkit/draw/color.h"
#include "toolkit/draw/contrast.h"
#include "toolkit/draw/cursor.h"
#include "toolkit/draw/datafile.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/draw/skin_bitmap.h"
#include "toolkit/draw/smooth.h"
#include "toolkit/testing/fake_machine.h"
#include "toolkit/testing/picture.h"

namespace zel {
namespace {

struct PictureTest : AllegroFixture {
  PictureTest() : AllegroFixture{32} {}
};

TEST_F(PictureTest, TextsGiveThreeNumbersHoweverTheyAreSeparated) {
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

TEST_F(PictureTest, NamedColoursBelongToTheCurrentPixelFormat) {
  std::string named;
  for (const Color color : {white, black, red, green, blue, cyan, magenta, yellow, darkgray, gray,
                            lightgray, orange, brown, violet, darkred, darkgreen, darkblue})
    named += Join(color.r(), color.g(), color.b()) + ' ';
  EXPECT_EQ(named,
            "255 255 255  0 0 0  255 0 0  0 255 0  0 0 255  0 255 255  255 0 255  255 255 0  "
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

TEST_F(PictureTest, TextsLeaveTheirGroundUntilTheyHaveTheContrastThatIsWanted) {
  std::string seen;
  for (const Color ground : {Color{white}, {black}, {96, 112, 128}, {200, 200, 0}})
    for (const Color text : {Color{0, 0, 64}, {255, 10, 11}, {100, 90, 110}, {5, 128, 250}}) {
      for (const double least : {1.0, 4.5, 7.0, 22.0}) {
        const Color found = WithContrast(text, ground, least);
        seen += Join(found.r(), found.g(), found.b()) +
                std::to_string(std::lround(100 * Contrast(found, ground))) + "  ";
      }
      seen += '\n';
    }
  ExpectText("contrasts", seen);
  EXPECT_FALSE(WithContrast({}, white, 7).IsSet());
  EXPECT_EQ(WithContrast(green, {}, 7), green);
}

TEST_F(PictureTest, TintsMixesAndChannelsAreCountedToTheRightNumber) {
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

// What it holds, and how.
std::string Held(const SkinBitmap& holder) {
  if (holder.IsEmpty()) return "nothing";
  const char* const kinds[] = {" memory", " system", " video", " none"};
  return (holder.IsOwned() ? "own" : "other's") + std::string{kinds[holder.GetKind()]} +
         " bitmap, tile " + std::to_string(holder.GetTileWidth()) + 'x' +
         std::to_string(holder.GetTileHeight());
}

TEST_F(PictureTest, HoldersBorrowCopyOrTakeOver) {
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
  last.Set(bitmap.get(), false, kNoBitmap);
  EXPECT_EQ(Held(last), "other's memory bitmap, tile 7x-1");
  last.Create(2, 2, kVideoBitmap);
  EXPECT_TRUE(last.IsEmpty()) << "no graphics mode, no video memory";
}

TEST_F(PictureTest, SizesThatOverflowOrFillTheMemoryAreRefused) {
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
TEST_F(PictureTest, TheScreenIsNeverDestroyedAndVideoBitmapsAreCopiedAsSuch) {
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

TEST_F(PictureTest, APartOfABitmapIsSeenWhereItsParentIs) {
  const BitmapPtr whole = Paint(Rows(5, "......"));
  SkinBitmap parent{whole.get()};
  parent.set_clip_rect(1, 1, 3, 2);
  std::string seen;
  for (int i = 0; i < 6 * 5; ++i) {
    SubCanvas part{parent, i % 6, i / 6, 1, 1};
    seen += part.IsEmpty() ? '.' : 'x';
    part.clear_to_color(red);
  }
  EXPECT_EQ(seen, ".......xxx...xxx..............");
  SubCanvas{parent, 0, 0, 3, 2}.clear_to_color(blue);
  SubCanvas{parent, 3, 2, 9, 9}.clear_to_color(green);
  EXPECT_EQ(Picture(parent.GetBitmap()), Rows({"......", ".bbr..", ".rrg..", "......", "......"}));
}

TEST_F(PictureTest, PicturesThatCannotBeLoadedLeaveTheHolderAndEmptyHoldersDrawNothing) {
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

TEST_F(PictureTest, MaskedCopiesNeedATargetOfTheirDepthOpacityGoesToAllButPalettes) {
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

TEST_F(PictureTest, MarksPaintWithinTheBitmap) {
  SkinBitmap canvas{7, 5, kMemoryBitmap};
  for (int i = -9; i < 99; ++i) canvas.Circle3D(i % 9, i / 9, 0, red, white, green);
  EXPECT_EQ(Picture(canvas.GetBitmap()), Rows(5, "ggggggg"));
  canvas.clear_to_color(magenta);
  canvas.DottedRect(1, 0, 5, 3, red);
  canvas.DottedRect(INT_MIN + 1, 4, INT_MAX, 4, red);  // dots at odd x
  EXPECT_EQ(Picture(canvas.GetBitmap()),
            Rows({".r.r.r.", ".......", ".r...r.", ".r.r.r.", ".r.r.r."}));
}

// With lines of one to three pixels, in areas that are wide enough and that are not.
TEST_F(PictureTest, MarksHaveLinesOfAllKindsAndSizes) {
  SkinBitmap out{118, 66, kMemoryBitmap};
  out.clear_to_color(magenta);
  for (int line = 1; line <= 3; ++line) {
    const int y = 22 * (line - 1), side = 17 + line;
    out.Box3D(0, y, side - 1, y + side - 1, red, white, black, line);
    out.Box3D(22, y, 40, y + side, Color{}, white, black, line);
    out.Box3D(43, y, 43 + 2 * line, y + 5 * line - 3, red, white, black, line);
    out.DottedRect(53, y, 52 + side, y + side, blue, line);
    out.DottedRect(-7 * line, y + line, 107 - line, y + 13, green, line);
    out.XMark(84, y + 10, 2 * line + 5, red);
    out.Circle3D(104, y + 10, 3 * line + 1, cyan, white, black);
  }
  ExpectLook("marks", out.GetBitmap(), {0, 0, 118, 66});
}

// Boxes with all kinds of corners and lines, some without the inside or the line, and strokes that
// leave the clip rectangle.
TEST_F(PictureTest, RoundBoxesAndStrokesAreSmoothWhereThereIsNoPalette) {
  set_palette(desktop_palette);
  for (const int depth : {8, 32}) {
    UseDepth(depth);
    SkinBitmap out{72, 44, kMemoryBitmap};
    out.clear_to_color(white);
    for (int i = 0; i < 18; ++i)
      DrawRoundBox(out.GetBitmap(), {.area = {i % 6 * 12, i / 6 * 10, 3 + i % 8, 9 - i % 5},
                                     .radius = i * 3 % 7 - 1,
                                     .fill = i % 6 == 4 ? Color{} : Color{red},
                                     .borderColor = i % 5 == 2 ? Color{} : Color{black},
                                     .border = i % 4});
    for (const int thin : {1, 0, -1}) {
      DrawRoundBox(out.GetBitmap(), {.area = {0, 31, thin, 9}, .fill = green, .borderColor = red});
      DrawRoundBox(out.GetBitmap(), {.area = {0, 43, 9, thin}, .fill = green, .border = 1});
    }
    DrawRoundBox(out.GetBitmap(), {.area = {62, 38, 8, 4}, .borderColor = red, .border = 9});
    out.set_clip_rect(2, 31, 69, 42);
    for (const auto& [width, points] :
         {std::pair{2.5, std::vector<StrokePoint>{{-3, 30}, {15, 50}, {20, 34}, {30, 34}}},
          {6, {{40.25, 37}}},
          {3, {{60, 20}, {80, 40}}},
          {4, {{50, 33}, {50, 33}, {56, 36}}}})
      DrawStroke(out.GetBitmap(), points, width, blue);
    DrawStroke(out.GetBitmap(), {}, 9, red);
    ExpectLook("smooth_" + std::to_string(depth), out.GetBitmap(), {0, 0, 72, 44});
  }
}

TEST_F(PictureTest, CopiesWhatAllegroCopies) {
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

TEST_F(PictureTest, BoxesStayWithinTheClipRectangle) {
  for (int top = 0; top < 12; ++top) {
    UseDepth(top % 2 ? 16 : 24);
    SkinBitmap clipped{9, 12, kMemoryBitmap}, whole{9, 12, kMemoryBitmap},
        expected{9, 12, kMemoryBitmap};
    for (SkinBitmap* bitmap : {&clipped, &whole, &expected}) {
      bitmap->clear_to_color(blue);
      bitmap->hline(0, top + 2, 8, green);
    }
    clipped.set_clip_rect(2, top, 6, top + 3);
    for (SkinBitmap* bitmap : {&clipped, &whole}) bitmap->Box3D(1, 1, 7, 10, red, yellow, black);
    whole.blit(expected, 2, top, 2, top, 5, 4);
    EXPECT_EQ(Picture(clipped.GetBitmap()), Picture(expected.GetBitmap())) << top;
  }
}

// Frames with each tile, from left to right, fitted to each length, downwards, within a clip
// rectangle: copied as they are, into another depth, and masked; then those of one direction.
TEST_F(PictureTest, FramesAreFittedByRepeatingTheirTiles) {
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

TEST_F(PictureTest, AreasFarLargerThanTheTargetOnlyDrawWhatIsVisible) {
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
  const BitmapPtr below = Paint({"......", "......"});
  holder.DrawHSlice(below.get(), {3, 0, 1, 5, 2}, 0, 0, 6, false);
  for (const auto& [column, row] : {std::pair{-1, 0}, {1, 0}, {0, -1}, {0, 1}})
    holder.DrawArea(below.get(), column, row, 0, 0, 6, 2, 1, 1);
  EXPECT_EQ(Picture(below.get()), Rows({"cy.y..", "......"})) << "there is no picture beyond";
}

// The first letter of the frame that shows, over so many ticks.
std::string Shown(Cursor& cursor, int ticks) {
  std::string shown;
  for (; ticks > 0; --ticks, cursor.Update())
    shown += Picture(cursor.GetFrame()->GetBitmap())[0][0];
  return shown;
}

TEST_F(PictureTest, APictureIsCutIntoStripsThatTakeTurns) {
  const BitmapPtr picture = Paint({"rrwggwbbwk", "rrwggwbbwk"});
  const SkinBitmap holder(picture.get());
  Cursor cursor;
  cursor.Create(holder, 3);  // the tenth column is left over
  EXPECT_EQ(Picture(cursor.GetFrame()->GetBitmap()), Rows({"rrw", "rrw"}));
  EXPECT_EQ(Shown(cursor, 4), "rgbr");
  settings.logicFrameRate = 50;
  cursor.Create(holder, 3);
  cursor.SetAnimationInterval(100);  // five ticks by frame
  EXPECT_EQ(Shown(cursor, 18), "rrrrrgggggbbbbbrrr");
  for (const int frames : {-5, 1, 1'000'000}) {
    cursor.Create(holder, frames);
    EXPECT_EQ(cursor.GetFrame()->Width(), frames > 1 ? 1 : 10) << frames;
  }
  for (const int ms : {0, -1, INT_MAX}) {
    cursor.SetAnimationInterval(ms);
    EXPECT_EQ(Shown(cursor, 100).find('?'), std::string::npos);
  }
  cursor.SetHotspot(40'000, -40'000);
  EXPECT_EQ(cursor.GetHotspot(), (Point{32767, -32767}));
  cursor.CreateDefault();
  ExpectLook("arrow", cursor.GetFrame()->GetBitmap(), {0, 0, 12, 21});
  cursor.Free();
  EXPECT_TRUE(!cursor.GetFrame() && cursor.GetHotspot() == Point{});
  cursor.Create(SkinBitmap(), 3);
  cursor.Update();
  EXPECT_TRUE(!cursor.GetFrame() && !cursor.GetShadow());
}

TEST_F(PictureTest, ShadowIsTheBlurredOutlineOfTheFrame) {
  const BitmapPtr picture = Paint({"yyyyy.yy", "yyyyy.yy", "yyyyy.yy", "........"});
  const std::string ninths = "123332222124666444423699966663246664444212333222210000000000";
  const std::string sharp =
      "99999099"
      "99999099"
      "99999099"
      "00000000";
  for (const auto& [isShown, size, wanted] :
       {std::tuple{true, 1, ninths}, {true, 0, sharp}, {false, 1, std::string{"0"}}}) {
    settings.mouseShadow = isShown;
    Cursor cursor;
    cursor.SetShadow({.size = size});
    cursor.Create(SkinBitmap(picture.get()), 1);
    const SkinBitmap& shadow = *cursor.GetShadow();
    std::string found;
    for (int i = 0, w = shadow.Width(); i < w * shadow.Height(); ++i)
      found += std::to_string((Color{shadow.getpixel(i % w, i / w)}.a() + 5) * 9 / 255);
    EXPECT_EQ(found, wanted);
    EXPECT_EQ(shadow.getpixel(0, 0) & 0xFFFFFF, isShown ? 0x606060 : 0);
    cursor.SetShadow({.size = 2});
    EXPECT_EQ(cursor.GetShadow()->Width(), isShown ? 12 : 1) << "as it is said to be from now on";
  }
}

struct DatafileTest : AllegroFixture {
  // A datafile of one picture, the first rows of which repeat each other, written by Allegro.
  std::string WritePacked(const char* mode, bool packsObject, int bits = 8, int bytes = 1) const {
    const std::string path = dir.Path("a.dat");
    PACKFILE* file = pack_fopen(path.c_str(), mode);
    for (const int number : {DAT_MAGIC, 1, DAT_BITMAP}) pack_mputl(number, file);
    PACKFILE* object = pack_fopen_chunk(file, packsObject);
    for (const int word : {bits, kSide, kSide}) pack_mputw(word, object);
    for (int i = 0; i < kSide * kSide * bytes; ++i) pack_putc(i % kSide + i / 5000, object);
    pack_fclose(pack_fclose_chunk(object));
    return path;
  }

  static constexpr int kSide = 100;
  TempDir dir;
};

TEST_F(DatafileTest, PicturesAreThoseThatAllegroMakesHoweverTheyArePacked) {
  const std::pair<int, int> formats[] = {{8, 1}, {15, 2}, {16, 2}, {24, 3}, {32, 3}, {-32, 4}};
  for (int round = 0; round < 6 * 4; ++round) {
    const auto& [bits, bytes] = formats[round / 4];
    const char* mode = round % 2 ? F_WRITE_PACKED : F_WRITE_NOPACK;
    const std::string path = WritePacked(mode, round % 4 < 2, bits, bytes);
    for (const int depth : {8, 15, 16, 24, 32}) {
      UseDepth(depth);
      Datafile datafile;
      ASSERT_TRUE(datafile.Load(path.c_str())) << bits << mode;
      const BitmapPtr picture = MakePicture(*datafile.Find("", DAT_BITMAP));
      DATAFILE* expected = load_datafile(path.c_str());
      const int mask = depth == 32 ? 0xFFFFFF : -1;  // without its alpha channel
      int different = 0;
      for (int i = 0; i < kSide * kSide; ++i)
        different += getpixel(picture.get(), i % kSide, i / kSide) !=
                     (getpixel(static_cast<BITMAP*>(expected->dat), i % kSide, i / kSide) & mask);
      EXPECT_EQ(different, 0) << bits << mode << " to " << depth;
      unload_datafile(expected);
    }
    const std::string whole = dir.Read("a.dat");
    for (std::size_t length = 0; length < whole.size(); length += 1 + whole.size() / 90)
      EXPECT_FALSE(Datafile{}.Load(dir.Write("cut.dat", whole.substr(0, length)).c_str()));
  }
}

// The first bytes of a packed file may repeat only what Allegro has set. And a file within another
// is none.
TEST_F(DatafileTest, RepetitionsOfUndefinedBytesAndObjectsOfOthersAreRefused) {
  const auto packed = [this](const std::string& repetition) {
    // Seven bytes as they are, the last three for the number of objects, and a repetition.
    const std::string start = std::string{"slh!\177ALL."} + std::string(3, '\0');
    return Datafile{}.Load(dir.Write("packed.dat", start + repetition).c_str());
  };
  EXPECT_TRUE(packed(std::string{"\x00\x00", 2})) << "zeros from the start of the ring";
  EXPECT_FALSE(packed("\xFA\xF0")) << "from its end, which is not written yet";
  EXPECT_FALSE(Datafile{}.Load((WritePacked(F_WRITE_NOPACK, false) + "#object").c_str()));
}

TEST(PixelArea, EachPixelIsCoveredOnce) {
  constexpr int kGrid = 6;
  std::mt19937 random{1};
  for (int round = 0; round < 30'000; ++round) {
    PixelArea area;
    std::string wanted(kGrid * kGrid, '0'), covered = wanted;
    const auto fill = [](std::string& grid, const Rect& r, auto change) {
      for (int y = r.y; y < r.Bottom(); ++y)
        for (int x = r.x; x < r.Right(); ++x) change(grid[y * kGrid + x]);
    };
    for (int i = round % 7; i >= 0; --i) {  // the last one is removed in every other round
      const int x = random() % kGrid, y = random() % kGrid;
      const Rect r{x, y, static_cast<int>(1 + random() % (kGrid - x)),
                   static_cast<int>(1 + random() % (kGrid - y))};
      const bool isAdded = i > 0 || round % 2;
      isAdded ? area.Add(r) : area.Remove(r);
      fill(wanted, r, [=](char& c) { c = isAdded ? '1' : '0'; });
    }
    for (const Rect& r : area.Rects()) fill(covered, r, [](char& c) { ++c; });
    ASSERT_EQ(covered, wanted) << round;
    for (const Rect& r : area.Rects()) ASSERT_TRUE(r.w > 0 && r.h > 0) << round;
  }
}

using ScreenUpdateTest = AllegroFixture;

// With so many pages of video memory, if any are wanted: where is drawn, and what is on the screen
// while drawing, after the redraw, and after one more that nothing was drawn for.
TEST_F(ScreenUpdateTest, EachMethodBringsItsPartOfTheFrameToTheScreen) {
  FakeMachine machine;
  set_gfx_mode(GFX_AUTODETECT_FULLSCREEN, 6, 4, 0, 0);
  std::string seen;
  const auto show = [&seen] { seen += Describe(screen, {0, 0, 6, 4}) + '\n'; };
  for (const int method : {0, 3, 2, -7})
    for (const int pages : {-1, 0, 8}) {
      settings.useVideoMemory = settings.vsync = pages >= 0;
      machine.videoPagesLeft = pages;
      machine.retraces = 0;
      clear_bitmap(screen);
      InstallScreenUpdate(method);
      ScreenUpdate& update = *CurrentScreenUpdate();
      EXPECT_EQ(Picture(update.GetCanvas()), Rows(4, "kkkkkk")) << "a new frame is black";
      seen += std::to_string(method) + ": " + update.GetName() +
              (update.RedrawsAll() ? ", redraws all" : "") + ", pages " + std::to_string(pages) +
              (is_video_bitmap(update.GetCanvas()) ? ", draws on one\n" : "\n");
      clear_to_color(update.GetCanvas(), red);
      update.AddDirtyRect(1, 1, 3, 2);
      update.AddDirtyRect(Rect{-5, 3, 7, 50});
      show();
      update.Redraw();
      show();
      clear_bitmap(screen);
      update.Redraw();
      show();
      seen += std::to_string(machine.retraces) + " retraces\n\n";
      SetCurrentScreenUpdate(nullptr);
      EXPECT_EQ(machine.videoPages, 0);
    }
  ExpectText("screen_updates", seen);
  set_gfx_mode(GFX_TEXT, 0, 0, 0, 0);
  InstallScreenUpdate(kDirtyRectangles);
  EXPECT_STREQ(CurrentScreenUpdate()->GetName(), "default Allegro update driver");
  EXPECT_EQ(CurrentScreenUpdate()->Create(), kMemoryError);
  CurrentScreenUpdate()->Redraw();
  CurrentScreenUpdate()->AcquireCanvas();
  CurrentScreenUpdate()->ReleaseCanvas();
  EXPECT_EQ(CurrentScreenUpdate()->GetCanvas(), nullptr);
}

}  // namespace
}  // namespace zel
