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
  ClearScreen behind;
  Show(behind, {});
  Show(image, {20, 20, 6, 4});
  const auto check = [this] { EXPECT_TRUE(DrawsEnough()); };
  Frame();
  image.SetMasked(false), check();
  image.SetMasked(true), image.SetBackColor({}), check();
  image.SetFlag(kFlagAutoSize), image.SetBitmap(SkinBitmap{art.get()}), check();
  Dress(ICONEXIT, {"r"});
  image.SetBitmap(ICONEXIT), check();
  image.Widget::SetBitmap(-1), image.SetBitmap(nullptr), check();
}

}  // namespace
}  // namespace zel
