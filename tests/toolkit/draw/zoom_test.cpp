#include "toolkit/base/zoom.h"

#include <tuple>

#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"
#include "toolkit/base/settings.h"
#include "toolkit/draw/art.h"
#include "toolkit/draw/cursor.h"
#include "toolkit/draw/font.h"
#include "toolkit/draw/scaling.h"

namespace zel {
namespace {

struct ZoomTest : AllegroFixture {
  ZoomTest() : AllegroFixture{32} {}
};

TEST_F(ZoomTest, IsTheNearestThatMakesSense) {
  const std::pair<const char*, double> rows[] = {{"auto", 0}, {"AUTO", 0}, {"1", 1},   {"1.5", 1.5},
                                                 {"8", 8},    {"1000", 8}, {"0", 1},   {"-3", 1},
                                                 {"0.5", 1},  {"big", 1},  {"nan", 1}, {"", 1}};
  for (const auto& [text, zoom] : rows) EXPECT_EQ(ParseZoom(text), zoom) << text;
  std::string numbers;
  for (const double zoom : {0.0, 1.0, 1.5, 99.0}) {
    SetZoom(zoom);
    numbers += Join(Zoomed(1), Zoomed(-3), Zoomed(kMostPixels));
  }
  EXPECT_EQ(numbers, "1 -3 32767 1 -3 32767 2 -5 32767 8 -24 32767 ");
}

TEST_F(ZoomTest, PicturesKeepTheirColoursAndTheirMask) {
  const Rows rows = {"r.bk", "..yw", "gg.c"};
  const BitmapPtr target{create_bitmap(52, 16)};
  clear_to_color(target.get(), white);
  int x = 0;
  for (const Size size : {Size{8, 6}, Size{6, 5}, Size{9, 9}, Size{3, 2}, Size{1, 1}}) {
    const BitmapPtr made = Scaled(Paint(rows).get(), size);
    blit(made.get(), target.get(), 0, 0, x, 0, size.w, size.h);
    x += size.w + 1;
  }
  // Two frames of an edge and a tile, and one without edges.
  Size tile{1, 1}, tall = tile, automatic{-1, -1};
  const BitmapPtr frames = ScaledFrames(Paint({"rgggb", "kkkkk"}).get(), {1, 2}, &tile, 2.5);
  blit(frames.get(), target.get(), 0, 0, 32, 0, frames->w, frames->h);
  const BitmapPtr third = ScaledFrames(Paint({"rgbrgb"}).get(), {2, 1}, &automatic, 2.5);
  EXPECT_EQ(Join(tile.w, tile.h, automatic.w, automatic.h), "3 3 2 1 ");
  blit(third.get(), target.get(), 0, 0, 32, 8, third->w, third->h);
  const Rows upwards = {"r", "g", "b", "k", "y", "c"};
  const BitmapPtr upright = ScaledFrames(Paint(upwards).get(), {1, 2}, &tall, 2.5);
  blit(upright.get(), target.get(), 0, 0, 49, 0, upright->w, upright->h);
  ExpectLook("scaled", target.get(), {0, 0, 52, 16});
  std::string mixed;
  for (const int depth : {8, 15, 16, 24}) {
    UseDepth(depth);
    set_palette(desktop_palette);
    const Rows twice = Picture(Scaled(Paint(rows).get(), {8, 6}).get());
    const Rows expected = {"rr..bbkk", "rr..bbkk", "....yyww", "....yyww", "gggg..cc", "gggg..cc"};
    EXPECT_EQ(twice, expected) << depth;
    for (const Size size :
         {Size{5, 7}, Size{3, 2}, Size{2, 1}, Size{1, 5}, Size{1, 300}, Size{7, 4}, Size{0, 3}}) {
      const BitmapPtr made = Scaled(Paint({"rgb.", ".kwc", "rrry", "bgw."}).get(), size);
      mixed += Describe(made.get(), {0, 0, size.w, size.h}) + '\n';
    }
  }
  ExpectText("mixed_colours", mixed);
  UseDepth(32);
  const BitmapPtr pink = Paint({"rc"});
  putpixel(pink.get(), 1, 0, makecol32(254, 0, 255));
  putpixel(pink.get(), 0, 0, makecol32(255, 0, 254));
  EXPECT_EQ(getpixel(Scaled(pink.get(), {1, 1}).get(), 0, 0), makecol32(255, 8, 255))
      << "a mean makes no hole";
  EXPECT_EQ(Picture(Scaled(Paint({"gg..", "g..."}).get(), {1, 2}).get()), Rows({"g", "."}))
      << "half of it, and less";
}

TEST_F(ZoomTest, ArtIsTheNearestThatIsLargeEnough) {
  const WorkingDir directory;
  const auto write = [](const char* name, const Rows& rows) {
    save_bitmap(name, Paint(rows).get(), nullptr);
  };
  write("a.b.bmp", {"r"});
  write("a.b@2x.bmp", {"gg", "gg"});
  write("c.bmp", {"r"});
  write("c@3x.bmp", {"bbb", "bbb", "bbb"});
  const std::tuple<const char*, double, const char*> rows[] = {
      {"a.b.bmp", 1, "r"},  {"a.b.bmp", 1.2, "g"}, {"a.b.bmp", 2, "gg"}, {"a.b.bmp", 3, "ggg"},
      {"c.bmp", 1.5, "bb"}, {"c.bmp", 4, "bbbb"},  {"./c.bmp", 2, "bb"}, {"none.bmp", 2, ""}};
  for (const auto& [file, zoom, row] : rows) {
    const BitmapPtr picture = LoadArt(file, zoom);
    const Rows seen = picture ? Picture(picture.get()) : Rows{""};
    EXPECT_EQ(seen, Rows(seen.size(), row)) << file << ' ' << zoom;
    EXPECT_EQ(seen.size(), std::max<std::size_t>(1, seen[0].size()));
  }
  EXPECT_EQ(FindArt("dir.x/name", 2).path, "dir.x/name");
  WriteFile("name@2x", "");
  EXPECT_EQ(FindArt("./name", 2).path, "./name@2x");
}

TEST_F(ZoomTest, PointersAndBitmapFontsAreZoomed) {
  SetZoom(2);
  Cursor cursor;
  cursor.Create(SkinBitmap{Paint({"rrrggg", "rrrggg"}).get()}, 2);
  cursor.SetShadow({.size = 3, .offset = {1, -2}});
  const CursorShadow look = cursor.GetShadowLook();
  EXPECT_EQ(Join(cursor.GetFrame()->Width(), cursor.GetFrame()->Height(),
                 cursor.GetShadow()->Width(), look.size, look.offset.x, look.offset.y),
            "6 4 18 6 2 -4 ");
  cursor.Create(SkinBitmap{Paint({"rrrrrr"}).get()}, 1, 8);
  EXPECT_EQ(Picture(cursor.GetFrame()->GetBitmap()), Rows({"rr"}))
      << "drawn at eight times its size";
  EXPECT_EQ(cursor.GetShadow()->Width(), 2 + 2 * 6);
  Font font;
  SkinBitmap canvas(60, 56, kMemoryBitmap);
  canvas.clear_to_color(white);
  int y = 0;
  for (const int align : {kAlignLeft, kAlignRight, kAlignCentre}) {
    const int x = align == kAlignLeft ? 0 : align == kAlignRight ? 60 : 30;
    font.TextoutShadow(canvas, "ij", {x, y}, red, align == kAlignLeft ? green : Color{},
                       align == kAlignRight ? blue : Color{}, align);
    y += font.TextHeight();
  }
  font.HotkeyTextout(canvas, "&i", 40, 0, black, Color{}, Color{}, kAlignLeft);
  ExpectLook("bitmap_font_zoomed", canvas.GetBitmap(), {0, 0, 60, 56});
  EXPECT_EQ(font.TextLength("ij"), 32);
}

}  // namespace
}  // namespace zel
