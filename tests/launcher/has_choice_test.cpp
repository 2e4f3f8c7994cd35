#include "launcher/has_choice.h"

#include "tests/support/launcher_fixture.h"

namespace zel {
namespace {

using HasChoiceTest = LauncherFixture;

TEST_F(HasChoiceTest, AsksForALineThatLeadsToAnEnd) {
  const std::tuple<bool, const char*, const char*> rows[] = {
      {true, "+1", "Title=x"},
      {true, "2", "Icon=x"},
      {true, "1", "Title=x\nDisable=0\nDisable=1\nWaitForFile=/never"},
      {true, "1", "Title=x\n[LINE2]\nTitle=beyond"},
      {true, "2", "Title=x\nDisable=1\n[LINE2]\nTitle=x"},
      {true, "1", "Title=x\nSubmenu=other.cfg"},
      {false, "0", "Title=x"},
      {false, "08", "Title=x"},
      {false, "1", "Title="},
      {false, "1", "Title=x\nDisable=0x1"},
      {false, "1", "Title=x\nSeparator=1"},
      {false, "1", "Title=x\nShowIfFileExists=none"},
      {false, "1", "Title=x\nSubmenu=none.cfg"},
      {false, "1", "Title=x\nSubmenu=circle.cfg"},
      {false, "1", "Disable=1\n[LINE2]\nTitle=beyond"},
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
  EXPECT_FALSE(HasChoice("none.cfg"));
}

}  // namespace
}  // namespace zel
