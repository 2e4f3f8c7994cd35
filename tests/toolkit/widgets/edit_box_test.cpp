#include "toolkit/widgets/edit_box.h"

#include <array>

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// Characters of the built-in font are 8 pixels wide; the text begins at 24, 4 pixels inside the
// box.
class EditBoxTest : public WidgetFixture {
 protected:
  EditBoxTest() { Show(edit, {20, 30, 120, 24}); }

  // Plays a script on a text with the cursor behind its third character; it takes four of them, or
  // as many as it has. Answers the texts, with the cursor and the ends of the selection in them.
  std::string PlayOn(const char* text, const std::string& script) {
    const Words own = {{"all", [this] { edit.Select(); }},
                       {"leave", [this] { root.ChangeFocus(root.FocusWidget(), nullptr); }},
                       {"restart", [this] { edit.SendMessage(MSG_START); }}};
    root.SetFocus(&edit);
    edit.SetText(text, 4);
    edit.MoveCursor(3);
    const auto look = [this] {
      std::string seen;
      const char* at = edit.GetText();
      for (int i = 0;; ++i) {
        if (edit.Selected() && i == edit.GetSelStart()) seen += '[';
        if (edit.Selected() && i == edit.GetSelEnd()) seen += ']';
        if (i == edit.GetCursor()) seen += '|';
        const char* const start = at;
        if (ugetxc(&at) == 0) return seen;
        seen.append(start, at);
      }
    };
    return Play(script, look, own);
  }

  EditBox edit;
};

TEST_F(EditBoxTest, KeysEditAndSelectWholeCharacters) {
  const std::tuple<const char*, std::string, std::string> rows[] = {
      {"", "aébüc left+left backspace delete+delete delete backspace backspace",
       "aébü|, aé|bü, a|bü, a|, a|, |, |"},
      {"", "é home left end right z all ü all backspace",
       "é|, |é, |é, é|, é|, éz|, [éz]|, ü|, [ü]|, |"},
      {"abcdef", "shift+right shift+left shift+left", "abc[d]|ef, abc|def, ab[|c]def"},
      {"abcdef", "shift+left shift+right shift+right", "ab[|c]def, abc|def, abc[d]|ef"},
      {"abcdef", "shift+left shift+home left x", "ab[|c]def, [|ab]cdef, |abcdef, |abcdef"},
      {"abcdef", "shift+right shift+end delete g h",
       "abc[d]|ef, abcd[ef]|, abcd|, abcdg|, abcdgh|"},
      {"abcdef", "shift+home end shift+left right", "[|abc]def, abcdef|, abcde[|f], abcdef|"},
      {"abcdef", "shift+end home shift+right enter",
       "abc[def]|, |abcdef, [a]|bcdef, a|bcdef (Activate)"}};
  for (const auto& [text, script, seen] : rows) EXPECT_EQ(PlayOn(text, script), seen);
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
  const std::pair<std::string, std::string> rows[] = {
      {"65,40+press+release press+wait1 35,40 release", "abcde|f, [abcde|f], [abcde|f], [abcde|f]"},
      {"56,40+press 35,90 43,90 67,90 release 35,90",
       "abcd[]|ef, a[|bcd]ef, ab[|cd]ef, abcd[e]|f, abcd[e]|f, abcd[e]|f"},
      {"56,40+press release", "abcd[]|ef, abcd|ef"},
      {"56,40+press 35,90+leave 67,40 release", "abcd[]|ef, a[|bcd]ef, a[|bcd]ef, a[|bcd]ef"},
      {"56,40+press leave+35,90 67,40 release", "abcd[]|ef, a[|bcd]ef, a[|bcd]ef, a[|bcd]ef"},
      {"56,40+press 43,40+restart 67,40 release", "abcd[]|ef, ab[|cd]ef, ab[|cd]ef, ab[|cd]ef"}};
  for (const auto& [script, seen] : rows) {
    EXPECT_EQ(PlayOn("abcdef", script), seen) << script;
    Tick(50);  // no double click together with the next press
  }
  CurrentSkin()->cursors[MOUSE_TEXTSELECT]->SetHotspot(2, 0);
  EXPECT_EQ(PlayOn("abcdef", "66,40+press release"), "abcdef[]|, abcdef|");
}

TEST_F(EditBoxTest, ScrollsNoFurtherThanTheCursorNeeds) {
  SkinBitmap nothing;
  for (const int width : {120, 11, 0}) {
    edit.Resize(width, 24);
    root.Redraw();
    PlayOn("a text that is longer than its box", "end");
    for (const int before : {0, 1})
      EXPECT_EQ(edit.DrawText(edit.GetFirst() - before, nothing) + 1 < edit.GetCursor(),
                before == 1);
  }
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
    Show(boxes[i], {i % 2 * 52, i / 2 * 24, i == 5 ? 9 : 50, 22});
    boxes[i].SetFilter(i == 3 ? kFilterPassword : 0);
    boxes[i].ScrollToCursor();
    boxes[i].SetFlag(i == 4 ? kFlagDisabled : i == 1 ? kFlagDirty : kFlagFocus);
  }
  HoldShifts(KB_SHIFT_FLAG);
  for (EditBox* box : {&boxes[0], &boxes[1]}) {
    box->MoveCursor(1);
    for (int i = 0; i < 2; ++i) box->MsgChar(KEY_RIGHT << 8);
  }
  ExpectShown("edit_boxes", {0, 0, 104, 72});
}

}  // namespace
}  // namespace zel
