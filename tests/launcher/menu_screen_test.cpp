#include "launcher/menu_screen.h"

#include "tests/support/launcher_fixture.h"
#include "tests/support/reference.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/core/startup.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/testing/fake_machine.h"
#include "toolkit/testing/fake_timers.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>

namespace zel {
namespace {

const std::string kMain =
    "[MENU_CONFIGURATION]\nLinesNumber=6\nHintFile=hints\n[LINE1]\nSeparator=1\n"
    "[LINE2]\nTitle=First\nExCode=11\nExString=" +
    std::string(300, 'x') +
    "\nHintSection=a\n"
    "[LINE3]\nTitle=Inner\nExCode=12\nSubmenu=inner.cfg\n[LINE4]\nSeparator=1\n"
    "[LINE5]\nTitle=Off\nSubmenu=inner.cfg\nDisable=1\nExCode=15\n[LINE6]\nTitle=Nothing\n";
constexpr const char* kInner =
    "[MENU_CONFIGURATION]\nLinesNumber=2\n[LINE1]\nTitle=One\nExCode=21\nExString=one\n"
    "[LINE2]\nTitle=Deeper\nExCode=22\nSubmenu=menu.cfg\n";

constexpr int kWidth = 240, kHeight = 160;
constexpr int kSecond = 50;  // ticks

class MenuScreenTest : public LauncherFixture {
 protected:
  MenuScreenTest() {
    WriteFile("menu.cfg", kMain);
    WriteFile("inner.cfg", kInner);
    WriteFile("hints", "[a]\nsome words\n[end:a]\n");
    settings.screenWidth = kWidth;
    settings.screenHeight = kHeight;
    InstallToolkit(nullptr);
  }
  ~MenuScreenTest() override {
    screen_->MsgEnd();
    screen_.reset();
    ExitToolkit();
  }

  void Start(const std::string& position) {
    if (screen_) screen_->MsgEnd();
    WriteFile("menupos.txt", position);
    screen_ = std::make_unique<MenuScreen>();
    screen_->MsgStart();
    screen_->ApplyGeometry();
  }
  // Depth, current entry and its exit code after some keys.
  std::string After(const std::vector<int>& scancodes) {
    for (const int scancode : scancodes) screen_->HandleKey(0, scancode);
    return std::to_string(screen_->Config().Depth()) + '/' +
           std::to_string(screen_->List().GetCurrent()) + '/' +
           std::to_string(launcherState.exitCode);
  }
  void Pass(int ticks) {
    while (ticks-- > 0) screen_->MsgTick();
  }
  // After a tick with presses of Enter and its releases, and of the arrow down.
  std::string Play(const std::string& strokes) {
    for (const char stroke : strokes)
      if (stroke == 'r')
        _handle_key_release(KEY_ENTER);
      else
        _handle_key_press(stroke == 'p' ? 13 : 0, stroke == 'p' ? KEY_ENTER : KEY_DOWN);
    Pass(1);
    return After({});
  }
  // What the screen shows after its timers have run off is the reference picture.
  void ExpectShown(const std::string& picture) {
    for (int id = 0; id < kTimerSlots; ++id) screen_->MsgTimer(id);
    settings.showMouse = false;
    screen_->MsgTick();
    screen_->DrawDirty();
    ExpectLook(picture, CurrentScreenUpdate()->GetCanvas(), {0, 0, kWidth, kHeight});
  }

  FakeMachine machine_;
  FakeTimers timers_;
  std::unique_ptr<MenuScreen> screen_;
};

TEST_F(MenuScreenTest, LooksAsTheFilesSay) {
  const std::string layout =
      "[MENU_CONFIGURATION]\nMenuLeft=12\nMenuTop=10\nMenuWidth=120\nMenuHeight=104\nHintLeft=140\n"
      "HintTop=16\nHintWidth=90\nHintHeight=60\nProgressX=20\nProgressY=120\nProgressW=150\n"
      "MenuTitle=Main\nHintTitle=Help\nBackground=";
  std::filesystem::create_directory("pic");
  save_bitmap("pic/progress.bmp", Paint({"r", "y"}).get(), nullptr);
  save_bitmap("small.bmp", Paint(Rows(150, std::string(200, 'c'))).get(), nullptr);
  save_bitmap("large.bmp", Paint(Rows(170, std::string(260, 'y'))).get(), nullptr);
  save_bitmap("icon.bmp", Paint({"ggg", "b.b", "ggg"}).get(), nullptr);
  WriteFile("menu.cfg", layout + "small.bmp\n" + kMain + "Icon=icon.bmp\nColor=0,0,255\n");
  WriteFile("inner.cfg", layout + "large.bmp\nBacklineColor=255,0,0\n" + kInner);
  WriteFile("progress", "[Progress]\nStepNumber=10\nCurrentStep=4\n");
  Start("");
  ExpectShown("menu_screen");
  After({KEY_DOWN, KEY_ENTER});
  std::filesystem::remove("progress");
  ExpectShown("menu_screen_below");
  After({KEY_ENTER});
  ExpectShown("menu_screen_again");
}

TEST_F(MenuScreenTest, KeysMoveThroughTheMenus) {
  Start("");
  EXPECT_STREQ(launcherState.outputString, std::string(255, 'x').c_str());
  const std::pair<std::vector<int>, std::string> rows[] = {
      {{}, "1/1/11"},
      {{KEY_DOWN}, "1/2/12"},
      {{KEY_ENTER}, "2/0/0"},
      {{KEY_DOWN, KEY_DOWN, KEY_ENTER_PAD}, "3/0/0"},
      {{KEY_SPACE}, "2/2/22"},
      {{KEY_HOME, KEY_ENTER}, "1/2/12"},
      {{KEY_DOWN, KEY_ENTER}, "1/4/15"}};
  for (const auto& [keys, where] : rows) EXPECT_EQ(After(keys), where);
}

TEST_F(MenuScreenTest, AHeldKeyChoosesOnce) {
  Start("2");
  Pass(kSecond);
  key[KEY_SPACE] = 1;
  EXPECT_EQ(After({KEY_SPACE, KEY_SPACE}), "2/0/0");
  EXPECT_EQ(After({KEY_ENTER, KEY_SPACE}), "1/2/12") << "another key counts";
  EXPECT_EQ(After({KEY_ENTER}), "2/0/0");
  key[KEY_SPACE] = 0;
  simulate_ukeypress(' ', KEY_SPACE);
  screen_->MsgTick();
  EXPECT_EQ(After({}), "2/0/0") << "its last repeat";
  EXPECT_EQ(After({KEY_SPACE}), "1/2/12");
  // Up to its release, within a tick: in and back and held; then held again.
  EXPECT_EQ(Play("prpp"), "1/2/12");
  EXPECT_EQ(Play("rpppr"), "2/0/0");
}

TEST_F(MenuScreenTest, AKeyThatIsDownBeforeTheMenuComesChoosesNothing) {
  for (const auto& [strokes, where] : {std::pair{"p p p pr", "1/2/12"},
                                       {"pr", "2/0/0"},
                                       {"p r", "2/0/0"},
                                       {"p d r", "1/4/15"},
                                       {"p p r pr", "2/0/0"}}) {
    process.input.releases = {};
    Start("2");
    std::istringstream ticks{strokes};
    for (std::string tick; ticks >> tick;) Play(tick);
    EXPECT_EQ(After({}), where) << strokes;
  }
  process.input.releases = {};
  Start("1");
  Play("prd");
  EXPECT_EQ(launcherState.exitCode, 11) << "what follows the choice changes nothing";
}

TEST_F(MenuScreenTest, TheLastPositionIsRestoredAsFarAsItFits) {
  const std::pair<const char*, const char*> rows[] = {
      {"0", "1/0/0"},   {"2,1", "2/1/21"},    {"2,2,5", "3/5/15"}, {"2,2,3,1", "4/1/21"},
      {"99", "1/5/0"},  {"2,99,1", "2/2/22"}, {"1,3", "1/1/11"},   {"4,1", "2/1/21"},
      {"-7", "1/1/11"}, {"2,-1", "2/0/0"},
  };
  for (const auto& [position, where] : rows) {
    Start(position);
    EXPECT_EQ(After({}), where) << position;
  }
  Start("2,2,2");
  EXPECT_EQ(After({}), "3/2/11");
}

// Menus of different heights, whose lists have other pages than the one shown before.
TEST_F(MenuScreenTest, TheCurrentEntryIsVisibleAfterEachChangeOfTheMenu) {
  std::string entries = "\nLinesNumber=40\n";
  for (int i = 1; i <= 40; ++i)
    entries += "[LINE" + std::to_string(i) + "]\nTitle=x\nSubmenu=inner.cfg\n";
  const std::string head = "[MENU_CONFIGURATION]\nMenuHeight=";
  const auto expectVisible = [this](const std::string& position) {
    Start(position);
    screen_->ApplyGeometry();
    const int row = screen_->List().GetCurrent() - screen_->List().GetFirst();
    EXPECT_TRUE(row >= 0 && row < screen_->List().PageSize()) << position;
  };
  for (const bool isHigher : {false, true}) {
    WriteFile("menu.cfg", head + (isHigher ? "470" : "310") + entries);
    WriteFile("inner.cfg", head + (isHigher ? "310" : "470") + entries);
    for (int i = 12; i < 40; ++i) {
      expectVisible(std::to_string(i) + ',' + std::to_string(i));
      After({KEY_HOME, KEY_ENTER});
      expectVisible(std::to_string(i));
    }
  }
}

TEST_F(MenuScreenTest, AKeyAfterTheMouseHasOpenedAMenuMovesOn) {
  Start("2");
  EXPECT_FALSE(screen_->TestFlag(kFlagSkinChanged)) << "settled at the start";
  mouse_x = screen_->List().x();
  mouse_y = screen_->List().y() + 1;
  CurrentPointer()->Poll();
  screen_->List().MsgDClick();
  EXPECT_EQ(After({KEY_DOWN}), "2/1/21");
}

TEST_F(MenuScreenTest, LooksForTheMouseServerUntilItRuns) {
  launcherState.mousePending = true;
  settings.showMouse = false;
  settings.mouseSpeed = 5;
  Start("");
  std::string seen;
  for (const bool runs : {false, true}) {
    if (runs) WriteFile("gpm.pid", "");
    for (int id = 0; id < kTimerSlots; ++id) screen_->MsgTimer(id);
    seen += std::to_string(settings.showMouse) + std::to_string(launcherState.mousePending) +
            std::to_string(timers_.Count()) + ' ';
  }
  EXPECT_EQ(seen, "013 102 ");
  EXPECT_EQ(machine_.mouseSpeeds.back(), FakeMachine::Pair(5, 5));
}

TEST_F(MenuScreenTest, GoingBackToASeparatorDoesNotChooseIt) {
  Start("2,0");
  WriteFile("menu.cfg", kMain + "[LINE3]\nSeparator=1\n");
  EXPECT_EQ(After({KEY_ENTER}), "1/2/12");
  EXPECT_FALSE(screen_->IsClosed());
}

}  // namespace
}  // namespace zel
