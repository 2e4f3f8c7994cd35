#include "launcher/menu_widgets.h"

#include <array>

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

using MenuListTest = AllegroFixture;

TEST_F(MenuListTest, RowsHideTheGroundWhereTheySaySo) {
  Skin skin("default");
  skin.bitmaps[LIST]->Create(9, 8 * 5);
  skin.bitmaps[LIST]->clear_to_color(blue);
  MenuList list;
  list.Shape(0, 0, 100, 36);  // without its font entries are 12 pixels high
  list.SetBitmap(LIST);
  list.SetSkin(&skin);
  const auto drawOver = [&list](char ground) {
    const BitmapPtr bitmap = Paint(Rows(36, std::string(100, ground)));
    Bitmap canvas{bitmap.get()};
    list.Draw(canvas);
    return Picture(bitmap.get());
  };
  for (const std::string_view kinds : {"", "i-i", "iiiiiiiii"}) {  // '-' is a separator
    list.Clear();
    MenuItem item;
    for (const char kind : kinds) {
      item.flags = kind == '-' ? kItemSeparator : MenuItemFlag{};
      list.InsertItem(std::make_unique<MenuEntry>(item));
    }
    const Rows black = drawOver('k'), yellow = drawOver('y');
    const Rect told = list.PaintedPart();
    for (int y = told.y; y < told.Bottom(); ++y)
      EXPECT_EQ(black[y].substr(told.x, told.w), yellow[y].substr(told.x, told.w)) << y;
    EXPECT_EQ(told.w, kinds.empty() ? 100 : 67);
    EXPECT_EQ(told.h, kinds.size() == 3 ? 15 : kinds.size() * 4);
  }
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
