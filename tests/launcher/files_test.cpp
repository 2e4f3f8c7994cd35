// What the launcher reads and writes.
#include <unistd.h>

#include <climits>

#include "launcher/has_choice.h"
#include "launcher/hint_file.h"
#include "launcher/language.h"
#include "launcher/result_files.h"
#include "tests/support/launcher_fixture.h"

namespace zel {
namespace {

const std::string kHead = "[MENU_CONFIGURATION]\nHintFile=hints\nHintFile.en=hints.en\n";

std::string Words(const std::vector<const char*>& texts, const std::vector<int>& numbers,
                  const Color& color) {
  std::string words;
  for (const char* text : texts)
    if (*text != '\0') words += std::string{text} + ' ';
  for (const int number : numbers) words += std::to_string(number) + ' ';
  return words + std::to_string(getr(color)) + ',' + std::to_string(getg(color)) + ',' +
         std::to_string(getb(color));
}

class MenuConfigTest : public LauncherFixture {
 protected:
  MenuConfigTest() { UseDepth(32); }

  // Ground, titles, places and the colour of the way back.
  std::string Screen(const std::string& content) {
    WriteFile("menu.cfg", content);
    config_.Read("menu.cfg");
    const LayoutValues& at = launcherState.layoutValues;
    return Words({config_.background, config_.menuTitle, config_.hintTitle,
                  launcherState.hasBackLineColor ? "own" : ""},
                 {at.menuLeft, at.menuTop, at.menuWidth, at.menuHeight, at.hintLeft, at.hintTop,
                  at.hintWidth, at.hintHeight, at.progressX, at.progressY, at.progressW},
                 launcherState.backLineColor);
  }
  // All that the items are: exit code, time limit and colour last.
  std::string Items(const std::string& lines, int count = 3) {
    Screen(kHead + "LinesNumber=" + std::to_string(count) + "\n[LINE1]\n" + lines);
    std::string text;
    for (const auto& item : config_.items)
      text += (text.empty() ? "" : "; ") +
              Words({item->title, item->icon, item->submenu, item->exitString, item->hintText,
                     item->waitForFile, item->waitWhileFile, item->waitText, item->showIfFile,
                     item->flags & kItemSeparator ? "separator" : "",
                     item->flags & kItemSubmenu ? "menu" : "",
                     item->flags & kItemDisabled ? "off" : "", item->hasOwnColor ? "own" : ""},
                    {item->exitCode, item->timeout}, item->color);
    return text;
  }
  static std::string Hint(const std::string& content) {
    WriteFile("hints", content);
    return HintFile{"hints"}.Fill("a");
  }

  MenuConfig config_;
};

TEST_F(MenuConfigTest, LevelsInheritPlacesWhichAreThoseOfTheResolution) {
  const std::string outer =
      kHead +
      "MenuLeft=1\nMenuTop=2\nMenuWidth=3\nMenuHeight=4\nHintLeft=5\nHintTop=6\nHintWidth=7\n"
      "HintHeight=8\nProgressX=9\nProgressY=10\nProgressW=11\nBackground=all\nMenuTitle=M\n"
      "HintTitle=H\nBacklineColor=1,2,3\nLinesNumber=1\n[LINE1]\nTitle=x\n"
      "[MENU_CONFIGURATION_640x480]\nMenuLeft=640\n[MENU_CONFIGURATION_800x600]\nMenuLeft=800\n"
      "[MENU_CONFIGURATION_1024x768]\nMenuLeft=1024\nMenuTop=-1\nHintTop=0\nBackground=own\n";
  EXPECT_EQ(Screen(""), "79 180 340 297 413 180 287 297 82 490 614 200,100,100");
  for (const auto& [width, height, screen] :
       {std::tuple{640, 480, "all M H own 640 2 3 4 5 6 7 8 9 10 11 1,2,3"},
        {800, 600, "all M H own 800 2 3 4 5 6 7 8 9 10 11 1,2,3"},
        {1024, 768, "own M H own 1024 2 3 4 5 0 7 8 9 10 11 1,2,3"},
        {800, 480, "all M H own 1 2 3 4 5 6 7 8 9 10 11 1,2,3"}}) {
    settings.screenWidth = width;
    settings.screenHeight = height;
    EXPECT_EQ(Screen(outer), screen);
  }
  config_.CurrentLevel().index = 5;
  EXPECT_EQ(Screen(kHead + "MenuWidth=30\nBacklineColor=1,2\n[LINE1]\nTitle=x\n"),
            "1 2 30 4 5 6 7 8 9 10 11 200,100,100");
  EXPECT_TRUE(config_.items.empty());
  config_.Read("/no/such/file");
  std::string closed;
  for (int i = 0; i < 7; ++i) {
    config_.Read(nullptr);
    closed +=
        std::to_string(config_.Depth()) + '/' + std::to_string(config_.CurrentLevel().index) + ' ';
  }
  EXPECT_EQ(closed, "6/0 5/5 4/0 3/0 2/0 1/0 1/0 ");
}

TEST_F(MenuConfigTest, TextsOfTheScreenAreThoseOfTheOuterMenuWhereThereIsNone) {
  const auto read = [this](const std::string& content) {
    Screen(content);
    std::string seen;
    for (const ScreenText* text :
         {&config_.CurrentLevel().heading, &config_.CurrentLevel().keyHelp})
      seen += Words({text->text}, {text->left, text->top, text->font}, text->color) + "; ";
    return seen;
  };
  EXPECT_EQ(read("[MENU_CONFIGURATION]\nKeyHelpFont=1\n"),
            "79 40 2 255,255,255; 79 80 1 255,255,255; ");
  EXPECT_EQ(read("[MENU_CONFIGURATION]\nHeading=H\nHeading.en=T\nHeadingLeft=1\nHeadingTop=2\n"
                 "HeadingFont=3\nHeadingColor=4,5,6\nKeyHelp=K\nKeyHelpTop=7\nHintTitle.en=t\n"
                 "[MENU_CONFIGURATION_640x480]\nHeadingTop=8\nKeyHelpColor=9,9,9\n"),
            "H 1 8 3 4,5,6; K 79 7 1 9,9,9; ");
  WriteFile("i18n", "LANG=de\n");
  EXPECT_EQ(read("[MENU_CONFIGURATION]\nHeading=H\nHeading.en=T\nKeyHelp=-\nHeadingLeft=0\n"),
            "T 0 8 3 4,5,6; 79 7 1 9,9,9; ");
  config_.Read("/no/such/file");
  config_.ReadScreenAgain();
  EXPECT_STREQ(config_.CurrentLevel().heading.text, "T");
  config_.Read(nullptr);
  EXPECT_EQ(Screen("[MENU_CONFIGURATION]\nMenuTitle=M\nMenuTitle.en=m\nHintTitle.en=h\n"
                   "Background=b\nBackground.en=c\n[MENU_CONFIGURATION_640x480]\nBackground=d\n")
                .substr(0, 5),
            "d m h");
  EXPECT_EQ(Screen("[MENU_CONFIGURATION]\nBackground=b\nBackground.en=c\n").substr(0, 2), "c ");
  config_.Read(nullptr);
  config_.Read(nullptr);
  EXPECT_STREQ(config_.CurrentLevel().heading.text, "T");
}

TEST_F(MenuConfigTest, ItemsAreWhatTheirKeysSayAndKeptWhereTheyShow) {
  WriteFile("hints", "[h]\nplain\n[end:h]\n");
  const std::pair<const char*, const char*> rows[] = {
      {"Title=t\nIcon=i\nSubmenu=s\nExCode=7\nExString=e\nHintSection=h\nWaitForFile=f\n"
       "WaitWhileFile=w\nTimeout=9\nShowIfFileExists=.\n",
       "t i s e plain f w . menu 7 9 0,0,0"},
      {"Title=t\nColor=10, 20,30\nDisable=-1\n", "t own 0 0 10,20,30"},
      {"Icon=i\nColor=10,-1,30\n", "i 0 0 0,0,0"},
      {"Separator=-1\n", "separator 0 0 140,140,140"},
      {"Separator=1\nColor=1,2,3\n", "separator own 0 0 1,2,3"},
      {"Separator=1\nSubmenu=s\n", "s separator menu 0 0 140,140,140"},
      {"Title=t\nDisable=1\nColor=1,2,3\nSubmenu=s\n", "t s menu off 0 0 150,150,150"},
      {"Separator=0\nSubmenu=s\n", ""},
      {"Title=t\nShowIfFileExists=/no/such/file\n", ""},
      {"Title=1\n[LINE4]\nTitle=4\n[LINE3]\nTitle=3\n", "1 0 0 0,0,0; 3 0 0 0,0,0"}};
  for (const auto& [keys, items] : rows) EXPECT_EQ(Items(keys), items) << keys;
  EXPECT_EQ(Items("Title=t\n", 2'000'000'000), "t 0 0 0,0,0");
  EXPECT_EQ(Items("Title=" + std::string(2000, 'x')), std::string(1023, 'x') + " 0 0 0,0,0");
}

// Without a catalogue the suffix of every language is "en".
TEST_F(MenuConfigTest, OtherLanguagesThanEnglishHaveKeysOfTheirOwn) {
  WriteFile("hints", "[h]\nplain\n[end:h]\n");
  WriteFile("hints.en", "[h]\ntranslated\n[end:h]\n");
  const std::string keys = "Title=p\nTitle.en=t\nHintSection=h\nWaitText=P\nWaitText.en=T\n";
  EXPECT_EQ(Items(keys), "p plain P 0 0 0,0,0");
  WriteFile("i18n", "LANG=de\n");
  EXPECT_EQ(Items(keys), "t translated T 0 0 0,0,0");
  EXPECT_EQ(Items("Title.en=t"), "t 0 0 0,0,0");
  EXPECT_EQ(Items("Title=p\nTitle.en="), "p 0 0 0,0,0");
  std::filesystem::remove("hints.en");
  EXPECT_EQ(Items(keys), "t plain T 0 0 0,0,0");
}

// Hint files are in the encoding of the language all the same.
TEST_F(MenuConfigTest, TextsHaveLettersOfAllLanguagesWhereTheSettingsWantThem) {
  WriteFile("i18n", "LANG=ru\n");
  WriteFile("hints.en", "[h]\n\xD1\n[end:h]\n");
  for (const auto& [settings, items] :
       {std::pair{"Other", "\xD1^\xE9^ \xD1 0 0 0,0,0"}, {"Toolkit", "я中Иé я 0 0 0,0,0"}}) {
    WriteFile("zel.cfg", "[Toolkit]\nzoom=1\n[" + std::string{settings} + "]\nunicode=1\n");
    SetupEncoding();
    EXPECT_EQ(Items("Title.en=я中Иé\nHintSection=h\n"), items) << settings;
  }
  unsetenv("LANGUAGE");
}

TEST_F(MenuConfigTest, HasAChoiceWithALineThatLeadsToAnEnd) {
  const std::tuple<bool, const char*, const char*> rows[] = {
      {true, "1", "Title=x\nDisable=0\nDisable=1\nWaitForFile=/never"},
      {true, "2", "Title=x\nDisable=1\n[LINE2]\nTitle=x"},
      {true, "1", "Title=x\nSubmenu=other.cfg"},
      {false, "1", "Title=x\nSeparator=1"},
      {false, "1", "Title=x\nSubmenu=none.cfg"},
      {false, "1", "Title=x\nSubmenu=circle.cfg"},
  };
  WriteFile("other.cfg", "[MENU_CONFIGURATION]\nLinesNumber=1\n[LINE1]\nTitle=x");
  WriteFile("circle.cfg",
            "[MENU_CONFIGURATION]\nLinesNumber=2\n[LINE1]\nTitle=x\nSubmenu=circle.cfg\n"
            "[LINE2]\nTitle=x\nSubmenu=menu.cfg");
  for (const auto& [expected, lines, keys] : rows) {
    WriteFile("menu.cfg",
              std::string{"[MENU_CONFIGURATION]\nLinesNumber="} + lines + "\n[LINE1]\n" + keys);
    EXPECT_EQ(HasChoice(kMainMenu), expected) << lines << "\n" << keys;
  }
}

TEST_F(MenuConfigTest, AHintIsTheJoinedLinesOfASection) {
  const std::pair<const char*, const char*> rows[] = {
      {"before\n [a]\t\n  one \n\ttwo\n[End: whatever\nthree\n", "one two"},
      {"[A]\nno\n[end:A]\n[a ]\nno\n[end:]\n[a]\nyes\n[END:A]", "yes"},
      {"[a]\nfirst\n[end:a]\n[a]\nsecond\n[end:a]\n", "first"},
      {"[a]\n[b]\n[ending\nend:a]\n[eNd:\nmore\nlast", "[b] [ending end:a]"},
      {"[a]\n\n\none\n\n\n[end:a]\n", "\n\n one"},
      {"[a]\rone\r\ntwo\n\rthree\r\n\r\nfour\n[end:a]\n", "one two three\n four"},
      {"[a]\none\ntwo", "one"},
      {"[a]\none\ntwo\n\n", "one two"},
      {"[a]", ""}};
  for (const auto& [content, hint] : rows) EXPECT_EQ(Hint(content), hint) << content;
  std::string sections;
  WriteFile("hints", "[end:]\n[a]\n[b]\n[end:b]\n[]\n[c\nd]\n");
  for (const auto& [name, isClosed, line] : HintFile{"hints"}.Sections())
    sections += std::to_string(line) + ' ' + name + (isClosed ? " closed " : " open ");
  EXPECT_EQ(sections, "2 a open 3 b closed ");
}

TEST_F(MenuConfigTest, LongHintsAreCutAtAWholeCharacter) {
  const std::string line(2000, 'x');
  const std::string almost = line + '\n' + line + '\n' + line.substr(0, 93);
  EXPECT_EQ(Hint("[a]\n" + almost + "0\n1\n[end:]").size(), 4096u);
  // With 4095 characters there is room for one more, but not for the space before it.
  EXPECT_EQ(Hint("[a]\n" + almost + "\nyz\nz\n[end:]").substr(4090), "xxxxxy");
  EXPECT_EQ(Hint("[a]\n" + std::string(4000, '\n') + line + "\n1\n[end:]").size(), 4096u);
  EXPECT_EQ(Hint("[a]\n" + line + line + "\n1\n[end:]"), line + line.substr(0, 47) + " 1");

  std::string umlauts, content = "[a]\n";
  for (int i = 0; i < 1500; ++i) umlauts += "\xC3\xA4";
  for (int i = 0; i < 5; ++i) content += umlauts + '\n';
  content += "[end:]";
  EXPECT_EQ(ustrlen(Hint(content).c_str()), 4096);
  EXPECT_EQ(Hint(content).substr(0, 2050), umlauts.substr(0, 2046) + " \xC3\xA4\xC3");
  set_uformat(U_ASCII_CP);  // where the same bytes are twice as many characters
  EXPECT_EQ(Hint(content).size(), 4096u);
}

using Indices = std::vector<int>;

class ResultFilesTest : public LauncherFixture {
 protected:
  // After a choice on this way: the string and the way as their files have them.
  static std::string Write(int exitCode, const Indices& way) {
    launcherState.exitCode = exitCode;
    launcherState.outputString.Assign("scan --all");
    MenuConfig config;
    for (const int index : way) {
      config.Read("menu.cfg");
      config.CurrentLevel().index = index;
    }
    EXPECT_EQ(WriteResultFiles(config), 0);
    EXPECT_EQ(std::filesystem::status("output.txt").permissions(), std::filesystem::perms{0644});
    return ReadFile("output.txt") + ReadFile("menupos.txt");
  }
  static int Files() { return std::distance(std::filesystem::directory_iterator{"."}, {}); }
};

TEST_F(ResultFilesTest, LeaveTheStringAndTheWayInFilesOfTheirOwn) {
  const auto openFiles = [] {
    return std::distance(std::filesystem::directory_iterator{"/proc/self/fd"}, {});
  };
  const auto before = openFiles();
  EXPECT_EQ(Write(7, {4, 2, 13}), "scan --all\n4,2,13");
  EXPECT_EQ(openFiles(), before);
  std::filesystem::create_hard_link("menupos.txt", "other");
  EXPECT_EQ(ReadMenuPosition(), Indices{});
  EXPECT_EQ(Write(0, {4, 2, 13}), "scan --all\n0");
  EXPECT_EQ(ReadFile("other"), "4,2,13");
  EXPECT_EQ(ReadMenuPosition(), Indices{0});
  const Indices ofAnother = chown("menupos.txt", 1, 1) == 0 ? Indices{} : Indices{0};
  EXPECT_EQ(ReadMenuPosition(), ofAnother);
}

TEST_F(ResultFilesTest, ALongWayIsCutBetweenItsLevels) {
  Indices way(86, 10);  // with two more characters it fills the line
  way.insert(way.end(), {1, 1, 1});
  Write(1, way);
  way.resize(87);
  EXPECT_EQ(ReadMenuPosition(), way);
}

TEST_F(ResultFilesTest, WhatWasPlantedIsReplacedAndNeverFollowed) {
  WriteFile("target", "kept");
  std::filesystem::create_directory("full");
  for (const char* target : {"target", "created", "/dev/null"}) {
    std::filesystem::create_symlink(target, "output.txt");
    std::filesystem::create_symlink(target, "menupos.txt");
    EXPECT_EQ(ReadMenuPosition(), Indices{});
    EXPECT_EQ(Write(1, {7}), "scan --all\n7");
    EXPECT_EQ(Files(), 4) << "nothing was created";
    EXPECT_EQ(DeleteOutputFile(), 0);
    std::filesystem::remove("menupos.txt");
    EXPECT_EQ(Files(), 2);
  }
  EXPECT_EQ(ReadFile("target"), "kept");
  for (const char* path : {"full", "target/file", "none/file", "none"}) {
    paths.outputFile = path;
    EXPECT_EQ(DeleteOutputFile(), 0) << path << " is no output of an earlier run";
    EXPECT_EQ(WriteResultFiles({}) != 0, path != std::string{"none"}) << path;
  }
  const std::string beyond(300, 'x');
  for (const char* path : {beyond.c_str(), "/proc/version"}) {
    paths.outputFile = path;
    EXPECT_NE(DeleteOutputFile(), 0) << path << " may be there still";
  }
  EXPECT_EQ(Files(), 4) << "no temporary file";
}

TEST_F(ResultFilesTest, OnlyWhatAKilledRunLeftIsRemoved) {
  const std::string temporary = "output.txt.zel-a1B2c3", kept = "output.txt.zen-a1B2c3";
  for (const char* name : {"output.txt", "menupos.txt.zel-backup", "menulook.txt.zel-a1B2c3"})
    WriteFile(name, "x");
  for (const std::string& name : {temporary, temporary + "4", kept}) WriteFile(name, "x");
  std::filesystem::create_symlink("output.txt", "output.txt.zel-link00");
  const std::string look = std::filesystem::absolute(paths.lookFile);
  paths.lookFile = look.c_str();
  DeleteTemporaryFiles();
  EXPECT_EQ(Files(), 4);
  EXPECT_TRUE(!std::filesystem::exists(temporary) && std::filesystem::exists(kept));
}

TEST_F(ResultFilesTest, PositionsAreNumbersOfTheFirstLine) {
  const std::pair<std::string, Indices> rows[] = {
      {" \t3 ,,,1, \t\r\n7", {3, 1}},
      {"\n3,1", {}},
      {"-7,+2,4x,x", {-7, 2, 4, 0}},
      {"99999999999999999999,-99999999999999999999", {INT_MAX, INT_MIN}},
      {std::string(9000, '1').replace(2, 1, ",") + ",1", {11, INT_MAX}},  // 259 characters count
  };
  for (const auto& [text, indices] : rows) EXPECT_EQ(ParseMenuPosition(text), indices) << text;
}

}  // namespace
}  // namespace zel
