#include "toolkit/widgets/value_range.h"

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

TEST(ValueRange, KeepsItsValueBetweenTheBoundsOnlyWhenTheValueChanges) {
  ValueRange range;
  const struct { double wanted, kept; } kValues[] = {{37.5, 37.5}, {-5, 0}, {150, 100}, {10, 10}};
  for (const auto& [wanted, kept] : kValues) {
    range.SetValue(wanted);
    EXPECT_EQ(range.GetValue(), kept) << wanted;
  }
  range.SetMin(50);
  EXPECT_EQ(range.GetValue(), 10);
  EXPECT_EQ(range.GetRange(), 50);
  range.Decrement();
  EXPECT_EQ(range.GetValue(), 50);
  range.Setup(-1, 1, 0.9, 0.25);
  range.Increment();
  EXPECT_EQ(range.GetValue(), 1);
  range.Decrement();
  EXPECT_EQ(range.GetValue(), 0.75);
}

class BarTest : public WidgetFixture {
 protected:
  // Frame 0 is the track, frame 1 the fill; the tile is one pixel between edges of one.
  BarTest() {
    Dress(PROGRESSH, {"rgb", "wy."}, {1, 1});
    Dress(PROGRESSV, {"rw", "gy", "b."}, {1, 1});
  }
  Rows At(double value) {
    bar.SetValue(value);
    return Picture(Drawn(bar).GetBitmap());
  }

  ProgressBar bar;
};

TEST_F(BarTest, FillsFromTheLeftInProportionToItsValue) {
  bar.Setup(0, 0, 10, 2, 0, 0, kHorizontal);
  const struct {
    double value;
    const char* row;
  } kFills[] = {
      {-7, "rggggggggb"}, {0, "rggggggggb"},    {9.9, "rggggggggb"}, {37, "wygggggggb"},
      {50, "wyyygggggb"}, {99.9, "wyyyyyyygb"}, {100, "wyyyyyyyyb"}, {900, "wyyyyyyyyb"},
  };
  for (const auto& [value, row] : kFills) EXPECT_EQ(At(value), Rows({row, ".........."})) << value;
}

TEST_F(BarTest, FillsFromTheTopWhenItIsVertical) {
  bar.Setup(0, 0, 2, 6, 0, 0, kVertical);
  EXPECT_EQ(At(50), Rows({"w.", "y.", "g.", "g.", "g.", "b."}));
}

TEST_F(BarTest, CountsFromItsMinimumAndShowsNothingOfAnEmptyRange) {
  bar.Setup(0, 0, 4, 2, 0, 0, kHorizontal);
  bar.SetRange(100, 200);
  EXPECT_EQ(At(150)[0], "wggb");
  EXPECT_EQ(At(100)[0], "rggb");
  for (const double end : {5.0, -5.0}) {
    bar.SetRange(5, end);
    EXPECT_EQ(At(5)[0], "rggb") << end;
  }
}

TEST_F(BarTest, ChangesOfTheValueAreDrawn) {
  Show(bar, {0, 0, 10, 2});
  for (const auto& change : {std::function<void()>([this] { bar.SetPosition(150); }),
                             std::function<void()>([this] { bar.Increment(); })}) {
    Frame();
    EXPECT_FALSE(bar.Dirty());
    change();
    EXPECT_TRUE(bar.Dirty());
  }
  EXPECT_EQ(bar.GetValue(), 100);
}

TEST_F(BarTest, LinesAndBarsAreAsThickAsTheirElement) {
  Separator line;
  line.Setup(0, 0, 50, 40, 0, 0, kHorizontal);
  bar.Setup(0, 0, 50, 40, 0, 0, kHorizontal);
  const auto sizes = [&] {
    line.MsgInitSkin();
    bar.MsgInitSkin();
    return std::vector{line.w(), line.h(), bar.w(), bar.h()};
  };
  EXPECT_EQ(sizes(), std::vector({50, 2, 50, 2}));
  line.SetOrientation(kVertical);
  bar.SetOrientation(kVertical);
  EXPECT_EQ(sizes(), std::vector({2, 2, 2, 2}));
  for (auto& element : CurrentSkin()->bitmaps) element->Destroy();
  bar.Resize(30, 20);
  EXPECT_EQ(sizes(), std::vector({2, 2, 30, 20}));
}

TEST_F(BarTest, ASeparatorKeepsItsEnds) {
  Dress(SEPARATORH, {"rgb"}, {1, 1});
  Separator line;
  line.Setup(0, 0, 6, 1, 0, 0, kHorizontal);
  EXPECT_EQ(Picture(Drawn(line).GetBitmap()), Rows({"rggggb"}));
}

}  // namespace
}  // namespace zel
