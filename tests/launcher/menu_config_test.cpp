#include "tests/support/launcher_fixture.h"

namespace zel {
namespace {

class MenuConfigTest : public LauncherFixture {
 protected:
  void Read(const std::string& content) {
    WriteFile("menu.cfg", content);
    config_.Read("menu.cfg");
  }
  // The item of a menu of one line, without a colour where it is not kept.
  const MenuItem& Item(const std::string& keys) {
    static const MenuItem none;
    Read("[MENU_CONFIGURATION]\nLinesNumber=1\nHintFile=hints\nHintFile.en=hints.en\n[LINE1]\n" +
         keys);
    return config_.items.empty() ? none : *config_.items[0];
  }

  MenuConfig config_;
};

TEST_F(MenuConfigTest, TheSectionOfTheResolutionWins) {
  for (auto [width, height, left] :
       {std::tuple{640, 480, 640}, {800, 600, 800}, {1280, 1024, 1}, {1024, 768, 1024}}) {
    settings.screenWidth = width;
    settings.screenHeight = height;
    Read(
        "[MENU_CONFIGURATION]\nMenuLeft=1\nMenuTop=2\nHintTop=3\nBackground=general\n"
        "[MENU_CONFIGURATION_640x480]\nMenuLeft=640\n[MENU_CONFIGURATION_800x600]\nMenuLeft=800\n"
        "[MENU_CONFIGURATION_1024x768]\nMenuLeft=1024\nMenuTop=-1\nHintTop=0\nBackground=own\n");
    EXPECT_EQ(layoutValues.menuLeft, left);
    EXPECT_STREQ(config_.background, left == 1024 ? "own" : "general");
  }
  EXPECT_EQ(layoutValues.menuTop, 2) << "-1 counts as not given";
  EXPECT_EQ(layoutValues.hintTop, 0);
}

TEST_F(MenuConfigTest, EveryPlaceHasAKeyAndADefault) {
  const auto places = [] {
    const LayoutValues& at = layoutValues;
    std::string text;
    for (const int value :
         {at.menuLeft, at.menuTop, at.menuWidth, at.menuHeight, at.hintLeft, at.hintTop,
          at.hintWidth, at.hintHeight, at.progressX, at.progressY, at.progressW})
      text += std::to_string(value) + ' ';
    return text;
  };
  Read("");
  EXPECT_EQ(places(), "79 180 340 297 413 180 287 297 82 490 614 ");
  EXPECT_STREQ(config_.background, "");
  Read(
      "[MENU_CONFIGURATION]\nMenuLeft=1\nMenuTop=2\nMenuWidth=3\nMenuHeight=4\nHintLeft=5\n"
      "HintTop=6\nHintWidth=7\nHintHeight=8\nProgressX=9\nProgressY=10\nProgressW=11\n");
  EXPECT_EQ(places(), "1 2 3 4 5 6 7 8 9 10 11 ");
}

TEST_F(MenuConfigTest, LevelsInheritTheLayoutAndNothingElse) {
  Read(
      "[MENU_CONFIGURATION]\nProgressW=1\nMenuWidth=2\nMenuTitle=T\nHintTitle=H\nLinesNumber=1\n"
      "BacklineColor=1,2,3\n[LINE1]\nTitle=x\n");
  config_.CurrentLevel().index = 5;
  EXPECT_EQ(launcherState.backLineColor, Color(1, 2, 3));
  WriteFile("inner.cfg", "[MENU_CONFIGURATION]\nMenuWidth=3\nBacklineColor=1,2\n[LINE1]\nTitle=x");
  config_.Read("inner.cfg");
  EXPECT_EQ(layoutValues.progressW, 1);
  EXPECT_EQ(launcherState.backLineColor, Color(200, 100, 100));
  EXPECT_TRUE(config_.menuTitle.IsEmpty() && config_.hintTitle.IsEmpty() && config_.items.empty());
  config_.Read("/no/such/file");
  for (int i = 0; i < 3; ++i) config_.Read(nullptr);
  EXPECT_EQ(config_.Depth(), 1);
  EXPECT_EQ(config_.CurrentLevel().index, 5);
  EXPECT_EQ(config_.items.size(), 1u);
  EXPECT_EQ(layoutValues.menuWidth, 2);
}

TEST_F(MenuConfigTest, KindAndColourFollowFromTheKeys) {
  const std::tuple<const char*, std::uint32_t, Color> rows[] = {
      {"", 0, Color(0, 0, 0)},
      {"Color=10, 20,30\nDisable=-1\n", 0, Color(10, 20, 30)},
      {"Color=10,-1,30\n", 0, Color(0, 0, 0)},
      {"Separator=-1\n", kItemSeparator, Color(140, 140, 140)},
      {"Separator=1\nColor=1,2,3\n", kItemSeparator, Color(1, 2, 3)},
      {"Separator=1\nSubmenu=s\n", kItemSeparator | kItemSubmenu, Color(140, 140, 140)},
      {"Disable=1\nColor=1,2,3\nSubmenu=s\n", kItemDisabled | kItemSubmenu, Color(150, 150, 150)},
  };
  for (const auto& [keys, flags, color] : rows) {
    const MenuItem& item = Item(std::string{"Title=t\n"} + keys);
    EXPECT_EQ(item.flags, flags) << keys;
    EXPECT_EQ(item.color, color) << keys;
  }
  EXPECT_STREQ(Item("Title=" + std::string(2000, 'x')).title, std::string(1023, 'x').c_str());
}

TEST_F(MenuConfigTest, OnlyItemsThatShowAreKept) {
  for (const char* keys : {"Icon=i", "Separator=1", "Title=t\nShowIfFileExists=."})
    EXPECT_TRUE(Item(keys).color.IsSet()) << keys;
  for (const char* keys : {"Separator=0\nSubmenu=s", "Title=t\nShowIfFileExists=/no/such/file"})
    EXPECT_FALSE(Item(keys).color.IsSet()) << keys;
  Read("[MENU_CONFIGURATION]\nLinesNumber=2000000000\n[LINE3]\nTitle=3\n[LINE1]\nTitle=1\n");
  ASSERT_EQ(config_.items.size(), 2u);
  EXPECT_STREQ(config_.items[1]->title, "3");
  Read("[MENU_CONFIGURATION]\nLinesNumber=2\n[LINE3]\nTitle=3\n[LINE1]\nTitle=1\n");
  EXPECT_EQ(config_.items.size(), 1u);
}

// Without a catalogue the suffix of every language is "en".
TEST_F(MenuConfigTest, OtherLanguagesThanEnglishHaveKeysOfTheirOwn) {
  WriteFile("hints", "[h]\nplain\n[end:h]\n");
  WriteFile("hints.en", "[h]\ntranslated\n[end:h]\n");
  const std::string keys = "Title=plain\nTitle.en=translated\nHintSection=h\n";
  EXPECT_STREQ(Item(keys).title, "plain");
  WriteFile("i18n", "LANG=de\n");
  EXPECT_STREQ(Item(keys).title, "translated");
  EXPECT_STREQ(Item(keys).hintText, "translated");
  EXPECT_STREQ(Item("Title.en=translated").title, "translated");
  EXPECT_STREQ(Item("Title=plain\nTitle.en=").title, "plain");
  std::filesystem::remove("hints.en");
  EXPECT_STREQ(Item(keys).hintText, "plain");
}

}  // namespace
}  // namespace zel
