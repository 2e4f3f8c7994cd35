#include "toolkit/widgets/value_range.h"

#include <cmath>

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

TEST(ValueRange, OnlyAChangeOfTheValueBringsItBetweenTheBounds) {
  ValueRange range;
  range.SetValue(150);
  range.SetMax(50);
  EXPECT_EQ(range.GetValue(), 100);
  range.Increment();
  EXPECT_EQ(range.GetValue(), 50);
  range.SetValue(NAN);
  EXPECT_EQ(range.GetValue(), 50);
}

using BarTest = WidgetFixture;

TEST_F(BarTest, IsFilledInProportionToItsValue) {
  Dress(PROGRESSH, {"rgb", "wy."});  // the track above the fill
  Dress(PROGRESSV, {"rw", "gy", "b."});
  ProgressBar bar;
  bar.Setup(0, 0, 10, 9, 0, 0, kHorizontal);
  bar.MsgInitSkin();
  EXPECT_EQ(bar.h(), 2);
  const auto rowAt = [&bar](double value) { return bar.SetValue(value), Shown(bar)[0]; };
  EXPECT_EQ(rowAt(-7), "rggggggggb");
  EXPECT_EQ(rowAt(9.9), "rggggggggb");
  EXPECT_EQ(rowAt(37), "wygggggggb");
  EXPECT_EQ(rowAt(99.9), "wyyyyyyygb");
  EXPECT_EQ(rowAt(900), "wyyyyyyyyb");
  bar.SetRange(100, 200);
  EXPECT_EQ(rowAt(150), "wyyygggggb");
  bar.SetRange(5, 5);
  EXPECT_EQ(rowAt(5), "rggggggggb");
  bar.Setup(0, 0, 2, 6, 0, 0, kVertical);
  bar.SetPosition(50);
  EXPECT_EQ(Shown(bar), Rows({"w.", "y.", "g.", "g.", "g.", "b."}));
  Show(bar, {10, 10, 2, 60});
  bar.SetPosition(100), Frame();
  bar.SetPosition(0);
  EXPECT_TRUE(DrawsEnough());
}

}  // namespace
}  // namespace zel
