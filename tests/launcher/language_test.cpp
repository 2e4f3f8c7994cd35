#include "launcher/language.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include <iconv.h>

#include "launcher/code_pages.h"
#include "launcher/texts.h"
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

struct Translation {
  const char *code, *back;
  bool hasLetters;  // in the fonts of the example
};
constexpr Translation kTranslations[] = {
    {"en", "Back to the previous menu", true}, {"de", "Zurück zum vorigen Menü", true},
    {"ru", "Назад в предыдущее меню", true},   {"fr", "Retour au menu précédent", true},
    {"es", "Volver al menú anterior", true},   {"pl", "Powrót do poprzedniego menu", true},
    {"it", "Torna al menu precedente", true},  {"cn", "返回上一级菜单", false},
    {"ja", "前のメニューに戻る", false},
};
constexpr const char* kExampleFont = ZEL_DATA "/skin/fonts/DejaVuSans.ttf";
constexpr std::uint32_t kAllTexts[] = {1312, 1320, 1513, 1515, 1516};

// Ends the process with failure where a shipped translation is not shown as it is written.
[[noreturn]] void ShowTranslation(const Translation& language) {
  setenv("LC_ALL", "C.UTF-8", 1);
  setenv("LANGUAGE", "de", 1);  // says nothing
  paths.catalogues = ZEL_CATALOGUES;
  IndexOf(std::string{"LANG="} + language.code);
  SetupEncoding();
  bool good = language.code == std::string{LanguageSuffix()};
  good &= get_uformat() == (language.hasLetters ? U_ASCII_CP : U_UTF8);
  good &= !language.hasLetters || !uisok(0x100);  // letters lose no accent
  FT_Library library = nullptr;
  FT_Face face = nullptr;
  good &= FT_Init_FreeType(&library) == 0 && FT_New_Face(library, kExampleFont, 0, &face) == 0;
  std::string shown, written;
  for (const std::uint32_t id : kAllTexts) {
    shown += Converted(Text(id), U_CURRENT, U_UTF8);
    for (const char* at = Text(id); good && language.hasLetters && *at != '\0';) {
      const int character = ugetxc(&at);
      good &= character < ' ' || FT_Get_Char_Index(face, static_cast<FT_ULong>(character)) != 0;
    }
  }
  UseEncodingOfLocale();
  for (const std::uint32_t id : kAllTexts) written += Text(id);
  good &= shown == written && language.back == std::string{Text(1515)};
  std::_Exit(good ? EXIT_SUCCESS : EXIT_FAILURE);
}

// Each in a process of its own: the catalogues are opened once.
TEST_F(LanguageTest, ShippedTranslationsShowInTheirEncoding) {
  for (const Translation& language : kTranslations)
    EXPECT_EXIT(ShowTranslation(language), testing::ExitedWithCode(EXIT_SUCCESS), "")
        << language.code;
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
