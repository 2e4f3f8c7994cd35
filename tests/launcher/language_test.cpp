#include "launcher/language.h"

#include <iconv.h>

#include "launcher/code_pages.h"
#include "launcher/texts.h"
#include "tests/support/launcher_fixture.h"

namespace zel {
namespace {

using LanguageTest = LauncherFixture;

TEST_F(LanguageTest, IsThatOfTheFirstLangLineWithAValue) {
  const std::tuple<std::string, int, const char*> rows[] = {
      {"LANG=ru_RU.KOI8-R", kRussian, "ru"},
      {"LANG=de", kGerman, "de"},
      {"LANG=en_US.UTF-8\n", kEnglish, "en"},
      {"LANG=xx_XX\n", kEnglish, "xx"},
      {"LANG=DE\n", kEnglish, "DE"},
      {"LANG=\"de_DE\"\n", kEnglish, "\"d"},
      {"  LANG \t = = fr_FR  \n", kFrench, "fr"},
      {"LANG it_IT\n", kItalian, "it"},
      {"SYSFONT=lat9\r\nLANG=pl_PL\r\n", kPolish, "pl"},
      {"#LANG=de\n# LANG=de\nLANG=es\nLANG=de\n", kSpanish, "es"},
      {"LANG=\nLANG=d\nLANG=ja_JP\n", kJapanese, "ja"},
      {"lang=de\nLANGUAGE=de\nLC_LANG=de\n[LANG]\nde\n=LANG=de\nLANG=cn\n", kChinese, "cn"},
      {std::string(100'000, '=') + '\n' + '\0' + '\xFF' + "\nLANG=it", kItalian, "it"},
      {"", kEnglish, ""}};
  for (const auto& [content, index, code] : rows) {
    WriteFile("i18n", content);
    EXPECT_EQ(LanguageIndex(), index) << content.substr(0, 99);
    EXPECT_STREQ(launcherState.languageCode, code) << content.substr(0, 99);
  }
  for (const char* name : {"/no/such/file", "/"}) {
    paths.languageFile = name;
    EXPECT_EQ(LanguageIndex(), kEnglish);
  }
}

constexpr std::uint32_t kTexts[] = {174, 1312, 1320, 1513, 1515, 1516};
constexpr std::uint32_t kNoTexts[] = {0, 1, 28, 173, 175, 1517, 9999, 0xFFFFFFFF};

// Says on the standard error stream how texts are, and ends the process.
[[noreturn]] void Speak(const std::string& code, const char* catalogues) {
  setenv("LC_ALL", "C.UTF-8", 1);
  setenv("LANGUAGE", "ja", 1);  // says nothing
  paths.catalogues = catalogues;
  WriteFile("i18n", "LANG=" + code);
  SetupEncoding();
  std::string shown, written;
  for (const std::uint32_t id : kTexts) shown += Converted(Text(id), U_CURRENT, U_UTF8);
  UseEncodingOfLocale();
  for (const std::uint32_t id : kTexts) written += Text(id);
  for (const std::uint32_t id : kNoTexts) written += Text(id);
  const bool hasPage = get_uformat() == U_ASCII_CP && !uisok(0x100);  // letters lose no accent
  std::fprintf(stderr, "%s %s %s %s", LanguageSuffix(), hasPage ? "letters" : "signs", Text(1515),
               shown == written ? "" : shown.c_str());
  std::_Exit(EXIT_SUCCESS);
}

// In processes of their own: the catalogues are opened once.
class TranslationTest : public LauncherFixture {
 protected:
  TranslationTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
  static void Expect(const char* code, const std::string& seen, const char* catalogues) {
    EXPECT_EXIT(Speak(code, catalogues), testing::ExitedWithCode(EXIT_SUCCESS), "^" + seen + "$");
  }
};

TEST_F(TranslationTest, ShippedOnesShowInTheirEncoding) {
  const std::pair<const char*, const char*> rows[] = {
      {"en", "letters Back to the previous menu"}, {"de", "letters Zurück zum vorigen Menü"},
      {"ru", "letters Назад в предыдущее меню"},   {"fr", "letters Retour au menu précédent"},
      {"es", "letters Volver al menú anterior"},   {"pl", "letters Powrót do poprzedniego menu"},
      {"it", "letters Torna al menu precedente"},  {"cn", "signs 返回上一级菜单"},
      {"ja", "signs 前のメニューに戻る"}};
  for (const auto& [code, seen] : rows)
    Expect(code, std::string{code} + ' ' + seen + ' ', ZEL_CATALOGUES);
}

TEST_F(TranslationTest, MarksAreNotShown) {
  WriteFile("de.po", R"(
      msgid "" msgstr "Content-Type: text/plain; charset=UTF-8\n"
      msgid "en" msgstr "\ade"
      msgid "Back to the previous menu" msgstr "\a\a&Zurück")");
  std::filesystem::create_directories("de/LC_MESSAGES");
  ASSERT_EQ(std::system("msgfmt de.po -o de/LC_MESSAGES/quillon.mo"), 0);
  Expect("de", "de letters &Zurück ", std::filesystem::current_path().c_str());
}

TEST(CodePage, IsTheOneOfItsStandard) {
  const std::pair<const char*, const unsigned short*> pages[] = {
      {"ISO-8859-15", WesternCodePage()},
      {"KOI8-R", RussianCodePage()},
      {"CP1250", CentralEuropeanCodePage()}};
  for (const auto& [name, page] : pages) {
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

}  // namespace
}  // namespace zel
