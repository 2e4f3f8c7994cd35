#include "toolkit/widgets/list_view.h"

#include <array>

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

// Single selection; with the focus; disabled; then the same where any number may be marked.
TEST_F(ListTest, ItemsLookLikeTheirState) {
  CurrentSkin()->dottedRect = 1;
  CurrentSkin()->GenerateDefaultBitmaps();
  std::array<ListBox, 6> boxes;
  for (int i = 0; i < 6; ++i) {
    for (const char* text : {"aa", "b", "c", "dd"})
      boxes[i].InsertItem(std::make_unique<TextListItem>(text));
    Show(boxes[i], {32 * i, 0, 30, i == 0 ? 43 : 54});
    ListView& shown = boxes[i].GetList();
    shown.SetMultiSelect(i > 2);
    shown.SetCurrent(2);
    shown.GetItem(0)->selected = i > 2;
    shown.SetFlag(std::array{kFlagDirty, kFlagFocus, kFlagDisabled}[i % 3]);
    if (i == 4) shown.GetItem(1)->selected = shown.GetItem(2)->selected = true;
  }
  ExpectShown("lists", {0, 0, 192, 54});
}

TEST_F(ListTest, SortingKeepsTheCurrentItem) {
  for (const char* text : {"b", "a", "c", "a"})
    list.InsertItem(std::make_unique<TextListItem>(text, list.Count()));
  list.InsertItem(std::make_unique<ListItem>(4));
  list.SetCurrent(2);
  list.Sort();
  std::string order;
  for (int i = 0; i < list.Count(); ++i) order += std::to_string(list.GetItem(i)->data);
  EXPECT_EQ(order + ' ' + std::to_string(list.GetCurrent()), "41302 4");
}

TEST_F(ListTest, AnyNumberOfItemsMayBeMarked) {
  ShowItems(list, 4, 4);
  list.SetMultiSelect(true);
  std::string seen;
  const auto note = [&] {
    seen += Marks() + std::to_string(list.GetCurrent()) + std::to_string(list.GetSelected()) +
            root->Take() + ", ";
  };
  list.SelectItem(1), note();
  list.SelectItem(3), note();
  for (const int index : {-1, 4}) list.SelectItem(index), list.DeselectItem(index), note();
  list.DeselectItem(1), note();
  Mouse(11, 12), note();
  list.SetCurrent(-1), note();
  list.DeselectAll(), note();
  EXPECT_EQ(seen, "110010, 110130, 110130, 110130, 100130, 100110 S1, 1001-10 S-1, 0000-10, ");
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

TEST_F(ListTest, TheApplicationMayFillTheListAnewWhileAnItemIsChosen) {
  for (const int message : {MSG_ACTIVATE, MSG_SCROLL}) {
    Mouse(200, 150);
    list.Clear();
    ShowItems(list, 9, 9);
    root->onEvent = [&](int msg, int index) {
      if (msg != message || index != 7) return;
      list.Clear();
      Fill(list, 2);
    };
    Click(11, 18);
    EXPECT_EQ(root->Take(), message == MSG_SCROLL ? " S7 S0" : " S7 A7 S0");
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
    EXPECT_EQ(view.w() > 90, view.Count() <= 5) << "there is no scroll bar";
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
