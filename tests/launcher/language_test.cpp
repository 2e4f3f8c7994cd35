#include "launcher/language.h"

#include <iconv.h>

#include "launcher/code_pages.h"
#include "tests/support/launcher_fixture.h"

namespace zel {
namespace {

using LanguageTest = LauncherFixture;

int IndexOf(std::string_view content) {
  WriteFile("i18n", content);
  return LanguageIndex();
}

TEST_F(LanguageTest, IsThatOfTheFirstLangLineWithAValue) {
  const std::tuple<const char*, int, const char*> rows[] = {
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
      {"", kEnglish, ""},
  };
  for (const auto& [content, index, code] : rows) {
    EXPECT_EQ(IndexOf(content), index) << content;
    EXPECT_STREQ(launcherState.languageCode, code) << content;
  }
}

TEST_F(LanguageTest, UnusableFilesMeanEnglish) {
  EXPECT_EQ(IndexOf(std::string(100'000, '=') + '\n' + '\0' + '\xFF' + "\nLANG=it"), kItalian);
  for (const char* name : {"/no/such/file", "/"}) {
    paths.languageFile = name;
    EXPECT_EQ(LanguageIndex(), kEnglish);
  }
}

TEST_F(LanguageTest, EncodingFollowsTheLanguage) {
  constexpr int kCharacters[] = {0x20AC, 0x20AC, 0x2553, 0x20AC, 0x20AC, 0xA4, 0x20AC, 0, 0};
  const char* const codes[] = {"en", "de", "ru", "fr", "es", "pl", "it", "cn", "ja"};
  for (int index = kEnglish; index <= kJapanese; ++index) {
    EXPECT_EQ(IndexOf(std::string{"LANG="} + codes[index]), index);
    SetupEncoding();
    EXPECT_EQ(get_uformat(), index < kChinese ? U_ASCII_CP : U_UTF8);
    if (index >= kChinese) continue;
    EXPECT_EQ(ugetc("\xA4"), kCharacters[index]);
    EXPECT_FALSE(uisok(0x100)) << "letters without their accent";
  }
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
