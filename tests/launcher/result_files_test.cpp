#include "launcher/result_files.h"

#include <sys/stat.h>

#include <climits>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "launcher/menu_config.h"
#include "launcher/paths.h"
#include "launcher/state.h"
#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

namespace fs = std::filesystem;
using Indices = std::vector<int>;

class ResultFilesTest : public AllegroFixture {
 protected:
  ResultFilesTest() {
    paths.outputFile = output_.c_str();
    paths.positionFile = position_.c_str();
  }
  ~ResultFilesTest() override {
    paths = Paths{};
    launcherState = LauncherState{};
  }

  static void Write(int exitCode, const char* text, const Indices& indices) {
    launcherState.exitCode = exitCode;
    launcherState.outputString.Assign(text);
    MenuConfig config;
    for (const int index : indices) {
      config.levels.push_back(std::make_unique<MenuLevel>());
      config.CurrentLevel().index = index;
    }
    WriteResultFiles(config);
  }

  const TempDir directory_;
  const std::string output_ = directory_.Path("output.txt");
  const std::string position_ = directory_.Path("menupos.txt");
};

TEST_F(ResultFilesTest, LeaveTheStringAndTheWay) {
  Write(7, "scan --all", {4, 2, 13});
  EXPECT_EQ(ReadFile(output_), "scan --all\n");
  EXPECT_EQ(ReadFile(position_), "4,2,13");
  EXPECT_EQ(ReadMenuPosition(), Indices({4, 2, 13}));
  Write(0, "", {4, 2});
  EXPECT_EQ(ReadFile(output_), "\n");
  EXPECT_EQ(ReadFile(position_), "0");
  DeleteOutputFile();
  DeleteOutputFile();
  EXPECT_FALSE(fs::exists(output_));
  EXPECT_TRUE(fs::exists(position_));
}

TEST_F(ResultFilesTest, WriteNothingButPlainFiles) {
  const std::string target = directory_.Write("target", "1,2");
  const std::vector<void (*)(const std::string&, const std::string&)> obstacles = {
      [](const std::string& at, const std::string&) { mkfifo(at.c_str(), 0600); },
      [](const std::string& at, const std::string&) { fs::create_directory(at); },
      [](const std::string& at, const std::string& to) { fs::create_symlink(to, at); },
      [](const std::string& at, const std::string& to) { fs::create_hard_link(to, at); },
      [](const std::string& at, const std::string& to) { fs::create_symlink(to + "new", at); },
  };
  for (const auto& block : obstacles) {
    block(position_, target);
    Write(1, "one", {3});
    EXPECT_EQ(ReadFile(output_), "one\n");
    EXPECT_TRUE(ReadMenuPosition().empty());
    fs::remove(position_);

    fs::remove(output_);
    block(output_, target);
    Write(1, "two", {3});
    EXPECT_EQ(ReadFile(position_), "3");
    fs::remove(output_);
    fs::remove(position_);
    EXPECT_EQ(ReadFile(target), "1,2");
    EXPECT_FALSE(fs::exists(target + "new"));
  }
}

TEST_F(ResultFilesTest, PositionsAreNumbersOfTheFirstLine) {
  struct Row {
    const char* text;
    Indices indices;
  };
  const Row rows[] = {
      {"3,1", {3, 1}},
      {" \t3 , 1\t\r\n7", {3, 1}},
      {",,3,,,1,", {3, 1}},
      {"\n3,1", {}},
      {"", {}},
      {"-7,+2,4x,x", {-7, 2, 4, 0}},
      {"99999999999999999999,-99999999999999999999", {INT_MAX, INT_MIN}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ParseMenuPosition(row.text), row.indices) << row.text;
    WriteFile(position_, row.text);
    EXPECT_EQ(ReadMenuPosition(), row.indices) << row.text;
  }
  std::string tooLong;
  for (int i = 0; i < 5000; ++i) tooLong += "12,";
  WriteFile(position_, tooLong);
  EXPECT_EQ(ReadMenuPosition().size(), 87u) << "in 259 characters";
}

}  // namespace
}  // namespace zel
