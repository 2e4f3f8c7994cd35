#include "toolkit/core/startup.h"

#include <unistd.h>

#include <climits>

#include "tests/support/reference.h"
#include "tests/support/stage.h"
#include "toolkit/base/graphics_mode.h"
#include "toolkit/base/zoom.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/widgets/window.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>

namespace zel {
namespace {

using Pair = FakeMachine::Pair;

class Startup : public AllegroFixture {
 protected:
  ~Startup() override { ExitToolkit(); }

  static Error Change(int depth, Dialog* root = nullptr) {
    return ChangeScreenMode(0, true, 640, 480, depth, root);
  }
  // The modes that were tried since the last call.
  std::string Tried() {
    std::string modes;
    for (const auto& [w, h, depth, windowed] : std::exchange(machine.tried, {}))
      modes += (windowed ? " window " : " screen ") + std::to_string(w) + 'x' + std::to_string(h) +
               'x' + std::to_string(depth);
    return modes;
  }

  FakeMachine machine;
  FakeTimers clock;
};

TEST_F(Startup, TheFileSaysWhatIsSetUp) {
  settings.mouseSpeed = 3;
  EXPECT_EQ(InstallToolkit(nullptr), kNoError);
  EXPECT_EQ(machine.mouseSpeeds.back(), Pair(3, 3));
  ExitToolkit();
  EXPECT_EQ(CurrentSkin(), nullptr);
  const TempFile file{
      "[Toolkit]\nscreenWidth=800\nscreenHeight=600\ncolorDepth=32\nfullscreen=0\n"
      "keyDelay=-1\nmouseSpeed=0\nrunInBackground=0\nrefreshRate=75\nzoom=2\n"};
  EXPECT_TRUE(InstallToolkit(file.Path()) == kNoError && CurrentSkin());
  EXPECT_EQ(settings.gfxMode, GFX_AUTODETECT_WINDOWED);
  EXPECT_EQ(Tried(), " screen 640x480x16 window 800x600x32");
  EXPECT_EQ(machine.keyboardRates, std::vector({Pair{160, 80}}));
  EXPECT_EQ(machine.mouseSpeeds.back(), Pair(1, 1));
  EXPECT_EQ(machine.switchModes, std::vector({SWITCH_BACKGROUND}));
  EXPECT_TRUE(_refresh_rate_request == 75 && CurrentZoom() == 2);
  EXPECT_FALSE(three_finger_flag) << "it is no way to end a dialog";
}

TEST_F(Startup, WhatLivesOncePerProcessEndsWithTheToolkit) {
  Recorder root;
  const auto expectRefusal = [&root](const char* when) {
    testing::internal::CaptureStderr();
    EXPECT_TRUE(!root.Execute(nullptr) && !root.Popup(nullptr, {0, 0}, nullptr));
    const std::string said = "Zel: A dialog needs the toolkit. Call InstallToolkit before.\n";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), said + said) << when;
  };
  SYSTEM_DRIVER* const allegro = std::exchange(system_driver, nullptr);
  expectRefusal("too early");
  system_driver = allegro;
  settings.yield = false;
  InstallToolkit(nullptr);
  root.MsgStart();
  ExitToolkit();
  root.MsgIdle();
  EXPECT_TRUE(CurrentPointer() && CurrentScreenUpdate() && !CurrentSkin()) << "a root runs on";
  root.MsgEnd();
  InstallScreenUpdate(kDirtyRectangles);
  ExitToolkit();
  expectRefusal("too late");
  EXPECT_EQ(CurrentScreenUpdate(), nullptr);
  EXPECT_EQ(Widget{}.CreationOrder(), 0u);
  InstallToolkit(nullptr);
  Recorder next;
  next.onEvent = [&next](Widget*, int msg, int) {
    if (msg == MSG_DRAW) next.Close();
  };
  next.Execute(nullptr);
  EXPECT_TRUE(next.IsClosed()) << "another life";
}

TEST_F(Startup, WhatIsMissingEndsItWithItsCode) {
  machine.hasKeyboard = machine.hasTimer = false;
  EXPECT_EQ(InstallToolkit(nullptr), kKeyboardError);
  machine.hasKeyboard = true, machine.mouseButtons = -1;
  EXPECT_EQ(InstallToolkit(nullptr), kTimerError);
  machine.hasTimer = true;
  EXPECT_EQ(InstallToolkit(nullptr), kMouseError);
  settings.keyDelay = 30, settings.keyRepeat = settings.refreshRate = -7;
  machine.mouseButtons = 0, settings.skinPath.Assign("/nowhere/skin.cfg");
  EXPECT_EQ(InstallToolkit(nullptr), kSkinFileError);
  EXPECT_EQ(_refresh_rate_request, 0);
  const TempFile file{"[Toolkit]\ncolorDepth=24\ntooltipDelay=7\nskinPath=default\n"};
  machine.refusedModes = {24, 32};
  EXPECT_EQ(InstallToolkit(file.Path()), kGraphicsError);
  settings.colorDepth = 16, std::swap(settings.keyDelay, settings.keyRepeat);
  for (int call = 0; call < 2; ++call) EXPECT_EQ(InstallToolkit(nullptr), kNoError);
  EXPECT_EQ(machine.keyboardRates, std::vector({Pair{30, 0}})) << "and none without a delay";
  EXPECT_EQ(settings.tooltipDelay, 7) << "another call keeps the settings";
}

TEST_F(Startup, ADepthThatCannotBeSetIsReplaced) {
  // What the desktop has, what is wanted and refused, and the depth afterwards.
  const std::tuple<int, int, std::vector<int>, int> rows[] = {
      {32, 16, {16}, 15}, {32, 24, {24}, 32},     {32, 32, {32}, 24}, {32, 15, {15}, 16},
      {32, 0, {}, 32},    {32, 24, {24, 32}, 32}, {32, 1, {}, 16},    {0, -3, {}, 16},
      {0, 7, {}, 16},     {1, INT_MAX, {}, 16},   {0, 8, {8}, 16},    {0, 0, {}, 16},
      {0, 8, {}, 8}};
  for (const auto& [desktop, wanted, refused, set] : rows) {
    machine.desktopDepth = desktop, machine.refusedModes = refused;
    const bool fails = refused.size() == 2 || refused == std::vector{8};
    EXPECT_EQ(Change(wanted).IsError(), fails);
    EXPECT_TRUE(settings.colorDepth == set && red == makecol_depth(set, 255, 0, 0)) << wanted;
    EXPECT_EQ(settings.mouseShadow, set != 8);
    EXPECT_EQ(get_color_conversion(), fails ? COLORCONV_NONE : PictureConversion());
    set_color_conversion(COLORCONV_NONE);
  }
  EXPECT_EQ(machine.tried.size(), std::size(rows) + 5) << "another one for all but the palette";
}

TEST_F(Startup, SizesAndCardsStayWithinWhatDriversKnow) {
  ChangeScreenMode(0, true, 0, -5, 16, nullptr);
  ChangeScreenMode(1, false, INT_MIN, 40000, 16, nullptr);
  EXPECT_EQ(Tried(), " screen 64x64x16 window 64x32767x16");
  EXPECT_EQ(settings.screenHeight, 32767);
  const int before = settings.gfxMode, card = AL_ID('F', 'A', 'K', 'W');
  EXPECT_EQ(ChangeScreenMode(3, true, 640, 480, 16, nullptr), kGraphicsError);
  EXPECT_EQ(settings.gfxMode, before);
  EXPECT_EQ(ChangeScreenMode(card, true, 640, 480, 16, nullptr), kNoError);
  EXPECT_EQ(settings.gfxMode, card);
  machine.switchesInBackground = false, machine.switchModes.clear();
  Change(16);
  EXPECT_EQ(machine.switchModes, std::vector({SWITCH_BACKGROUND, SWITCH_BACKAMNESIA}))
      << "losing the screen is better than stopping";
}

TEST_F(Startup, AVideoPageStandsForTheScreenUntilTheNextMode) {
  settings.useVideoMemory = true;
  for (const int depth : {16, 32, 16}) {
    EXPECT_EQ(Change(depth), kNoError);
    EXPECT_TRUE(is_video_bitmap(screen) && screen == machine.shownPage);
    EXPECT_EQ(bitmap_color_depth(screen), depth);
    EXPECT_EQ(machine.videoPages, CurrentScreenUpdate() ? 2 : 1);
    InstallScreenUpdate(kDoubleBuffering);  // its canvas goes before the next mode
  }
  SetCurrentScreenUpdate(nullptr);
  SetTextMode();
  EXPECT_TRUE(machine.videoPages == 0 && !screen);
  machine.videoPagesLeft = 0;
  EXPECT_EQ(Change(16), kNoError);
  EXPECT_FALSE(is_video_bitmap(screen));
}

TEST_F(Startup, ARunningRootFollowsANewModeOrKeepsTheOld) {
  InstallToolkit(nullptr);
  Skin own{"default"};
  Recorder root;
  Widget child;
  root.SetSkin(&own);
  root.names = {{&child, "child"}};
  root.Add(&child);
  root.MsgStart();
  root.watched = {MSG_INITSKIN};
  settings.mouseSpeed = 5;
  for (const int depth : {32, 8}) {
    const auto expect = [&root, &own, depth](const char* events) {
      const BITMAP* canvas = CurrentScreenUpdate()->GetCanvas();
      EXPECT_TRUE(canvas && canvas->w == 800 && bitmap_color_depth(screen) == depth);
      for (const Skin* skin : {&own, CurrentSkin()})
        EXPECT_EQ(bitmap_color_depth(skin->bitmaps[0]->GetBitmap()), depth);
      EXPECT_TRUE(root.w() == 800 && settings.screenWidth == 800 && root.Dirty());
      EXPECT_EQ(root.Events(), events);
      EXPECT_EQ(red, makecol_depth(depth, 255, 0, 0));
      root.ForgetRedraw();
    };
    machine.refusedModes.clear();
    EXPECT_EQ(ChangeScreenMode(0, true, 800, 600, depth, &root), kNoError);
    expect("child: InitSkin");
    EXPECT_EQ(machine.mouseSpeeds.back(), Pair(5, 5)) << "which the library resets";
    machine.refusedModes = {16, 15};
    set_palette(black_palette), RecomputeNamedColors();
    Tried(), machine.switchModes.clear();
    EXPECT_EQ(Change(16, &root), kGraphicsError);
    EXPECT_EQ(machine.switchModes, std::vector({SWITCH_BACKGROUND}));
    EXPECT_EQ(Tried(),
              " screen 640x480x16 screen 640x480x15 screen 800x600x" + std::to_string(depth));
    expect(depth == 8 ? "child: InitSkin" : "");  // whose colours are places in the palette
  }
  machine.refusedModes = {8, 24, 32};
  EXPECT_EQ(Change(24, &root), kGraphicsError);
  EXPECT_EQ(CurrentScreenUpdate()->GetCanvas(), nullptr) << "not even the old mode";
  root.DrawDirty();
  root.MsgEnd();
}

TEST_F(Startup, AWindowThatIsTheRootFillsANewModeWithItsFrame) {
  InstallToolkit(nullptr);
  Window root;
  root.MsgStart();
  for (const int width : {800, 320}) {
    ChangeScreenMode(0, true, width, 200, 16, &root);
    root.MsgTick();
    EXPECT_TRUE(root.Bounds() == Rect(0, 0, width, 200) && root.Client().w() == width - 8);
    root.Resize(50, 50), root.Maximize(), root.MsgTick();
    EXPECT_EQ(root.Bounds(), Rect(0, 0, width, 200));
    root.Maximize();
  }
  root.MsgEnd();
}

TEST(Error, OnlySoundAndNoErrorAreNoFailures) {
  std::string seen;
  for (int code = -1; code <= 16; ++code)
    seen +=
        Join(code, Error{code}.IsError() ? "fails:" : "is none:") + Error{code}.GetDescription();
  ExpectText("errors", seen);
}

TEST(ErrorDeathTest, AReportedErrorEndsTheProcess) {
  const testing::ExitedWithCode failed{1};
  const auto report = [] {
    FakeMachine machine;
    settings.useVideoMemory = true;
    ChangeScreenMode(0, true, 640, 480, 16, nullptr);
    Error{kSkinFileError}.Report();
  };
  EXPECT_EXIT(report(), failed, "Error: skin description file not found!\n\n");
  EXPECT_EXIT((allegro_exit(), dup2(STDERR_FILENO, STDOUT_FILENO), Error{kAllegroError}.Report()),
              failed, "Error: initializing Allegro!\n");
}

}  // namespace
}  // namespace zel
