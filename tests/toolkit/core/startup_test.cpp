#include "toolkit/core/startup.h"

#include <unistd.h>

#include <algorithm>
#include <climits>

#include "tests/support/stage.h"
#include "tests/support/temp_files.h"
#include "toolkit/core/graphics_mode.h"
#include "toolkit/core/screen_update.h"

namespace zel {
namespace {

using Mode = FakeMachine::Mode;
using Modes = std::vector<Mode>;

class Startup : public AllegroFixture {
 protected:
  ~Startup() override { ExitToolkit(); }

  static Error Change(int depth, Dialog* root = nullptr) {
    return ChangeScreenMode(0, true, 640, 480, depth, root);
  }
  std::vector<int> DepthsTried() {
    std::vector<int> depths;
    for (const Mode& mode : std::exchange(machine.tried, {})) depths.push_back(mode.depth);
    return depths;
  }

  FakeMachine machine;
  FakeTimers clock;
};

TEST_F(Startup, TheFileSaysWhatIsSetUp) {
  EXPECT_EQ(InstallToolkit(nullptr), kNoError);
  EXPECT_EQ(machine.tried, Modes({{640, 480, 16, false}}));
  ASSERT_NE(CurrentSkin(), nullptr);
  EXPECT_EQ(machine.keyboardRates, std::vector(1, FakeMachine::Pair(160, 80)));
  EXPECT_EQ(machine.mouseSpeeds.back(), FakeMachine::Pair(2, 2));
  EXPECT_EQ(machine.switchModes, std::vector({SWITCH_BACKGROUND}));
  ExitToolkit();
  EXPECT_EQ(CurrentSkin(), nullptr);

  const TempFile file{
      "[Toolkit]\nscreenWidth=800\nscreenHeight=600\ncolorDepth=32\nfullscreen=0\n"
      "keyDelay=-1\nmouseSpeed=0\nrunInBackground=0\n"};
  EXPECT_EQ(InstallToolkit(file.Path()), kNoError);
  EXPECT_EQ(machine.tried.back(), (Mode{800, 600, 32, true}));
  EXPECT_EQ(settings.gfxMode, GFX_AUTODETECT_WINDOWED);
  EXPECT_EQ(machine.keyboardRates.size(), 1u);
  EXPECT_EQ(machine.mouseSpeeds.back(), FakeMachine::Pair(1, 1));
  EXPECT_EQ(machine.switchModes.size(), 1u);
}

TEST_F(Startup, ASecondCallAfterAFailedModeKeepsTheSettingsOfTheFirst) {
  const TempFile file{"[Toolkit]\ncolorDepth=24\ntooltipDelay=7\n"};
  machine.refusedDepths = {24, 32};
  EXPECT_EQ(InstallToolkit(file.Path()), kGraphicsError);
  EXPECT_EQ(CurrentSkin(), nullptr);
  settings.colorDepth = 16;
  for (int call = 0; call < 2; ++call) EXPECT_EQ(InstallToolkit(nullptr), kNoError);
  EXPECT_EQ(settings.tooltipDelay, 7);
  EXPECT_EQ(settings.colorDepth, 16);
}

TEST_F(Startup, MissingDevicesAndSkinsEndItWithTheirCode) {
  machine.mouseButtons = -1;
  for (const auto& [present, code] : {std::pair{&machine.hasKeyboard, kKeyboardError},
                                      std::pair{&machine.hasTimer, kTimerError}}) {
    *present = false;
    EXPECT_EQ(InstallToolkit(nullptr), code);
    *present = true;
  }
  EXPECT_EQ(InstallToolkit(nullptr), kMouseError);
  machine.mouseButtons = 0;
  settings.skinPath.Assign("/nowhere/skin.cfg");
  EXPECT_EQ(InstallToolkit(nullptr), kSkinFileError);
  settings.skinPath.Assign("default");
  EXPECT_EQ(InstallToolkit(nullptr), kNoError);
}

TEST_F(Startup, ADepthThatCannotBeSetIsReplaced) {
  using Depths = std::vector<int>;
  const auto expect = [this](int wanted, const Depths& refused, const Depths& tried) {
    machine.refusedDepths = refused;
    const int last = tried.back();
    const bool fails = std::count(refused.begin(), refused.end(), last) > 0;
    const int depth = fails ? settings.colorDepth : last;
    EXPECT_EQ(Change(wanted), fails ? kGraphicsError : kNoError);
    EXPECT_EQ(DepthsTried(), tried);
    EXPECT_EQ(settings.colorDepth, depth);
    EXPECT_EQ(red, makecol_depth(depth, 255, 0, 0));
  };
  expect(16, {16}, {16, 15});
  expect(24, {24}, {24, 32});
  expect(32, {32}, {32, 24});
  expect(15, {15}, {15, 16});
  expect(24, {24, 32}, {24, 32});
  expect(0, {}, {32});
  machine.desktopDepth = 0;
  for (const int strange : {0, -3, 7, INT_MAX}) expect(strange, {}, {16});
  expect(8, {8}, {8});
  EXPECT_TRUE(settings.mouseShadow);
  EXPECT_EQ(Change(8), kGraphicsError);
  machine.refusedDepths = {};
  EXPECT_EQ(Change(8), kNoError);
  EXPECT_FALSE(settings.mouseShadow);
}

TEST_F(Startup, SizesAndCardsStayWithinWhatDriversKnow) {
  ChangeScreenMode(0, true, 0, -5, 16, nullptr);
  ChangeScreenMode(1, false, INT_MIN, 40000, 16, nullptr);
  EXPECT_EQ(machine.tried, Modes({{64, 64, 16, false}, {64, 32767, 16, true}}));
  EXPECT_EQ(settings.screenHeight, 32767);
  const int before = settings.gfxMode;
  EXPECT_EQ(ChangeScreenMode(12345, true, 640, 480, 16, nullptr), kGraphicsError);
  EXPECT_EQ(settings.gfxMode, before);
  const int card = AL_ID('F', 'A', 'K', 'W');
  EXPECT_EQ(ChangeScreenMode(card, true, 640, 480, 16, nullptr), kNoError);
  EXPECT_EQ(settings.gfxMode, card);
  machine.switchesInBackground = false;
  machine.switchModes.clear();
  Change(16);
  EXPECT_EQ(machine.switchModes, std::vector({SWITCH_BACKGROUND, SWITCH_BACKAMNESIA}))
      << "losing the screen is better than stopping";
}

TEST_F(Startup, AVideoPageStandsForTheScreenUntilTheNextMode) {
  settings.useVideoMemory = true;
  for (const int depth : {16, 32, 16}) {
    EXPECT_EQ(Change(depth), kNoError);
    EXPECT_TRUE(is_video_bitmap(screen));
    EXPECT_EQ(bitmap_color_depth(screen), depth);
    EXPECT_EQ(screen, machine.shownPage);
    EXPECT_EQ(machine.videoPages, CurrentScreenUpdate() ? 2 : 1);
    InstallScreenUpdate(kDoubleBuffering);  // its canvas goes before the next mode
  }
  SetCurrentScreenUpdate(nullptr);
  SetTextMode();
  EXPECT_EQ(machine.videoPages, 0);
  EXPECT_EQ(screen, nullptr);
  machine.videoPagesLeft = 0;
  EXPECT_EQ(Change(16), kNoError);
  EXPECT_FALSE(is_video_bitmap(screen));
}

TEST_F(Startup, ARunningRootFollowsANewModeOrKeepsTheOld) {
  InstallToolkit(nullptr);
  Recorder root;
  Widget child;
  root.names = {{&child, 'c'}};
  root.watched = {MSG_INITSKIN};
  root.Add(&child);
  root.MsgStart();
  root.Events();
  settings.mouseSpeed = 5;
  EXPECT_EQ(ChangeScreenMode(0, true, 800, 600, 32, &root), kNoError);
  EXPECT_EQ(root.Bounds(), Rect(0, 0, 800, 600));
  const auto canvas = [] { return CurrentScreenUpdate()->GetCanvas(); };
  EXPECT_EQ(canvas()->w, 800);
  EXPECT_EQ(bitmap_color_depth(canvas()), 32);
  EXPECT_EQ(bitmap_color_depth(CurrentSkin()->bitmaps[0]->GetBitmap()), 32);
  EXPECT_EQ(root.Events(), "c26 ");
  EXPECT_EQ(machine.mouseSpeeds.back(), FakeMachine::Pair(5, 5)) << "which the library resets";

  machine.tried.clear();
  machine.refusedDepths = {16, 15};
  root.ForgetRedraw();
  EXPECT_EQ(ChangeScreenMode(0, true, 640, 480, 16, &root), kGraphicsError);
  EXPECT_EQ(machine.tried,
            Modes({{640, 480, 16, false}, {640, 480, 15, false}, {800, 600, 32, false}}));
  EXPECT_EQ(settings.screenWidth, 800);
  EXPECT_EQ(root.w(), 800);
  EXPECT_EQ(bitmap_color_depth(canvas()), 32);
  EXPECT_TRUE(root.Dirty());
  machine.refusedDepths = {15, 16, 24, 32};
  EXPECT_EQ(Change(24, &root), kGraphicsError);
  EXPECT_EQ(canvas(), nullptr) << "not even the old mode";
  root.DrawDirty();
  root.MsgEnd();
}

TEST(Error, OnlySoundAndNoErrorAreNoFailures) {
  for (int code = -1; code <= 16; ++code)
    EXPECT_EQ(Error{code}.IsError(), code != 0 && code != 6) << code;
  EXPECT_TRUE(Error{5} == Error{5});
  EXPECT_TRUE(Error{5} != Error{6});
  EXPECT_STREQ(Error{}.GetDescription(), "No error.\n");
  EXPECT_STREQ(Error{15}.GetDescription(), "Error: array index out of bounds!\n");
  for (const int code : {16, 17, -1, INT_MAX, INT_MIN})
    EXPECT_STREQ(Error{code}.GetDescription(), "An unknown error occured!\n");
}

TEST(ErrorDeathTest, AReportedErrorEndsTheProcess) {
  const auto report = [] {
    FakeMachine machine;
    settings.useVideoMemory = true;
    ChangeScreenMode(0, true, 640, 480, 16, nullptr);
    Error{kSkinFileError}.Report();
  };
  EXPECT_EXIT(report(), testing::ExitedWithCode(1), "Error: skin description file not found!\n\n");
  const auto reportWithoutAllegro = [] {
    allegro_exit();
    dup2(STDERR_FILENO, STDOUT_FILENO);
    Error{kAllegroError}.Report();
  };
  EXPECT_EXIT(reportWithoutAllegro(), testing::ExitedWithCode(1), "Error: initializing Allegro!\n");
}

}  // namespace
}  // namespace zel
