#include "toolkit/base/settings.h"

#include <climits>
#include <cstring>
#include <sstream>
#include <string>

#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

// Every key with a value that no field starts with, in the order in which files have them.
constexpr char kEverything[] =
    "skinPath = skins/blue.cfg\nscreenWidth = 801\nscreenHeight = 602\nrefreshRate = 75\n"
    "colorDepth = 24\ngfxMode = FB\nfullscreen = 0\nuseVideoMemory = 1\nfullDrag = 0\n"
    "fullResize = 0\nlogicFrameRate = 40\nunlimitedFrameRate = 1\nshowFrameRate = 1\n"
    "antialiasing = 0\nguiSound = 0\nsoundVolume = 100\nsoundDriver = ALSA\nmidiDriver = 7\n"
    "showMouse = 0\nmouseShadow = 0\ndoubleClickDelay = 210\nmouseSpeed = 3\nuseKeyboard = 0\n"
    "keyDelay = 170\nkeyRepeat = 90\nuseJoystick = 1\nscreenUpdateMethod = 1\nvsync = 1\n"
    "yield = 0\nrunInBackground = 0\nmaxFrameSkip = 6\ntooltipDelay = 220\n"
    "tooltipAutohideDelay = 5100\n";

template <class... Values>
std::string Join(const Values&... values) {
  std::ostringstream text;
  ((text << values << ' '), ...);
  return text.str();
}

class SettingsTest : public AllegroFixture {
 protected:
  static Settings Read(const std::string& path) {
    Settings read;
    read.Load(path.c_str());
    return read;
  }
  // What Save writes for settings of this file that were changed by nobody.
  static std::string Saved(const Settings& unchanged) {
    TempFile file{""};
    Settings copy = unchanged;
    copy.fileName.Assign(file.Path());
    copy.fileLoaded = true;
    copy.Save();
    return file.Content();
  }
  static void ExpectEverything(const Settings& s) {
    EXPECT_EQ(
        Join(s.skinPath, s.screenWidth, s.screenHeight, s.refreshRate, s.colorDepth, s.fullscreen,
             s.useVideoMemory, s.fullDrag, s.fullResize, s.logicFrameRate, s.unlimitedFrameRate,
             s.showFrameRate, s.antialiasing, s.guiSound, s.soundVolume, s.midiDriver, s.showMouse,
             s.mouseShadow, s.doubleClickDelay, s.mouseSpeed, s.useKeyboard, s.keyDelay,
             s.keyRepeat, s.useJoystick, s.screenUpdateMethod, s.vsync, s.yield, s.runInBackground,
             s.maxFrameSkip, s.tooltipDelay, s.tooltipAutohideDelay),
        "skins/blue.cfg 801 602 75 24 0 1 0 0 40 1 1 0 0 100 7 0 0 210 3 0 170 90 1 1 1 0 0 "
        "6 220 5100 ");
    EXPECT_EQ(s.gfxMode, AL_ID('F', 'B', ' ', ' '));
    EXPECT_EQ(s.soundDriver, AL_ID('A', 'L', 'S', 'A'));
  }
};

TEST_F(SettingsTest, EveryKeyIsReadAndWrittenInItsPlace) {
  const std::string content = std::string{"[Toolkit]\n"} + kEverything;
  const TempFile file{content};
  const Settings read = Read(file.Path());
  EXPECT_TRUE(read.fileLoaded);
  EXPECT_STREQ(read.fileName, file.Path());
  ExpectEverything(read);
  EXPECT_EQ(Saved(read), content);
  set_uformat(U_ASCII_CP);
  ExpectEverything(Read(file.Path()));
}

TEST_F(SettingsTest, TheFirstSectionWithOneOfTheKeysStandsForAMissingOne) {
  TempFile file{"[Strange]\nScreen = 1\n\n[GUI]\n" + std::string{kEverything} +
                "\n[More]\nscreenWidth = 5\n"};
  Settings read = Read(file.Path());
  ExpectEverything(read);
  read.screenWidth = 1024;
  read.Save();
  EXPECT_EQ(Read(file.Path()).screenWidth, 1024);
  EXPECT_EQ(file.Content().find("[Toolkit]"), std::string::npos);
  const TempFile named{"[Other]\nscreenWidth = 5\n[toolkit]\nscreenHeight = 600\n"};
  EXPECT_EQ(Read(named.Path()).screenWidth, 640);
  EXPECT_EQ(Read(named.Path()).screenHeight, 600);
}

TEST_F(SettingsTest, SavingKeepsTheOtherLinesOfAnyFile) {
  UseLatin1();  // which has no euro
  const std::string before = "# " + std::string(252, 'x') + "\xE2\x82\xAC\xFF\r\n[Toolkit]\r\n";
  const std::string after = "[Other]\nscreenWidth = 6\nkey = " + std::string(200'000, 'x') + '\n';
  const TempFile file{before + "screenwidth=5\n# last\n" + after, "a#b.cfg"};
  Settings changed = Read(file.Path());
  changed.screenWidth = 7;
  changed.skinPath.Assign("\xE9");
  changed.Save();
  EXPECT_TRUE(
      file.Content().starts_with(before + "screenWidth = 7\n# last\nskinPath = \xC3\xA9\r\n"));
  EXPECT_TRUE(file.Content().ends_with("\ntooltipAutohideDelay = 5000\r\n" + after));
}

TEST_F(SettingsTest, WhatAFileDoesNotSayStaysAsItWas) {
  const std::string unrelated = "screenWidth = 5\n[Menu]\nMenuLeft = 3\n";
  const TempFile file{unrelated};
  const TempDir empty;
  for (const std::string& path :
       {std::string{file.Path()}, empty.Path("missing.cfg"), empty.Path(), std::string(5000, 'x')})
    EXPECT_EQ(Saved(Read(path)), Saved({})) << path;
  Settings changed;
  changed.Load(nullptr);
  EXPECT_FALSE(changed.fileLoaded);
  changed.fileName.Assign(file.Path());
  changed.Save();
  EXPECT_EQ(file.Content(), unrelated);
  changed.soundVolume = 3;
  changed.Load(file.Path());
  EXPECT_EQ(changed.soundVolume, 3);
}

TEST_F(SettingsTest, DamagedFilesGiveUsableSettings) {
  const std::string start = "[Toolkit]\nskinPath = ", longLine(100'000, 'a');
  for (const std::string& content :
       {std::string{"[Toolkit\nscreenWidth"}, start + longLine, '[' + longLine + "]\nvsync = 7\n",
        start + "\nscreenWidth = x\n=\n\xff",
        start + "\nscreenWidth = 99999999999999999999\nlogicFrameRate=-1\n"}) {
    const Settings read = Read(TempFile{content}.Path());
    EXPECT_LT(std::strlen(read.skinPath), 1024U);
    EXPECT_EQ(read.screenHeight, 480);
    EXPECT_GE(read.UsableFrameRate(), 1);
  }
}

TEST_F(SettingsTest, ValuesThatWouldStopTheProgramAreBroughtToTheNearestThatWork) {
  Settings set;
  for (const int rate : {0, INT_MIN}) {
    set.logicFrameRate = rate;
    EXPECT_EQ(set.UsableFrameRate(), 1);
    EXPECT_EQ(set.Ticks(5000), 5);
  }
  set.logicFrameRate = INT_MAX;
  EXPECT_EQ(set.Ticks(INT_MAX), INT_MAX / 1000 * set.UsableFrameRate() + 647);
  set.logicFrameRate = 50;
  for (const auto& [ms, ticks] : {std::pair{200, 10}, {39, 1}, {-200, 0}})
    EXPECT_EQ(set.Ticks(ms), ticks);
  // The console mouse drivers divide by 256 * width / 320 / speed.
  for (const int width : {320, 640, 800}) {
    set.screenWidth = width;
    set.mouseSpeed = INT_MAX;
    EXPECT_GE(256 * width / 320 / set.UsableMouseSpeed(), 1) << width;
    set.mouseSpeed = 0;
    EXPECT_EQ(set.UsableMouseSpeed(), 1);
  }
}

}  // namespace
}  // namespace zel
