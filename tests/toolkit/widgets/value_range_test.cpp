#include "toolkit/widgets/value_range.h"

#include <cmath>

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

TEST(ValueRange, OnlyAChangeOfTheValueBringsItBetweenTheBounds) {
  ValueRange range;
  std::string values;
  const auto note = [&] { values += ' ' + std::to_string(RoundToInt(range.GetValue())); };
  range.SetValue(150), note();
  range.SetMax(50), note();
  range.Increment(), note();
  range.SetValue(NAN), note();
  range.Setup(-10, 10, -10.5, 4), note();
  range.Decrement(), note();
  for (int i = 0; i < 6; ++i) range.Increment(), note();
  range.SetMin(12), range.Decrement(), note();
  EXPECT_EQ(values, " 100 100 50 50 -10 -10 -6 -2 2 6 10 10 12");
}

using BarTest = WidgetFixture;

TEST_F(BarTest, IsFilledInProportionToItsValue) {
  Dress(PROGRESSH, {"rgb", "wy."});  // the track above the fill
  Dress(PROGRESSV, {"rw", "gy", "b."});
  ProgressBar bar;
  bar.Setup(0, 0, 10, 9, 0, 0, kHorizontal);
  bar.MsgInitSkin();
  const std::tuple<int, int, double, std::string> rows[] = {
      {0, 100, -7, "rggggggggb"},   {0, 100, 9.9, "rggggggggb"}, {0, 100, 37, "wygggggggb"},
      {0, 100, 99.9, "wyyyyyyygb"}, {0, 100, 900, "wyyyyyyyyb"}, {100, 200, 150, "wyyygggggb"},
      {5, 5, 5, "rggggggggb"}};
  for (const auto& [min, max, value, row] : rows) {
    bar.SetRange(min, max);
    bar.SetValue(value);
    EXPECT_EQ(Shown(bar).front(), row) << value;
  }
  bar.Setup(0, 0, 2, 6, 0, 0, kVertical);
  bar.SetPosition(50);
  EXPECT_EQ(Shown(bar), Rows({"w.", "y.", "g.", "g.", "g.", "b."}));
  Show(bar, {10, 10, 2, 60});
  bar.SetPosition(100), Frame();
  bar.SetPosition(0);
  EXPECT_TRUE(DrawsEnough());
  bar.Increment();
  EXPECT_TRUE(bar.GetValue() == 1 && DrawsEnough());
}

}  // namespace
}  // namespace zel
