// What one types into.
#include <array>

#include "tests/support/widget_fixture.h"
#include "toolkit/widgets/combo_box.h"
#include "toolkit/widgets/spin_box.h"

namespace zel {
namespace {

// Characters of the built-in font are 8 pixels wide; the text begins at 24, 4 pixels inside the
// box.
class EditBoxTest : public WidgetFixture {
 protected:
  EditBoxTest() { Show(edit, {20, 30, 120, 24}); }

  // Plays a script on a text with the cursor behind its third character; it takes four of them, or
  // as many as it has. Answers the texts, with the cursor, the ends of the selection and a '<'
  // before the first character that shows.
  std::string PlayOn(const char* text, const std::string& script) {
    steps["all"] = [this] { edit.Select(); };
    root.SetFocus(&edit);
    edit.SetText(text, 4);
    edit.MoveCursor(3);
    return Play(script, [this] {
      std::string seen;
      const char* at = edit.GetText();
      for (int i = 0;; ++i) {
        if (edit.Selected() && i == edit.GetSelStart()) seen += '[';
        if (edit.Selected() && i == edit.GetSelEnd()) seen += ']';
        if (i == edit.GetCursor()) seen += '|';
        if (i == edit.GetFirst() && i > 0) seen += '<';
        const char* const start = at;
        if (ugetxc(&at) == 0) return seen;
        seen.append(start, at);
      }
    });
  }

  EditBox edit;
};

TEST_F(EditBoxTest, KeysEditAndSelectWholeCharacters) {
  std::string seen;
  for (const auto& [text, script] :
       {std::pair{"", "aébüc left+left backspace delete+delete delete backspace backspace"},
        {"", "é home left end right z all ü all backspace"},
        {"abcdef", "shift+right shift+left shift+left"},
        {"abcdef", "shift+left shift+right shift+right"},
        {"abcdef", "shift+left shift+home left x"},
        {"abcdef", "shift+right shift+end delete g h"},
        {"abcdef", "shift+home end shift+left right"},
        {"abcdef", "shift+end home shift+right enter"}})
    seen += script + (": " + PlayOn(text, script)) + '\n';
  ExpectText("texts_edited", seen);
}

TEST_F(EditBoxTest, FiltersWhatIsTyped) {
  const std::pair<int, const char*> rows[] = {{0, "é -,.1gF|"},
                                              {kFilterUpperCase, "É -,.1GF|"},
                                              {kFilterNumeric, ",.1|"},
                                              {kFilterHexadecimal | kFilterLowerCase, "1f|"}};
  for (const auto& [filter, seen] : rows) {
    edit.SetFilter(filter);
    EXPECT_EQ(PlayOn("12345678", "all+delete+é+space+-,.1gF"), seen);
    for (const int character : {31, 0x110000}) EXPECT_EQ(edit.Filter(character), -1);
  }
  for (const int number : {-1, 0x7FFFFFFF, 0}) {  // hexadecimal ones keep their bits
    edit.SetNumber(number);
    EXPECT_EQ(edit.GetInt(), number);
  }
}

TEST_F(EditBoxTest, TheMouseSelectsWhileItIsHeld) {
  std::string seen;
  for (const char* script :
       {"65,40+press+release press+wait1 35,40 release",
        "56,40+press 35,90 43,90 67,90 release 35,90", "56,40+press 35,90+leave 67,40 release",
        "56,40+press leave+35,90 67,40 release", "56,40+press 43,40+restart 67,40 release"}) {
    seen += script + (": " + PlayOn("abcdef", script)) + '\n';
    Tick(50);  // no double click together with the next press
  }
  ExpectText("texts_selected", seen);
  CurrentSkin()->cursors[MOUSE_TEXTSELECT]->SetHotspot(2, 0);
  EXPECT_EQ(PlayOn("abcdef", "66,40+press release"), "abcdef[]|, abcdef|");
}

TEST_F(EditBoxTest, ScrollsNoFurtherThanTheCursorNeeds) {
  std::string seen;
  for (const int width : {120, 0}) {
    edit.Resize(width, 24);
    root.Redraw();
    seen += PlayOn("longer than its box", "end left home") + '\n';
  }
  ExpectText("texts_scrolled", seen);
}

TEST_F(EditBoxTest, SurvivesDamagedTextAndAMissingSkin) {
  SetCurrentSkin(nullptr);
  edit.SetSkin(nullptr);
  for (const char* text : {"\xC3", "a\x80\x80", "ab\xE2\x82"}) {
    edit.SetText(text), edit.MsgChar(KEY_BACKSPACE << 8), edit.MsgUChar('x');
    EXPECT_NE(ustrchr(edit.GetText(), 'x'), nullptr);
    Shown(edit);
  }
}

// With a selection, the same without the focus, the cursor behind a glyph that is cut off, a
// password, disabled, and a box without room.
TEST_F(EditBoxTest, LooksSayTheState) {
  root.Remove(&edit);
  CurrentSkin()->dottedRect = 1;
  CurrentSkin()->fontColor[kEditText][kSelected] = white;
  std::array<EditBox, 6> boxes;
  for (int i = 0; i < 6; ++i) {
    boxes[i].Setup(0, 0, 0, 0, 0, 0, i == 2 ? "abcdefgh" : "abcd", 9);
    Show(boxes[i], {i % 2 * 52, i / 2 * 24, i == 5 ? 9 : 50, i == 5 ? 9 : 22});
    boxes[i].SetFilter(i == 3 ? kFilterPassword : 0);
    boxes[i].ScrollToCursor();
    boxes[i].SetFlag(i == 4 ? kFlagDisabled : i == 1 ? kFlagDirty : kFlagFocus);
  }
  for (EditBox* box : {&boxes[1], &boxes[0]})
    root.SetFocus(box), Do("home right shift+right shift+right");
  ExpectShown("edit_boxes", {0, 0, 104, 72});
}

// The arrows at (90, 34) and (90, 50) are those of the built-in look, 16 pixels wide.
class SpinBoxTest : public WidgetFixture {
 protected:
  SpinBoxTest() {
    spin.Setup(20, 30, 80, 24, 0, 0, 0, 300, 7, 2);
    Show(spin, {20, 30, 80, 24});
  }
  // Plays a script on a text, null for the one that is there; answers the texts and the values.
  std::string PlayOn(const char* text, const std::string& script) {
    root.SetFocus(&edit);
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
  std::string seen =
      PlayOn("99", "9 enter 90,50+press+release 60,40+press+release end+backspace") + '\n';
  spin.SetValue(0.25);  // only a change of the text counts
  seen += PlayOn(nullptr, "home end+delete x backspace+backspace home+delete") + '\n';
  ExpectText("spin_box_typed", seen);
}

TEST_F(SpinBoxTest, ReadsTheTextAsItsKindOfNumberOfAnySize) {
  std::string seen = PlayOn("2.", "7") + '\n';
  edit.SetFilter(kFilterHexadecimal | kFilterUpperCase);
  seen += PlayOn("1", "e g 90,34+press+release") + '\n';
  edit.SetFilter(0);
  spin.Setup(20, 30, 80, 24, 0, 0, -1e308, 1e308, -1e18, 0.5);
  EXPECT_STREQ(edit.GetText(), "-1000000000000000000");
  for (const auto& [text, script] : {std::pair{"na", "n"},
                                     {"in", "f"},
                                     {"1e99", "9"},
                                     {"2.2", "5 90,34+press+release 90,50+press+release"}})
    seen += PlayOn(text, script) + '\n';
  ExpectText("spin_box_numbers", seen);
}

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
  std::string seen =
      PlayAll("press+release 110,60+press 200,150 release 110,20+press+release 200,150");
  ExpectText("combo_box_left", seen + '\n');
  Do("110,20 press release");
  for (const int msg : {MSG_RESIZE, MSG_SHAPE}) {
    combo.SetH(12, true), combo.SendMessage(msg);
    EXPECT_EQ(combo.h(), 24 + 80) << "a share of the screen and the list";
  }
  combo.Hide();
  EXPECT_TRUE(!combo.IsOpen() && combo.h() == 24);
  combo.Unhide();
  EXPECT_FALSE(combo.IsOpen());
}

TEST_F(ComboBoxTest, MouseChoosesOnce) {
  EXPECT_EQ(PlayAll("110,20+press+release 100,66+press+release press+release"),
            "1 open at 1, 2 closed at 2 (Activate 2), 2 closed at 2 (Activate)")
      << "the second press goes to what the list covered";
}

TEST_F(ComboBoxTest, KeyboardOpensChoosesAndCancels) {
  root.SetFocus(&combo.GetEdit());
  ExpectText("combo_box_keys", PlayAll("x enter down+down escape space+wait20 down enter") + '\n');
  EXPECT_FALSE(root.IsClosed());
  combo.GetListBox().GetList().Clear();
  EXPECT_EQ(PlayAll("110,20+press+release"), " open at -1");
  EXPECT_TRUE(combo.HasFocus()) << "an empty list leaves it to the button";
}

}  // namespace
}  // namespace zel
