#include "toolkit/widgets/combo_box.h"

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// A box with ten entries, 12 pixels each, and its arrow at (110, 20); its list covers a button.
class ComboBoxTest : public WidgetFixture {
 protected:
  ComboBoxTest() {
    for (const char* text : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"})
      combo.GetListBox().InsertItem(std::make_unique<TextListItem>(text));
    combo.Setup(20, 10, 100, 24, 0, 0, 1);
    Show(combo, {20, 10, 100, 24});
    Show(covered, {10, 34, 120, 100});
  }
  std::string PlayAll(const std::string& script) {
    return Play(script, [this] {
      return combo.GetEdit().GetText() + std::string{combo.IsOpen() ? " open at " : " closed at "} +
             std::to_string(combo.GetListBox().GetCurrent());
    });
  }

  ComboBox combo;
  Button covered;
};

TEST_F(ComboBoxTest, TheListLiesAboveTheDialogUntilThePointerLeaves) {
  Do("110,20 press release");
  ExpectShown("combo_box_open", {16, 8, 108, 108});
  const Rows open = Frame();
  covered.Redraw();
  EXPECT_TRUE(Frame() == open);
  Do("press release");
  EXPECT_TRUE(DrawsEnough() && Frame() != open) << "what the list covered was repainted";
  EXPECT_EQ(PlayAll("press+release 110,60+press 200,150 release 110,20+press+release 200,150"),
            "1 open at 1, 1 open at 1, 1 open at 1, 1 closed at 1, 1 open at 1, 1 closed at 1");
}

TEST_F(ComboBoxTest, MouseChoosesOnce) {
  EXPECT_EQ(PlayAll("110,20+press+release 100,66+press+release press+release"),
            "1 open at 1, 2 closed at 2 (Activate 2), 2 closed at 2 (Activate)")
      << "the second press goes to what the list covered";
}

TEST_F(ComboBoxTest, KeyboardOpensChoosesAndCancels) {
  root.SetFocus(&combo.GetEdit());
  EXPECT_EQ(PlayAll("enter down+down escape space+wait20 down enter"),
            "1 open at 1 (Activate 1), 1 open at 2, 1 closed at 1, 1 open at 1, 1 open at 2, "
            "2 closed at 2 (Activate 2)");
  EXPECT_FALSE(root.IsClosed());
  combo.GetListBox().GetList().Clear();
  EXPECT_EQ(PlayAll("110,20+press+release"), " open at -1");
  EXPECT_TRUE(combo.HasFocus()) << "an empty list leaves it to the button";
}

}  // namespace
}  // namespace zel
