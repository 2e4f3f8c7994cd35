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
  // Texts are steps: the box has the focus and the cursor stands behind the third character; it
  // takes four of them, or as many as it has. To be seen are the text, with the cursor, the ends of
  // the selection and a '<' before the first character that shows.
  EditBoxTest() {
    Show(edit, {20, 30, 118, 24});
    steps["all"] = [this] { edit.Select(); };
    steps["one"] = [this] { root.SetFocus(&edit), edit.SetText("", 1); };
    steps["full"] = [this] { edit.Setup(20, 30, 120, 24, 0, 0, "ab", 0); };
    for (const std::string text : {"", "abcdef", "12345678", "longer-than-its-box"})
      steps['=' + text] = [this, text] {
        Tick(50);  // no double click together with the last press
        root.SetFocus(&edit);
        edit.SetText(text.c_str(), 4);
        edit.MoveCursor(3);
      };
    look = [this] {
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
    };
  }

  EditBox edit;
};

TEST_F(EditBoxTest, KeysEditAndSelectWholeCharactersAndScrollNoFurtherThanTheCursorNeeds) {
  steps["narrow"] = [this] { edit.Resize(0, 24), root.Redraw(); };
  steps["password"] = [this] { edit.SetFilter(kFilterPassword); };
  for (const int place : {0, 99})
    steps["to" + std::to_string(place)] = [this, place] { edit.MoveCursor(place); };
  steps["left13"] = [this] {
    for (int i = 0; i < 13; ++i) Type(0, KEY_LEFT);
  };
  ExpectPlays(
      "texts_edited",
      {"one x y left z full c all one",
       "=+aébüc left+left backspace delete+delete delete backspace backspace",
       "=+é home left end right z all ü all backspace", "=abcdef+shift+right shift+left shift+left",
       "=abcdef+shift+left shift+right shift+right", "=abcdef+shift+left shift+home left x",
       "=abcdef+shift+right shift+end delete g h", "=abcdef+shift+home end shift+left right",
       "=abcdef+shift+end home shift+right enter", "=longer-than-its-box+end left home",
       "=abcdef+delete to0 password", "=longer-than-its-box+to99 left13 backspace backspace",
       "narrow+end left home delete end z"});
}

TEST_F(EditBoxTest, FiltersWhatIsTyped) {
  std::string seen;
  for (const int filter : std::array<int, 4>{0, kFilterUpperCase, kFilterNumeric,
                                             kFilterHexadecimal | kFilterLowerCase}) {
    edit.SetFilter(filter);
    seen += Play("=12345678+all+delete+é+space+-,.1gF");
    seen += Join("", edit.Filter(31), edit.Filter(0x10FFFF), edit.Filter(0x110000));
  }
  EXPECT_EQ(seen, "é -,.1gF| -1 1114111 -1 É -,.1GF| -1 1114111 -1 ,.1| -1 -1 -1 1f| -1 -1 -1 ");
  for (const int number : {-1, 0x7FFFFFFF, 0}) {  // hexadecimal ones keep their bits
    edit.SetNumber(number);
    EXPECT_EQ(edit.GetInt(), number);
  }
}

TEST_F(EditBoxTest, TheMouseSelectsWhileItIsHeld) {
  steps["off"] = [] { CurrentSkin()->cursors[MOUSE_TEXTSELECT]->SetHotspot(2, 0); };
  ExpectPlays("texts_selected", {"=abcdef+65,40+press+release press+wait1 35,40 release",
                                 "=abcdef+56,40+press 35,90 43,90 67,90 release 35,90",
                                 "=abcdef+56,40+press 35,90+leave 67,40 release",
                                 "=abcdef+56,40+press leave+35,90 67,40 release",
                                 "=abcdef+56,40+press 43,40+restart 67,40 release",
                                 "=abcdef+65,40+press home+delete+delete 43,40 release",
                                 "=longer-than-its-box+home+35,40+press 150,40 release",
                                 "=abcdef+off+66,40+press release",
                                 "=longer-than-its-box+end+46,40+press release 130,40+press"});
  EXPECT_EQ(PointerShape(), MOUSE_TEXTSELECT);
  Play("200,150+release");
  EXPECT_EQ(PointerShape(), MOUSE_NORMAL);
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

using EditBoxLookTest = WidgetFixture;

// With a selection, the same without the focus, the cursor behind a glyph that is cut off, a
// password, disabled, and a box without room.
TEST_F(EditBoxLookTest, SaysTheState) {
  CurrentSkin()->dottedRect = 1;
  CurrentSkin()->fontColor[kEditText][kSelected] = white;
  std::array<EditBox, 6> boxes;
  for (int i = 0; i < 6; ++i) {
    boxes[i].Setup(i % 2 * 52, i / 2 * 24, i == 5 ? 9 : 50, i == 5 ? 9 : 22, 0, 0,
                   i == 2 ? "abcdefgh" : "abcd", 9);
    boxes[i].SetFlag(kFlagAutoSize);
    Show(boxes[i], boxes[i].Bounds());
    boxes[i].SetFilter(i == 3 ? kFilterPassword : 0);
    boxes[i].MoveCursor(i == 3 ? 0 : 99);
    boxes[i].SetFlag(i == 4 ? kFlagDisabled : i == 1 ? kFlagDirty : kFlagFocus);
  }
  for (EditBox* box : {&boxes[1], &boxes[0]})
    root.SetFocus(box), Play("home right shift+right shift+right");
  ExpectShown("edit_boxes", {0, 0, 104, 72});
}

// Usable, disabled, pressed.
TEST_F(EditBoxLookTest, ArrowsSayTheState) {
  std::array<ComboBox, 3> combos;
  std::array<SpinBox, 2> spins;
  for (int i = 0; i < 3; ++i) Show(combos[i], {0, 26 * i, 50, 24});
  for (int i = 0; i < 2; ++i) Show(spins[i], {52, 26 * i, 50, 24});
  combos[1].Disable(), spins[1].Disable();
  Play("44,64 press");
  ExpectShown("arrows_of_fields", {0, 0, 104, 78});
}

// The arrows at (90, 34) and (90, 50) are those of the built-in look, 16 pixels wide.
class SpinBoxTest : public WidgetFixture {
 protected:
  SpinBoxTest() {
    spin.Setup(20, 30, 80, 24, 0, 0, 0, 300, 7, 2);
    Show(spin, {20, 30, 80, 24});
    for (const std::string text : {"295", "99", "2.", "1", "na", "in", "1e99", "2.2"})
      steps['=' + text] = [this, text] { root.SetFocus(&edit), edit.SetText(text.c_str()); };
    look = [this] { return Join(edit.GetText(), "is", spin.GetValue()); };
  }

  SpinBox spin;
  EditBox& edit = spin.GetEdit();
};

TEST_F(SpinBoxTest, ArrowsStepWithinTheRangeAndTypingTellsNobody) {
  steps["quarter"] = [this] { spin.SetValue(0.25); };  // only a change of the text counts
  ExpectPlays("spin_box_typed",
              {"=295+90,34+press wait3 wait20 release 90,50+press wait20 release",
               "=99+9 enter 90,50+press+release 60,40+press+release end+backspace",
               "quarter+home end+delete x backspace+backspace home+delete"});
}

TEST_F(SpinBoxTest, ReadsTheTextAsItsKindOfNumberOfAnySize) {
  steps["hexadecimal"] = [this] { edit.SetFilter(kFilterHexadecimal | kFilterUpperCase); };
  steps["huge"] = [this] {
    edit.SetFilter(0);
    spin.Setup(20, 30, 80, 24, 0, 0, -1e308, 1e308, -1e18, 0.5);
  };
  ExpectPlays("spin_box_numbers", {"=2.+7", "hexadecimal+=1+e g 90,34+press+release", "huge",
                                   "=na+n", "=in+f", "=1e99+9",
                                   "=2.2+5 90,34+press+release 90,50+press+release "
                                   "60,40+press+release home+backspace"});
}

// A box with ten entries, 12 pixels each, and its arrow at (110, 20); its list covers a button.
class ComboBoxTest : public WidgetFixture {
 protected:
  ComboBoxTest() {
    for (const char* text : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"})
      combo.GetListBox().InsertItem(std::make_unique<TextListItem>(text));
    Show(combo, {});
    for (const int i : {0, 6, 99, 1}) {
      steps['=' + std::to_string(i)] = [this, i] { combo.Setup(20, 10, 100, 24, 0, 0, i); };
      combo.Setup(20, 10, 100, 24, 0, 0, i);
    }
    Show(covered, {10, 34, 120, 100});
    look = [this] {
      return combo.GetEdit().GetText() + std::string{combo.IsOpen() ? " open at " : " closed at "} +
             std::to_string(combo.GetListBox().GetCurrent()) + " from " +
             std::to_string(combo.GetListBox().GetList().GetFirst());
    };
  }

  ComboBox combo;
  Button covered;
};

TEST_F(ComboBoxTest, TheListLiesAboveTheDialogUntilTheMouseChoosesOrLeaves) {
  Play("110,20 press release");
  ExpectShown("combo_box_open", {16, 8, 108, 108});
  const Rows open = Frame();
  covered.Redraw();
  EXPECT_TRUE(Frame() == open);
  Play("press release");
  EXPECT_TRUE(DrawsEnough() && Frame() != open) << "what the list covered was repainted";
  ExpectPlays("combo_box_left",
              {"press+release 110,60+press 200,150 release 110,20+press+release 200,150",
               // the second press goes to what the list covered
               "110,20+press+release 100,66+press+release press+release",
               // along its own edges
               "110,20+press+release 60,60 20,60 60,10 110,20+press+release"});
  combo.Resize(140, 24), root.Redraw(), Play("150,20 press release");
  ExpectShown("combo_box_wider", {16, 8, 148, 104});
  Play("press release"), combo.Resize(100, 24), root.Redraw();
  Play("110,20 press release");
  for (const int msg : {MSG_RESIZE, MSG_SHAPE}) {
    combo.SetH(12, true), combo.SendMessage(msg);
    EXPECT_EQ(combo.h(), 24 + 80) << "a share of the screen and the list";
  }
  combo.Unhide();
  EXPECT_EQ(combo.h(), 24) << "it begins closed";
  Play("press release"), combo.Hide();
  EXPECT_TRUE(!combo.IsOpen() && combo.Hidden() && combo.h() == 24);
  combo.Unhide();
  EXPECT_FALSE(combo.IsOpen() || combo.Hidden());
  // In a wipe downward of four ticks, which closing it ends.
  CurrentSkin()->comboAnimationType = 6, CurrentSkin()->comboAnimationLength = 80;
  root.SetSkin(nullptr);
  for (int time = 0; time < 2; ++time) {
    Mouse(110, 20, 1), Mouse(110, 20), Frame(), Tick();
    ExpectShown("combo_box_opening", {16, 8, 108, 108});
    Mouse(110, 20, 1), Mouse(110, 20), Frame();
  }
}

TEST_F(ComboBoxTest, KeyboardOpensChoosesAndCancels) {
  root.SetFocus(&combo.GetEdit());
  steps["open"] = [this] { combo.Open(); };
  ExpectPlays("combo_box_keys", {"x enter enter enter down+down escape space+wait20 down enter",
                                 "space+wait20 end enter space+wait20 up+enter space+wait20+home"
                                 " enter space+wait20 escape",
                                 "=6 space+wait20 =0 space+wait20 escape",
                                 "=99 space+wait20 leave+wait1 open+wait2 110,20+press+release",
                                 "110,20+press+release restart"});
  Play("press+release");
  EXPECT_TRUE(root.HandleKey(0, KEY_ESC)) << "it does not close what is around";
  combo.GetListBox().GetList().Clear();
  EXPECT_EQ(Play("110,20+press+release"), " open at -1 from 0");
  EXPECT_TRUE(combo.HasFocus()) << "an empty list leaves it to the button";
  combo.GetListBox().InsertItem(std::make_unique<TextListItem>("only"));
  Play("press+release wait20 press+release");
  EXPECT_TRUE(combo.GetListBox().GetList().HasFocus());
}

}  // namespace
}  // namespace zel
