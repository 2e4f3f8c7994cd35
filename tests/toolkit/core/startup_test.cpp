#include "toolkit/core/startup.h"

#include <algorithm>
#include <climits>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/allegro_fixture.h"
#include "tests/support/fake_machine.h"
#include "tests/support/fake_timers.h"
#include "tests/support/temp_files.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/graphics_mode.h"
#include "toolkit/core/messages.h"
#include "toolkit/core/screen_update.h"
#include "toolkit/skin/skin.h"

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
    for (const Mode& mode : machine.tried) depths.push_back(mode.depth);
    machine.tried.clear();
    return depths;
  }

  FakeMachine machine;
  FakeTimers clock;
};

TEST_F(Startup, DefaultsGiveASmallFullScreenMode) {
  EXPECT_EQ(InstallToolkit(nullptr), kNoError);
  EXPECT_EQ(machine.tried, Modes({{640, 480, 16, false}}));
  ASSERT_NE(CurrentSkin(), nullptr);
  EXPECT_EQ(machine.keyboardRates, std::vector(1, FakeMachine::Pair(160, 80)));
  EXPECT_EQ(machine.mouseSpeeds.back(), FakeMachine::Pair(2, 2));
  EXPECT_EQ(machine.switchModes, std::vector({SWITCH_BACKGROUND}));
  ExitToolkit();
  EXPECT_EQ(CurrentSkin(), nullptr);
}

TEST_F(Startup, TheFileSaysWhichModeIsSet) {
  const TempFile file{
      "[Toolkit]\nscreenWidth=800\nscreenHeight=600\ncolorDepth=32\nfullscreen=0\n"
      "keyDelay=-1\nmouseSpeed=0\nrunInBackground=0\n"};
  EXPECT_EQ(InstallToolkit(file.Path()), kNoError);
  EXPECT_EQ(machine.tried, Modes({{800, 600, 32, true}}));
  EXPECT_EQ(settings.gfxMode, GFX_AUTODETECT_WINDOWED);
  EXPECT_TRUE(machine.keyboardRates.empty());
  EXPECT_EQ(machine.mouseSpeeds.back(), FakeMachine::Pair(1, 1));
  EXPECT_TRUE(machine.switchModes.empty());
}

TEST_F(Startup, ASecondCallAfterAFailedModeKeepsTheSettingsOfTheFirst) {
  const TempFile file{"[Toolkit]\ncolorDepth=24\ntooltipDelay=7\n"};
  machine.refusedDepths = {24, 32};
  EXPECT_EQ(InstallToolkit(file.Path()), kGraphicsError);
  EXPECT_EQ(CurrentSkin(), nullptr);
  settings.colorDepth = 16;
  EXPECT_EQ(InstallToolkit(nullptr), kNoError);
  EXPECT_EQ(settings.tooltipDelay, 7);
  EXPECT_EQ(settings.colorDepth, 16);
  EXPECT_EQ(InstallToolkit(nullptr), kNoError);
}

TEST_F(Startup, MissingDevicesAndSkinsEndItWithTheirCode) {
  machine.hasKeyboard = false;
  EXPECT_EQ(InstallToolkit(nullptr), kKeyboardError);
  machine.hasKeyboard = true;
  machine.hasTimer = false;
  EXPECT_EQ(InstallToolkit(nullptr), kTimerError);
  machine.hasTimer = true;
  machine.mouseButtons = -1;
  EXPECT_EQ(InstallToolkit(nullptr), kMouseError);
  machine.mouseButtons = 0;
  settings.skinPath.Assign("/nowhere/skin.cfg");
  EXPECT_EQ(InstallToolkit(nullptr), kSkinFileError);
  settings.skinPath.Assign("default");
  EXPECT_EQ(InstallToolkit(nullptr), kNoError);
}

TEST_F(Startup, ARefusedDepthIsReplacedByItsPair) {
  const struct { int wanted, paired; } kPairs[] = {{16, 15}, {24, 32}, {32, 24}, {15, 16}};
  for (const auto& [wanted, paired] : kPairs) {
    machine.refusedDepths = {wanted};
    EXPECT_EQ(Change(wanted), kNoError);
    EXPECT_EQ(DepthsTried(), std::vector({wanted, paired}));
    EXPECT_EQ(settings.colorDepth, paired);
    EXPECT_EQ(bitmap_color_depth(screen), paired);
    EXPECT_EQ(red, makecol_depth(paired, 255, 0, 0));
  }
  machine.refusedDepths = {8};
  EXPECT_EQ(Change(8), kGraphicsError);
  EXPECT_EQ(DepthsTried(), std::vector({8}));
  machine.refusedDepths = {24, 32};
  EXPECT_EQ(Change(24), kGraphicsError);
  EXPECT_EQ(settings.colorDepth, 16);
}

TEST_F(Startup, DepthsOfNoKindAreReplaced) {
  EXPECT_EQ(Change(0), kNoError);
  machine.desktopDepth = 0;
  EXPECT_EQ(Change(-3), kNoError);
  EXPECT_EQ(Change(7), kNoError);
  EXPECT_EQ(Change(INT_MAX), kNoError);
  EXPECT_EQ(DepthsTried(), std::vector({32, 16, 16, 16}));
}

TEST_F(Startup, AnEightBitModeSwitchesThePointersShadowOff) {
  machine.refusedDepths = {8};
  Change(8);
  EXPECT_TRUE(settings.mouseShadow);
  machine.refusedDepths = {};
  EXPECT_EQ(Change(8), kNoError);
  EXPECT_FALSE(settings.mouseShadow);
}

TEST_F(Startup, SizesStayWithinWhatDriversCanCompute) {
  ChangeScreenMode(0, true, 0, -5, 16, nullptr);
  ChangeScreenMode(1, false, INT_MIN, 40000, 16, nullptr);
  EXPECT_EQ(machine.tried, Modes({{64, 64, 16, false}, {64, 32767, 16, true}}));
  EXPECT_EQ(settings.screenHeight, 32767);
}

TEST_F(Startup, UnknownCardsAreRefusedByTheLibrary) {
  EXPECT_EQ(ChangeScreenMode(12345, true, 640, 480, 16, nullptr), kGraphicsError);
  EXPECT_TRUE(machine.tried.empty());
  EXPECT_EQ(settings.gfxMode, 0);
  const int card = AL_ID('F', 'A', 'K', 'W');
  EXPECT_EQ(ChangeScreenMode(card, true, 640, 480, 16, nullptr), kNoError);
  EXPECT_EQ(settings.gfxMode, card);
}

TEST_F(Startup, AVideoPageStandsForTheScreenUntilTheNextMode) {
  settings.useVideoMemory = true;
  EXPECT_EQ(Change(16), kNoError);
  EXPECT_TRUE(is_video_bitmap(screen));
  EXPECT_EQ(screen, machine.shownPage);
  EXPECT_EQ(Change(32), kNoError);
  EXPECT_EQ(bitmap_color_depth(screen), 32);
  EXPECT_EQ(screen, machine.shownPage);
  EXPECT_EQ(machine.videoPages, 1);
  SetTextMode();
  EXPECT_EQ(machine.videoPages, 0);
  EXPECT_EQ(screen, nullptr);
  machine.videoPagesLeft = 0;
  EXPECT_EQ(Change(16), kNoError);
  EXPECT_FALSE(is_video_bitmap(screen));
}

TEST_F(Startup, LosingTheScreenInTheBackgroundIsBetterThanStopping) {
  machine.switchesInBackground = false;
  EXPECT_EQ(Change(16), kNoError);
  EXPECT_EQ(machine.switchModes, std::vector({SWITCH_BACKGROUND, SWITCH_BACKAMNESIA}));
}

// Counts how often the skin was handed to it.
class Listener : public Widget {
 public:
  void MsgInitSkin() override {
    ++skins;
    Widget::MsgInitSkin();
  }
  int skins = 0;
};

class StartupWithRoot : public Startup {
 protected:
  StartupWithRoot() {
    InstallToolkit(nullptr);
    root = std::make_unique<Dialog>();
    root->Add(&child);
    root->MsgStart();
    child.skins = 0;
    machine.tried.clear();
  }
  ~StartupWithRoot() override {
    root->MsgEnd();
    root->Remove(&child);
  }
  static BITMAP* Canvas() { return CurrentScreenUpdate()->GetCanvas(); }

  std::unique_ptr<Dialog> root;
  Listener child;
};

TEST_F(StartupWithRoot, EverythingFollowsANewMode) {
  BITMAP* element = CurrentSkin()->bitmaps[0]->GetBitmap();
  ASSERT_EQ(bitmap_color_depth(element), 16);
  EXPECT_EQ(ChangeScreenMode(0, true, 800, 600, 32, root.get()), kNoError);
  EXPECT_EQ(root->w(), 800);
  EXPECT_EQ(root->h(), 600);
  EXPECT_EQ(Canvas()->w, 800);
  EXPECT_EQ(bitmap_color_depth(Canvas()), 32);
  EXPECT_EQ(bitmap_color_depth(CurrentSkin()->bitmaps[0]->GetBitmap()), 32);
  EXPECT_EQ(child.skins, 1);
}

TEST_F(StartupWithRoot, AFailedModeBringsTheOldOneBack) {
  machine.refusedDepths = {24, 32};
  root->ClearFlag(kFlagDirty);
  EXPECT_EQ(ChangeScreenMode(0, true, 800, 600, 24, root.get()), kGraphicsError);
  EXPECT_EQ(machine.tried,
            Modes({{800, 600, 24, false}, {800, 600, 32, false}, {640, 480, 16, false}}));
  EXPECT_EQ(settings.screenWidth, 640);
  EXPECT_EQ(root->w(), 640);
  EXPECT_EQ(bitmap_color_depth(Canvas()), 16);
  EXPECT_TRUE(root->TestFlag(kFlagDirty));
}

TEST_F(StartupWithRoot, ACanvasInVideoMemoryIsGivenBackBeforeTheModeEnds) {
  settings.useVideoMemory = true;
  EXPECT_EQ(Change(16, root.get()), kNoError);
  EXPECT_EQ(machine.videoPages, 2);
  EXPECT_EQ(Change(32, root.get()), kNoError);
  EXPECT_EQ(machine.videoPages, 2);
  EXPECT_EQ(bitmap_color_depth(Canvas()), 32);
}

TEST(Error, OnlySoundAndNoErrorAreNoFailures) {
  for (int code = 0; code <= 16; ++code)
    EXPECT_EQ(Error{code}.IsError(), code != 0 && code != 6) << code;
  EXPECT_TRUE(Error{-1}.IsError());
  EXPECT_TRUE(Error{5} == Error{5});
  EXPECT_TRUE(Error{5} != Error{6});
}

TEST(Error, CodesAreDescribed) {
  EXPECT_STREQ(Error{}.GetDescription(), "No error.\n");
  EXPECT_STREQ(Error{5}.GetDescription(), "Error: initializing graphics mode!\n");
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
}

}  // namespace
}  // namespace zel
