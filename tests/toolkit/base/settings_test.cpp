#include "toolkit/base/settings.h"

#include <climits>

#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

// Every key with a value that no field starts with, in the order in which files have them.
const std::string kEverything = ReadFile("tests/toolkit/base/samples/settings.cfg");

Settings Read(const std::string& path) {
  Settings read;
  read.Load(path.c_str());
  return read;
}

// What is written for such settings where there was nothing.
std::string Saved(Settings settings) {
  const TempFile file{""};
  settings.fileName.Assign(file.Path());
  settings.fileLoaded = true;
  settings.Save();
  return file.Content();
}

using SettingsTest = AllegroFixture;

TEST_F(SettingsTest, EveryKeyIsReadAndWrittenInItsPlace) {
  const TempFile file{kEverything};
  for (const int format : {U_UTF8, U_ASCII_CP}) {
    set_uformat(format);
    const Settings s = Read(file.Path());
    EXPECT_EQ(
        Join(s.fileLoaded, s.skinPath, s.screenWidth, s.screenHeight, s.refreshRate, s.colorDepth,
             s.gfxMode == AL_ID('F', 'B', ' ', ' '), s.fullscreen, s.useVideoMemory, s.fullDrag,
             s.fullResize, s.logicFrameRate, s.unlimitedFrameRate, s.showFrameRate, s.antialiasing,
             s.guiSound, s.soundVolume, s.soundDriver == AL_ID('A', 'L', 'S', 'A'), s.midiDriver,
             s.showMouse, s.mouseShadow, s.doubleClickDelay, s.mouseSpeed, s.useKeyboard,
             s.keyDelay, s.keyRepeat, s.useJoystick, s.screenUpdateMethod, s.vsync, s.yield,
             s.runInBackground, s.maxFrameSkip, s.tooltipDelay, s.tooltipAutohideDelay),
        "1 skins/blue.cfg 801 602 75 24 1 0 1 0 0 40 1 1 0 0 100 1 7 0 0 210 3 0 170 90 1 1 "
        "1 0 0 6 220 5100 ");
    EXPECT_EQ(Saved(s), kEverything);
    EXPECT_STREQ(s.fileName, file.Path());
  }
}

TEST_F(SettingsTest, TheFirstSectionWithOneOfTheKeysStandsForAMissingOne) {
  const std::pair<const char*, const char*> cases[] = {
      {"[Strange]\nScreen = 1\n[GUI]\nSCREENHEIGHT = 8\n[Far]\nvsync = 1", "GUI 640 8 "},
      {"[Far]\nscreenWidth = 5\n[toolkit]\nscreenHeight = 600\n", "toolkit 640 600 "},
      {"screenWidth = 5\n[A]\nskinpath = x\n[Far]\nscreenWidth = 6", "A 640 480 "},
      {"screenWidth = 5\n[Menu]\nMenuLeft = 3\n", "Toolkit 640 480 "}};
  for (const auto& [content, expected] : cases) {
    const TempFile file{content};
    Settings read = Read(file.Path());
    EXPECT_EQ(Join(read.Section(), read.screenWidth, read.screenHeight), expected);
    read.screenWidth = 1024;
    read.Save();
    EXPECT_EQ(Read(file.Path()).screenWidth, 1024) << content;
  }
}

TEST_F(SettingsTest, WhatIsNoFileChangesNothing) {
  for (const std::string& path :
       {std::string{"/missing.cfg"}, std::string{"/"}, std::string(5000, 'x')})
    EXPECT_EQ(Saved(Read(path)), Saved({})) << path;
  const TempFile file{"[Menu]\n"};
  Settings changed;
  changed.Load(nullptr);
  changed.fileName.Assign(file.Path());
  changed.Save();
  EXPECT_EQ(file.Content(), "[Menu]\n") << "nothing was loaded";
}

TEST_F(SettingsTest, ValuesThatWouldStopTheProgramAreBroughtToTheNearestThatWork) {
  Settings set;
  constexpr int kRates[][3] = {
      {0, 5000, 5},    {INT_MIN, 5000, 5},         {50, 200, 10}, {50, 39, 1}, {50, -200, 0},
      {INT_MAX, 3, 3}, {INT_MAX, INT_MAX, INT_MAX}};
  for (const auto& [rate, ms, ticks] : kRates) {
    set.logicFrameRate = rate;
    EXPECT_EQ(set.Ticks(ms), ticks) << rate << ' ' << ms;
  }
  // The console mouse drivers divide by 256 * width / 320 / speed.
  constexpr int kSpeeds[][3] = {
      {320, INT_MAX, 256}, {640, INT_MAX, 512}, {800, 9, 9}, {800, 0, 1}, {1, 9, 1}};
  for (const auto& [width, speed, usable] : kSpeeds) {
    set.screenWidth = width;
    set.mouseSpeed = speed;
    EXPECT_EQ(set.UsableMouseSpeed(), usable) << width << ' ' << speed;
  }
}

}  // namespace
}  // namespace zel
