#include "toolkit/widgets/edit_box.h"

#include <memory>

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// Characters of the built-in font are 8 pixels wide; the text begins 4 pixels inside the box.
class EditBoxTest : public WidgetFixture {
 protected:
  using Ints = std::vector<int>;

  EditBoxTest() {
    Show(*edit, {20, 30, 120, 24});
    root->SetFocus(edit.get());
  }
  ~EditBoxTest() override { key_shifts = 0; }
  void Type(const Ints& characters) {
    for (const int character : characters) Press(0, character);
  }
  void PressKeys(const Ints& scancodes, bool shift = false) {
    key_shifts = shift ? KB_SHIFT_FLAG : 0;
    for (const int scancode : scancodes) Press(scancode);
  }
  // The pointer at the left end of a character, as long as the text is not scrolled.
  static int PlaceOf(int character) { return 24 + 8 * character; }
  Rows Look() { return Shown(*edit); }
  // The selection, if there is one, and the cursor.
  Ints State() {
    if (!edit->Selected()) return {edit->GetCursor()};
    return {edit->GetSelStart(), edit->GetSelEnd(), edit->GetCursor()};
  }

  std::unique_ptr<EditBox> edit = std::make_unique<EditBox>();
};

TEST_F(EditBoxTest, KeysEditWholeCharactersUpToTheCapacity) {
  for (const auto& [format, left] : {std::pair{U_UTF8, "\xC3\xA9z"}, {U_ASCII, "\xE9z"}}) {
    set_uformat(format);
    edit->SetText("", 4);
    Type({'a', 0xE9, 'b', 0xFC, 'c'});
    PressKeys({KEY_LEFT, KEY_LEFT, KEY_BACKSPACE, KEY_DEL, KEY_DEL, KEY_DEL});
    PressKeys({KEY_BACKSPACE, KEY_BACKSPACE});
    Type({0xE9});
    PressKeys({KEY_HOME, KEY_END, KEY_RIGHT});
    Type({'z'});
    EXPECT_STREQ(edit->GetText(), left);
    edit->Select();
    Type({0xFC});
    EXPECT_EQ(ustrlen(edit->GetText()), 1) << "which replaces what is selected";
  }
}

TEST_F(EditBoxTest, FiltersWhatIsTyped) {
  const std::pair<int, const char*> rows[] = {{0, "\xC3\xA9 -,.1gF"},
                                              {kFilterUpperCase, "\xC3\x89 -,.1GF"},
                                              {kFilterNumeric, ",.1"},
                                              {kFilterHexadecimal | kFilterLowerCase, "1f"}};
  for (const auto& [filter, expected] : rows) {
    edit->SetFilter(filter);
    edit->SetText("", 20);
    Type({0xE9, ' ', '-', ',', '.', '1', 'g', 'F', 31, 0x110000});
    EXPECT_STREQ(edit->GetText(), expected);
  }
}

TEST_F(EditBoxTest, HexadecimalNumbersKeepTheirBits) {
  edit->SetFilter(kFilterHexadecimal);
  for (const int number : {-1, 0x7FFFFFFF, 0}) {
    edit->SetNumber(number);
    EXPECT_EQ(edit->GetInt(), number);
  }
}

TEST_F(EditBoxTest, ShiftSelectsWithTheKeys) {
  const Ints rows[][2] = {{{KEY_RIGHT, KEY_LEFT, KEY_LEFT}, {2, 3, 2}},
                          {{KEY_LEFT, KEY_RIGHT, KEY_RIGHT}, {3, 4, 4}},
                          {{KEY_LEFT, KEY_HOME}, {0, 2, 0}},
                          {{KEY_RIGHT, KEY_END}, {4, 6, 6}}};
  for (const auto& [keys, expected] : rows) {
    edit->SetText("abcdef");
    edit->MoveCursor(3);
    PressKeys(keys, true);
    EXPECT_EQ(State(), expected);
  }
}

TEST_F(EditBoxTest, MouseSelectsFromThePressToThePointer) {
  edit->SetText("abcdef");
  Click(PlaceOf(5), 40);
  Mouse(PlaceOf(5), 40, 1);
  Mouse(PlaceOf(5) + 1, 40);
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
    PressKeys({KEY_END});
    const int first = edit->GetFirst();
    EXPECT_GE(edit->DrawText(first, nothing) + 1, edit->GetCursor()) << width;
    EXPECT_LT(edit->DrawText(first - 1, nothing) + 1, edit->GetCursor()) << width;
  }
}

TEST_F(EditBoxTest, SurvivesDamagedTextAndAMissingSkin) {
  SetCurrentSkin(nullptr);
  edit->SetSkin(nullptr);
  for (const char* text : {"\xC3", "a\x80\x80", "\xF0\x9F", "ab\xE2\x82"}) {
    edit->SetText(text);
    PressKeys({KEY_BACKSPACE});
    Type({'x'});
    EXPECT_NE(ustrchr(edit->GetText(), 'x'), nullptr);
    Look();
  }
}

TEST_F(EditBoxTest, EnterTellsTheParentWhichMayDestroyTheBox) {
  root->onEvent = [this](int, int) { edit.reset(); };
  EXPECT_TRUE(Press(KEY_ENTER, '\r'));
  EXPECT_EQ(root->Take(), " A0");

  struct Destroyer : Dialog {
    void HandleEvent(Widget*, int msg, EventArg, EventArg) override {
      if (msg == MSG_CHAR) edit.reset();
    }
    std::unique_ptr<EditBox> edit = std::make_unique<EditBox>();
  } destroyer;
  destroyer.Add(destroyer.edit.get());
  root->Add(&destroyer);
  root->SetFocus(destroyer.edit.get());
  EXPECT_TRUE(Press(KEY_ENTER, '\r')) << "already at the key";
  EXPECT_EQ(destroyer.edit, nullptr);
}

TEST_F(EditBoxTest, ShowsPasswordsAsAsterisksAndMarksTheSelection) {
  CurrentSkin()->colors[kSelect] = green;
  edit->SetFontColor(black, Color{}, kFocused);
  edit->SetText("***");
  const Rows stars = Look();
  edit->SetText("a b");
  EXPECT_FALSE(Look() == stars);
  edit->SetFilter(kFilterPassword);
  EXPECT_TRUE(Look() == stars);
  edit->SetFilter(0);
  PressKeys({KEY_LEFT, KEY_LEFT}, true);
  EXPECT_EQ(Look().at(12).substr(11, 9), "kgggggggg");
}

}  // namespace
}  // namespace zel
