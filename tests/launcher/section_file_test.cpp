#include "launcher/section_file.h"

#include <algorithm>
#include <climits>
#include <random>

#include "launcher/code_pages.h"
#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

using SectionFileTest = AllegroFixture;

// Allegro's own reader is the measure.
void ExpectWhatAllegroSays(const std::string& content) {
  const TempFile temp{content};
  set_config_file(temp.Path());
  SectionFile file{temp.Path()};
  for (const char* section : {"A", "LINE1", "none"}) {
    file.Select(section);
    for (const char* key : {"key", "n", "Title.ru"}) {
      const std::string text = get_config_string(section, key, "-");
      ASSERT_EQ(file.GetText(key, "-"), text) << content;
      if (text.size() > 9) continue;  // numbers beyond an int wrap around in Allegro
      ASSERT_EQ(file.GetInt(key, 7), get_config_int(section, key, 7)) << content;
    }
  }
}

std::string Value(const std::string& content) {
  SectionFile file{TempFile{content}.Path()};
  file.Select("A");
  return file.GetText("key", "-");
}

TEST_F(SectionFileTest, ReadsWhatMaintainersWrite) {
  const std::pair<const char*, const char*> rows[] = {
      {"\t[a]\r\n  KEY \t = = two words \t\r\n", "two words"},
      {"[A]# comment\n#key=1\n # key=2\nkey#3 # no \"comment\"\n", "#3 # no \"comment\""},
      {"[A]\n[B]\nkey=b\n[a]\nkey=first\nkey=again\n", "first"},
      {"key=1\n[A x]\nkey=2\n[=A]\nkey=3\n[A\nkey=4\n[[A]]\nkey=5\n[]\nkey=6\n", "-"},
      {"[A]\nother=1\n=key=2\n'key'=3\nkey=4=5\n", "4=5"},
      {"\xE3\x80\x80[A]\nkey\xE3\x80\x80=\xE3\x80\x80wide\xE3\x80\x80\n", "wide"}};
  for (const auto& [content, value] : rows) {
    EXPECT_EQ(Value(content), value) << content;
    ExpectWhatAllegroSays(content);
  }
  EXPECT_EQ(Value("\xEF\xBB\xBF[A]\nkey=1\n"), "1") << "a mark that Allegro does not know";
  for (const char* name : {"", "/no/such/file", "/", "/dev/zero"})
    EXPECT_TRUE(SectionFile{name}.Numbered("", INT_MAX).empty()) << name;
}

TEST_F(SectionFileTest, TakesFilesForUtf8InEveryTextFormat) {
  const std::string content = "[A]\nkey=\xC3\xA4\xD0\x94\xE2\x82\xAC\xE4g\n";  // a-umlaut, De, euro
  EXPECT_EQ(Value(content).substr(0, 7), "\xC3\xA4\xD0\x94\xE2\x82\xAC");
  // Allegro's own reader would never end.
  EXPECT_EQ(Value("[A]\nkey=\xFD\xBF\xBF\xBF\xBF\xBF!\n"), "^!");
  set_uformat(U_ASCII_CP);
  set_ucodepage(WesternCodePage(), nullptr);
  EXPECT_EQ(Value(content), "\xE4^\xA4^g");
  set_ucodepage(RussianCodePage(), nullptr);
  EXPECT_EQ(Value(content), "^\xE4^^g");
}

TEST_F(SectionFileTest, ReadsRubbishAsAllegroDoes) {
  constexpr const char* kPieces[] = {
      "[A]",  "[a]",     "[LINE1]", "[",     "]",           "key",      "KEY",      "n",
      "=",    "=",       " ",       "\t",    "\v",          "#",        "\"",       "0x1F",
      "017",  "09",      "-5",      "12abc", "\n",          "\n",       "\n",       "\r",
      "\r\n", "\n[A]\n", "\nkey=",  "\nn=",  "\nTitle.ru=", "\xC3\xA4", "\xD0\x94", "\xE3\x80\x80",
      "\xE4", "\x80",    "\xA0",    "\x8A",  "\xC0\x80",    "\xFF",     "@",        "\nKEY 0X"};
  std::mt19937 random{1};
  for (const int format : {U_UTF8, U_ASCII_CP, U_ASCII}) {
    set_uformat(format);
    for (int i = 0; i < 500; ++i) {
      std::string content = "[A]\n" + std::string(random() % 300, 'x');
      for (int n = 0; n < 60; ++n) content += kPieces[random() % std::size(kPieces)];
      std::replace(content.begin(), content.end(), '@', '\0');
      ASSERT_NO_FATAL_FAILURE(ExpectWhatAllegroSays(content));
    }
  }
}

TEST_F(SectionFileTest, FindsNumberedSectionsAndBringsNumbersToThoseOfAnInt) {
  const TempFile temp{
      "[LINE10]\na=4294967296\nb=-99999999999999999999\n[line2]\n[LINE1]\n[LINE2]\n[LINE0]\n"
      "[LINE03]\n[LINE-4]\n[LINE+5]\n[LINE 6]\n[LINE7a]\n[LINE]\n[LINE99999999999]\n[XLINE8]\n"};
  SectionFile file{temp.Path()};
  EXPECT_EQ(file.Numbered("LINE", INT_MAX), std::vector({1, 2, 10}));
  EXPECT_EQ(file.Numbered("LINE", 9), std::vector({1, 2}));
  file.Select("LINE10");
  EXPECT_EQ(std::pair(file.GetInt("a"), file.GetInt("b")), std::pair(INT_MAX, INT_MIN));
}

}  // namespace
}  // namespace zel
