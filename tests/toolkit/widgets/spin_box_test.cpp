#include "toolkit/widgets/spin_box.h"

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// The arrows of the built-in look are 16 pixels wide.
class SpinBoxTest : public WidgetFixture {
 protected:
  SpinBoxTest() {
    spin.Setup(20, 30, 80, 24, 0, 0, 0, 300, 0, 1);
    Show(spin, {20, 30, 80, 24});
  }
  // Types a character behind a text.
  void Type(const char* before, char character) {
    spin.GetEdit().SetText(before);
    root.SetFocus(&spin.GetEdit());
    Stage::Type(character, 0);
  }
  std::string Text() { return spin.GetEdit().GetText(); }

  SpinBox spin;
};

TEST_F(SpinBoxTest, ArrowsStepWithinTheRangeWhileTheyAreHeld) {
  spin.Setup(20, 30, 80, 24, 0, 0, 0, 10, 5, 2);
  Mouse(90, 34, 1);
  Tick(50);
  Mouse(90, 34);
  Click(90, 50);
  EXPECT_EQ(root.Events(), "Scroll 2; Scroll 2; Scroll 2; Scroll -2");
}

TEST_F(SpinBoxTest, TypingSetsTheValueAndTellsNobody) {
  Type("99", '9');
  EXPECT_EQ(spin.GetValue(), 300);
  EXPECT_EQ(Text(), "999") << "until an arrow is pressed";
  Stage::Type('\r', KEY_ENTER);
  EXPECT_EQ(root.Events(), "Activate");
  Click(90, 50);
  EXPECT_EQ(Text(), "299");
  spin.SetValue(0.25);
  for (const int scancode : {KEY_F1, KEY_DEL}) Key(scancode);
  EXPECT_EQ(spin.GetValue(), 0.25) << "without a change of the text";
  Type("1", '2');
  Key(KEY_BACKSPACE);
  EXPECT_EQ(spin.GetValue(), 1);
}

TEST_F(SpinBoxTest, ReadsTheTextAsItsKindOfNumber) {
  Type("2.", '7');
  EXPECT_EQ(spin.GetValue(), 2);
  spin.GetEdit().SetFilter(kFilterHexadecimal | kFilterUpperCase);
  Type("1", 'e');
  EXPECT_EQ(spin.GetValue(), 30);
  Click(90, 34);
  EXPECT_EQ(Text(), "1F");
}

TEST_F(SpinBoxTest, NumbersOfAnySizeFit) {
  spin.Setup(20, 30, 80, 24, 0, 0, -1e308, 1e308, -1e18, 0.5);
  EXPECT_EQ(Text(), "-1000000000000000000");
  for (const auto& [text, last] : {std::pair{"na", 'n'}, {"in", 'f'}, {"1e99", '9'}, {"2.2", '5'}})
    Type(text, last);
  Click(90, 34);
  EXPECT_EQ(spin.GetValue(), 2.75);
  EXPECT_EQ(Text(), "3");
}

}  // namespace
}  // namespace zel
