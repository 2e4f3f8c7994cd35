#include "toolkit/core/settings.h"

#include <climits>
#include <cstring>
#include <string>

#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

// Every key with a value that no field starts with, in the order in which files have them.
constexpr const char* kEverything =
    "skinPath = skins/blue.cfg\n"
    "screenWidth = 801\n"
    "screenHeight = 602\n"
    "refreshRate = 75\n"
    "colorDepth = 24\n"
    "gfxMode = FB\n"
    "fullscreen = 0\n"
    "useVideoMemory = 1\n"
    "fullDrag = 0\n"
    "fullResize = 0\n"
    "logicFrameRate = 40\n"
    "unlimitedFrameRate = 1\n"
    "showFrameRate = 1\n"
    "antialiasing = 0\n"
    "guiSound = 0\n"
    "soundVolume = 100\n"
    "soundDriver = ALSA\n"
    "midiDriver = 7\n"
    "showMouse = 0\n"
    "mouseShadow = 0\n"
    "doubleClickDelay = 210\n"
    "mouseSpeed = 3\n"
    "useKeyboard = 0\n"
    "keyDelay = 170\n"
    "keyRepeat = 90\n"
    "useJoystick = 1\n"
    "screenUpdateMethod = 1\n"
    "vsync = 1\n"
    "yield = 0\n"
    "runInBackground = 0\n"
    "maxFrameSkip = 6\n"
    "tooltipDelay = 220\n"
    "tooltipAutohideDelay = 5100\n";

using SettingsTest = AllegroFixture;

void ExpectEverything(const Settings& read) {
  EXPECT_STREQ(read.skinPath, "skins/blue.cfg");
  EXPECT_EQ(read.screenWidth, 801);
  EXPECT_EQ(read.screenHeight, 602);
  EXPECT_EQ(read.refreshRate, 75);
  EXPECT_EQ(read.colorDepth, 24);
  EXPECT_EQ(read.gfxMode, AL_ID('F', 'B', ' ', ' '));
  EXPECT_FALSE(read.fullscreen);
  EXPECT_TRUE(read.useVideoMemory);
  EXPECT_FALSE(read.fullDrag);
  EXPECT_FALSE(read.fullResize);
  EXPECT_EQ(read.logicFrameRate, 40);
  EXPECT_TRUE(read.unlimitedFrameRate);
  EXPECT_TRUE(read.showFrameRate);
  EXPECT_FALSE(read.antialiasing);
  EXPECT_FALSE(read.guiSound);
  EXPECT_EQ(read.soundVolume, 100);
  EXPECT_EQ(read.soundDriver, AL_ID('A', 'L', 'S', 'A'));
  EXPECT_EQ(read.midiDriver, 7);
  EXPECT_FALSE(read.showMouse);
  EXPECT_FALSE(read.mouseShadow);
  EXPECT_EQ(read.doubleClickDelay, 210);
  EXPECT_EQ(read.mouseSpeed, 3);
  EXPECT_FALSE(read.useKeyboard);
  EXPECT_EQ(read.keyDelay, 170);
  EXPECT_EQ(read.keyRepeat, 90);
  EXPECT_TRUE(read.useJoystick);
  EXPECT_EQ(read.screenUpdateMethod, 1);
  EXPECT_TRUE(read.vsync);
  EXPECT_FALSE(read.yield);
  EXPECT_FALSE(read.runInBackground);
  EXPECT_EQ(read.maxFrameSkip, 6);
  EXPECT_EQ(read.tooltipDelay, 220);
  EXPECT_EQ(read.tooltipAutohideDelay, 5100);
}

// What Save writes for settings of this file that were changed by nobody.
std::string Saved(const Settings& unchanged) {
  TempFile file{""};
  Settings copy = unchanged;
  copy.fileName.Assign(file.Path());
  copy.fileLoaded = true;
  copy.Save();
  return file.Content();
}

TEST_F(SettingsTest, EveryKeyIsReadAndWrittenInItsPlace) {
  const std::string content = std::string{"[Toolkit]\n"} + kEverything;
  const TempFile file{content};
  Settings read;
  read.Load(file.Path());
  EXPECT_TRUE(read.fileLoaded);
  EXPECT_STREQ(read.fileName, file.Path());
  ExpectEverything(read);
  EXPECT_EQ(Saved(read), content);
}

TEST_F(SettingsTest, TheFirstSectionWithOneOfTheKeysStandsForAMissingOne) {
  TempFile file{std::string{"[Strange]\nScreen = 1\n\n[GUI]\n"} + kEverything +
                "\n[More]\nscreenWidth = 5\n"};
  Settings read;
  read.Load(file.Path());
  ExpectEverything(read);
  read.screenWidth = 1024;
  read.Save();
  Settings again;
  again.Load(file.Path());
  EXPECT_EQ(again.screenWidth, 1024);
  EXPECT_EQ(file.Content().find("[Toolkit]"), std::string::npos);
}

TEST_F(SettingsTest, ASectionOfTheProperNameIsTheOnlyOneThatCounts) {
  const TempFile file{"[Other]\nscreenWidth = 5\n[toolkit]\nscreenHeight = 600\n"};
  Settings read;
  read.Load(file.Path());
  EXPECT_EQ(read.screenWidth, 640);
  EXPECT_EQ(read.screenHeight, 600);
}

TEST_F(SettingsTest, WhatAFileDoesNotSayStaysAsItWas) {
  const TempFile unrelated{"screenWidth = 5\n[Menu]\nMenuLeft = 3\n"};
  const TempDir empty;
  const std::string start = Saved(Settings{});
  for (const std::string& path : {std::string{unrelated.Path()}, empty.Path("missing.cfg"),
                                  empty.Path(), std::string(5000, 'x')}) {
    Settings read;
    read.Load(path.c_str());
    EXPECT_EQ(Saved(read), start) << path;
  }
  Settings changed;
  changed.soundVolume = 3;
  changed.Load(unrelated.Path());
  EXPECT_EQ(changed.soundVolume, 3);
}

TEST_F(SettingsTest, NothingIsReadOrWrittenWithoutAFile) {
  const TempFile file{"[Toolkit]\nscreenWidth = 5\n"};
  Settings untouched;
  untouched.Load(nullptr);
  EXPECT_FALSE(untouched.fileLoaded);
  untouched.fileName.Assign(file.Path());
  untouched.Save();
  EXPECT_EQ(file.Content(), "[Toolkit]\nscreenWidth = 5\n");
}

TEST_F(SettingsTest, DamagedFilesGiveUsableSettings) {
  const std::string longLine(100'000, 'a');
  for (const std::string& content :
       {std::string{"[Toolkit\nscreenWidth"}, "[Toolkit]\nskinPath = " + longLine,
        "[" + longLine + "]\nscreenWidth = 7\n", std::string{"[Toolkit]\nscreenWidth = x\n=\n\xff"},
        std::string{"[Toolkit]\nscreenWidth = 99999999999999999999\nlogicFrameRate=-1\n"}}) {
    const TempFile file{content};
    Settings read;
    read.Load(file.Path());
    EXPECT_LT(std::strlen(read.skinPath), 1024U);
    EXPECT_EQ(read.screenHeight, 480);
    EXPECT_GE(read.UsableFrameRate(), 1);
  }
}

TEST_F(SettingsTest, TextsInOneByteEncodingsAreReadAlike) {
  set_uformat(U_ASCII_CP);
  const TempFile file{std::string{"[Toolkit]\n"} + kEverything};
  Settings read;
  read.Load(file.Path());
  ExpectEverything(read);
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
  EXPECT_EQ(set.Ticks(200), 10);
  EXPECT_EQ(set.Ticks(39), 1);
  EXPECT_EQ(set.Ticks(-200), 0);
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
