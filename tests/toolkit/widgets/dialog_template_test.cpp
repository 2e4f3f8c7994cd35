#include "toolkit/widgets/dialog_template.h"

#include "tests/support/widget_fixture.h"
#include "toolkit/widgets/combo_box.h"
#include "toolkit/widgets/spin_box.h"

namespace zel {
namespace {

using DialogTemplateTest = WidgetFixture;

const char* TextOf(std::uint32_t id) { return id == 7 ? "seven" : "other"; }

TEST_F(DialogTemplateTest, MakesAControlForEachRecordThatHasOne) {
  std::vector<ControlRecord> records;
  for (int type = 1; type <= 25; ++type)
    records.push_back({type, 100 + type, type, 3, 40, 11, 7, 0, 0, 0});
  records.push_back({kControlLabel, 100 + kControlEditBox, 0, 0, 9, 9, 0, 0, 0, 0});
  records.push_back({kControlEnd, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  records.push_back({kControlLabel, 999, 0, 0, 9, 9, 0, 0, 0, 0});
  DialogUnits units{root->GetFont(kNormal)};  // 8 pixels high and wide: units of 2 and 1 pixels
  DialogTemplate form{records.data()};
  Dialog dialog;
  form.Build(dialog, units, TextOf);
  EXPECT_EQ(dialog.w(), 80);
  EXPECT_EQ(dialog.h(), 11);
  for (int type = 1; type <= 25; ++type) {
    const bool isNone =
        type == 1 || type == 5 || type == 6 || type == 18 || type == 19 || type > 20;
    const Widget* control = form.Find(100 + type);
    ASSERT_EQ(control == nullptr, isNone) << type;
    if (isNone) continue;
    EXPECT_EQ(control->GetRelativePos(), Point(2 * type, 3)) << type;
    EXPECT_EQ(control->w(), 80) << type;
    EXPECT_EQ(control->GetParent(), &dialog) << type;
  }
  EXPECT_EQ(form.Find(999), nullptr);
  const auto text = [&form](int type) {
    return static_cast<Label*>(form.Find(100 + type))->GetText();
  };
  for (const int type : {3, 4, 8, 12}) EXPECT_STREQ(text(type), "seven");
  EXPECT_STREQ(text(13), nullptr);
}

TEST_F(DialogTemplateTest, FieldsTakeWhatIsTyped) {
  constexpr ControlRecord kFields[] = {{kControlEditBox, 1, 5, 5, 60, 20, 0, 0, 0, 0},
                                       {kControlSpinBox, 2, 5, 35, 60, 20, 0, 0, 0, 0},
                                       {kControlEnd, 0, 0, 0, 0, 0, 0, 0, 0, 0}};
  DialogUnits units{root->GetFont(kNormal)};
  DialogTemplate form{kFields};
  form.Build(*root, units, TextOf);
  root->SetFocus(form.Find(1));
  for (const char digit : {'4', '2'}) Press(KEY_0, digit);
  EXPECT_EQ(static_cast<EditBox*>(form.Find(1))->GetInt(), 42);
  auto* number = static_cast<SpinBox*>(form.Find(2));
  root->SetFocus(&number->GetEdit());
  for (const char digit : {'4', '2'}) Press(KEY_0, digit);
  EXPECT_EQ(number->GetValue(), 42);
}

}  // namespace
}  // namespace zel
