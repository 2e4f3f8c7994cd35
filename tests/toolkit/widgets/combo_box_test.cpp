#include "toolkit/widgets/combo_box.h"

#include <memory>

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// A box with ten entries, 12 pixels each; its list covers a button.
class ComboBoxTest : public WidgetFixture {
 protected:
  ComboBoxTest() {
    for (const char* text : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"})
      combo->GetListBox().InsertItem(std::make_unique<TextListItem>(text));
    combo->Setup(20, 10, 100, 24, 0, 0, 1);
    Show(*combo, {20, 10, 100, 24});
    Show(covered, {10, 34, 120, 100});
  }
  void ClickArrow() { Click(110, 20); }

  std::unique_ptr<ComboBox> combo = std::make_unique<ComboBox>();
  Button covered;
};

TEST_F(ComboBoxTest, TheListLiesAboveTheDialogUntilThePointerLeaves) {
  ClickArrow();
  ExpectShown("combo_box_open", {16, 8, 108, 108});
  const Rows open = Frame();
  covered.Redraw();
  EXPECT_TRUE(Frame() == open);
  ClickArrow();
  EXPECT_TRUE(DrawsEnough() && Frame() != open) << "what the list covered was repainted";
  ClickArrow();
  Mouse(110, 60, 1);
  Mouse(200, 150, 1);
  EXPECT_TRUE(combo->IsOpen()) << "while its scroll bar is dragged";
  Mouse(200, 150);
  EXPECT_FALSE(combo->IsOpen());
  ClickArrow();
  Mouse(200, 150);
  EXPECT_FALSE(combo->IsOpen());
}

TEST_F(ComboBoxTest, MouseChoosesOnce) {
  const int third = 34 + 2 + 12 * 2 + 6;
  ClickArrow();
  Click(100, third);
  EXPECT_STREQ(combo->GetEdit().GetText(), "2");
  Click(100, third);
  EXPECT_EQ(root.Events(), "Activate 2; Activate")
      << "the second press goes to what the list covered";
}

TEST_F(ComboBoxTest, KeyboardOpensChoosesAndCancels) {
  root.SetFocus(&combo->GetEdit());
  Type('\r', KEY_ENTER);
  EXPECT_TRUE(combo->IsOpen());
  EXPECT_EQ(root.Events(), "Activate 1");
  for (int i = 0; i < 8; ++i) Key(KEY_DOWN);
  Type(27, KEY_ESC);
  EXPECT_FALSE(combo->IsOpen() || root.IsClosed());
  EXPECT_STREQ(combo->GetEdit().GetText(), "1") << "Escape takes back what the keys did";
  Type(' ', KEY_SPACE);
  Tick(20);
  EXPECT_TRUE(combo->IsOpen()) << "by the button, which has the focus again";
  Key(KEY_DOWN);
  Type('\r', KEY_ENTER);
  EXPECT_EQ(root.Events(), "Activate 2");
  combo->GetListBox().GetList().Clear();
  ClickArrow();
  EXPECT_TRUE(combo->IsOpen() && combo->HasFocus()) << "an empty list leaves it to the button";
}

}  // namespace
}  // namespace zel
