#include "toolkit/widgets/spin_box.h"

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// The arrows at (90, 34) and (90, 50) are those of the built-in look, 16 pixels wide.
class SpinBoxTest : public WidgetFixture {
 protected:
  SpinBoxTest() {
    spin.Setup(20, 30, 80, 24, 0, 0, 0, 300, 7, 2);
    Show(spin, {20, 30, 80, 24});
    root.SetFocus(&edit);
  }
  // Plays a script on a text, null for the one that is there; answers the texts and the values.
  std::string PlayOn(const char* text, const std::string& script) {
    if (text) edit.SetText(text);
    return Play(script, [this] {
      return (std::ostringstream{} << edit.GetText() << " is " << spin.GetValue()).str();
    });
  }

  SpinBox spin;
  EditBox& edit = spin.GetEdit();
};

TEST_F(SpinBoxTest, ArrowsStepWithinTheRangeWhileTheyAreHeld) {
  EXPECT_EQ(PlayOn("295", "90,34+press wait3 wait20 release 90,50+press release"),
            "297 is 297 (Scroll 2), 297 is 297, 300 is 300 (Scroll 2; Scroll 2), 300 is 300, "
            "298 is 298 (Scroll -2), 298 is 298");
}

TEST_F(SpinBoxTest, TypingSetsTheValueAndTellsNobody) {
  EXPECT_EQ(PlayOn("99", "9 enter 90,50+press+release 60,40+press+release end+backspace"),
            "999 is 300, 999 is 300 (Activate), 298 is 298 (Scroll -2), 298 is 298, 29 is 29");
  spin.SetValue(0.25);
  EXPECT_EQ(PlayOn(nullptr, "home end+delete x backspace+backspace home+delete"),
            "29 is 0.25, 29 is 0.25, 29x is 29, 2 is 2,  is 0")
      << "only a change of the text counts";
}

TEST_F(SpinBoxTest, ReadsTheTextAsItsKindOfNumber) {
  EXPECT_EQ(PlayOn("2.", "7"), "2.7 is 2");
  edit.SetFilter(kFilterHexadecimal | kFilterUpperCase);
  EXPECT_EQ(PlayOn("1", "e g 90,34+press+release"), "1E is 30, 1E is 30, 20 is 32 (Scroll 2)");
}

TEST_F(SpinBoxTest, NumbersOfAnySizeFit) {
  spin.Setup(20, 30, 80, 24, 0, 0, -1e308, 1e308, -1e18, 0.5);
  EXPECT_STREQ(edit.GetText(), "-1000000000000000000");
  EXPECT_EQ(PlayOn("na", "n"), "nan is -1e+18");
  EXPECT_EQ(PlayOn("in", "f"), "inf is 1e+308");
  EXPECT_EQ(PlayOn("1e99", "9"), "1e999 is 1e+308");
  EXPECT_EQ(PlayOn("2.2", "5 90,34+press+release 90,50+press+release"),
            "2.25 is 2.25, 3 is 2.75 (Scroll 1), 3 is 2.5 (Scroll -1)");
}

}  // namespace
}  // namespace zel
