#include "launcher/result_files.h"

#include <unistd.h>

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
  EXPECT_EQ(WriteResultFiles(config), 0);
  EXPECT_EQ(ReadFile("output.txt") + ReadFile("menupos.txt"), "scan --all\n4,2,13");
  std::filesystem::create_hard_link("menupos.txt", "other");
  EXPECT_TRUE(ReadMenuPosition().empty());
  launcherState.exitCode = 0;
  EXPECT_EQ(WriteResultFiles(config), 0);
  EXPECT_EQ(ReadFile("other"), "4,2,13");
  EXPECT_EQ(ReadMenuPosition(), Indices{0});
  if (chown("menupos.txt", 1, 1) == 0) {
    EXPECT_TRUE(ReadMenuPosition().empty()) << "of another user";
  }
}

TEST_F(ResultFilesTest, WhatWasPlantedIsReplacedAndNeverFollowed) {
  WriteFile("target", "kept");
  std::filesystem::create_directory("full");
  for (const char* target : {"target", "created", "/dev/null"}) {
    std::filesystem::create_symlink(target, "output.txt");
    std::filesystem::create_symlink(target, "menupos.txt");
    EXPECT_TRUE(ReadMenuPosition().empty());
    EXPECT_EQ(WriteResultFiles({}), 0);
    EXPECT_EQ(ReadFile("target") + ReadFile("output.txt"), "kept\n");
    EXPECT_FALSE(std::filesystem::exists("created"));
    EXPECT_EQ(DeleteOutputFile(), 0);
    EXPECT_FALSE(std::filesystem::exists("output.txt"));
    std::filesystem::remove("menupos.txt");
  }
  for (const char* path : {"full", "target/file", "none/file", "none"}) {
    paths.outputFile = path;
    EXPECT_EQ(DeleteOutputFile(), 0) << path << " is no output of an earlier run";
    EXPECT_EQ(WriteResultFiles({}) != 0, path != std::string{"none"}) << path;
  }
  std::filesystem::remove("none");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator{"."}, {}), 3) << "no temporary file";
}

TEST_F(ResultFilesTest, ALongWayIsCutBetweenItsLevels) {
  launcherState.exitCode = 1;
  MenuConfig config;
  for (int level = 0; level < 100; ++level) {
    config.Read("menu.cfg");
    config.CurrentLevel().index = 10 + level % 2;
  }
  WriteResultFiles(config);
  EXPECT_EQ(ReadFile("menupos.txt").size(), 86 * 3 - 1);
  const Indices indices = ReadMenuPosition();
  EXPECT_EQ(indices.size(), 86);
  EXPECT_EQ(indices.back(), 11);
}

TEST_F(ResultFilesTest, OnlyWhatAKilledRunLeftIsRemoved) {
  const std::string temporary = "output.txt.zel-a1B2c3", kept = "output.txt.backup";
  for (const char* name : {"output.txt", "menupos.txt.zel-backup"}) WriteFile(name, "x");
  for (const std::string& name : {temporary, temporary + "4", kept}) WriteFile(name, "x");
  std::filesystem::create_symlink("output.txt", "output.txt.zel-link00");
  DeleteTemporaryFiles();
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator{"."}, {}), 4);
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
