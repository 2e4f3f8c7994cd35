#include "launcher/launcher.h"

#include "launcher/texts.h"
#include "tests/support/launcher_fixture.h"
#include "toolkit/testing/fake_machine.h"
#include "toolkit/testing/fake_timers.h"

namespace zel {
namespace {

// Runs it in a process of its own, whose standard error stream tells what has come of it.
class LauncherTest : public LauncherFixture {
 protected:
  LauncherTest() {
    GTEST_FLAG_SET(death_test_style, "threadsafe");  // the catalogues are opened once
    paths.catalogues = ZEL_CATALOGUES;
    setenv("LC_ALL", "C.UTF-8", 1);
    std::filesystem::create_directory("etc");
    paths.configDirectory = "etc";
    WriteFile("etc/menu.cfg",
              "[MENU_CONFIGURATION]\nLinesNumber=1\n[LINE1]\nTitle=x\nExCode=7\nExString=done\n"
              "WaitForFile=../ready\n");
  }
  [[noreturn]] static void Run(const std::vector<int>& refusedDepths) {
    const std::string place = std::filesystem::current_path();
    const std::string output = place + "/output.txt", position = place + "/menupos.txt";
    paths.outputFile = output.c_str();
    paths.positionFile = position.c_str();
    WriteFile(output, "earlier\n");
    WriteFile(output + ".zel-a1B2c3", "");
    FakeMachine machine;
    FakeTimers timers;
    std::string seen;
    machine.refusedDepths = refusedDepths;
    timers.onSleep = [&] {
      if (timers.sleeps == 1) {
        for (const auto& [w, h, depth, windowed] : machine.tried)
          seen += std::to_string(w) + 'x' + std::to_string(h) + 'x' + std::to_string(depth) +
                  (windowed ? "w " : " ");
        seen += std::string(settings.antialiasing ? "smooth " : "") +
                (settings.showMouse ? "mouse " : "") +
                (launcherState.mousePending ? "later " : "") +
                (launcherState.runningScreen ? "runs " : "") + ReadFile(output);
      }
      // The first wait is cancelled, the second lasts until the file is there.
      if (timers.sleeps == 4)
        WriteFile(place + "/ready", "");
      else
        simulate_ukeypress(0, timers.sleeps == 2 ? KEY_ESC : KEY_ENTER);
      for (int i = 0; i < timers.Count(); ++i) timers.Tick(i);
    };
    const int status = RunForAnyone();
    std::fprintf(stderr, "%s%s%zd", seen.c_str(), ReadFile("output.txt").c_str(),
                 std::distance(std::filesystem::directory_iterator{"."}, {}));
    std::_Exit(status);
  }
  void Expect(const std::vector<int>& refusedDepths, int status, const char* seen) {
    EXPECT_EXIT(Run(refusedDepths), testing::ExitedWithCode(status), seen);
  }
};

TEST_F(LauncherTest, TriesTheModeOfItsSettingsAndThenTheFixedOnes) {
  Expect({}, 7, "^640x480x16 smooth later runs done\n4$");
  WriteFile("etc/gpm.pid", "");
  WriteFile("etc/zel.cfg",
            "[Toolkit]\nscreenWidth=320\nscreenHeight=200\ncolorDepth=32\nfullscreen=0\n");
  Expect({}, 7, "^320x200x32w smooth mouse runs done\n4$");
  Expect({32, 24}, 7, "^320x200x32w 320x200x24w 640x480x16 smooth mouse runs done\n4$");
  Expect({32, 24, 16, 15}, 7,
         "^320x200x32w 320x200x24w 640x480x16 640x480x15 800x600x8 mouse runs done\n4$");
  WriteFile("etc/i18n", "LANG=de\n");
  Expect({32, 24, 16, 15, 8}, 0, "Erfahrene Anwender können versuchen, selbst");
  WriteFile("etc/zel.cfg", "[Toolkit]\nskinPath=none\n");
  Expect({}, 1, "skin description file not found");
}

}  // namespace
}  // namespace zel
