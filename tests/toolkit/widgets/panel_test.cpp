#include "toolkit/widgets/panel.h"

#include "tests/support/temp_files.h"
#include "tests/support/widget_fixture.h"
#include "toolkit/base/zoom.h"
#include "toolkit/widgets/value_range.h"

namespace zel {
namespace {

using PanelTest = WidgetFixture;

TEST_F(PanelTest, EachFrameAndLineHasItsOwnElement) {
  ClearScreen back;
  Panel plain;
  PanelRaised raised;
  PanelSunken sunken;
  PanelRidge ridge;
  PanelGroove groove;
  ShadowBox box;
  Separator lying, standing;
  Dress(PANEL_RAISED, {"rr", "gg"});
  lying.SetOrientation(kHorizontal);
  Widget* const all[] = {&back, &plain, &raised, &sunken, &ridge, &groove, &box, &lying, &standing};
  int x = -14;
  for (Widget* widget : all) Show(*widget, {x += 14, 2, 12, 10});
  EXPECT_EQ(back.Bounds(), root.Bounds());
  EXPECT_EQ(lying.h() + standing.w(), 2 + 2) << "as thick as their elements";
  Patch under{{16, 4, 2, 2}};
  root.Add(&under), root.BringToFront(&plain);
  plain.SetPlain(red), plain.SetPlain({}), Frame();
  EXPECT_EQ(under.draws, 0) << "under the frame";
  plain.SetBitmap(-1), root.Redraw(), Frame();
  plain.SetPlain(red), root.Redraw(), Frame();
  EXPECT_EQ(under.draws, 1) << "only where there is no panel";
  root.Remove(&under), plain.SetBitmap(PANEL_RAISED), plain.SetPlain({});
  ExpectShown("panels", {0, 0, 128, 16});
}

TEST_F(PanelTest, AnImageLiesInTheMiddleAndIsCutAtItsEdges) {
  const Rows picture{"rg.b", "ygcb"};
  const BitmapPtr art = Paint(picture), lent = Paint(picture);
  struct : Image {
    using Image::SetBitmap;
    void SetBitmap(int element) override { Image::SetBitmap(element), SetMasked(false); }
  } image;
  image.Setup(20, 20, 9, 9, 0, 0, SkinBitmap{lent.get()}, false, green);
  clear_bitmap(lent.get());
  EXPECT_EQ(Shown(image), picture) << "its own copy";
  image.ClearFlag(kFlagAutoSize), image.Resize(2, 6);
  EXPECT_EQ(Shown(image), Rows({"..", "..", "rg", "yg", "..", ".."}));
  image.SetMasked(true), image.Resize(6, 1);
  EXPECT_EQ(Shown(image), Rows({"grggbg"}));
  ClearScreen behind;
  behind.Place(5, 5), root.Add(&behind);
  EXPECT_EQ(behind.Bounds(), root.Bounds()) << "at once";
  Show(image, {image.GetRelativePos().x, image.GetRelativePos().y, 6, 4}), Frame();
  image.SetMasked(false), Check();
  image.SetMasked(true), Check();
  image.SetBackColor({}), Check();
  image.SetFlag(kFlagAutoSize), image.SetBitmap(SkinBitmap{art.get()}), Check();
  Dress(ICONEXIT, {"r.y"});
  image.SetBitmap(ICONEXIT), Check();
  image.Widget::SetBitmap(-1), image.SetBitmap(nullptr), Check();
  const TempFile file{"", "art.bmp"};
  save_bitmap(file.Path(), art.get(), nullptr);
  image.Setup(20, 20, 9, 9, 0, 0, file.Path(), true, green), Check();
  EXPECT_EQ(Shown(image), Rows({"rggb", "ygcb"}));
  image.Setup(20, 20, 9, 9, 0, 0, ICONEXIT, true, green), Check();
  EXPECT_EQ(Shown(image), Rows({"rgy"})) << "the heir does not have the last word";
  image.SetBitmap(file.Path()), image.SetBitmap("/no/such/file"), Check();
  EXPECT_EQ(image.Bounds(), Rect(20, 20, 3, 1));
  SetZoom(2), image.SetBitmap(file.Path()), Check();
  EXPECT_EQ(Shown(image), Rows({"rrggggbb", "rrggggbb", "yyggccbb", "yyggccbb"}));
  image.SetBitmap(nullptr), Check();
  EXPECT_EQ(Shown(image)[1], "ggrgyggg");
}

}  // namespace
}  // namespace zel
