#include "launcher/menu_widgets.h"

#include <array>

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// Without a skin: entries are 12 pixels high, characters 8 by 8.
class MenuWidgets : public AllegroFixture {
 protected:
  // In the place of the list's box.
  struct Container : Dialog {
    void HandleEvent(Widget*, int msg, EventArg, EventArg) override {
      selections += msg == MSG_ITEM_SELECTED;
    }
    int selections = 0;
  };

  MenuWidgets() {
    container_.Add(&list_);
    list_.Shape(0, 0, 100, 36);  // a page of three entries
    list_.SetBitmap(LIST);
  }
  // '-' is a separator, which is the flag 1.
  void Fill(std::string_view kinds, int current) {
    list_.Clear();
    MenuItem item;
    for (const char kind : kinds) {
      item.flags = kind == '-';
      list_.InsertItem(std::make_unique<MenuEntry>(item));
    }
    list_.SetCurrent(current);
    container_.selections = 0;
  }
  Container container_;
  MenuList list_;
};

TEST_F(MenuWidgets, RowsHideTheGroundWhereTheySaySo) {
  Skin skin("default");
  skin.bitmaps[LIST]->Create(9, 8 * 5);
  skin.bitmaps[LIST]->clear_to_color(blue);
  list_.SetSkin(&skin);
  const auto drawOver = [this](char ground) {
    const BitmapPtr bitmap = Paint(Rows(36, std::string(100, ground)));
    Bitmap canvas{bitmap.get()};
    list_.Draw(canvas);
    return Picture(bitmap.get());
  };
  for (const std::string_view kinds : {"", "i-i", "iiiiiiiii"}) {
    Fill(kinds, 0);
    const Rows black = drawOver('k'), yellow = drawOver('y');
    const Rect told = list_.PaintedPart();
    for (int y = told.y; y < told.Bottom(); ++y)
      EXPECT_EQ(black[y].substr(told.x, told.w), yellow[y].substr(told.x, told.w)) << y;
    EXPECT_EQ(told.w, kinds.empty() ? 100 : 67);
    EXPECT_EQ(told.h, kinds.size() == 3 ? 15 : kinds.size() * 4);
  }
}

TEST_F(MenuWidgets, KeysPassOverSeparators) {
  // Kinds, current entry, key, the new one, and how often the parent is told: not of a separator at
  // an end.
  const std::tuple<const char*, int, int, int, int> rows[] = {
      {"x-x", 0, KEY_DOWN, 2, 1},       {"x--x", 3, KEY_UP, 0, 1},
      {"xx-", 0, KEY_2_PAD, 1, 1},      {"x-xxx", 0, KEY_1_PAD, 4, 1},
      {"xx-xx", 4, KEY_7_PAD, 0, 1},    {"x-x", 2, KEY_8_PAD, 0, 1},
      {"xxx-xxxx", 0, KEY_3_PAD, 6, 1}, {"xxxx-xxx", 7, KEY_9_PAD, 1, 1},
      {"xx-", 1, KEY_DOWN, 2, 0},       {"-x", 1, KEY_HOME, 0, 0},
      {"", -1, KEY_2_PAD, -1, 0},       {"xx", 0, KEY_TAB, 0, 0}};
  for (const auto& [kinds, before, key, after, selections] : rows) {
    Fill(kinds, before);
    EXPECT_EQ(list_.MsgChar(key << 8), key != KEY_TAB) << kinds << ' ' << key;
    EXPECT_EQ(list_.GetCurrent(), after) << kinds << ' ' << key;
    EXPECT_EQ(container_.selections, selections) << kinds << ' ' << key;
  }
}

TEST_F(MenuWidgets, PressesSelectEntriesButNoSeparators) {
  Fill("xx-", 0);
  for (const int y : {30, 80, 20, 20}) {
    mouse_y = y;
    list_.MsgLPress();
    EXPECT_EQ(list_.GetCurrent(), y == 20) << y;
  }
  EXPECT_EQ(container_.selections, 2);
}

class HintPanelTest : public WidgetFixture {
 protected:
  void ShowHint(HintPanel& panel, const Point& at, const char* hint) {
    MenuItem item;
    item.hintText.Assign(hint);
    IconCache icons;
    const MenuEntry entry{item, icons};
    Show(panel, {at.x, at.y, 28 + 10 * 8, 50});  // lines of ten characters
    panel.ShowHint(&entry, panel.GetFont(kNormal));
    Tick();
  }
};

TEST_F(HintPanelTest, WrapsHintsBetweenTheirWords) {
  const char* const kHints[] = {"four five", "four five6 seven", "a\n b  \n\n\t\fc",
                                "much-too-long one x", "1 3 5 7 9 1 3 5 7 9 1 3 5 7 9 1 3 5 7 9 1"};
  std::array<HintPanel, std::size(kHints)> panels;
  for (int i = 0; i < static_cast<int>(std::size(kHints)); ++i)
    ShowHint(panels[i], {i % 2 * 110, i / 2 * 52}, kHints[i]);
  ExpectShown("hints", {0, 0, 220, 156});
}

TEST_F(HintPanelTest, NeedsNoLyingScrollBarBesideAWideStandingOne) {
  for (const int width : {16, 21, 24}) {
    CurrentSkin()->bitmaps[SCROLL_VBACK]->Create(width, 9);
    CurrentSkin()->bitmaps[SCROLL_VBACK]->clear_to_color(yellow);
    HintPanel panel;
    ShowHint(panel, {}, "1 3 5 7 9 1 3 5 7 9 1 3 5 7 9 1 3 5 7 9 1 3 5 7 9 1 3 5 7 9 1 3 5 7 9");
    ExpectShown("hint_beside_bar_" + std::to_string(width), {0, 0, 108, 50});
  }
}

}  // namespace
}  // namespace zel
