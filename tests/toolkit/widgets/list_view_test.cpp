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
    root.SetFocus(&shown);
    root.Events();
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
    root.SetFocus(&view);
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
            (" " + root.Events()) + ", ";
  };
  list.SelectItem(1), note();
  list.SelectItem(3), note();
  for (const int index : {-1, 4}) list.SelectItem(index), list.DeselectItem(index), note();
  list.DeselectItem(1), note();
  Mouse(11, 12), note();
  list.SetCurrent(-1), note();
  list.DeselectAll(), note();
  EXPECT_EQ(seen,
            "110010 , 110130 , 110130 , 110130 , 100130 , 100110 Scroll 1, 1001-10 Scroll -1, "
            "0000-10 , ");
}

TEST_F(ListTest, KeysMoveTheCurrentItemWithinTheList) {
  ShowItems(list, 10, 3);
  const std::tuple<int, int, std::string> kMoves[] = {
      {0, KEY_UP, ""},           {9, KEY_DOWN, ""},         {4, KEY_UP, "Scroll 3"},
      {4, KEY_DOWN, "Scroll 5"}, {0, KEY_PGDN, "Scroll 3"}, {8, KEY_PGDN, "Scroll 9"},
      {9, KEY_PGUP, "Scroll 6"}, {2, KEY_PGUP, "Scroll 0"}, {5, KEY_HOME, "Scroll 0"},
      {5, KEY_END, "Scroll 9"}};
  for (const auto& [from, key, events] : kMoves) {
    list.SetCurrent(from);
    root.Events();
    Key(key);
    EXPECT_EQ(root.Events(), events) << from << ' ' << key;
  }
  list.Clear();
  for (const int key : {KEY_UP, KEY_ENTER, KEY_SPACE, KEY_HOME}) Key(key);
  EXPECT_EQ(root.Events(), "Scroll -1; Scroll -1; Scroll -1");
}

TEST_F(ListTest, ItemsAreChosenByKeyAndPointer) {
  ShowItems(list, 3, 20);
  for (const int key : {KEY_ENTER, KEY_SPACE}) Key(key);
  for (const int y : {12, 25}) Click(11, y);
  EXPECT_EQ(root.Events(), "Activate; Activate; Scroll 1; Activate 1; Activate -1");
  list.SetMultiSelect(true);
  list.DeselectAll();
  std::string marks;
  const auto note = [&] { marks += Marks() + ' '; };
  for (const int key : {KEY_SPACE, KEY_SPACE, KEY_ENTER, KEY_ENTER}) Key(key), note();
  for (int click = 0; click < 2; ++click) Click(11, 13), note();  // also a double click
  EXPECT_EQ(marks, "010 000 010 010 011 010 ");
  EXPECT_EQ(root.Events(),
            "Activate 1; Activate 1; Activate 1; Activate 1; Scroll 2; Activate 2; Activate 2; "
            "Activate 2");
}

TEST_F(ListTest, DeletingKeepsACurrentAndAVisibleItem) {
  ShowItems(list, 10, 4);
  Key(KEY_END);
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
  EXPECT_EQ(root.Events(),
            "Scroll 9; Scroll 8; Scroll 7; Scroll 6; Scroll 5; Scroll 1; Scroll 0; Scroll -1");
}

TEST_F(ListTest, TheApplicationMayFillTheListAnewWhileAnItemIsChosen) {
  for (const int message : {MSG_ACTIVATE, MSG_SCROLL}) {
    Mouse(200, 150);
    list.Clear();
    ShowItems(list, 9, 9);
    root.onEvent = [&](Widget*, int msg, int index) {
      if (msg != message || index != 7) return;
      list.Clear();
      Fill(list, 2);
    };
    Click(11, 18);
    EXPECT_EQ(root.Events(),
              message == MSG_SCROLL ? "Scroll 7; Scroll 0" : "Scroll 7; Activate 7; Scroll 0");
    root.onEvent = nullptr;
  }
}

TEST_F(ListTest, TheViewFollowsTheCurrentItemTheWheelAndTheScrollBar) {
  ShowBox(30);
  std::string firsts;
  const auto note = [&] { firsts += ' ' + std::to_string(view.GetFirst()); };
  for (const int key : {KEY_END, KEY_UP, KEY_UP, KEY_UP, KEY_UP, KEY_UP}) Key(key), note();
  EXPECT_EQ(root.Events(), "Scroll 29; Scroll 28; Scroll 27; Scroll 26; Scroll 25; Scroll 24");
  Mouse(30, 30, 0, 3), note();
  Mouse(105, 30, 0, -1), note();
  Click(105, 60), note();
  view.Clear(), Click(40, 60);
  EXPECT_EQ(firsts, " 25 25 25 25 25 24 21 22 23");
  EXPECT_EQ(root.Events(), "");
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
  for (const int key : {KEY_DOWN, KEY_END, KEY_HOME, KEY_DOWN}) Key(key), check();
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
    root.ChangeFocus(root.FocusWidget(), focus), check();
  Key(KEY_ENTER), check();
}

}  // namespace
}  // namespace zel
