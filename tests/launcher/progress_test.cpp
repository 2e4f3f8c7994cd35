#include "launcher/progress.h"

#include "launcher/paths.h"
#include "tests/support/temp_files.h"
#include "tests/support/widget_fixture.h"
#include "toolkit/widgets/panel.h"

namespace zel {
namespace {

class ProgressTest : public WidgetFixture {
 protected:
  ProgressTest() { paths.progressFile = "progress"; }
  ~ProgressTest() override { paths = Paths{}; }

  WorkingDir directory;
};

TEST_F(ProgressTest, TheFileSaysHowFarThingsAre) {
  const ProgressValues hidden{0, 0, 1, 0};
  const std::string steps = "[Progress]\nStepNumber=10\nCurrentStep=4\n";
  const std::pair<std::string, ProgressValues> rows[] = {
      {"", hidden},  // without a file
      {steps + "ProgressInterval=250\n", {10, 4, 0, 250}},
      {steps + "ProgressHi", {10, 4, 0, 0}},
      {"[progress]\r\nstepnumber = 10\r\nCurrentStep = 20\r\n", {10, 10, 0, 0}},
      {"[Progress]\nCurrentStep=8\nStepNumber=x\nProgressHide=-1", {0, 0, -1, 0}},
      {std::string("\0\xff\xc3\n", 4) + steps + "\xf0", {10, 4, 0, 0}},
      {std::string((1 << 16) + 1 - steps.size(), '#') + '\n' + steps, {10, 0, 0, 0}},
  };
  for (const auto& [content, values] : rows) {
    if (!content.empty()) WriteFile("progress", content);
    EXPECT_EQ(ReadProgressFile(), values) << content.substr(0, 99);
  }
  EXPECT_EQ(hidden.PollPeriod(), 1000);
}

TEST_F(ProgressTest, OnlyLinksOfTheLaunchersOwnUserLeadToTheFile) {
  WriteFile("real", "[Progress]\nCurrentStep=4\nStepNumber=10\n");
  std::filesystem::create_directory("links");
  std::filesystem::create_symlink("../real", "links/second");
  std::filesystem::create_symlink("links/second", "progress");
  EXPECT_EQ(ReadProgressFile().currentStep, 4);
  if (lchown("links/second", 65534, 65534) == 0) {
    EXPECT_EQ(ReadProgressFile().currentStep, 0);
  }
  std::filesystem::remove("progress");
  for (const char* target : {"/dev/zero", "progress", "links"}) {
    std::filesystem::create_symlink(target, "progress");
    EXPECT_EQ(ReadProgressFile().progressHide, 1) << target;
    std::filesystem::remove("progress");
  }
}

TEST_F(ProgressTest, ALargeFileIsReadNowAndThenAndASmallOneAtEachLook) {
  // The step and the size of what is written before a look, when that is, and what it sees.
  const std::tuple<int, int, int, int> looks[] = {
      {1, 0, 1000, 1},    {2, 0, 1000, 2},    {3, 5000, 1100, 3}, {4, 5000, 1199, 3},
      {0, 0, 1200, 4},    {0, 0, 1300, 4},    {5, 5000, 1399, 4}, {0, 0, 1400, 5},
      {6, 4057, 1401, 6}, {7, 4058, 1402, 6}, {8, 4057, 1403, 8}};
  ProgressFile file;
  EXPECT_EQ(file.Look(1000).currentStep, 0);
  for (const auto& [written, size, now, seen] : looks) {
    if (written != 0)
      WriteFile("progress", "[Progress]\nStepNumber=99\nCurrentStep=" + std::to_string(written) +
                                '\n' + std::string(size, '#'));
    EXPECT_EQ(file.Look(now).currentStep, seen) << now;
  }
  std::filesystem::remove("progress");
  EXPECT_EQ(file.Look(1403).currentStep, 0);
}

TEST_F(ProgressTest, TheBarIsARowOfPicturesOfWhichOnlyTheNewOnesAreDrawn) {
  ClearScreen ground;
  Show(ground, {});
  std::filesystem::create_directory("pic");
  std::string name = "step_bar";
  for (const Rows& rows : {Rows{"r"}, Rows{"..g.", "b.r.", "....", ".k.r"}, Rows(40, "rgb.bb")}) {
    save_bitmap("pic/progress.bmp", Paint(rows).get(), nullptr);
    StepBar bar;
    bar.Setup(0, 0, 200, 30, 0, 0, kHorizontal);
    root.Add(&bar);
    for (const int done : {0, 3, 4, 30, 31, 36, 99, 100, 37, 2, 1, 100, 50, 1000, -1, 37}) {
      bar.ShowSteps(done, 100);
      EXPECT_TRUE(DrawsEnough()) << done;
    }
    ExpectShown(name += '_', {0, 0, 202, 38});
    Copied();
    bar.ShowSteps(42, 100);
    EXPECT_EQ(Copied(), (10 + static_cast<int>(rows[0].size()) - 1) * (36 - 3));
  }
}

TEST_F(ProgressTest, TheBusyBlockRunsToAndFro) {
  BusyBar bar;
  bar.SetOrientation(kHorizontal);
  Show(bar, {0, 0, 100, 20});
  std::string lefts;
  for (int i = 0; i < 100; ++i) {
    bar.Increment();
    const std::string row = Frame()[10];
    if (i % 9 == 0) lefts += std::to_string(row.find('?', 3)) + ' ';
  }
  EXPECT_EQ(lefts, "6 24 42 60 78 71 53 35 17 8 26 44 ");
}

}  // namespace
}  // namespace zel
