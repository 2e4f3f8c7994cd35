#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstring>

#include "launcher/code_pages.h"
#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"
#include "tests/support/temp_files.h"
#include "toolkit/base/bytes.h"
#include "toolkit/base/config_file.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

using TextTest = AllegroFixture;

// A text that ends where its memory ends, so that reading on is noticed by an address sanitizer.
std::vector<char> Exact(const std::string& text) {
  return {text.c_str(), text.c_str() + text.size() + 1};
}

TEST_F(TextTest, CuttingKeepsCharactersWhole) {
  const char* text = "a\u00E9\u20AC\U0001F600z";  // of 1, 2, 3, 4 and 1 bytes
  constexpr std::size_t kBytes[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 11, 11};
  for (std::size_t limit = 0; limit < std::size(kBytes); ++limit)
    EXPECT_EQ(CutToBytes(text, limit), std::string(text, kBytes[limit])) << limit;
  EXPECT_EQ(CutToChars(text, 2), "a\u00E9");
  EXPECT_EQ(CutToChars(text, 100), text);
  EXPECT_EQ(CutToChars(text, -1), "");
  FixedText<4> fixed{"abcd"};
  EXPECT_STREQ(fixed, "abc") << "with its terminator";
  fixed.Assign(nullptr);
  EXPECT_TRUE(fixed.IsEmpty());
  set_uformat(U_ASCII_CP);
  EXPECT_EQ(CutToChars(text, 2) + CutToBytes(text, 2),
            "a\xC3"
            "a\xC3");
}

TEST_F(TextTest, WhatIsNoCharacterIsShownAsAllegroShowsIt) {
  const std::pair<const char*, const char*> cases[] = {
      {"a\xC3", "a^"},                      // ends after a lead byte
      {"\xE2\x82", "^"},                    // and before the last byte
      {"\xE2\x82z", "^z"},                  // goes on too early
      {"\xF0\xC3\xA9", "^\xC3\xA9"},        // with another character
      {"\x80\xBFz\xC2\x80", "^z\xC2\x80"},  // no lead byte, and the least one
      {"\xC0\xAFz", "^z"},                  // longer than need be
      {"\xE0\x80\x8A\xF0\x80\x80\x80z", "^^z"},
      {"\xF4\x90\x80\x80 \xF4\x8F\xBF\xBF \xE0\xA0\x80", "^ \xF4\x8F\xBF\xBF \xE0\xA0\x80"},
      {"\xFF\xFE", "^^"},                // never a lead byte
      {"\xC3\xA9\xA9z", "\xC3\xA9^z"}};  // a tail too many
  for (const auto& [bytes, kept] : cases) {
    EXPECT_EQ(CutToBytes(Exact(bytes).data(), 100), kept);
    EXPECT_EQ(CutToChars(Exact(bytes).data(), 100), kept);
  }
}

TEST_F(TextTest, LinesBreakBesideWideCharacters) {
  for (const auto& [first, last] : {std::pair{0x2E80, 0x9FFF},  // from radicals to ideographs
                                    {0xF900, 0xFAFF},           // compatible ideographs
                                    {0xFF00, 0xFF60},           // full width
                                    {0x20000, 0x3FFFF}}) {      // rare ideographs
    EXPECT_TRUE(MayBreakBetween('a', first) && MayBreakBetween(last, 'a'));
    EXPECT_FALSE(MayBreakBetween('a', first - 1) || MayBreakBetween(last + 1, 'a')) << first;
    EXPECT_FALSE(MayBreakBetween(' ', first) || MayBreakBetween(last, ' ')) << first;
  }
}

TEST_F(TextTest, TrimmedLosesTheWhiteSpaceOfTheFormat) {
  EXPECT_EQ(Trimmed(" \t\r\n"), "");
  EXPECT_EQ(Trimmed("\f two words \v"), "two words");
  EXPECT_EQ(Trimmed("\u3000\u4E2D\u3000\u6587\u3000"), "\u4E2D\u3000\u6587");
  EXPECT_EQ(Trimmed(Exact(" a\xC3 ").data()), "a\xC3");
  EXPECT_EQ(Trimmed(Exact("a \xE3\x80").data()), "a \xE3\x80");
  set_uformat(U_ASCII);
  EXPECT_EQ(Trimmed(" a\xE3\x80\x80 "), "a\xE3\x80\x80");
  EXPECT_STREQ(Ascii("Title 1"), "Title 1");
  set_uformat(U_UNICODE);
  EXPECT_EQ(std::memcmp(Ascii{"ab"}, u"ab", 6), 0);
}

TEST_F(TextTest, TextsOfTwoByteCharactersAreConvertedToTheirEnd) {
  const std::string wide{"a\0\xE9\0 \0\x2D\x4E\0", 9};  // with the second byte of a terminator
  const std::string whole = wide.substr(0, 8);
  EXPECT_EQ(Converted(wide, U_UNICODE, U_UTF8), "a\u00E9 \u4E2D");
  EXPECT_EQ(Converted("a\u00E9 \u4E2D", U_UTF8, U_UNICODE), whole);
  set_uformat(U_UNICODE);
  EXPECT_EQ(Converted("a\u00E9 \u4E2D", U_UTF8, U_CURRENT), whole);
  EXPECT_EQ(Converted(wide, U_CURRENT, U_UTF8), "a\u00E9 \u4E2D");
}

using BytesTest = AllegroFixture;

TEST_F(BytesTest, RegularFilesOfAnyNameAreReadUpToALimit) {
  const int unused = dup(STDIN_FILENO);
  close(unused);
  const TempDir folder;
  const std::string pipe = folder.Path("pipe"), file = folder.Write("some#where.dat", "abc");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const auto read = [](const std::string& path, std::size_t limit) {
    const auto text = [](const auto& bytes) { return std::string(bytes.begin(), bytes.end()); };
    return std::string(IsFile(path.c_str()) ? "file " : "") + text(ReadBytes(path.c_str(), limit)) +
           ' ' + text(MapBytes(path.c_str(), limit).bytes);
  };
  EXPECT_EQ(read(file, 3), "file abc abc");
  EXPECT_EQ(read(file, 2), "file  ");
  EXPECT_EQ(read(folder.Write("empty", ""), 2), "file  ");
  EXPECT_EQ(read("/proc/self/mem", 1000), "file  ") << "it begins with nothing";
  for (const std::string& other : {folder.Path("none"), folder.Path(), pipe})
    EXPECT_EQ(read(other, 1000), " ") << other;
  const auto grown = [](std::size_t limit) { return ReadBytes("/proc/self/status", limit).size(); };
  EXPECT_TRUE(grown(1 << 20) > 500 && grown(500) == 0) << "its size is said to be 0";
  const std::string made = folder.Path("made");
  for (const std::string& written : {file, made}) {
    EXPECT_TRUE(WriteBytes(written.c_str(), std::string{"d"}));
    EXPECT_EQ(ReadFile(written), "d");
  }
  EXPECT_EQ(static_cast<int>(std::filesystem::status(made).permissions()), 0644);
  EXPECT_FALSE(WriteBytes("/missing/file", std::string{"de"}) ||
               WriteBytes("/dev/full", std::string{"d"}));
  EXPECT_EQ(dup(STDIN_FILENO), unused) << "none is left open";
  close(unused);
  folder.Write("\xC3\xA9", "x");
  const int encoding = get_filename_encoding();
  set_filename_encoding(U_UTF8);
  UseLatin1();
  EXPECT_EQ(read(folder.Path("\xE9"), 9), "file x x");
  set_filename_encoding(encoding);
}

using ConfigFileTest = AllegroFixture;

// What SectionFile and Allegro say together.
std::string ReadFrom(const char* path) {
  const SectionFile file = UseConfigFile(path);
  const SectionFile::Section& section = file.Find("A");
  EXPECT_STREQ(get_config_string("A", "key", "-"), section.GetText("key", "-"));
  EXPECT_EQ(get_config_int("A", "key", 7), section.GetInt("key", 7)) << section.GetText("key");
  EXPECT_EQ(get_config_id("A", "key", 7), section.GetId("key", 7)) << section.GetText("key");
  return section.GetText("key", "-");
}
std::string Value(const std::string& content) { return ReadFrom(TempFile{content}.Path()); }

TEST_F(ConfigFileTest, ReadsWhatMaintainersWriteAsAllegroDoes) {
  const std::pair<const char*, const char*> rows[] = {
      {"\t[a]\r\n  KEY \t = = two words \t\r\n", "two words"},
      {"[A]# comment\n#key=1\n # key=2\nkey#3 # no \"comment\"\n", "#3 # no \"comment\""},
      {"[A]\n[B]\nkey=b\n[a]\nkey=first\nkey=again\n", "first"},
      {"key=1\n[A x]\nkey=2\n[=A]\nkey=3\n[A\nkey=4\n[[A]]\nkey=5\n[]\nkey=6\n", "-"},
      {"[A]\nother=1\n=key=2\n'key'=3\nkey=4=5\n", "4=5"},
      {"\u3000[A]\nkey\u3000=\u2003wide\u3000way\u2000\n", "wide\u3000way"},
      {"[A]\nkey=\xFD\xBF\xBF\xBF\xBF\xBF!\n", "^!"},  // where Allegro itself would never end
      {"[A]\nother=\xE4\nkey=a\xE2\x82", "a^"},        // damage ends with its line
      {"[A]\nkeyword=1\nk=2\nke\u00FF=3\nkey=\n", "-"},
      {"[A]\rkey=0x1F", "0x1F"},
      {"[A]\n\rkey=017", "017"},
      {"[A]\n\nkey=09", "09"},
      {"[A]\n\vkey=-5", "-5"},
      {"[A]\nkey=12abc", "12abc"},
      {"[A]\nkey=fb", "fb"},
      {"[A]\nkey=x\u00E4\u0436yz", "x\u00E4\u0436yz"}};
  for (const auto& [content, value] : rows)
    EXPECT_EQ(Value(content), value) << testing::PrintToString(content);
  for (std::size_t length = 210; length < 270; ++length) {  // the end of Allegro's first buffer
    const std::string value = std::string(length, 'x') + "\xE2\x82\xAC";
    EXPECT_EQ(Value("# comment\r\n[A]\r\n\r\nkey = " + value), value);
  }
  EXPECT_EQ(Value("[A]\nfirst = " + std::string(100'000, ' ') + "x\nkey = y"), "y");
  EXPECT_EQ(Value("[A]\nkey = " + std::string(200'000, 'x')), "-") << "too long a file";
  for (const char* none : {"no-such-directory/file.cfg", "/dev"}) EXPECT_EQ(ReadFrom(none), "-");
}

TEST_F(ConfigFileTest, TakesFilesForUtf8InEveryTextFormat) {
  const std::string content = "[A]\nkey=\xC3\xA4\xD0\x94\xE2\x82\xAC\xE4g\n";  // a-umlaut, De, euro
  EXPECT_EQ(Value(content), "\xC3\xA4\xD0\x94\xE2\x82\xAC^g");
  EXPECT_EQ(Value("\xEF\xBB\xBF[A]\nkey=" + std::string("va\0lue", 6)), "va lue");
  set_uformat(U_ASCII_CP);
  set_ucodepage(WesternCodePage(), nullptr);
  EXPECT_EQ(Value(content), "\xE4^\xA4^g");
  set_ucodepage(RussianCodePage(), nullptr);
  EXPECT_EQ(Value(content), "^\xE4^^g");
  EXPECT_STREQ(SectionFile{"[A]\nkey=\xE4"}.Find("A").GetText("key"), "\xE4");
}

TEST_F(ConfigFileTest, FindsNumberedSectionsAndBringsNumbersToThoseOfAnInt) {
  const SectionFile file{
      "[LINE10]\na=4294967296\nb=-99999999999999999999\n[line2]\n[LINE1]\n[LINE2]\n[LINE0]\n"
      "[LINE03]\n[LINE-4]\n[LINE+5]\n[LINE 6]\n[LINE7a]\n[LINE]\n[LINE99999999999]\n[XLINE8]\n"};
  EXPECT_EQ(file.Numbered("LINE", INT_MAX), std::vector({1, 2, 10}));
  EXPECT_EQ(file.Numbered("LINE", 9), std::vector({1, 2}));
  const SectionFile::Section& section = file.Find("LINE10");
  EXPECT_EQ(std::pair(section.GetInt("a"), section.GetInt("b")), std::pair(INT_MAX, INT_MIN));
  const SectionFile foreign{"[A]\na\u00C4=9\n[A\u00C9]\naB=3\na\u00C4=2\n"};
  EXPECT_EQ(foreign.Find("a\u00E9").GetInt("A\u00E4"), 2) << "letters beyond ASCII, in any case";
}

TEST_F(ConfigFileTest, KnowsTheLinesOfEverything) {
  const SectionFile file{"loose\r\n\r\n[A]\n\r# no\nKey = 1\n\nlater=2\r[B]\n[a]\nmore"};
  std::string lines = std::to_string(file.Loose().at(0).line);
  for (const SectionFile::Section& section : file.Sections()) {
    lines += ' ' + section.Name();
    for (const int head : section.Heads()) lines += std::to_string(head);
    lines += '-' + std::to_string(section.LastLine());
    for (const auto& entry : section.Entries()) lines += entry.name + std::to_string(entry.line);
  }
  EXPECT_EQ(lines, "1 A39-5Key5later7more10 B8-8");
}

TEST_F(ConfigFileTest, TheCurrentConfigurationHasTheNameOfEverySoundFile) {
  const auto isNamed = [](const std::string& content, const char* name = "test.cfg") {
    const TempFile file{content, name};
    UseConfigFile(file.Path());
    set_config_int("Section", "key", 2);
    flush_config_file();
    set_config_data("", 0);
    return file.Content() != content;
  };
  EXPECT_TRUE(isNamed("# \u20AC\n[Section]\nkey = 1\n") && isNamed(std::string(240, '#')));
  for (const std::string& content : {std::string(200'000, '#'), std::string(241, '#'),
                                     std::string{"\xFF"}, std::string{"\xEF\xBB\xBF# mark"}})
    EXPECT_FALSE(isNamed(content));
  EXPECT_FALSE(isNamed("# old", "a#b.cfg"));
}

TEST_F(ConfigFileTest, SavingChangesTheValuesAndNothingElse) {
  const auto saved = [](const std::string& content) {
    const TempFile file{content, "a#b.cfg"};
    SaveConfigFile(file.Path(), "S", {{"a", "1"}, {"b", "2"}, {"c", "3"}});
    return file.Content();
  };
  EXPECT_EQ(saved(""), "[S]\na = 1\nb = 2\nc = 3\n");
  EXPECT_EQ(saved("[T]"), "[T]\n\n[S]\na = 1\nb = 2\nc = 3\n");
  EXPECT_EQ(saved("\xEF\xBB\xBF # x\r\n [s] \r\nB=7\r\n#y\r\n[T]\r\n\r\na=5\r\n"),
            "\xEF\xBB\xBF # x\r\n [s] \r\nb = 2\r\n#y\r\na = 1\r\nc = 3\r\n[T]\r\n\r\na=5\r\n");
  EXPECT_EQ(saved("[S]\nz\n\n# T:\n[T]\na\n[S]\rc\n\n\nc=4\nA = \xFF"),
            "[S]\nz\nb = 2\n\n# T:\n[T]\na\n[S]\rc = 3\n\n\nc=4\na = 1");
  EXPECT_EQ(saved("[S]\na = 5"), "[S]\na = 1\nb = 2\nc = 3\n");
  UseLatin1();  // where Allegro takes the first of these for the end of a line
  EXPECT_EQ(saved("#\x8A\n[S]\na\nb\nc"), "#\x8A\n[S]\na = 1\nb = 2\nc = 3");
  const TempFile file{""};
  SaveConfigFile(file.Path(), "S", {{"a", "\xE9"}});
  EXPECT_EQ(file.Content(), "[S]\na = \xC3\xA9\n");
}

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
  const std::string more = "help = 1\ntypeAhead = 1\nlooks = a.skin, b\nzoom = 1.500000\n";
  for (const std::string& zoom : {std::string{}, std::string{"zoom = auto\n"}, more}) {
    const TempFile file{kEverything + zoom};
    set_uformat(zoom.empty() ? U_UTF8 : U_ASCII_CP);
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
    EXPECT_EQ(Saved(s), kEverything + zoom);
    EXPECT_STREQ(s.fileName, file.Path());
  }
  EXPECT_EQ(Saved(Read(TempFile{kEverything + "zoom = 1\n"}.Path())), kEverything);
}

TEST_F(SettingsTest, EveryKeySaysWhatMayStandBehindIt) {
  constexpr const char* kKinds[] = {"text", "files", "zoom", "number", "switch", "driver"};
  std::string seen;
  for (const auto& [name, kind, range] : Settings::Keys()) {
    seen += std::string{name} + ": " + kKinds[kind];
    if (range.most != INT_MAX) seen += " from " + Join(range.least, "to", range.most);
    seen += '\n';
  }
  ExpectText("settings_keys", seen);
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
    EXPECT_EQ(get_config_int(read.Section().c_str(), "screenWidth", 0), 1024);
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
      {0, 5000, 5},  {INT_MIN, 5000, 5}, {50, 200, 10},   {50, 39, 1},
      {50, -200, 0}, {INT_MAX, 3, 3},    {INT_MAX, 0, 0}, {INT_MAX, INT_MAX, INT_MAX}};
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
