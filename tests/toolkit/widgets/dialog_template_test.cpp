#include "toolkit/widgets/dialog_template.h"

#include "tests/support/widget_fixture.h"
#include "toolkit/widgets/combo_box.h"
#include "toolkit/widgets/spin_box.h"

namespace zel {
namespace {

using DialogTemplateTest = WidgetFixture;

TEST_F(DialogTemplateTest, MakesAControlForEachRecordThatHasOne) {
  std::vector<ControlRecord> records;
  for (int type = 1; type <= 25; ++type)
    records.push_back({type, 100 + type, type, 3, 40, 11, 7, 0, 0, 0});
  records.push_back({kControlLabel, 100 + kControlEditBox, 0, 0, 9, 9, 0, 0, 0, 0});
  records.push_back({kControlEnd, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  records.push_back({kControlLabel, 999, 0, 0, 9, 9, 0, 0, 0, 0});
  DialogUnits units{root->GetFont(kNormal)};  // 8 pixels high and wide: units of 2 and 1 pixels
  DialogTemplate form{records.data()};
  form.Build(*root, units, [](std::uint32_t id) { return id == 7 ? "seven" : "other"; });
  EXPECT_EQ(root->Bounds(), Rect(0, 0, 80, 11));
  for (int type = 1; type <= 25; ++type) {
    const bool isNone =
        type == 1 || type == 5 || type == 6 || type == 18 || type == 19 || type > 20;
    const Widget* control = form.Find(100 + type);
    ASSERT_EQ(control == nullptr, isNone) << type;
    if (isNone) continue;
    EXPECT_EQ(control->GetRelativePos(), Point(2 * type, 3)) << type;
    EXPECT_EQ(control->w(), 80) << type;
    EXPECT_EQ(control->GetParent(), &*root) << type;
  }
  EXPECT_EQ(form.Find(999), nullptr);
  for (const int type : {3, 4, 8, 12, 13})
    EXPECT_STREQ(static_cast<Label*>(form.Find(100 + type))->GetText(),
                 type == 13 ? nullptr : "seven");
  auto* number = static_cast<SpinBox*>(form.Find(100 + kControlSpinBox));
  for (Widget* field :
       {form.Find(100 + kControlEditBox), static_cast<Widget*>(&number->GetEdit())}) {
    root->SetFocus(field);
    for (const char digit : {'4', '2'}) Press(KEY_0, digit);
    EXPECT_EQ(static_cast<EditBox*>(field)->GetInt(), 42);
  }
  EXPECT_EQ(number->GetValue(), 42);
}

}  // namespace
}  // namespace zel
