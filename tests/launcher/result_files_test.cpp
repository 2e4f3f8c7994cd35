#include "launcher/result_files.h"

#include <unistd.h>

#include <climits>

#include "tests/support/launcher_fixture.h"

namespace zel {
namespace {

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
    return ReadFile("output.txt") + ReadFile("menupos.txt");
  }
  static int Files() { return std::distance(std::filesystem::directory_iterator{"."}, {}); }
};

TEST_F(ResultFilesTest, LeaveTheStringAndTheWayInFilesOfTheirOwn) {
  EXPECT_EQ(Write(7, {4, 2, 13}), "scan --all\n4,2,13");
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
  EXPECT_EQ(Files(), 4) << "no temporary file";
}

TEST_F(ResultFilesTest, OnlyWhatAKilledRunLeftIsRemoved) {
  const std::string temporary = "output.txt.zel-a1B2c3", kept = "output.txt.backup";
  for (const char* name : {"output.txt", "menupos.txt.zel-backup"}) WriteFile(name, "x");
  for (const std::string& name : {temporary, temporary + "4", kept}) WriteFile(name, "x");
  std::filesystem::create_symlink("output.txt", "output.txt.zel-link00");
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
