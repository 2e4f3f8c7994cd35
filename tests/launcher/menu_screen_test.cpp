#include "launcher/menu_screen.h"

#include <unistd.h>

#include <map>
#include <sstream>

#include "tests/support/launcher_fixture.h"
#include "tests/support/reference.h"
#include "toolkit/base/zoom.h"
#include "toolkit/core/event_loop.h"
#include "toolkit/core/startup.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/skin/skin.h"
#include "toolkit/testing/fake_machine.h"
#include "toolkit/testing/fake_timers.h"
#include "toolkit/testing/hands.h"
// After Allegro itself.
#include <allegro/internal/aintern.h>

namespace zel {
namespace {

const std::string kMain =
    "[MENU_CONFIGURATION]\nLinesNumber=6\nHintFile=hints\nMenuHeight=60\n[LINE1]\nSeparator=1\n"
    "[LINE2]\nTitle=First\nExCode=11\nExString=first\nHintSection=a\n"
    "[LINE3]\nTitle=Inner\nExCode=12\nSubmenu=inner.cfg\nHintSection=b\n[LINE4]\nSeparator=1\n"
    "[LINE5]\nTitle=Off\nSubmenu=inner.cfg\nDisable=1\nExCode=15\n[LINE6]\nTitle=Nothing\n";
constexpr const char* kInner =
    "[MENU_CONFIGURATION]\nLinesNumber=2\n[LINE1]\nTitle=One\nExCode=21\nExString=one\n"
    "[LINE2]\nTitle=Deeper\nExCode=22\nSubmenu=menu.cfg\n";

constexpr int kWidth = 240, kHeight = 160;

class MenuScreenTest : public LauncherFixture {
 protected:
  MenuScreenTest() {
    WriteFile("menu.cfg", kMain);
    WriteFile("inner.cfg", kInner);
    WriteFile("hints", "[a]\nso few words as fit in it\n[end:a]\n[b]\nother words\n[end:b]\n");
    settings.screenWidth = kWidth;
    settings.screenHeight = kHeight;
    InstallToolkit(nullptr);
  }
  ~MenuScreenTest() override {
    screen_->MsgEnd();
    screen_.reset();
    EXPECT_EQ(timers_.Count(), 0);
    ExitToolkit();
  }

  void Start(const std::string& position) {
    if (screen_) screen_->MsgEnd();
    process.input.releases = {};
    for (int i = 0; i < KEY_MAX; ++i) key[i] = 0;
    WriteFile("menupos.txt", position);
    screen_ = std::make_unique<MenuScreen>();
    screen_->MsgStart();
    screen_->ApplyGeometry();
  }
  // Depth, current entry, its exit code and whether the screen has closed after what the words of a
  // script stand for: a start at a position, a press (@), keys that the menu is told, or that are
  // pressed (+) and let go of (-) until the next tick tells it.
  std::string Play(const std::string& script) {
    const std::map<std::string, int> keys = {
        {"down", KEY_DOWN},   {"up", KEY_UP},       {"home", KEY_HOME}, {"pad", KEY_ENTER_PAD},
        {"enter", KEY_ENTER}, {"space", KEY_SPACE}, {"tab", KEY_TAB},   {"escape", KEY_ESC},
        {"f1", KEY_F1},       {"f2", KEY_F2},       {"f3", KEY_F3},     {"f4", KEY_F4}};
    std::istringstream words{script};
    for (std::string word; words >> word;)
      if (word.find_first_not_of("0123456789,-") == std::string::npos)
        Start(word);
      else if (word == "tick" || word == "almost" || word == "second")
        for (int i = 0; i < (word == "tick" ? 1 : word == "almost" ? 49 : 50); ++i)
          screen_->MsgTick();
      else if (word == "late")  // a repeat that comes after an end that nobody tells
        key[KEY_SPACE] = 0, simulate_ukeypress(' ', KEY_SPACE);
      else if (word == "early") {  // typed before there was a menu
        InputRecord record;
        record.isLate = true;
        const HandledInput handled{record};
        screen_->HandleKey(0, KEY_ENTER);
      } else if (word == "back")  // from another console, where anything may have been pressed
        NoteReturn(), screen_->MsgTick();
      else if (word == "ring")  // all timers do
        for (int id = 0; id < kTimerSlots; ++id) screen_->MsgTimer(id);
      else if (word == "click")
        Hold(1), Hold(0);
      else if (word == "wheel")
        mouse_z = mouse_z - 1, screen_->MsgTick();
      else if (word == "move")
        PutMouse({mouse_x - 1, 9}), screen_->MsgTick();
      else if (word == "again")
        screen_->MsgEnd(), screen_->MsgStart();
      else if (word[0] == '@')
        Press(std::stoi(word.substr(1)));
      else if (word[0] == '\'')  // a text
        for (const char* at = &word[1]; const int letter = ugetxc(&at);)
          screen_->HandleKey(letter, 0);
      else if (word == "help") {  // which Enter leaves
        Play("second");
        timers_.onSleep = [this] { key[KEY_ENTER] = 1, TypeKey(0, KEY_ENTER), timers_.Tick(1); };
        screen_->HandleKey(0, KEY_F1);
      } else if (word == "close")
        screen_->Close();
      else if (word[0] == '+')
        _handle_key_press(0, keys.at(word.substr(1)));
      else if (word[0] == '-')
        _handle_key_release(keys.at(word.substr(1)));
      else
        screen_->HandleKey(0, keys.at(word));
    return "level " + std::to_string(screen_->Config().Depth()) + ", entry " +
           std::to_string(screen_->List().GetCurrent()) + ", code " +
           std::to_string(launcherState.exitCode) + (screen_->IsClosed() ? ", closed" : "");
  }
  // With the left mouse button, so many pixels below the beginning of the list.
  void Press(int below) {
    Widget& list = screen_->List();
    PutMouse({list.x() + 9, list.y() + below});
    Hold(1), Hold(0);
  }
  void Hold(int buttons) {
    HoldButtons(buttons);
    screen_->MsgTick();
  }
  // What the screen shows after the script is the reference picture.
  void ExpectShown(const std::string& picture, const std::string& script) {
    Play(script);
    settings.showMouse = false;
    screen_->MsgTick();
    screen_->DrawDirty();
    ExpectLook(picture, CurrentScreenUpdate()->GetCanvas(), {0, 0, kWidth, kHeight});
  }

  FakeMachine machine_;
  FakeTimers timers_;
  std::unique_ptr<MenuScreen> screen_;
};

TEST_F(MenuScreenTest, LooksAsTheFilesSayAndAllOfItIsZoomed) {
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
  std::string wider = layout;
  wider.replace(wider.find("HintWidth=90"), 12, "HintFile=hints\nHintWidth=125");
  WriteFile("inner.cfg", wider + "large.bmp\nBacklineColor=255,0,0\n" + kInner);
  WriteFile("progress", "[Progress]\nStepNumber=10\nCurrentStep=4\n");
  WriteFile("output.txt", "of another run");
  Start("");
  EXPECT_FALSE(FileExists("output.txt"));
  ExpectShown("menu_screen_at_start", "tick");
  ExpectShown("menu_screen", "ring");
  ExpectShown("menu_screen_moved", "down ring");
  std::filesystem::remove("progress");
  ExpectShown("menu_screen_without_progress", "ring");
  ExpectShown("menu_screen_below", "enter");
  ExpectShown("menu_screen_again", "enter");
  std::filesystem::rename("hints", "gone"), Play("enter"), std::filesystem::rename("gone", "hints");
  ExpectShown("menu_screen_again", "enter");

  WriteFile("menu.cfg", layout + "small.bmp\nDefault=2\nDefaultTimeout=10\n" + kMain);
  Start("");
  ExpectShown("menu_screen_counting", "");
  Start("");
  ExpectShown("menu_screen_counting_down", "almost");
  ExpectShown("menu_screen_counting_further", "second");
  ExpectShown("menu_screen_not_counting", "+f1 -f1 tick");

  const std::string zoomed =
      "[MENU_CONFIGURATION]\nMenuTitle=M\nHintTitle=H\nBackground=ground.bmp\nHeading=Head\n"
      "HeadingLeft=4\nHeadingTop=2\nKeyHelp=keys and many more "
      "words\nKeyHelpLeft=60\nKeyHelpTop=2\n"
      "KeyHelpColor=0,255,0\n[MENU_CONFIGURATION_140x100]\nMenuLeft=4\nMenuTop=24\nMenuWidth=80\n"
      "MenuHeight=58\nHintLeft=88\nHintTop=24\nHintWidth=48\nHintHeight=58\nProgressX=0\n"
      "ProgressY=74\nProgressW=136\n[MENU_CONFIGURATION]\n";
  save_bitmap("ground.bmp", Paint(Rows(100, "r" + std::string(138, 'b') + 'y')).get(), nullptr);
  WriteFile("menu.cfg", zoomed + kMain + "Icon=icon.bmp\n");
  WriteFile("inner.cfg", zoomed + kInner + "Icon=icon.bmp\n");
  WriteFile("progress", "[Progress]\nStepNumber=10\nCurrentStep=4\n");
  launcherState.layout = FitLayout("menu.cfg", {kWidth, kHeight}, kZoomToFit);
  CurrentSkin()->Reload();
  CurrentSkin()->fonts[2]->Load(ZEL_PICTURES "/../../data/skin/fonts/DejaVuSans.ttf");
  CurrentSkin()->fonts[2]->SetSize(Zoomed(15));
  settings.antialiasing = false;
  ExpectShown("menu_screen_zoomed", "2,1 ring");
}

TEST_F(MenuScreenTest, KeysGoOnFromTheLastPositionAsFarAsItFits) {
  const std::pair<const char*, const char*> rows[] = {
      {"0", "level 1, entry 0, code 0"},         {"2,1", "level 2, entry 1, code 21"},
      {"2,2,5", "level 3, entry 5, code 15"},    {"2,2,3,1", "level 4, entry 1, code 21"},
      {"99", "level 1, entry 5, code 0"},        {"2,99,1", "level 2, entry 2, code 22"},
      {"1,3", "level 1, entry 1, code 11"},      {"4,1", "level 2, entry 1, code 21"},
      {"-7", "level 1, entry 1, code 11"},       {"2,-1", "level 2, entry 0, code 0"},
      {"2,2,2", "level 3, entry 2, code 11"},    {"1 down", "level 1, entry 2, code 12"},
      {"2 enter", "level 2, entry 0, code 0"},   {"2,2 pad", "level 3, entry 0, code 0"},
      {"2,0 space", "level 1, entry 2, code 12"}};
  for (const auto& [script, where] : rows) EXPECT_EQ(Play(script), where) << script;
  EXPECT_EQ(Play("2 enter home enter down enter"), "level 1, entry 4, code 15");
  EXPECT_EQ(Play("2 @27 @27 down"), "level 2, entry 1, code 21")
      << "what the mouse has opened is settled";
  EXPECT_EQ(Play("1 close"), "level 1, entry 1, code 11") << "only a choice closes it";
  EXPECT_EQ(Play("1 +enter -enter +down tick"), "level 1, entry 2, code 11, closed")
      << "what follows it is nothing";
  EXPECT_EQ(ReadFile("output.txt"), "first\n");
  WriteFile("menu.cfg", kMain + "WaitForFile=hints\n");
  EXPECT_EQ(Play("5 enter"), "level 1, entry 5, code 0, closed") << "there is nothing to wait for";
  Play("2,0");
  WriteFile("menu.cfg", kMain + "[LINE3]\nSeparator=1\n");
  EXPECT_EQ(Play("enter"), "level 1, entry 2, code 12")
      << "going back to a separator does not choose it";
  settings.typeAhead = true;
  launcherState.exitCode = 0;
  WriteFile("menu.cfg", "[MENU_CONFIGURATION]\nDefault=1\nDefaultTimeout=1\n");
  EXPECT_EQ(Play("1,1 'a1 down pad enter space home @3 click second tick"),
            "level 1, entry -1, code 0");
}

TEST_F(MenuScreenTest, KeysAndPressesPassOverSeparatorsAndDoNotTakeThoseAtAnEnd) {
  const std::pair<const char*, const char*> rows[] = {
      {"2 down", "level 1, entry 4, code 15"},
      {"4 up", "level 1, entry 2, code 12"},
      {"1 up", "level 1, entry 0, code 11"},
      {"2 home", "level 1, entry 0, code 12"},
      {"2 @15", "level 1, entry 1, code 11"},
      {"2 @3", "level 1, entry 2, code 12"},
      {"2 @27", "level 1, entry 2, code 12"},
      {"2,1 @40", "level 2, entry 1, code 21"},
      {"1 escape down", "level 1, entry 2, code 12"},
      {"1 tab tab down", "level 1, entry 2, code 12"}};
  for (const auto& [script, where] : rows) EXPECT_EQ(Play(script), where) << script;
  EXPECT_EQ(Play("1 escape down tab down"), "level 1, entry 2, code 12")
      << "the hint has the focus";
}

TEST_F(MenuScreenTest, AKeyChoosesOnceUpToItsReleaseAndNotAtAllFromBeforeTheMenu) {
  const std::pair<const char*, const char*> rows[] = {
      {"2 second +space tick space space", "level 2, entry 0, code 0"},
      {"2 second +space tick enter space", "level 1, entry 2, code 12"},
      {"2 second +space tick late tick", "level 2, entry 0, code 0"},
      {"2 second +space tick late tick space", "level 1, entry 2, code 12"},
      {"2 second +enter -enter +enter +enter tick", "level 1, entry 2, code 12"},
      {"2 second +enter tick -enter +enter +enter +enter -enter tick", "level 1, entry 2, code 12"},
      {"2 +enter tick +enter tick +enter tick -enter tick", "level 1, entry 2, code 12"},
      {"2 +enter tick +enter tick +enter tick +enter -enter tick", "level 1, entry 2, code 12"},
      {"2 +space again +space tick -space tick", "level 1, entry 2, code 12"},
      {"2 +enter -enter tick", "level 2, entry 0, code 0"},
      {"2 almost +enter tick", "level 1, entry 2, code 12"},
      {"2 +enter tick -enter tick", "level 2, entry 0, code 0"},
      {"2 +enter tick +down tick -enter tick", "level 1, entry 4, code 15"},
      {"1 +enter tick @27 -enter tick", "level 1, entry 2, code 12"},
      {"1 +enter tick @27 +enter tick -enter tick", "level 1, entry 2, code 12"},
      {"2 early tick", "level 1, entry 2, code 12"},
      {"2 second back +enter tick -enter tick", "level 2, entry 0, code 0"},
      {"2 second back second second +enter tick", "level 2, entry 0, code 0"},
      {"2 second back +enter tick +enter tick -enter tick", "level 1, entry 2, code 12"},
      {"4 second +enter -enter tick up back +enter tick", "level 1, entry 2, code 12"},
      {"2 +enter tick +enter tick -enter tick +enter -enter tick", "level 2, entry 0, code 0"}};
  for (const auto& [script, where] : rows) EXPECT_EQ(Play(script), where) << script;
}

TEST_F(MenuScreenTest, LettersAndNumbersGoToEntriesAndF1ExplainsWhereTheSettingsSaySo) {
  std::string menu = "[MENU_CONFIGURATION]\nLinesNumber=13\n";
  int line = 0;
  for (const std::string title :
       {"Alpha", "", "album", "Жук", "жаба", "5 zip", "b", "Bee", "9th", "b", "b", "bea", "Last"})
    menu += "[LINE" + std::to_string(++line) + (title.empty() ? "]\nSeparator=1" : "]\nTitle=") +
            title + "\n";
  WriteFile("menu.cfg", menu + "Submenu=inner.cfg\n");
  Play("0");
  EXPECT_EQ(Play("'b f1"), "level 1, entry 0, code 0");
  settings.typeAhead = settings.help = true;
  const std::pair<const char*, int> rows[] = {
      {"0 'a", 2},         {"0 'aa", 0},        {"3 'alp", 0},         {"0 second tick 'aL", 2},
      {"0 'жА", 4},        {"3 'ж", 4},         {"0 'be", 7},          {"7 'b", 9},
      {"7 'be", 11},       {"0 'x", 0},         {"0 '6", 6},           {"0 '12", 12},
      {"0 '13", 3},        {"0 '5z", 5},        {"2 '0", 2},           {"0 'bx", 6},
      {"0 'b3", 3},        {"3 '9", 9},         {"0 'a second 'l", 2}, {"0 'a second tick 'l", 12},
      {"4 help enter", 4}, {"0 'a down 'l", 12}};
  for (const auto& [script, index] : rows)
    EXPECT_EQ(Play(script), "level 1, entry " + std::to_string(index) + ", code 0") << script;
  EXPECT_EQ(Play("12,2 '0"), "level 2, entry 0, code 0");
  EXPECT_EQ(Play("12,2 'bac"), "level 2, entry 0, code 0");
}

TEST_F(MenuScreenTest, ADefaultIsChosenByItselfWhereNobodyIsThere) {
  const std::string seconds = "second second second tick";
  const std::tuple<std::string, const char*, std::string, const char*> rows[] = {
      {"6\nDefaultTimeout=3", "", "second second", "level 1, entry 1, code 11"},
      {"6\nDefaultTimeout=3", "", seconds, "level 1, entry 5, code 0, closed"},
      {"6\nDefaultTimeout=3", "", "move " + seconds, "level 1, entry 1, code 11"},
      {"6\nDefaultTimeout=3", "", "ring move " + seconds,
       "level 1, entry 5, code 0, closed"},  // the mouse is new
      {"6\nDefaultTimeout=3", "", "ring move move " + seconds, "level 1, entry 1, code 11"},
      {"6\nDefaultTimeout=3", "", "@27 " + seconds, "level 1, entry 2, code 12"},
      {"6\nDefaultTimeout=3", "", "tab " + seconds, "level 1, entry 1, code 11"},
      {"6\nDefaultTimeout=3", "", "down " + seconds, "level 1, entry 2, code 12"},
      {"6\nDefaultTimeout=3", "", "click " + seconds, "level 1, entry 1, code 11"},
      {"6\nDefaultTimeout=3", "", "wheel " + seconds, "level 1, entry 1, code 11"},
      {"6\nDefaultTimeout=3", "", "+f1 -f1 " + seconds, "level 1, entry 1, code 11"},
      {"6\nDefaultTimeout=3", "", "+f1 -f1 tick again " + seconds,
       "level 1, entry 5, code 0, closed"},
      {"6\nDefaultTimeout=3", "0", seconds, "level 1, entry 0, code 0"},
      {"6\nDefaultTimeout=3\nDefaultAfterReturn=1", "2", seconds,
       "level 1, entry 5, code 0, closed"},
      {"3\nDefaultTimeout=1", "", seconds, "level 2, entry 0, code 0"},
      {"1\nDefaultTimeout=1", "", seconds, "level 1, entry 1, code 11"},
      {"1\nDefaultTimeout=1\n[LINE1]\nTitle=Top\nExCode=10\nSeparator=0", "", seconds,
       "level 1, entry 0, code 10, closed"},
      {"6\n[LINE1]\nTitle=Top\nExCode=10\nSeparator=0", "", "tick", "level 1, entry 0, code 10"},
      {"5\nDefaultTimeout=1", "", seconds, "level 1, entry 1, code 11"},
      {"9\nDefaultTimeout=1", "", seconds, "level 1, entry 1, code 11"},
      {"0\nDefaultTimeout=1", "2,0", seconds, "level 2, entry 0, code 0"},
      {"6\nDefaultTimeout=-1", "", seconds, "level 1, entry 1, code 11"},
      {"6\nDefaultTimeout=4294967297", "", seconds, "level 1, entry 1, code 11"},
      {"6", "", seconds, "level 1, entry 1, code 11"}};
  WriteFile("gpm.pid", "");
  for (const auto& [keys, position, script, where] : rows) {
    const std::string named = "[MENU_CONFIGURATION]\nDefault=" + keys + "\n";
    WriteFile("menu.cfg", named + kMain);
    WriteFile("inner.cfg", named + kInner);
    PutMouse({kWidth, kHeight});
    launcherState.mousePending = true;
    Start(position);
    EXPECT_EQ(Play(script), where) << keys << ' ' << script;
  }
}

TEST_F(MenuScreenTest, LooksAndSizesChangeAtOnceEverywhereAndAreKept) {
  WriteFile(
      "menu.cfg",
      "[MENU_CONFIGURATION]\nHeading=Head\nKeyHelp=keys and words\nKeyHelpLeft=70\nKeyHelpTop=2\n"
      "Background=ground.bmp\nProgressX=2\nProgressY=54\nProgressW=100\n"
      "[MENU_CONFIGURATION_160x90]\nHeadingLeft=9\nMenuLeft=9\nMenuTop=20\nMenuWidth=90\n"
      "MenuHeight=40\nHintLeft=104\nHintTop=22\nHintWidth=50\nHintHeight=40\nProgressX=9\n"
      "ProgressY=60\n[MENU_CONFIGURATION_120x80]\n"
      "HeadingLeft=4\nHeadingTop=2\nMenuLeft=4\nMenuTop=16\nMenuWidth=70\n"
      "MenuHeight=36\nHintLeft=76\nHintTop=16\nHintWidth=40\nHintHeight=36\n" +
          kMain + "WaitForFile=missing\nIcon=icon.bmp\nHintSection=a\n");
  save_bitmap("icon.bmp", Paint({"ggg", "b.b", "ggg"}).get(), nullptr);
  save_bitmap("ground.bmp", Paint(Rows(80, "r" + std::string(118, 'g') + 'y')).get(), nullptr);
  std::filesystem::create_directory("pic");
  save_bitmap("pic/progress.bmp", Paint({"r", "y"}).get(), nullptr);
  WriteFile("progress", "[Progress]\nStepNumber=10\nCurrentStep=4\n");
  WriteFile("blue.skin",
            "[Skin]\n[COLORS]\nface=0,0,255\nfontface=255,255,255\nback=255,0,255\ncontrast=7\n"
            "[SCREEN]\npicture=0\nheadingColor=0,255,255\n");
  WriteFile("junk.skin", "face");
  const auto begin = [] {
    settings.looks.Assign("none.skin, blue.skin, junk.skin, default");
    settings.skinPath.Assign("default");
    settings.zoom = kZoomToFit;
    launcherState.looks.Begin();
    launcherState.layout = launcherState.looks.Fit();
    return settings.skinPath.c_str() + (' ' + std::to_string(CurrentZoom()));
  };
  EXPECT_EQ(begin(), "default 2.000000");
  CurrentSkin()->Reload();
  settings.help = true;
  Play("5 ring");
  const int first = screen_->List().GetFirst();
  EXPECT_EQ(Play("f4"), "level 1, entry 5, code 0") << "there is no room for more";
  EXPECT_FALSE(launcherState.looks.ChangeSize(true));
  EXPECT_FALSE(std::filesystem::exists("menulook.txt"));
  ExpectShown("menu_screen_in_blue", "f2");
  EXPECT_EQ(ReadFile("menulook.txt"), "[Look]\ncommandLine =  \nskin = blue.skin\nzoom = auto\n");
  int slept = 0;
  const auto press = [](int scancode) {
    TypeKey(0, scancode), keyboard_lowlevel_callback(scancode | 0x80);
  };
  timers_.onSleep = [&] {
    if (++slept == 1) ExpectShown("menu_screen_waiting", "");
    if (slept == 3) ExpectShown("menu_screen_waiting_smaller", "");
    for (int i = 0; i < (slept == 2 ? 3 : 0); ++i) press(KEY_F3);
    if (slept == 5) TypeKey(27, KEY_ESC);
    for (int i = 0; slept == 4 && i < timers_.Count(); ++i) timers_.Tick(i);  // is the file there?
    timers_.Tick(1);
  };
  EXPECT_EQ(Play("enter"), "level 1, entry 5, code 0");
  EXPECT_EQ(screen_->List().GetFirst(), first);
  timers_.onSleep = [&] {
    if (++slept == 7) press(KEY_F4);
    if (slept == 8) ExpectShown("menu_screen_helping", ""), TypeKey(27, KEY_ESC);
    timers_.Tick(1);
  };
  Play("f1");
  EXPECT_EQ(ReadFile("menulook.txt"),
            "[Look]\ncommandLine =  \nskin = blue.skin\nzoom = 1.500000\n");
  EXPECT_EQ(begin(), "blue.skin 1.500000");
  WriteFile("cmdline", "quiet zel.look=junk zel.look=blue zel.zoom=1.3 xzel.look=default\n");
  EXPECT_EQ(begin(), "blue.skin 1.300000");
  ExpectShown("menu_screen_as_before", "f2 f4 f4 f4 f4");
  EXPECT_EQ(begin(), "default 2.000000");
  ExpectShown("menu_screen_of_another_layout", "f3 f3");
  // The first entry in view, how many are, and the current one, while the size changes.
  std::string parts, menu = ReadFile("menu.cfg");
  WriteFile("menu.cfg", menu.replace(menu.find("MenuHeight=40"), 13, "MenuHeight=66"));
  for (int current = 0; current < 6; ++current)
    for (int before = 0; before < 6; before += 2) {
      Play("f4 f4 f4 f4 " + std::to_string(current));
      screen_->List().SetFirst(before);
      for (const char* key : {"tick", "f3", "f3", "f3", "f2", "f4", "f4", "f4"}) {
        Play(key);
        parts += Join(screen_->List().GetFirst(), screen_->List().PageSize(),
                      screen_->List().GetCurrent()) +
                 "; ";
      }
      parts += '\n';
    }
  ExpectText("parts_of_menus", parts);
  settings.zoom = 1;
  launcherState.looks.Begin();
  EXPECT_EQ(settings.zoom, 1.3);
  WriteFile("cmdline", "zel.look=none zel.zoom=nan");
  EXPECT_EQ(begin(), "default 2.000000");
  for (const char* skin : {"gone.skin", "blue.skin"}) {
    settings.skinPath.Assign(skin);
    launcherState.looks.Begin();
    EXPECT_TRUE(launcherState.looks.FallBack());
    EXPECT_EQ(settings.skinPath.c_str() == std::string{"default"}, skin[0] == 'b') << skin;
  }
  WriteFile("broken.skin", "[Skin]\nmain_data=missing\n");
  for (const auto& [looks, skin] :
       {std::pair{"", "gone.skin"}, {"junk.skin, broken.skin", "default"}}) {
    settings.looks.Assign(looks);
    settings.skinPath.Assign(skin);
    launcherState.looks.Begin();
    EXPECT_FALSE(launcherState.looks.ChangeSkin());
    EXPECT_FALSE(CurrentSkin()->skinFile) << "the one that there was is back";
    EXPECT_FALSE(launcherState.looks.FallBack()) << "there is no other";
  }
}

TEST_F(MenuScreenTest, SizesGoUpAndDownInStepsThatTheScreenHasRoomFor) {
  Start("");
  settings.screenWidth = 8 * 800;
  settings.screenHeight = 8 * 600;
  std::string seen;
  for (const auto& [zoom, isLarger] : {std::pair{1.1, true}, {1.6, false}}) {
    settings.zoom = zoom;
    launcherState.looks.Begin();
    launcherState.layout = launcherState.looks.Fit();
    while (launcherState.looks.ChangeSize(isLarger)) seen += Join(CurrentZoom());
    std::filesystem::remove("menulook.txt");
  }
  EXPECT_EQ(seen, "1.25 1.5 1.75 2 2.5 3 3.5 4 5 6 7 8 1.5 1.25 1 ");
  settings.zoom = 1;
  WriteFile("cmdline", "zel.zoom=1");
  launcherState.looks.Begin();
  EXPECT_TRUE(launcherState.looks.ChangeSize(true));
  launcherState.looks.Begin();
  launcherState.looks.Fit();
  EXPECT_EQ(CurrentZoom(), 1.25) << "it was kept";
}

// Menus of different heights, whose lists have other pages than the one shown before.
TEST_F(MenuScreenTest, TheCurrentEntryIsVisibleAfterEachChangeOfTheMenu) {
  std::string entries = "\nLinesNumber=40\n";
  for (int i = 1; i <= 40; ++i)
    entries += "[LINE" + std::to_string(i) + "]\nTitle=x\nSubmenu=inner.cfg\n";
  const std::string head = "[MENU_CONFIGURATION]\nMenuHeight=";
  for (const auto& [outer, inner] : {std::pair{"310", "470"}, {"470", "310"}}) {
    WriteFile("menu.cfg", head + outer + entries);
    WriteFile("inner.cfg", head + inner + entries);
    for (int i = 12; i < 40; ++i) {
      const std::string position = std::to_string(i) + ',' + std::to_string(i);
      for (const std::string& script : {position, std::string{"home enter"}}) {
        Play(script);
        screen_->ApplyGeometry();
        const int row = screen_->List().GetCurrent() - screen_->List().GetFirst();
        EXPECT_TRUE(row >= 0 && row < screen_->List().PageSize()) << i << script << outer;
      }
    }
  }
}

TEST_F(MenuScreenTest, AClickBringsTheFocusAndTheWheelMovesWhatIsUnderThePointer) {
  WriteFile("menu.cfg",
            "[MENU_CONFIGURATION]\nMenuLeft=0\nMenuTop=0\nMenuWidth=90\nHintLeft=100\nHintTop="
            "0\nHintWidth=90\n"
            "HintHeight=60\n" +
                kMain);
  EXPECT_EQ(Play("1 @27 down"), "level 1, entry 4, code 15");
  Play("1 @27");
  const int before = screen_->List().GetFirst();
  Play("wheel");
  EXPECT_GT(screen_->List().GetFirst(), before);
  PutMouse({140, 30});
  EXPECT_EQ(Play("click down"), "level 1, entry 2, code 12") << "the hint has the focus";
}

TEST_F(MenuScreenTest, APaletteIsAnotherOneForThePictureWhenTheLookChanges) {
  ExitToolkit();
  settings.colorDepth = 8;
  InstallToolkit(nullptr);
  save_bitmap("ground.bmp",
              Paint(Rows(kHeight, std::string(120, 'g') + std::string(120, 'y'))).get(), nullptr);
  WriteFile("menu.cfg",
            "[MENU_CONFIGURATION]\nBackground=ground.bmp\nMenuLeft=80\nMenuTop=30\nMenuWidth=80\n" +
                kMain);
  WriteFile("blue.skin",
            "[Skin]\nmain_data=palette.dat\n[COLORS]\nface=0,0,255\nfontface=255,255,255\n");
  std::filesystem::copy(ZEL_PICTURES "/../toolkit/skin/samples/palette.dat", ".");
  settings.looks.Assign("blue.skin, default");
  launcherState.looks.Begin();
  ExpectShown("menu_screen_of_few_colors", "1 f2");
}

TEST_F(MenuScreenTest, ItsTimersLookForTheMouseServerAndTheProgressFile) {
  remove_mouse();
  launcherState.mousePending = true;
  launcherState.heldMouse = dup(STDERR_FILENO);
  settings.showMouse = false;
  settings.mouseSpeed = 5;
  settings.doubleClickDelay = 740;
  Start("");
  std::string seen;
  for (const int timer : {1, 1, 0}) {
    if (!seen.empty()) WriteFile("gpm.pid", "");
    if (!seen.empty())
      WriteFile("progress", "[Progress]\nStepNumber=9\nCurrentStep=4\nProgressInterval=250\n");
    screen_->MsgTimer(timer);
    seen += Join(settings.showMouse, launcherState.mousePending, launcherState.heldMouse);
    for (int i = 0; i < timers_.Count(); ++i)
      seen += std::to_string(timers_.Period(i) / MSEC_TO_TIMER(1)) + "ms ";
  }
  EXPECT_EQ(seen, "0 1 -1 1000ms 500ms 20ms 1 0 -1 1000ms 20ms 1 0 -1 250ms 20ms ");
  EXPECT_EQ(machine_.mouseSpeeds.back(), FakeMachine::Pair(5, 5));
  EXPECT_EQ(DoubleClickWindow(), 37);
}

}  // namespace
}  // namespace zel
