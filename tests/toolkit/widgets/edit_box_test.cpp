#include "toolkit/widgets/edit_box.h"

#include <array>
#include <memory>

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// Characters of the built-in font are 8 pixels wide; the text begins 4 pixels inside the box.
class EditBoxTest : public WidgetFixture {
 protected:
  using Ints = std::vector<int>;

  EditBoxTest() { ShowBox(); }
  void ShowBox() {
    edit = std::make_unique<EditBox>();
    Show(*edit, {20, 30, 120, 24});
    root.SetFocus(edit.get());
  }
  // Characters and, with a minus, keys.
  void Type(const Ints& codes) {
    for (const int code : codes) Stage::Type(std::max(0, code), std::max(0, -code));
  }
  // The pointer at the left end of a character, as long as the text is not scrolled.
  static int PlaceOf(int character) { return 24 + 8 * character; }
  // The ends of the selection and the cursor.
  Ints State() {
    EXPECT_TRUE(edit->Selected());
    return {edit->GetSelStart(), edit->GetSelEnd(), edit->GetCursor()};
  }

  std::unique_ptr<EditBox> edit;
};

TEST_F(EditBoxTest, KeysEditWholeCharactersUpToTheCapacity) {
  for (const auto& [format, left] : {std::pair{U_UTF8, "\xC3\xA9z"}, {U_ASCII, "\xE9z"}}) {
    set_uformat(format);
    edit->SetText("", 4);
    Type({'a', 0xE9, 'b', 0xFC, 'c', -KEY_LEFT, -KEY_LEFT, -KEY_BACKSPACE, -KEY_DEL, -KEY_DEL});
    Type({-KEY_DEL, -KEY_BACKSPACE, -KEY_BACKSPACE, 0xE9, -KEY_HOME, -KEY_END, -KEY_RIGHT, 'z'});
    EXPECT_STREQ(edit->GetText(), left);
    edit->Select();
    Type({0xFC});
    EXPECT_EQ(ustrlen(edit->GetText()), 1) << "which replaces what is selected";
  }
}

TEST_F(EditBoxTest, FiltersWhatIsTyped) {
  const std::pair<int, const char*> rows[] = {{kFilterUpperCase, "\xC3\x89 -,.1GF"},
                                              {kFilterNumeric, ",.1"},
                                              {kFilterHexadecimal | kFilterLowerCase, "1f"}};
  for (const auto& [filter, expected] : rows) {
    edit->SetFilter(filter);
    edit->SetText("", 20);
    Type({0xE9, ' ', '-', ',', '.', '1', 'g', 'F', 31, 0x110000});
    EXPECT_STREQ(edit->GetText(), expected);
  }
  for (const int number : {-1, 0x7FFFFFFF, 0}) {  // hexadecimal ones keep their bits
    edit->SetNumber(number);
    EXPECT_EQ(edit->GetInt(), number);
  }
}

TEST_F(EditBoxTest, ShiftAndTheMouseSelect) {
  const Ints rows[][2] = {{{-KEY_RIGHT, -KEY_LEFT, -KEY_LEFT}, {2, 3, 2}},
                          {{-KEY_LEFT, -KEY_RIGHT, -KEY_RIGHT}, {3, 4, 4}},
                          {{-KEY_LEFT, -KEY_HOME}, {0, 2, 0}},
                          {{-KEY_RIGHT, -KEY_END}, {4, 6, 6}}};
  HoldShifts(KB_SHIFT_FLAG);
  for (const auto& [keys, expected] : rows) {
    edit->SetText("abcdef");
    edit->MoveCursor(3);
    Type(keys);
    EXPECT_EQ(State(), expected);
  }
  HoldShifts(0);
  Click(PlaceOf(5), 40);
  Drag(PlaceOf(5), 40, PlaceOf(5) + 1, 40);
  EXPECT_EQ(State(), (Ints{0, 6, 5})) << "a double click selects all";
  Mouse(PlaceOf(4), 40, 1);
  for (const Ints& expected : {Ints{1, 4, 1}, {2, 4, 2}, {4, 5, 5}}) {
    Mouse(PlaceOf(expected.back()) + 3, 90, 1);
    EXPECT_EQ(State(), expected);
  }
  CurrentSkin()->cursors[MOUSE_TEXTSELECT]->SetHotspot(2, 0);
  Mouse(PlaceOf(5) + 2, 90, 1);
  EXPECT_EQ(State(), (Ints{4, 6, 6})) << "the hot spot of the pointer counts";
}

TEST_F(EditBoxTest, ScrollsNoFurtherThanTheCursorNeeds) {
  SkinBitmap nothing;
  for (const int width : {120, 11, 0}) {
    edit->Resize(width, 24);
    edit->SetText("a text that is longer than its box");
    Type({-KEY_END});
    const int first = edit->GetFirst();
    EXPECT_GE(edit->DrawText(first, nothing) + 1, edit->GetCursor()) << width;
    EXPECT_LT(edit->DrawText(first - 1, nothing) + 1, edit->GetCursor()) << width;
  }
}

TEST_F(EditBoxTest, SurvivesDamagedTextAndAMissingSkin) {
  SetCurrentSkin(nullptr);
  edit->SetSkin(nullptr);
  for (const char* text : {"\xC3", "a\x80\x80", "ab\xE2\x82"}) {
    edit->SetText(text);
    Type({-KEY_BACKSPACE, 'x'});
    EXPECT_NE(ustrchr(edit->GetText(), 'x'), nullptr);
    Shown(*edit);
  }
}

TEST_F(EditBoxTest, EnterTellsTheParent) {
  Stage::Type('\r', KEY_ENTER);
  EXPECT_EQ(root.Events(), "Activate");
}

// With a selection, the same without the focus, the cursor behind a glyph that is cut off, a
// password, disabled, and a box without room.
TEST_F(EditBoxTest, LooksSayTheState) {
  root.Remove(edit.get());
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
