#include <climits>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/allegro_fixture.h"
#include "tests/support/picture.h"
#include "toolkit/skin/skin_bitmap.h"

namespace zel {
namespace {

class SlicesTest : public AllegroFixture {};

Rows Transposed(const Rows& rows) {
  Rows result(rows[0].size());
  for (const std::string& row : rows)
    for (std::size_t x = 0; x < row.size(); ++x) result[x] += row[x];
  return result;
}

// What a frame drawn over `total` pixels at x 1 of a black row of `width` looks like. It is drawn
// over a height, too: a column has to look like the row.
std::string DrawnRow(const std::string& frame, int tile, int total, int width,
                     bool masked = false) {
  BitmapPtr rowArt = Paint({frame}), columnArt = Paint(Transposed({frame}));
  const Rows blank{std::string(static_cast<std::size_t>(width), 'k')};
  BitmapPtr row = Paint(blank), column = Paint(Transposed(blank));
  SkinBitmap rowHolder{rowArt.get()}, columnHolder{columnArt.get()};
  rowHolder.SetTileWidth(tile);
  columnHolder.SetTileHeight(tile);
  rowHolder.DrawHFrame(row.get(), 0, 1, 0, total, 1, masked);
  columnHolder.DrawVFrame(column.get(), 0, 0, 1, total, 1, masked);
  EXPECT_EQ(Transposed(Picture(column.get())), Picture(row.get()));
  return Picture(row.get())[0];
}

TEST_F(SlicesTest, StripsKeepTheirEdgesAndRepeatTheTile) {
  EXPECT_EQ(DrawnRow("rgbcyw", 2, 6, 8), "krgbcywk");
  EXPECT_EQ(DrawnRow("rgbcyw", 2, 9, 11), "krgbcbcbywk") << "the last tile is cut";
  EXPECT_EQ(DrawnRow("rgbcyw", 2, 5, 7), "krgbywk");
  EXPECT_EQ(DrawnRow("rgbcyw", 2, 4, 6), "krgywk");
  EXPECT_EQ(DrawnRow("rgbcyw", 2, 3, 6), "krywkk") << "the second edge covers the first";
  EXPECT_EQ(DrawnRow("rgbcyw", 2, 1, 6), "ywgkkk") << "and ends where the strip ends";
  EXPECT_EQ(DrawnRow("r.g.yw", 2, 8, 10, true), "krkgkgkywk");
}

TEST_F(SlicesTest, OddTileSizesAreTakenSensibly) {
  EXPECT_EQ(DrawnRow("rgbyc", -1, 7, 8), "krgbbbyc") << "a third of five is one";
  EXPECT_EQ(DrawnRow("rgbyc", -9, 7, 8), "krgbbbyc");
  EXPECT_EQ(DrawnRow("rgby", 0, 8, 9), "krgbbbbby") << "the line between the edges is repeated";
  EXPECT_EQ(DrawnRow("r", -1, 3, 5), "krrrk");
  EXPECT_EQ(DrawnRow("rgby", 1000, 6, 8), "krgbyrgk");
}

TEST_F(SlicesTest, TheTileIsAThirdOfTheFrameWhereNoSizeIsSet) {
  SkinBitmap holder;
  EXPECT_EQ(holder.TileWidthOf(64), 21);
  EXPECT_EQ(holder.EdgeWidthOf(64), 21);
  holder.SetTileSize({14, 60});
  EXPECT_EQ(holder.EdgeWidthOf(18), 2);
  EXPECT_EQ(holder.TileHeightOf(64), 60);
  EXPECT_EQ(holder.EdgeHeightOf(64), 2);
}

TEST_F(SlicesTest, FramesAreStackedForAWidthAndSideBySideForAHeight) {
  BitmapPtr art = Paint({"rrr",  //
                         "gbg", "ycy"});
  SkinBitmap holder{art.get()};
  BitmapPtr out = Paint({".....", "....."});
  holder.DrawHFrame(out.get(), 1, 0, 0, 4, 3);
  holder.DrawHFrameMasked(out.get(), 2, 1, 1, 4, 3);
  EXPECT_EQ(Picture(out.get()), Rows({"gbbg.", ".yccy"}));

  BitmapPtr columnArt = Paint(Transposed({"rrr", "gbg", "ycy"}));
  SkinBitmap columns{columnArt.get()};
  BitmapPtr columnOut = Paint(Transposed({".....", "....."}));
  columns.DrawVFrame(columnOut.get(), 1, 0, 0, 4, 3);
  columns.DrawVFrameMasked(columnOut.get(), 2, 1, 1, 4, 3);
  EXPECT_EQ(Transposed(Picture(columnOut.get())), Rows({"gbbg.", ".yccy"}));
}

TEST_F(SlicesTest, AreasKeepCornersAndTileEdgesAndMiddle) {
  BitmapPtr art = Paint({"rgbr",  //
                         "gwwg", "bwcb", "rgbr"});
  SkinBitmap frame{art.get()};
  frame.SetTileSize({2, 2});
  BitmapPtr out = Paint(Rows(6, "........"));
  frame.DrawArea(out.get(), 0, 0, 1, 0, 6, 5, 1, 1);
  EXPECT_EQ(Picture(out.get()), Rows({".rgbgbr.",  //
                                      ".gwwwwg.", ".bwcwcb.", ".gwwwwg.", ".rgbgbr.", "........"}));
}

TEST_F(SlicesTest, LowAreasShowTheBottomStripOverTheTopOne) {
  BitmapPtr art = Paint({"rrr", "ggg", "bbb", "yyy", "ccc"});
  SkinBitmap holder{art.get()};
  holder.SetTileSize({1, 1});
  BitmapPtr out = Paint(Rows(4, "...."));
  holder.DrawArea(out.get(), 0, 0, 0, 0, 4, 3, 1, 1);
  EXPECT_EQ(Picture(out.get()), Rows({"rrrr", "yyyy", "cccc", "...."}));
}

// The picture that slices make up, worked out pixel by pixel: which pixel of the frame belongs to
// place `at` of `total`, or -1 for none.
int FramePixel(int at, int edge, int tile, int total) {
  const int secondEdge = total - edge;
  if (at >= secondEdge && at < total) return edge + tile + at - secondEdge;
  if (at >= 0 && at < edge) return at;
  if (at >= edge && at < secondEdge) return edge + (at - edge) % tile;
  return -1;
}

TEST_F(SlicesTest, AreasOfAllSizesMatchThePictureWorkedOutByPixel) {
  constexpr int kColumns = 2, kRows = 3, kColumn = 1, kRow = 2;
  constexpr int kWidth = 30, kHeight = 20;
  std::mt19937 random{7};
  const auto pick = [&random](int from, int to) {
    return from + static_cast<int>(random() % static_cast<unsigned>(to - from + 1));
  };
  for (int round = 0; round < 400; ++round) {
    const int frameW = pick(1, 9), frameH = pick(1, 9);
    SkinBitmap art{frameW * kColumns, frameH * kRows, kMemoryBitmap};
    for (int y = 0; y < art.Height(); ++y)
      for (int x = 0; x < art.Width(); ++x)
        art.putpixel(x, y, pick(0, 3) ? Color{x + 1, y + 1, 99} : magenta);
    art.SetTileSize({pick(1, frameW), pick(1, frameH)});
    const int tileW = art.GetTileWidth(), edgeW = art.EdgeWidthOf(frameW);
    const int tileH = art.GetTileHeight(), edgeH = art.EdgeHeightOf(frameH);
    const bool masked = round % 2 == 1;
    // Masked edges that overlap show through each other, which FramePixel does not know.
    const int leastW = masked ? 2 * edgeW : 0, leastH = masked ? 2 * edgeH : 0;
    const Rect area{pick(-9, 12), pick(-9, 12), pick(leastW, 30), pick(leastH, 30)};

    SkinBitmap out{kWidth, kHeight, kMemoryBitmap};
    out.clear_to_color(yellow);
    const int left = pick(0, 9), top = pick(0, 9), right = pick(10, 29), bottom = pick(10, 19);
    out.set_clip_rect(left, top, right, bottom);
    art.DrawArea(out, kColumn, kRow, area.x, area.y, area.w, area.h, kColumns, kRows, masked);

    int wrong = 0;
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) {
        const bool inClip = x >= left && x <= right && y >= top && y <= bottom;
        const int column = FramePixel(x - area.x, edgeW, tileW, area.w);
        const int row = FramePixel(y - area.y, edgeH, tileH, area.h);
        int expected = yellow;
        if (inClip && column >= 0 && row >= 0) {
          const int pixel = art.getpixel(kColumn * frameW + column, kRow * frameH + row);
          if (!masked || pixel != magenta) expected = pixel;
        }
        wrong += out.getpixel(x, y) != expected;
      }
    }
    ASSERT_EQ(wrong, 0) << "round " << round << ": frame " << frameW << 'x' << frameH << ", tile "
                        << tileW << 'x' << tileH << ", area " << area.x << ',' << area.y << ' '
                        << area.w << 'x' << area.h;
  }
}

TEST_F(SlicesTest, AreasFarLargerThanTheTargetOnlyDrawWhatIsVisible) {
  BitmapPtr art = Paint({"rgbcy"});
  SkinBitmap holder{art.get()};
  holder.SetTileSize({3, 1});
  BitmapPtr out = Paint({"......"});
  holder.DrawArea(out.get(), 0, 0, INT_MIN, INT_MIN, INT_MAX, INT_MAX, 1, 1);
  EXPECT_EQ(Picture(out.get()), Rows({"......"})) << "it ends left of and above the target";
  holder.DrawHFrame(out.get(), 0, -3000001, 0, INT_MAX, 1);
  EXPECT_EQ(Picture(out.get()), Rows({"gbcgbc"})) << "the tiles keep their phase";
  holder.DrawArea(out.get(), 0, 0, 2, -2, INT_MAX, INT_MAX, 1, 1);
  EXPECT_EQ(Picture(out.get()), Rows({"gbrgbc"}));
  holder.DrawHFrame(out.get(), 0, INT_MAX, INT_MAX, INT_MAX, 1);
  holder.DrawHFrame(out.get(), 0, 0, INT_MAX, INT_MIN, 1);
  holder.DrawHSlice(out.get(), {0, 0, INT_MAX, INT_MAX, INT_MAX}, INT_MIN, INT_MIN, INT_MAX, false);
  holder.DrawVSlice(out.get(), {-5, -5, INT_MIN, INT_MIN, INT_MIN}, 0, 0, INT_MAX, true);
  holder.DrawHSlice(out.get(), {INT_MAX, INT_MAX, -3, 1, 0}, 0, 0, INT_MAX, true);
  EXPECT_EQ(Picture(out.get()), Rows({"gbrgbc"}));
}

}  // namespace
}  // namespace zel
