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
  const std::tuple<int, int, double> rows[] = {{0, 100, -7},   {0, 100, 9.9}, {0, 100, 37},
                                               {0, 100, 99.9}, {0, 100, 900}, {100, 200, 150},
                                               {5, 5, 5}};
  ProgressBar bars[2][7];
  for (const int orientation : {kVertical, kHorizontal})
    for (int i = 0; i < 7; ++i) {
      ProgressBar& bar = bars[orientation][i];
      bar.Setup(0, 0, 10, 10, 0, 0, orientation);
      const auto& [min, max, value] = rows[i];
      bar.SetRange(min, max);
      bar.SetValue(value);
      Show(bar, {orientation == kVertical ? 2 + 4 * i : 32,
                 orientation == kVertical ? 2 : 2 + 4 * i, 10, 10});
    }
  ExpectShown("progress_bars", {0, 0, 44, 32});
  for (const int position : {0, 50, 20}) {
    bars[kVertical][4].SetPosition(position);
    EXPECT_TRUE(DrawsEnough()) << position;
  }
  bars[kVertical][4].Increment();
  EXPECT_TRUE(bars[kVertical][4].GetValue() == 21 && DrawsEnough());
}

}  // namespace
}  // namespace zel
