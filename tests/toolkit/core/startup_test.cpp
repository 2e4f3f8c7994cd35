#include "toolkit/core/startup.h"

#include <unistd.h>

#include <climits>

#include "tests/support/stage.h"
#include "tests/support/temp_files.h"
#include "toolkit/base/graphics_mode.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/widgets/window.h"

namespace zel {
namespace {

using Pair = FakeMachine::Pair;
using Modes = std::vector<FakeMachine::Mode>;

class Startup : public AllegroFixture {
 protected:
  ~Startup() override { ExitToolkit(); }

  static Error Change(int depth, Dialog* root = nullptr) {
    return ChangeScreenMode(0, true, 640, 480, depth, root);
  }

  FakeMachine machine;
  FakeTimers clock;
};

TEST_F(Startup, TheFileSaysWhatIsSetUp) {
  EXPECT_EQ(InstallToolkit(nullptr), kNoError);
  ExitToolkit();
  EXPECT_EQ(CurrentSkin(), nullptr);
  const TempFile file{
      "[Toolkit]\nscreenWidth=800\nscreenHeight=600\ncolorDepth=32\nfullscreen=0\n"
      "keyDelay=-1\nmouseSpeed=0\nrunInBackground=0\n"};
  EXPECT_EQ(InstallToolkit(file.Path()), kNoError);
  EXPECT_NE(CurrentSkin(), nullptr);
  EXPECT_EQ(settings.gfxMode, GFX_AUTODETECT_WINDOWED);
  EXPECT_EQ(machine.tried, Modes({{640, 480, 16, false}, {800, 600, 32, true}}));
  EXPECT_EQ(machine.keyboardRates, std::vector({Pair{160, 80}}));
  EXPECT_EQ(machine.mouseSpeeds.front(), Pair(2, 2));
  EXPECT_EQ(machine.mouseSpeeds.back(), Pair(1, 1));
  EXPECT_EQ(machine.switchModes, std::vector({SWITCH_BACKGROUND}));
}

TEST_F(Startup, WhatLivesOncePerProcessEndsWithTheToolkit) {
  const auto refuses = [](Dialog& dialog) {
    testing::internal::CaptureStderr();
    EXPECT_TRUE(!dialog.Execute(nullptr) && !dialog.Popup(nullptr, {0, 0}, nullptr));
    const std::string said = "Zel: A dialog needs the toolkit. Call InstallToolkit before.\n";
    return testing::internal::GetCapturedStderr() == said + said;
  };
  Recorder root;
  SYSTEM_DRIVER* const allegro = std::exchange(system_driver, nullptr);
  EXPECT_TRUE(refuses(root)) << "too early";
  system_driver = allegro;
  settings.yield = false;
  InstallToolkit(nullptr);
  root.MsgStart();
  ExitToolkit();
  root.MsgIdle();
  EXPECT_TRUE(CurrentPointer() && CurrentScreenUpdate()) << "a root runs to its end";
  EXPECT_EQ(CurrentSkin(), nullptr);
  root.MsgEnd();
  InstallScreenUpdate(kDirtyRectangles);
  ExitToolkit();
  EXPECT_TRUE(refuses(root)) << "too late";
  EXPECT_EQ(CurrentScreenUpdate(), nullptr);
  EXPECT_EQ(Widget{}.CreationOrder(), 0u);
  InstallToolkit(nullptr);
  Recorder next;
  Patch child{{0, 0, 9, 9}};
  next.Add(&child);
  next.onEvent = [&next](Widget*, int msg, int) {
    if (msg == MSG_DRAW) next.Close();
  };
  EXPECT_EQ(next.Execute(&child), &child) << "another life";
}

TEST_F(Startup, WhatIsMissingEndsItWithItsCode) {
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
  const TempFile file{"[Toolkit]\ncolorDepth=24\ntooltipDelay=7\nskinPath=default\n"};
  machine.refusedDepths = {24, 32};
  EXPECT_EQ(InstallToolkit(file.Path()), kGraphicsError);
  settings.colorDepth = 16;
  for (int call = 0; call < 2; ++call) EXPECT_EQ(InstallToolkit(nullptr), kNoError);
  EXPECT_EQ(settings.tooltipDelay, 7) << "another call keeps the settings";
  EXPECT_EQ(settings.colorDepth, 16);
}

TEST_F(Startup, ADepthThatCannotBeSetIsReplaced) {
  // `set`: the depth afterwards.
  const auto expect = [this](int wanted, const std::vector<int>& refused, const Modes& tried,
                             int set) {
    machine.refusedDepths = refused;
    EXPECT_EQ(Change(wanted), set == tried.back().depth ? kNoError : kGraphicsError);
    EXPECT_EQ(std::exchange(machine.tried, {}), tried);
    EXPECT_EQ(settings.colorDepth, set);
    EXPECT_EQ(red, makecol_depth(set, 255, 0, 0));
  };
  const auto mode = [](int depth) { return FakeMachine::Mode{640, 480, depth, false}; };
  expect(16, {16}, {mode(16), mode(15)}, 15);
  expect(24, {24}, {mode(24), mode(32)}, 32);
  expect(32, {32}, {mode(32), mode(24)}, 24);
  expect(15, {15}, {mode(15), mode(16)}, 16);
  expect(24, {24, 32}, {mode(24), mode(32)}, 16);
  expect(0, {}, {mode(32)}, 32);
  machine.desktopDepth = 0;
  for (const int strange : {0, -3, 7, INT_MAX}) expect(strange, {}, {mode(16)}, 16);
  expect(8, {8}, {mode(8)}, 16);
  EXPECT_TRUE(settings.mouseShadow);
  expect(8, {}, {mode(8)}, 8);
  EXPECT_FALSE(settings.mouseShadow);
}

TEST_F(Startup, SizesAndCardsStayWithinWhatDriversKnow) {
  ChangeScreenMode(0, true, 0, -5, 16, nullptr);
  ChangeScreenMode(1, false, INT_MIN, 40000, 16, nullptr);
  EXPECT_EQ(machine.tried, Modes({{64, 64, 16, false}, {64, 32767, 16, true}}));
  EXPECT_EQ(settings.screenHeight, 32767);
  const int before = settings.gfxMode, card = AL_ID('F', 'A', 'K', 'W');
  EXPECT_EQ(ChangeScreenMode(12345, true, 640, 480, 16, nullptr), kGraphicsError);
  EXPECT_EQ(settings.gfxMode, before);
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
  root.names = {{&child, "child"}};
  root.Add(&child);
  root.MsgStart();
  root.watched = {MSG_INITSKIN};
  settings.mouseSpeed = 5;
  const auto expect = [&root](int width, int depth) {
    const BITMAP* canvas = CurrentScreenUpdate()->GetCanvas();
    EXPECT_TRUE(canvas && canvas->w == width && bitmap_color_depth(screen) == depth);
    EXPECT_EQ(bitmap_color_depth(CurrentSkin()->bitmaps[0]->GetBitmap()), depth);
    EXPECT_TRUE(root.w() == width && settings.screenWidth == width);
    EXPECT_TRUE(root.Dirty());
    root.ForgetRedraw();
  };
  EXPECT_EQ(ChangeScreenMode(0, true, 800, 600, 32, &root), kNoError);
  EXPECT_EQ(root.Events(), "child: InitSkin");
  expect(800, 32);
  EXPECT_EQ(machine.mouseSpeeds.back(), Pair(5, 5)) << "which the library resets";
  machine.tried.clear();
  machine.refusedDepths = {16, 15};
  EXPECT_EQ(Change(16, &root), kGraphicsError);
  EXPECT_EQ(machine.tried,
            Modes({{640, 480, 16, false}, {640, 480, 15, false}, {800, 600, 32, false}}));
  expect(800, 32);
  machine.refusedDepths = {15, 16, 24, 32};
  EXPECT_EQ(Change(24, &root), kGraphicsError);
  EXPECT_EQ(CurrentScreenUpdate()->GetCanvas(), nullptr) << "not even the old mode";
  root.DrawDirty();
  root.MsgEnd();
}

TEST_F(Startup, AWindowThatIsTheRootFillsANewModeWithItsFrame) {
  InstallToolkit(nullptr);
  Window root;
  root.MsgStart();
  for (const Size size : {Size{800, 600}, {320, 200}}) {
    ChangeScreenMode(0, true, size.w, size.h, 16, &root);
    root.MsgTick();
    EXPECT_EQ(root.Bounds(), Rect(0, 0, size.w, size.h));
    EXPECT_EQ(root.Client().w(), size.w - 8);
  }
  root.MsgEnd();
}

TEST(Error, OnlySoundAndNoErrorAreNoFailures) {
  for (int code = -1; code <= 16; ++code)
    EXPECT_EQ(Error{code}.IsError(), code != 0 && code != 6) << code;
  EXPECT_STREQ(Error{}.GetDescription(), "No error.\n");
  EXPECT_STREQ(Error{15}.GetDescription(), "Error: array index out of bounds!\n");
  for (const int code : {16, -1, INT_MAX, INT_MIN})
    EXPECT_STREQ(Error{code}.GetDescription(), "An unknown error occured!\n");
}

TEST(ErrorDeathTest, AReportedErrorEndsTheProcess) {
  const auto report = [](bool withAllegro) {
    if (withAllegro) {
      FakeMachine machine;
      settings.useVideoMemory = true;
      ChangeScreenMode(0, true, 640, 480, 16, nullptr);
      Error{kSkinFileError}.Report();
    }
    allegro_exit();
    dup2(STDERR_FILENO, STDOUT_FILENO);
    Error{kAllegroError}.Report();
  };
  const testing::ExitedWithCode failed{1};
  EXPECT_EXIT(report(true), failed, "Error: skin description file not found!\n\n");
  EXPECT_EXIT(report(false), failed, "Error: initializing Allegro!\n");
}

}  // namespace
}  // namespace zel
