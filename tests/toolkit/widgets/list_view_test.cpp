#include "toolkit/widgets/list_view.h"

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// The frames of "LIST" are single pixels: items are one pixel high, and the picture of a list is
// its items' states from top to bottom: 0 r, 1 g, 2 b, 3 w, 4 k, 5 y, 6 c, 7 ?.
class ListTest : public WidgetFixture {
 protected:
  ListTest() { Dress(LIST, {"r", "g", "b", "w", "k", "y", "c", "?"}); }
  // A focused list at (10, 10).
  void ShowItems(ListView& shown, int count, int rows) {
    Show(shown, {10, 10, 1, rows});
    Fill(shown, count);
    root->SetFocus(&shown);
    root->Take();
  }
  // Draws no ground.
  struct Inverter : ListItem {
    void Draw(Bitmap& canvas, const SkinBitmap*, int) override {
      xor_mode(TRUE);
      canvas.rectfill(0, 0, canvas.Width(), canvas.Height(), white);
      xor_mode(FALSE);
    }
  };
  static void Fill(ListView& target, int count) {
    while (count-- > 0) target.InsertItem(std::make_unique<ListItem>());
  }
  // Puts the box at (10, 10), with items of 10 pixels, of which five fit.
  void ShowBox(int count) {
    Rows rows;
    for (const char state : std::string("rgbwkyc?")) rows.insert(rows.end(), 10, {state});
    Dress(LIST, rows);
    Fill(view, count);
    Show(box, {10, 10, 100, 54});
    root->SetFocus(&view);
  }
  // Which items are marked.
  std::string Marks() const {
    std::string marks;
    for (int i = 0; i < list.Count(); ++i) marks += list.IsSelected(i) ? '1' : '0';
    return marks;
  }

  ListView list;
  ListBox box;
  ListView& view = box.GetList();
};

TEST_F(ListTest, ItemsAreDrawnByTheirState) {
  ShowItems(list, 3, 3);
  std::string looks;
  const auto note = [&](std::uint32_t flags, bool currentMarked) {
    list.GetItem(2)->selected = currentMarked;
    list.ClearFlag(kFlagFocus | kFlagDisabled);
    list.SetFlag(flags);
    for (const std::string& row : Shown(list)) looks += row;
    looks += ' ';
  };
  list.SetCurrent(2);
  note(kFlagFocus, true), note(kFlagFocus | kFlagDisabled, true);
  list.SetMultiSelect(true);
  list.GetItem(1)->selected = true;
  note(0, false), note(kFlagFocus, false);
  note(kFlagFocus | kFlagDisabled, true), note(kFlagDisabled, true);
  EXPECT_EQ(looks, "rry ccc rgr byw byk c?? ");
}

TEST_F(ListTest, KeysMoveTheCurrentItemWithinTheList) {
  ShowItems(list, 10, 3);
  const std::tuple<int, int, std::string> kMoves[] = {
      {0, KEY_UP, ""},      {9, KEY_DOWN, ""},    {4, KEY_UP, " S3"},   {4, KEY_DOWN, " S5"},
      {0, KEY_PGDN, " S3"}, {8, KEY_PGDN, " S9"}, {9, KEY_PGUP, " S6"}, {2, KEY_PGUP, " S0"},
      {5, KEY_HOME, " S0"}, {5, KEY_END, " S9"}};
  for (const auto& [from, key, events] : kMoves) {
    list.SetCurrent(from);
    root->Take();
    Press(key);
    EXPECT_EQ(root->Take(), events) << from << ' ' << key;
  }
  list.Clear();
  for (const int key : {KEY_UP, KEY_ENTER, KEY_SPACE, KEY_HOME}) Press(key);
  EXPECT_EQ(root->Take(), " S-1 S-1 S-1");
}

TEST_F(ListTest, ItemsAreChosenByKeyAndPointer) {
  ShowItems(list, 3, 20);
  for (const int key : {KEY_ENTER, KEY_SPACE}) Press(key);
  for (const int y : {12, 25}) Click(11, y);
  EXPECT_EQ(root->Take(), " A0 A0 S1 A1 A-1");
  list.SetMultiSelect(true);
  list.DeselectAll();
  std::string marks;
  const auto note = [&] { marks += Marks() + ' '; };
  for (const int key : {KEY_SPACE, KEY_SPACE, KEY_ENTER, KEY_ENTER}) Press(key), note();
  for (int click = 0; click < 2; ++click) Click(11, 13), note();  // also a double click
  EXPECT_EQ(marks, "010 000 010 010 011 010 ");
  EXPECT_EQ(root->Take(), " A1 A1 A1 A1 S2 A2 A2 A2");
}

TEST_F(ListTest, DeletingKeepsACurrentAndAVisibleItem) {
  ShowItems(list, 10, 4);
  Press(KEY_END);
  list.SetH(0);
  list.SetFirst(9);
  for (const int index : {9, 0, 12, 7, 6}) list.DeleteItem(index);
  EXPECT_EQ(list.GetFirst(), 5);
  list.SetCurrent(1);
  list.InsertItem(std::make_unique<ListItem>(), 0);
  EXPECT_EQ(Marks(), "0100000") << "the mark stays with the current item";
  list.DeleteItem(1);
  EXPECT_EQ(Marks(), "010000");
  while (list.Count() > 0) list.DeleteItem(0);
  EXPECT_EQ(root->Take(), " S9 S8 S7 S6 S5 S1 S0 S-1");
}

TEST_F(ListTest, TheApplicationMayReplaceTheListWhileAnItemIsChosen) {
  for (const int run : {0, 1, 2, 3}) {
    auto shown = std::make_unique<ListView>();
    Mouse(200, 150);
    ShowItems(*shown, 9, 9);
    root->onEvent = [&](int msg, int index) {
      if (msg != (run % 2 ? MSG_SCROLL : MSG_ACTIVATE) || index != 7) return;
      shown->Clear();
      Fill(*shown, 2);
      if (run > 1) shown.reset();
    };
    Click(11, 18);
    EXPECT_EQ(root->Take(), run % 2 ? " S7 S0" : " S7 A7 S0");
    root->onEvent = nullptr;
  }
}

TEST_F(ListTest, TheViewFollowsTheCurrentItemTheWheelAndTheScrollBar) {
  ShowBox(30);
  std::string firsts;
  const auto note = [&] { firsts += ' ' + std::to_string(view.GetFirst()); };
  for (const int key : {KEY_END, KEY_UP, KEY_UP, KEY_UP, KEY_UP, KEY_UP}) Press(key), note();
  EXPECT_EQ(root->Take(), " S29 S28 S27 S26 S25 S24");
  Mouse(30, 30, 0, 3), note();
  Mouse(105, 30, 0, -1), note();
  Click(105, 60), note();
  view.Clear(), Click(40, 60);
  EXPECT_EQ(firsts, " 25 25 25 25 25 24 21 22 23");
  EXPECT_EQ(root->Take(), "");
}

TEST_F(ListTest, WhatIsRepaintedInPartLooksAsIfItWereRepaintedWhole) {
  ShowBox(5);
  const auto check = [this] {
    Tick();
    EXPECT_TRUE(DrawsEnough()) << view.Count() << view.GetCurrent();
    EXPECT_EQ(box.Children()[2]->Hidden(), view.Count() <= 5) << "the scroll bar";
  };
  box.Hide(), box.Unhide(), check();
  box.InsertItem(std::make_unique<ListItem>()), check();
  Fill(view, 2), box.ItemsChanged(), check();
  for (const int key : {KEY_DOWN, KEY_END, KEY_HOME, KEY_DOWN}) Press(key), check();
  view.InsertItem(std::make_unique<TextListItem>("text"), 1), check();
  static_cast<TextListItem*>(view.GetItem(1))->SetText("new"), check();
  for (const int last : {8, 7, 6, 5, 4}) box.DeleteItem(last), check();
  view.SetFirst(2), check();
  view.SetMultiSelect(true), check();
  for (const int y : {35, 45, 45}) Click(30, y), check();
  view.Clear(), check();
  Dress(PANEL_SUNKEN, {"rrr", "rrr", "rrr"});
  view.InsertItem(std::make_unique<Inverter>()), box.Redraw(), check();
  for (Widget* focus : {static_cast<Widget*>(nullptr), static_cast<Widget*>(&view)})
    root->ChangeFocus(root->FocusWidget(), focus), check();
  Press(KEY_ENTER), check();
}

}  // namespace
}  // namespace zel
