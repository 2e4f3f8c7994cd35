#include "toolkit/widgets/list_view.h"

#include <array>

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// A box with items of 10 pixels, five of which show, the first at (12, 12).
class ListTest : public WidgetFixture {
 protected:
  ListTest() {
    Rows frames;
    for (const char* state : {"r", "g", "b", "w", "k", "y", "c", "?"})
      frames.insert(frames.end(), 10, state);
    Dress(LIST, frames);
    Show(box, {10, 10, 100, 54});
    look = [this] { return Marks(list); };
  }
  // 'x' for marked items, the current one behind a '>'.
  static std::string Marks(const ListView& shown) {
    std::string seen;
    for (int i = 0; i < shown.Count(); ++i)
      seen += (i == shown.GetCurrent() ? ">" : "") + std::string{shown.IsSelected(i) ? 'x' : '-'};
    return seen;
  }
  // Lets the scripts say what is first as well.
  void LookAt(const ListView& shown) {
    look = [&shown] { return std::to_string(shown.GetFirst()) + ' ' + Marks(shown); };
  }
  void Fill(int count) {
    while (count-- > 0) box.InsertItem(std::make_unique<ListItem>());
    root.SetFocus(&list);
    EXPECT_TRUE(list.HasFocus());
    Tick();
  }

  struct : ListBox {
    using ListBox::scrollBar;
  } box;
  ListView& list = box.GetList();
};

using ListLookTest = WidgetFixture;

// Single selection; with the focus; disabled; then the same where any number may be marked.
TEST_F(ListLookTest, ItemsLookLikeTheirState) {
  CurrentSkin()->dottedRect = 1;
  Rows frames;
  for (const char* state : {"rgw", "gbw", "bcw", "cyw", "ykw", "krw", "rww", "www"})
    frames.insert(frames.end(), 12, state);
  Dress(LIST, frames);
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
    list.InsertItem(std::make_unique<TextListItem>(text, list.Count()), 9);
  list.InsertItem(std::make_unique<TextListItem>("b", 4), 0);
  list.InsertItem(std::make_unique<ListItem>(5), 9);
  list.SetCurrent(2);
  list.Sort();
  std::string order;
  for (int i = 0; i < list.Count(); ++i) order += std::to_string(list.GetItem(i)->data);
  EXPECT_EQ(order + look(), "513402->x----");
}

TEST_F(ListTest, TheViewFollowsKeysWheelAndScrollBar) {
  Fill(30);
  look = [this] {
    const bool fits = box.scrollBar.Hidden() || box.scrollBar.GetPosition() == list.GetFirst();
    return std::to_string(list.GetFirst()) + (fits ? "" : "?");
  };
  steps["clear"] = [this] { root.SetFocus(&list), list.Clear(), box.ItemsChanged(); };
  ExpectPlays("list_scrolled",
              {"up down down up pagedown pagedown pageup pageup pageup end down",
               "pagedown up+up+up+up up home pagedown end pageup 30,30+wheel3 105,30+wheel-1",
               "105,60+press+release clear up enter space home", "40,60+press+release"});
  Fill(9), box.Resize(100, 12), Tick(), list.SelectItem(6), list.ScrollToCurrent();
  EXPECT_EQ(list.GetFirst(), 6) << "also in a list that is lower than an item";
  EXPECT_FALSE(box.scrollBar.Hidden());
  CurrentSkin()->bitmaps[SCROLL_VBACK]->Destroy(), box.SetSkin(nullptr), Tick();
  EXPECT_TRUE(box.scrollBar.Hidden()) << "it would only take the mouse";
}

TEST_F(ListTest, ItemsAreChosenByKeyAndPointer) {
  for (const int count : {0, 1}) {
    root.ChangeFocus(root.FocusWidget(), nullptr), root.MoveFocus(FocusMove::kNext);
    EXPECT_EQ(list.HasFocus(), count > 0) << "Tab goes to a list with something to choose";
    EXPECT_EQ(root.HandleKey(0, KEY_ENTER), count > 0) << "others may use the key";
    Fill(count > 0 ? 2 : 1);
  }
  for (const int i : {-1, 0, 2, 3}) {
    steps["mark" + std::to_string(i)] = [this, i] { list.SelectItem(i); };
    steps["clear" + std::to_string(i)] = [this, i] { list.DeselectItem(i); };
  }
  steps["none"] = [this] { list.SetCurrent(-1); };
  steps["clear"] = [this] { list.DeselectAll(); };
  steps["many"] = [this] { list.SetMultiSelect(true), list.DeselectAll(); };
  ExpectPlays("list_choices",
              {"enter space 20,27+press+release press+release 20,50+press+release",
               "many space clear space space enter enter 20,15 press+release wait50+press+release",
               "mark0 mark2 mark-1+mark3 clear-1+clear3 clear0 none",
               // the last row of one item, and the first one of the next
               "wait50+20,22+press+release wait50+press+release wait50+20,23+press+release"
               " wait50+20,43+press+release"});
  EXPECT_EQ(list.GetSelected(), 2);
}

TEST_F(ListTest, DeletingKeepsACurrentAndAVisibleItem) {
  Fill(10);
  steps["insert0"] = [this] { list.InsertItem(std::make_unique<ListItem>(), 0); };
  for (const int i : {0, 1, 4, 9})
    steps["delete" + std::to_string(i)] = [this, i] { box.DeleteItem(i); };
  LookAt(list);
  ExpectPlays("list_deletions",
              {"end delete9 delete9 delete0 up delete4 down delete4 home+insert0 down insert0 "
               "delete1 end insert0",
               "delete1+delete0+delete0+delete0+delete0+delete0 delete0 delete0 insert0"});
}

// Without a box, in room for five items.
TEST_F(ListTest, ByItselfItShowsAsManyAsItCan) {
  ListView alone;
  for (int i = 0; i < 2; ++i) alone.InsertItem(std::make_unique<ListItem>());
  alone.SetH(50), alone.SetFirst(1), alone.DeleteItem(1);
  EXPECT_EQ(Join(alone.PageSize(), alone.GetFirst()), "0 0 ") << "before it is dressed";
  Show(alone, {200, 10, 50, 50});
  root.SetFocus(&alone);
  LookAt(alone);
  steps["insert"] = [&] { alone.InsertItem(std::make_unique<ListItem>(), 0); };
  steps["delete"] = [&] { alone.DeleteItem(alone.Count() - 1); };
  steps["last"] = [&] { alone.SetFirst(9); };
  steps["low"] = [&] { alone.SetH(8), root.Redraw(); };
  steps["many"] = [&] { alone.SetMultiSelect(true); };
  steps["behind"] = [&] { alone.SetCurrent(alone.Count()), alone.SetMultiSelect(false); };
  ExpectPlays("list_alone",
              {"last insert insert insert insert insert+insert+last delete delete delete insert",
               "low+last delete delete+delete many+down delete insert delete+delete",
               "insert behind insert home"});
  while (alone.Count() < 9) Play("insert");
  alone.SetH(45), alone.SetFirst(0), root.Redraw();
  for (const auto& [index, pixels] :
       {std::pair{1, 50 * 20}, {4, 50 * 15}, {8, 50 * 5}, {7, 50 * 45}}) {
    Copied(), alone.SelectItem(index);
    EXPECT_EQ(Copied(), pixels) << "the rows that change, or all where none of them shows";
  }
}

// Has margins of 2 and 4 pixels at its sides.
struct Card : ListItem {
  Rect PaintedPart(Size size) const override { return {2, 0, size.w - 6, size.h}; }
  void Draw(Bitmap& canvas, const SkinBitmap*, int state) override {
    canvas.rectfill(2, 0, canvas.Width() - 5, canvas.Height() - 1, state == 5 ? white : blue);
  }
};

TEST_F(ListTest, RowsOfTheSkinsHeightShowWholeOrNotAtAll) {
  CurrentSkin()->listHeight = 22;
  box.SetGround(green), Check();
  for (int i = 0; i < 4; ++i) box.InsertItem(std::make_unique<Card>());
  root.SetFocus(&list), Tick();
  clear_to_color(CurrentScreenUpdate()->GetCanvas(), red);  // where nothing is painted
  root.Redraw();
  ExpectShown("list_of_cards", {8, 8, 104, 58});
  LookAt(list);
  steps["lower"] = [this] { box.Resize(100, 20), root.Redraw(); };
  steps["current"] = [this] { list.ScrollToCurrent(); };
  ExpectPlays("list_of_cards",
              {"20,56+press+release 20,53+press+release down down up pageup up end current home",
               "lower+wait1 down 20,20+press+release end 105,20+wheel3 current"});
}

// Of 10, 10, 10, 10, 35 and 5 pixels, in 50.
TEST_F(ListTest, RowsOfTheirOwnHeightsShowWholeAsWell) {
  struct Row : Card {
    int GetHeight() const override { return static_cast<int>(data); }
  };
  CurrentSkin()->listHeight = 10;
  for (const int height : {10, 10, 10, 10, 35, 5}) {
    box.InsertItem(std::make_unique<Row>());
    list.GetItem(list.Count() - 1)->data = height;
  }
  root.SetFocus(&list), Tick();
  LookAt(list);
  steps["top"] = [this] { list.SetFirst(0); };
  steps["current"] = [this] { list.ScrollToCurrent(); };
  for (const int i : {0, 4}) steps["delete" + std::to_string(i)] = [this, i] { box.DeleteItem(i); };
  ExpectPlays("list_of_rows", {"pagedown up down top current down top home+end up+up+up home",
                               "end delete0 delete4+wait1 delete0 delete0"});
}

TEST_F(ListTest, TheApplicationMayFillTheListAnewWhileAnItemIsChosen) {
  Fill(5);
  root.onEvent = [&](Widget*, int msg, int index) {
    if (msg != MSG_SCROLL || index != 4) return;
    for (list.Clear(); list.Count() < 4;) list.InsertItem(std::make_unique<ListItem>());
  };
  EXPECT_EQ(Play("20,60+press release"), ">x--- (Scroll 4; Scroll 0), >x---");
}

TEST_F(ListTest, WhatIsRepaintedInPartLooksAsIfItWereRepaintedWhole) {
  Fill(5);
  const auto check = [this] {
    Play("wait1");
    EXPECT_EQ(list.w() > 90, list.Count() <= 5) << "there is no scroll bar";
  };
  box.Hide(), box.Unhide(), check();
  box.InsertItem(std::make_unique<ListItem>()), check();
  list.InsertItem(std::make_unique<TextListItem>("text"), 1), box.ItemsChanged(), check();
  static_cast<TextListItem*>(list.GetItem(1))->SetText("new"), check();
  list.Sort(), check();
  for (const int last : {6, 5, 4}) box.DeleteItem(last), check();
  list.SetFirst(99);
  EXPECT_EQ(list.GetFirst(), list.Count() - 1);
  list.SetFirst(-1), check();
  list.SetMultiSelect(true), list.SetCurrent(list.Count()), check();
  list.Clear(), check();
  Dress(PANEL_SUNKEN, {"rrr", "rrr", "rrr"});
  Rows cursor(80, ".");  // on a ground that shows
  cursor[30] = "r";
  Dress(LIST, cursor), Fill(1), box.Redraw(), check();
  Play("leave"), root.SetFocus(&list), Play("wait1 enter");
}

}  // namespace
}  // namespace zel
