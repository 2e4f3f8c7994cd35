#include "launcher/launcher.h"

#include <fcntl.h>
#include <iconv.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>

#include "launcher/about.h"
#include "launcher/code_pages.h"
#include "launcher/command.h"
#include "launcher/language.h"
#include "launcher/texts.h"
#include "tests/support/launcher_fixture.h"
#include "tests/support/reference.h"
#include "toolkit/draw/engine_font.h"
#include "toolkit/draw/font.h"
#include "toolkit/testing/fake_machine.h"
#include "toolkit/testing/fake_timers.h"

namespace zel {
namespace {

using LanguageTest = LauncherFixture;

TEST_F(LanguageTest, IsThatOfTheFirstLangLineWithAValue) {
  const std::tuple<std::string, int, const char*> rows[] = {
      {"LANG=en_US.UTF-8\n", kEnglish, "en"},
      {"LANG=DE\n", kEnglish, "DE"},
      {"LANG=\"de_DE\"\n", kEnglish, "\"d"},
      {"  LANG \t = = fr_FR  \n", kFrench, "fr"},
      {"LANG it_IT\n", kItalian, "it"},
      {"[a]\r\n[b]\r\nLANG=pl_PL\r\n[a]\r\nLANG=de\r\n", kPolish, "pl"},
      {"#LANG=de\n# LANG=de\nLANG=es\nLANG=de\n", kSpanish, "es"},
      {"LANG=\nLANG=d \nLANG=ja_JP\n", kJapanese, "ja"},
      {"lang=de\nLANGUAGE=de\nLC_LANG=de\n[LANG]\nde\n=LANG=de\nLANG=cn\n", kChinese, "cn"},
      {std::string(100'000, '=') + '\n' + '\0' + '\xFF' + "\nLANG=it", kItalian, "it"},
      {"", kEnglish, ""}};
  for (const auto& [content, index, code] : rows) {
    WriteFile("i18n", content);
    EXPECT_EQ(Join(LanguageIndex(), launcherState.languageCode), Join(index, code))
        << testing::PrintToString(content.substr(0, 99));
  }
}

TEST_F(LanguageTest, HintsAreInTheEncodingOfTheirLanguage) {
  const std::tuple<const char*, const char*, const char*> rows[] = {
      {"ru", "\xD1", "я"}, {"pl", "\xEA", "ę"}, {"??", "\xA4", "€"}, {"ja", "日\xD1", "日^"}};
  for (const auto& [code, hints, seen] : rows) EXPECT_EQ(HintsInUtf8(hints, code), seen) << code;
}

TEST(About, IsToldWhereNothingElseIsAskedFor) {
  const std::pair<std::vector<const char*>, const char*> rows[] = {{{}, "0 "},
                                                                   {{"--help"}, "1 usage"},
                                                                   {{"--version"}, "1 program 0"},
                                                                   {{"--other"}, "0 "},
                                                                   {{"--help", "more"}, "0 "}};
  for (auto [arguments, told] : rows) {
    arguments.insert(arguments.begin(), "program");
    testing::internal::CaptureStdout();
    const bool tells = TellsAbout("program", "usage", static_cast<int>(arguments.size()),
                                  const_cast<char**>(arguments.data()));
    const std::string seen = Join(tells) + testing::internal::GetCapturedStdout();
    EXPECT_EQ(seen.substr(0, seen.find('.')), told);
  }
}

TEST(CodePage, IsTheOneOfItsStandard) {
  for (const auto& [name, page] : {std::pair{"ISO-8859-15", WesternCodePage()},
                                   {"KOI8-R", RussianCodePage()},
                                   {"CP1250", CentralEuropeanCodePage()}}) {
    const iconv_t decoder = iconv_open("UTF-16LE", name);
    for (int byte = 0; byte < 256; ++byte) {
      char input = static_cast<char>(byte);
      char16_t output = byte == 0x81 ? ' ' : '?';
      char *from = &input, *to = reinterpret_cast<char*>(&output);
      std::size_t inputLeft = 1, outputLeft = 2;
      iconv(decoder, &from, &inputLeft, &to, &outputLeft);
      EXPECT_EQ(page[byte], output) << name << ' ' << byte;
    }
    iconv_close(decoder);
  }
}

constexpr std::uint32_t kTexts[] = {174, 1312, 1320, 1513, 1515, 1516};
constexpr std::uint32_t kNoTexts[] = {0, 1, 28, 173, 175, 1517, 9999, 0xFFFFFFFF};

// Says on the standard error stream how texts are, and ends the process.
[[noreturn]] void Speak(const std::string& code) {
  setenv("LANGUAGE", "ja", 1);  // says nothing
  WriteFile("i18n", "LANG=" + code);
  SetupEncoding();
  std::string shown, written;
  Font font;
  EngineInit();
  font.Load(ZEL_PICTURES "/../../data/skin/fonts/DejaVuSans.ttf");
  font.SetFallbacks({ZEL_PICTURES "/../../data/skin/fonts/DroidSansFallbackFull.ttf"});
  for (const TextEntry* entry = TextTable; *entry->english != '\0'; ++entry)
    for (const char* next = Text(entry->id); const int letter = ugetxc(&next);)
      if (letter >= ' ' && !font.Has(letter)) shown += "lacking";
  std::string all;
  for (std::uint32_t id = 0; id < 2000; ++id)
    if (*Text(id) != '\0') all += Join(id) + Converted(Text(id), U_CURRENT, U_UTF8) + '\n';
  if (code == "it") ExpectText("texts_in_italian", all);
  for (const std::uint32_t id : kTexts) shown += Converted(Text(id), U_CURRENT, U_UTF8);
  UseEncodingOfLocale();
  for (const std::uint32_t id : kTexts) written += Text(id);
  for (const std::uint32_t id : kNoTexts) written += Text(id);
  const bool hasPage = get_uformat() == U_ASCII_CP && !uisok(0x100);  // letters lose no accent
  std::fprintf(stderr, "%s %s %s ", LanguageSuffix(), hasPage ? "letters" : "signs", Text(1515));
  UseEnglish();
  if (Text(1515) != std::string{"Back to the previous menu"} || LanguageIndex() != kEnglish ||
      shown != written || testing::Test::HasFailure())
    std::fputs("differs", stderr);
  std::_Exit(EXIT_SUCCESS);
}

// Runs it in a process of its own, whose standard error stream tells what has come of it.
class LauncherTest : public LauncherFixture {
 protected:
  LauncherTest() {
    GTEST_FLAG_SET(death_test_style, "threadsafe");  // the catalogues are opened once
    paths.catalogues = ZEL_CATALOGUES;
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("XCOMPOSEFILE", "usual-", 1);
    std::filesystem::create_directory("etc");
    paths.configDirectory = "etc";
    WriteFile("etc/menu.cfg",
              "[MENU_CONFIGURATION]\nLinesNumber=1\n[LINE1]\nTitle=x\nExCode=7\nExString=done\n"
              "WaitForFile=../ready\n");
  }
  // `atTheEnd` happens when the item is about to be chosen, `afterwards` when the run has told its
  // status, which it may change.
  [[noreturn]] void Run(const std::vector<int>& refusedModes) {
    const std::string place = std::filesystem::current_path();
    const std::string output = place + "/output.txt", position = place + "/menupos.txt";
    paths.outputFile = output.c_str();
    paths.positionFile = position.c_str();
    WriteFile(output, "earlier\n");
    WriteFile(output + ".zel-a1B2c3", "");
    mknod("mouse", S_IFCHR, 13 << 8);  // a device of the kernel's input, for whom may make it
    const int mouse = open("mouse", O_PATH);
    std::filesystem::remove("mouse");
    FakeMachine machine;
    FakeTimers timers;
    std::string seen;
    machine.refusedModes = refusedModes;
    timers.onSleep = [&] {
      if (timers.sleeps == 1) {
        for (const auto& [w, h, depth, windowed] : machine.tried)
          seen += std::to_string(w) + 'x' + std::to_string(h) + 'x' + std::to_string(depth) +
                  (windowed ? "w " : " ");
        const bool isHeld = (launcherState.heldMouse < 0) == (mouse < 0);
        seen +=
            Join(settings.antialiasing, settings.showMouse, launcherState.mousePending && isHeld,
                 launcherState.runningScreen != nullptr, socket(AF_UNIX, SOCK_STREAM, 0) < 0);
        seen += std::getenv("XCOMPOSEFILE") + ReadFile(output);
      }
      // When the first second is over Enter counts at once; then the item waits for the file.
      if (timers.sleeps == 60) simulate_ukeypress(0, KEY_ENTER);
      if (timers.sleeps == 65) atTheEnd(), WriteFile(place + "/ready", "");
      if (timers.sleeps == 199) std::_Exit(EXIT_FAILURE);
      for (int i = 0; i < timers.Count(); ++i) timers.Tick(i);
    };
    std::atexit([] {
      std::fprintf(stderr, "%s%zd", ReadFile("output.txt").c_str(),
                   std::distance(std::filesystem::directory_iterator{"."}, {}));
    });
    const int status = geteuid() == 0 ? RunLauncher() : RunForAnyone();
    EXPECT_EQ(launcherState.runningScreen, nullptr);
    std::fputs(seen.c_str(), stderr);
    std::exit(HasFailure() ? EXIT_FAILURE : afterwards(status));
  }
  static void ExpectSpoken(const char* code, const std::string& seen) {
    EXPECT_EXIT(Speak(code), testing::ExitedWithCode(EXIT_SUCCESS), "^" + seen + "$");
  }
  void Expect(const std::vector<int>& refusedModes, int status, const char* seen) {
    EXPECT_EXIT(Run(refusedModes), testing::ExitedWithCode(status), seen);
  }

  std::function<void()> atTheEnd = [] {};
  std::function<int(int status)> afterwards = [](int status) { return status; };
};

// The modes that are tried, whether texts are smooth, whether there is a mouse, or is to be later,
// whether the menu runs, with limits, and what others find.
TEST_F(LauncherTest, TriesTheModeOfItsSettingsAndThenTheFixedOnes) {
  Expect({}, 7, "^640x480x16 1 0 1 1 1 usual-done\n4$");
  WriteFile("etc/gpm.pid", "");
  WriteFile("etc/zel.cfg",
            "[Toolkit]\nscreenWidth=320\nscreenHeight=200\ncolorDepth=32\nfullscreen=0\n");
  Expect({}, 7, "^320x200x32w 1 1 0 1 1 usual-done\n4$");
  Expect({32, 24}, 7, "^320x200x32w 320x200x24w 640x480x16 1 1 0 1 1 usual-done\n4$");
  Expect({32, 24, 16, 15}, 7,
         "^320x200x32w 320x200x24w 640x480x16 640x480x15 800x600x8 0 1 0 1 1 usual-done\n4$");
  Expect({32, 24, 16, 15, 800}, 7,
         "^320x200x32w 320x200x24w 640x480x16 640x480x15 800x600x8 640x480x8 0 1 0 1 1 "
         "usual-done\n4$");
  WriteFile("etc/i18n", "LANG=de\n");
  Expect({32, 24, 16, 15, 8}, 0, "Erfahrene Anwender können versuchen, selbst.*\n1$");
  unsetenv("LC_ALL");
  setenv("LC_MESSAGES", "C.UTF-8", 1);
  setenv("LC_CTYPE", "C", 1);  // without umlauts
  Expect({32, 24, 16, 15, 8}, 0, "Erfahrene Anwender k(\\?|o|oe)nnen versuchen, selbst");
  setenv("LC_ALL", "C.UTF-8", 1);
  WriteFile("etc/zel.cfg", "[Toolkit]\nskinPath=none\n");
  Expect({}, 1, "skin description file not found!\n+1$");
  WriteFile("etc/zel.cfg", "[Toolkit]\nskinPath=none\nlooks=none,default\n");
  Expect({}, 7, "^640x480x16 1 1 0 1 1 usual-done\n4$");
}

// What scripts find is the status of the choice with its output, or neither.
TEST_F(LauncherTest, LeavesNoOutputWhereTheRunFails) {
  const std::string place = std::filesystem::current_path(), beyond = place + std::string(300, 'x');
  atTheEnd = [] { paths.outputFile = "none/file"; };
  Expect({}, 1, "^zel: cannot write none/file: No such file or directory\n.*usual-3$");
  atTheEnd = [] {};
  afterwards = [](int status) { return process.onDisplayLost(), status; };
  Expect({}, 7, "usual-3$");
  afterwards = [](int status) { return status + 1; };
  Expect({}, 8, "usual-3$");
  paths.outputFile = beyond.c_str();
  EXPECT_EXIT(std::exit(RunForAnyone()), testing::ExitedWithCode(1),
              "^zel: cannot remove .*x: File name too long\n$");
}

TEST_F(LauncherTest, AnswersWhetherThereIsAChoiceInItsLanguageAndRunsWithAnyOtherArgument) {
  const auto command = [](const char* argument) {
    const char* arguments[] = {"zel", argument};
    _exit(
        RunCommand(2, const_cast<char**>(arguments)));  // no sanitizer's business as somebody else
  };
  WriteFile("etc/menu.cfg", "[MENU_CONFIGURATION]\nLinesNumber=1\n[LINE1]\nTitle.de=x\n");
  for (const auto& [language, status] : {std::pair{"de", 0}, {"fr", kNoChoiceStatus}}) {
    WriteFile("etc/i18n", std::string{"LANG="} + language);
    EXPECT_EXIT(command("--has-choice"), testing::ExitedWithCode(status), "^$");
  }
  EXPECT_EXIT(command("--version"), testing::ExitedWithCode(0), "^$");
  EXPECT_EXIT(if (seteuid(1) == 0 || geteuid() != 0) command("--other"), testing::ExitedWithCode(0),
              "^You must have root permissions");
}

TEST_F(LauncherTest, RunsForRootOnly) {
  launcherState.exitCode = 7;
  launcherState.mousePending = true;
  launcherState.outputString.Assign("old");
  const auto run = [] {
    const int status = seteuid(1) && geteuid() == 0 ? 1 : RunLauncher();
    std::fprintf(stderr, "%d", launcherState.mousePending || !launcherState.outputString.IsEmpty());
    std::_Exit(status);
  };
  EXPECT_EXIT(run(), testing::ExitedWithCode(0),
              "^You must have root permissions to run this program\n0$");
}

TEST_F(LauncherTest, ShippedTranslationsShowInTheirEncoding) {
  const std::pair<const char*, const char*> rows[] = {
      {"en", "letters Back to the previous menu"}, {"de", "letters Zurück zum vorigen Menü"},
      {"ru", "letters Назад в предыдущее меню"},   {"fr", "letters Retour au menu précédent"},
      {"es", "letters Volver al menú anterior"},   {"pl", "letters Powrót do poprzedniego menu"},
      {"it", "letters Torna al menu precedente"},  {"cn", "signs 返回上一级菜单"},
      {"ja", "signs 前のメニューに戻る"}};
  for (const auto& [code, seen] : rows) ExpectSpoken(code, std::string{code} + ' ' + seen + ' ');
}

TEST_F(LauncherTest, MarksOfTranslationsAreNotShown) {
  WriteFile("de.po", R"(
      msgid "" msgstr "Content-Type: text/plain; charset=UTF-8\n"
      msgid "en" msgstr "\ade"
      msgid "Back to the previous menu" msgstr "\a\a&Zurück")");
  std::filesystem::create_directories("de/LC_MESSAGES");
  ASSERT_EQ(std::system("msgfmt de.po -o de/LC_MESSAGES/quillon.mo"), 0);
  const std::string here = std::filesystem::current_path();
  paths.catalogues = here.c_str();
  ExpectSpoken("de", "de letters &Zurück ");
}

}  // namespace
}  // namespace zel
