#include "launcher/menu_widgets.h"

#include "launcher/texts.h"
#include "tests/support/allegro_fixture.h"
#include "tests/support/picture.h"
#include "tests/support/temp_files.h"
#include "toolkit/skin/skin.h"

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
  MenuEntry& Add(std::uint32_t flags, const char* title = "", const char* icon = "") {
    MenuItem item;
    item.flags = flags;
    item.color = red;
    item.title.Assign(title);
    item.icon.Assign(icon);
    list_.InsertItem(std::make_unique<MenuEntry>(item, icons_));
    return *list_.GetEntry(list_.Count() - 1);
  }
  // '-' is a separator, which is the flag 1.
  void Fill(std::string_view kinds, int current) {
    list_.Clear();
    for (const char kind : kinds) Add(kind == '-');
    list_.SetCurrent(current);
    container_.selections = 0;
  }
  static Rows Drawing(MenuEntry& entry, int width, const SkinBitmap* element = nullptr) {
    const BitmapPtr bitmap = Paint(Rows(16, std::string(width, 'k')));
    Bitmap canvas{bitmap.get()};
    entry.selected = false;
    entry.Draw(canvas, element, 2);
    return Picture(bitmap.get());
  }

  Container container_;
  MenuList list_;
  IconCache icons_;
};

TEST_F(MenuWidgets, EntriesShowTheMarksOfTheirKind) {
  const TempFile file{"", "icon.bmp"};
  save_bitmap(file.Path(), Paint({"g.g", ".b."}).get(), nullptr);
  MenuEntry& back = Add(kItemBack);
  MenuEntry& submenu = Add(kItemSubmenu, "|", file.Path());
  const Rows left = Drawing(back, 300), right = Drawing(submenu, 40);
  const Rows marks = {
      "kkkkrkkkkkkkkkk kkkkkkkkkkk kkkkk kkkkkkkkkkkk",  //
      "kkkrrrkkkkkkkkk kkkkkkkkkkk kgkgk kkkkkkkkkkkk",  //
      "kkkrrrkkkkkkkkk kkkkkkkkkkk kkbkk rrkkkkkkkkkk",  //
      "kkkrrrrkkkkkkkk kkkkkkkkkkk kkkkk rrkkkkkkkkkk",  //
      "kkrrrrrkkkkkkkk kkkkkkkkkkk kkkkk rrkkrrkkkkkk",  //
      "kkrrrrrrkkkkkkk kkkkkrkkkkk kkkkk kkkkrrrkkkkk",  //
      "kkrrrrrrkkkkkkk kkkkrrrkkkk kkkkk rrkkrrrrkkkk",  //
      "krrrrrrrrkkkkkk kkkkrrrkkkk kkkkk rrkkrrrrrkkk",  //
      "krrrrrrrrkkkkkk kkkrrrrrkkk kkkkk rrkkrrrrrrkk",  //
      "kkkrrrkkkkkkkkk kkrrrrrrrkk kkkkk kkkkrrrrrkkk",  //
      "kkkkrrrrrrrrrrk kkrrrrrrrkk kkkkk kkkkrrrrkkkk",  //
      "kkkkrrrrrrrrrrk krrrrrrrrrk kkkkk kkkkrrrkkkkk",  //
      "kkkkkkrrrrrrrrk krrrrrrrrrk kkkkk kkkkrrkkkkkk",  //
  };
  for (std::size_t y = 0; y < marks.size(); ++y) {
    const std::string drawn = left[y].substr(3, 15) + ' ' + left[y].substr(289);
    EXPECT_EQ(drawn + ' ' + right[y].substr(2, 5) + ' ' + right[y].substr(28), marks[y]);
  }
  const Rows plain = Drawing(Add(0, Text(1515)), 300);
  EXPECT_EQ(left[4].substr(25, 200), plain[4].substr(25, 200));
  const BitmapPtr green = Paint(Rows(24, "ggg"));
  const SkinBitmap element{green.get()};
  EXPECT_EQ(Drawing(back, 40, &element)[15], std::string(22, 'k') + "gggggggkkkkkkkkkkk");
  const Rows line = Drawing(Add(kItemSeparator | kItemSubmenu, "|", file.Path()), 42);
  EXPECT_EQ(line[8], std::string(25, 'k') + "rrr" + std::string(14, 'k'));
  EXPECT_EQ(line[9] + line[7] + line[10], line[8] + std::string(84, 'k'));
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

TEST_F(MenuWidgets, HintsAreWrappedForTheirPanel) {
  HintPanel panel;
  panel.Resize(24 + 10 * 8, 50);  // lines of ten characters
  panel.UpdateLayout();
  const auto& view = static_cast<const TextView&>(*panel.Children().front());
  const std::pair<const char*, Rows> rows[] = {
      {"four five", {"four five "}},
      {"four five6 seven", {"four ", "five6 ", "seven "}},
      {"a\n b  \n\n\t\fc", {"a b c "}},
      {"much-too-long x", {"", "much-too-long ", "x "}},
      {"", {}},
  };
  for (const auto& [hint, lines] : rows) {
    MenuItem item;
    item.hintText.Assign(hint);
    const MenuEntry entry{item, icons_};
    panel.ShowHint(&entry, panel.GetFont(kNormal));
    EXPECT_EQ(view.Lines(), lines) << hint;
  }
}

TEST_F(MenuWidgets, HintsNeedNoHorizontalScrollBarBesideAWideVerticalOne) {
  MenuItem item;
  item.hintText.Assign("1 3 5 7 9 1 3 5 7 9 1 3 5 7 9 1 3 5 7 9 1 3 5 7 9 1 3 5 7 9 1 3 5 7 9");
  const MenuEntry entry{item, icons_};
  for (const auto& [width, margin] : {std::pair{16, 4}, {21, 3}, {24, 0}}) {
    Skin skin("default");
    skin.bitmaps[SCROLL_VBACK]->Create(width, 9);
    HintPanel panel;
    auto& view = static_cast<TextView&>(*panel.Children().front());
    view.SetSkin(&skin);
    panel.Resize(24 + 10 * 8, 50);
    panel.SendMessage(MSG_INITSKIN);
    panel.ShowHint(&entry, panel.GetFont(kNormal));
    EXPECT_TRUE(view.VerticalShown());
    EXPECT_FALSE(view.HorizontalShown()) << width;
    EXPECT_EQ(view.VisibleWidth(), 104 - width - margin);
  }
}

TEST_F(MenuWidgets, PicturesAreCentredOrCut) {
  const TempFile file{"", "back.bmp"};
  save_bitmap(file.Path(), Paint({"rgb", "ycw"}).get(), nullptr);
  CenteredImage image;
  image.SetBitmap(file.Path());
  const auto drawing = [&image](int width, int height) {
    const BitmapPtr bitmap = Paint(Rows(height, std::string(width, 'k')));
    Bitmap canvas{bitmap.get()};
    image.Resize(width, height);
    image.Draw(canvas);
    return Picture(bitmap.get());
  };
  EXPECT_EQ(drawing(6, 5), Rows({"kkkkkk", "krgbkk", "kycwkk", "kkkkkk", "kkkkkk"}));
  EXPECT_EQ(drawing(2, 3), Rows({"rg", "yc", "kk"}));
}

}  // namespace
}  // namespace zel
