#include "launcher/result_files.h"

#include <climits>

#include "tests/support/launcher_fixture.h"

namespace zel {
namespace {

using ResultFilesTest = LauncherFixture;
using Indices = std::vector<int>;

TEST_F(ResultFilesTest, LeaveTheStringAndTheWayInFilesOfTheirOwn) {
  launcherState.exitCode = 7;
  launcherState.outputString.Assign("scan --all");
  MenuConfig config;
  for (const int index : {4, 2, 13}) {
    config.Read("menu.cfg");
    config.CurrentLevel().index = index;
  }
  WriteResultFiles(config);
  EXPECT_EQ(ReadFile("output.txt") + ReadFile("menupos.txt"), "scan --all\n4,2,13");
  std::filesystem::create_hard_link("menupos.txt", "other");
  launcherState.exitCode = 0;
  WriteResultFiles(config);
  EXPECT_EQ(ReadFile("other"), "4,2,13");
  EXPECT_TRUE(ReadMenuPosition().empty());
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
