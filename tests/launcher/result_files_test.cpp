#include "launcher/result_files.h"

#include <climits>

#include "tests/support/launcher_fixture.h"

namespace zel {
namespace {

using Indices = std::vector<int>;

using ResultFilesTest = LauncherFixture;

TEST_F(ResultFilesTest, LeaveTheStringAndTheWayInFilesOfTheirOwn) {
  launcherState.exitCode = 7;
  launcherState.outputString.Assign("scan --all");
  MenuConfig config;
  for (const int index : {4, 2, 13}) {
    config.Read("menu.cfg");
    config.CurrentLevel().index = index;
  }
  WriteResultFiles(config);
  EXPECT_EQ(ReadFile("output.txt"), "scan --all\n");
  EXPECT_EQ(ReadFile("menupos.txt"), "4,2,13");
  EXPECT_EQ(ReadMenuPosition(), Indices({4, 2, 13}));
  launcherState.exitCode = 0;
  std::filesystem::create_hard_link("menupos.txt", "other");
  WriteResultFiles(config);
  EXPECT_EQ(ReadFile("other"), "4,2,13");
  EXPECT_TRUE(ReadMenuPosition().empty());
}

TEST_F(ResultFilesTest, PositionsAreNumbersOfTheFirstLine) {
  const std::pair<const char*, Indices> rows[] = {
      {"3,1", {3, 1}},
      {" \t3 , 1\t\r\n7", {3, 1}},
      {",,3,,,1,", {3, 1}},
      {"\n3,1", {}},
      {"", {}},
      {"-7,+2,4x,x", {-7, 2, 4, 0}},
      {"99999999999999999999,-99999999999999999999", {INT_MAX, INT_MIN}},
  };
  for (const auto& [text, indices] : rows) {
    WriteFile("menupos.txt", text);
    EXPECT_EQ(ReadMenuPosition(), indices) << text;
  }
  WriteFile("menupos.txt", std::string(9000, '1').replace(2, 1, ",") + ",1");
  EXPECT_EQ(ReadMenuPosition(), Indices({11, INT_MAX})) << "259 characters count";
}

}  // namespace
}  // namespace zel
