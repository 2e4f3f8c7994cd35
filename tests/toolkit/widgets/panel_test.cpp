#include "toolkit/widgets/panel.h"

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

using PanelTest = WidgetFixture;

TEST_F(PanelTest, AnImageLiesInTheMiddleAndIsCutAtItsEdges) {
  const BitmapPtr art = Paint({"rg.b", "ygcb"});
  Image image;
  image.Setup(0, 0, 9, 9, 0, 0, SkinBitmap{art.get()}, false, green);
  EXPECT_EQ(Shown(image), Rows({"rg.b", "ygcb"}));
  image.ClearFlag(kFlagAutoSize);
  image.Resize(2, 5);
  EXPECT_EQ(Shown(image), Rows({"..", "rg", "yg", "..", ".."}));
  image.SetMasked(true);
  image.Resize(6, 1);
  EXPECT_EQ(Shown(image), Rows({"grggbg"}));
}

}  // namespace
}  // namespace zel
