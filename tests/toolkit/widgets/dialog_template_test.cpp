#include "toolkit/widgets/dialog_template.h"

#include "tests/support/widget_fixture.h"
#include "toolkit/widgets/combo_box.h"
#include "toolkit/widgets/panel.h"
#include "toolkit/widgets/spin_box.h"

namespace zel {
namespace {

using DialogTemplateTest = WidgetFixture;

TEST_F(DialogTemplateTest, MakesAControlForEachRecordThatHasOne) {
  std::vector<ControlRecord> records{{kControlSize, 1, 0, 0, 159, 201, 0, 0, 0, 0}};
  for (int type = 2; type <= 25; ++type) {
    const int column = type % 3, row = type / 3;
    const int height = type == kControlProgressBar ? 50 : 20;
    records.push_back({type, type, 1 + 33 * column, 24 * row, 31, height, type, 0, 0, 0});
  }
  records.push_back({kControlLabel, kControlEditBox, 0, 0, 9, 9, 0, 0, 0, 0});
  records.push_back({kControlProgressBar, 30, 90, 120, 3, 40, 0, 0, 0, 0});
  records.push_back({kControlEnd, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  records.push_back({kControlLabel, 99, 0, 0, 9, 9, 0, 0, 0, 0});
  DialogUnits units{root.GetFont(kNormal)};  // 8 pixels high and wide: units of 2 and 1 pixels
  DialogTemplate form{records.data()};
  ClearScreen back;
  Show(back, {});
  form.Build(root, units, [](std::uint32_t id) { return id == kControlImage ? "none" : "a bc"; });
  EXPECT_EQ(root.Bounds(), Rect(0, 0, 318, 201));
  EXPECT_EQ(form.Find(99), nullptr);
  EXPECT_EQ(form.Find(5), nullptr);
  auto* number = static_cast<SpinBox*>(form.Find(kControlSpinBox));
  for (Widget* field : {form.Find(kControlEditBox), static_cast<Widget*>(&number->GetEdit())}) {
    root.SetFocus(field);
    Do("42");
  }
  EXPECT_EQ(number->GetValue(), 42);
  static_cast<Image*>(form.Find(kControlImage))->SetBitmap(ICONEXIT);
  Tick();
  ExpectShown("form", {0, 0, 200, 180});
}

}  // namespace
}  // namespace zel
