#include "toolkit/core/settings.h"

#include <climits>
#include <cstring>
#include <sstream>
#include <string>

#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

// Every key with a value that no field starts with, in the order in which files have them.
std::string Everything() {
  std::istringstream words{
      "skinPath=skins/blue.cfg screenWidth=801 screenHeight=602 refreshRate=75 colorDepth=24 "
      "gfxMode=FB fullscreen=0 useVideoMemory=1 fullDrag=0 fullResize=0 logicFrameRate=40 "
      "unlimitedFrameRate=1 showFrameRate=1 antialiasing=0 guiSound=0 soundVolume=100 "
      "soundDriver=ALSA midiDriver=7 showMouse=0 mouseShadow=0 doubleClickDelay=210 mouseSpeed=3 "
      "useKeyboard=0 keyDelay=170 keyRepeat=90 useJoystick=1 screenUpdateMethod=1 vsync=1 yield=0 "
      "runInBackground=0 maxFrameSkip=6 tooltipDelay=220 tooltipAutohideDelay=5100"};
  std::string lines;
  for (std::string word; words >> word;) {
    const std::size_t sign = word.find('=');
    lines += word.substr(0, sign) + " = " + word.substr(sign + 1) + '\n';
  }
  return lines;
}

void ExpectEverything(const Settings& s) {
  EXPECT_STREQ(s.skinPath, "skins/blue.cfg");
  EXPECT_EQ(s.gfxMode, AL_ID('F', 'B', ' ', ' '));
  EXPECT_EQ(s.soundDriver, AL_ID('A', 'L', 'S', 'A'));
  const int numbers[] = {s.screenWidth,  s.screenHeight,     s.refreshRate,
                         s.colorDepth,   s.logicFrameRate,   s.soundVolume,
                         s.midiDriver,   s.doubleClickDelay, s.mouseSpeed,
                         s.keyDelay,     s.keyRepeat,        s.screenUpdateMethod,
                         s.maxFrameSkip, s.tooltipDelay,     s.tooltipAutohideDelay};
  constexpr int kNumbers[] = {801, 602, 75, 24, 40, 100, 7, 210, 3, 170, 90, 1, 6, 220, 5100};
  EXPECT_TRUE(std::equal(std::begin(numbers), std::end(numbers), kNumbers));
  for (const bool off : {s.fullscreen, s.fullDrag, s.fullResize, s.antialiasing, s.guiSound,
                         s.showMouse, s.mouseShadow, s.useKeyboard, s.yield, s.runInBackground})
    EXPECT_FALSE(off);
  for (const bool on :
       {s.useVideoMemory, s.unlimitedFrameRate, s.showFrameRate, s.useJoystick, s.vsync})
    EXPECT_TRUE(on);
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
};

TEST_F(SettingsTest, EveryKeyIsReadAndWrittenInItsPlace) {
  const std::string content = "[Toolkit]\n" + Everything();
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
  TempFile file{"[Strange]\nScreen = 1\n\n[GUI]\n" + Everything() + "\n[More]\nscreenWidth = 5\n"};
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
  const std::string before =
      "# " + std::string(252, 'x') + "\xC3\xA9\r\n[Toolkit]\r\nscreenwidth=5\n# last\n";
  const std::string after = "\n[Other]\nscreenWidth = 6\nkey = " + std::string(200'000, 'x') + '\n';
  const TempDir directory;
  const std::string path = directory.Path("a#b.cfg");
  WriteFile(path, before + after);
  Settings changed;
  changed.Load(path.c_str());
  changed.screenWidth = 7;
  changed.skinPath.Assign("\xC3\xA9");
  changed.Save();
  const std::string saved = ReadFile(path);
  EXPECT_NE(saved.find("x\xC3\xA9\n[Toolkit]\nscreenWidth = 7\n# last\nskinPath = \xC3\xA9\n"),
            std::string::npos);
  EXPECT_TRUE(saved.ends_with("\ntooltipAutohideDelay = 5000\n" + after));
}

TEST_F(SettingsTest, WhatAFileDoesNotSayStaysAsItWas) {
  const TempFile unrelated{"screenWidth = 5\n[Menu]\nMenuLeft = 3\n"};
  const TempDir empty;
  const std::string start = Saved(Settings{});
  for (const std::string& path : {std::string{unrelated.Path()}, empty.Path("missing.cfg"),
                                  empty.Path(), std::string(5000, 'x')})
    EXPECT_EQ(Saved(Read(path)), start) << path;
  Settings changed;
  changed.soundVolume = 3;
  changed.Load(unrelated.Path());
  EXPECT_EQ(changed.soundVolume, 3);
  Settings untouched;
  untouched.Load(nullptr);
  EXPECT_FALSE(untouched.fileLoaded);
  untouched.fileName.Assign(unrelated.Path());
  untouched.Save();
  EXPECT_EQ(unrelated.Content(), "screenWidth = 5\n[Menu]\nMenuLeft = 3\n");
}

TEST_F(SettingsTest, DamagedFilesGiveUsableSettings) {
  const std::string longLine(100'000, 'a');
  for (const std::string& content :
       {std::string{"[Toolkit\nscreenWidth"}, "[Toolkit]\nskinPath = " + longLine,
        "[" + longLine + "]\nscreenWidth = 7\n", std::string{"[Toolkit]\nscreenWidth = x\n=\n\xff"},
        std::string{"[Toolkit]\nscreenWidth = 99999999999999999999\nlogicFrameRate=-1\n"}}) {
    const TempFile file{content};
    const Settings read = Read(file.Path());
    EXPECT_LT(std::strlen(read.skinPath), 1024U);
    EXPECT_EQ(read.screenHeight, 480);
    EXPECT_GE(read.UsableFrameRate(), 1);
  }
}

TEST_F(SettingsTest, ValuesThatWouldStopTheProgramAreBroughtToTheNearestThatWork) {
  Settings set;
  for (const int rate : {0, -1, INT_MIN}) {
    set.logicFrameRate = rate;
    EXPECT_EQ(set.UsableFrameRate(), 1);
    EXPECT_EQ(set.Ticks(5000), 5);
    EXPECT_EQ(set.logicFrameRate, rate);
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
