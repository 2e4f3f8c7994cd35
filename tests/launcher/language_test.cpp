#include "launcher/language.h"

#include <iconv.h>

#include <optional>
#include <string>

#include "launcher/code_pages.h"
#include "launcher/paths.h"
#include "launcher/state.h"
#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

class LanguageTest : public AllegroFixture {
 protected:
  LanguageTest() { paths.languageFile = fileName_.c_str(); }
  ~LanguageTest() override { paths = Paths{}; }

  int IndexOf(std::string_view content) {
    directory_.Write("i18n", content);
    return LanguageIndex();
  }

 private:
  TempDir directory_;
  std::string fileName_ = directory_.Path("i18n");
};

TEST_F(LanguageTest, EachCodeHasItsIndex) {
  const char* const codes[] = {"en", "de", "ru", "fr", "es", "pl", "it", "cn", "ja"};
  for (int i = 0; i < static_cast<int>(std::size(codes)); ++i) {
    EXPECT_EQ(IndexOf(std::string{"LANG="} + codes[i] + "_XX.UTF-8\n"), i);
    EXPECT_STREQ(launcherState.languageCode, codes[i]);
  }
}

TEST_F(LanguageTest, OnlyALangLineWithAValueCounts) {
  struct Row {
    const char* content;
    int index;
    const char* code;
  };
  constexpr Row kRows[] = {
      {"", kEnglish, ""},
      {"LANG=ru_RU.KOI8-R", kRussian, "ru"},
      {"LANG=de", kGerman, "de"},
      {"LANG=xx_XX\n", kEnglish, "xx"},
      {"LANG=DE\n", kEnglish, "DE"},
      {"LANG=\"de_DE\"\n", kEnglish, "\"d"},
      {"  LANG \t = = fr_FR  \n", kFrench, "fr"},
      {"LANG it_IT\n", kItalian, "it"},
      {"SYSFONT=lat9\r\nLANG=pl_PL\r\n", kPolish, "pl"},
      {"#LANG=de\n# LANG=de\nLANG=es\nLANG=de\n", kSpanish, "es"},
      {"LANG=\nLANG=d\nLANG=ja_JP\n", kJapanese, "ja"},
      {"lang=de\nLANGUAGE=de\nLC_LANG=de\n", kEnglish, ""},
      {"=LANG=de\n[LANG]\nde\n", kEnglish, ""},
  };
  for (const Row& row : kRows) {
    EXPECT_EQ(IndexOf(row.content), row.index) << row.content;
    EXPECT_STREQ(launcherState.languageCode, row.code) << row.content;
  }
}

TEST_F(LanguageTest, MissingFileMeansEnglish) {
  EXPECT_EQ(LanguageIndex(), kEnglish);
  EXPECT_EQ(IndexOf("LANG=de\n"), kGerman);
  paths.languageFile = "/no-such-directory/i18n";
  EXPECT_EQ(LanguageIndex(), kEnglish);
  EXPECT_STREQ(launcherState.languageCode, "");
  paths.languageFile = "/";
  EXPECT_EQ(LanguageIndex(), kEnglish);
}

TEST_F(LanguageTest, JunkIsReadOver) {
  std::string junk;
  for (int i = 0; i < 4096; ++i) junk += static_cast<char>(i * 7);
  EXPECT_EQ(IndexOf(junk + "\nLANG=fr\n"), kFrench);
  EXPECT_EQ(IndexOf(std::string(100'000, '=') + "\n" + std::string(3, '\0') + "\nLANG=it"),
            kItalian);
  EXPECT_EQ(IndexOf("LANG=de\n" + std::string(3 << 20, 'x')), kGerman);
  // What comes after a megabyte is not looked for.
  EXPECT_EQ(IndexOf(std::string(3 << 20, '\n') + "LANG=de\n"), kEnglish);
}

TEST_F(LanguageTest, EncodingFollowsTheLanguage) {
  constexpr const char* kText = "\xA4";
  constexpr const char* kWesternLanguages[] = {"en", "de", "fr", "es", "it", "xx"};
  const auto setup = [this](const char* code) {
    IndexOf(std::string{"LANG="} + code + "\n");
    SetupEncoding();
    return get_uformat();
  };
  for (const char* code : kWesternLanguages) {
    EXPECT_EQ(setup(code), U_ASCII_CP);
    EXPECT_EQ(ugetc(kText), 0x20AC);
    EXPECT_FALSE(uisok(0x100)) << "letters without their accent";
  }
  EXPECT_EQ(setup("ru"), U_ASCII_CP);
  EXPECT_EQ(ugetc(kText), 0x2553);
  EXPECT_EQ(setup("pl"), U_ASCII_CP);
  EXPECT_EQ(ugetc(kText), 0x00A4);
  EXPECT_EQ(setup("cn"), U_UTF8);
  EXPECT_EQ(setup("ja"), U_UTF8);
}

// The character of a byte as the C library knows it; none for a byte without one.
std::optional<int> Decoded(iconv_t decoder, int byte) {
  char input = static_cast<char>(byte);
  unsigned char output[2];
  char* from = &input;
  char* to = reinterpret_cast<char*>(output);
  std::size_t inputLeft = 1, outputLeft = sizeof output;
  if (iconv(decoder, &from, &inputLeft, &to, &outputLeft) != 0) return std::nullopt;
  return output[0] | output[1] << 8;
}

TEST(CodePage, IsTheOneOfItsStandard) {
  struct Row {
    const char* name;
    const unsigned short* page;
  };
  const Row rows[] = {{"ISO-8859-15", WesternCodePage()},
                      {"KOI8-R", RussianCodePage()},
                      {"CP1250", CentralEuropeanCodePage()}};
  for (const Row& row : rows) {
    const iconv_t decoder = iconv_open("UCS-2LE", row.name);
    ASSERT_NE(decoder, reinterpret_cast<iconv_t>(-1)) << row.name;
    for (int byte = 0; byte < 256; ++byte) {
      const int substitute = byte == 0x81 ? ' ' : '?';
      EXPECT_EQ(row.page[byte], Decoded(decoder, byte).value_or(substitute))
          << row.name << ' ' << byte;
    }
    iconv_close(decoder);
  }
}

}  // namespace
}  // namespace zel
