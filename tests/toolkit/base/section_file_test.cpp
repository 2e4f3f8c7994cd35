#include "toolkit/base/section_file.h"

#include <algorithm>
#include <climits>
#include <random>

#include "launcher/code_pages.h"
#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

using SectionFileTest = AllegroFixture;

// Allegro's own reader is the measure, but for damage, which takes it astray.
void ExpectWhatAllegroSays(const std::string& content) {
  std::string sound = content;
  std::replace(sound.begin(), sound.end(), '\0', ' ');
  const TempFile temp{Sound(sound, U_UTF8)};
  set_config_file(temp.Path());
  const SectionFile file = SectionFile::FromUtf8(content);
  for (const char* name : {"A", "LINE1", "none"}) {
    const SectionFile::Section& section = file.Find(name);
    for (const char* key : {"key", "n", "Title.ru"}) {
      const std::string text = get_config_string(name, key, "-");
      ASSERT_EQ(section.GetText(key, "-"), text) << content;
      if (text.size() > 9) continue;  // numbers beyond an int wrap around in Allegro
      ASSERT_EQ(section.GetInt(key, 7), get_config_int(name, key, 7)) << content;
      ASSERT_EQ(section.GetId(key, 7), get_config_id(name, key, 7)) << content;
    }
  }
}

std::string Value(const std::string& content) {
  return SectionFile::FromUtf8(content).Find("A").GetText("key", "-");
}

TEST_F(SectionFileTest, ReadsWhatMaintainersWrite) {
  const std::pair<std::string, const char*> rows[] = {
      {"\t[a]\r\n  KEY \t = = two words \t\r\n", "two words"},
      {"[A]# comment\n#key=1\n # key=2\nkey#3 # no \"comment\"\n", "#3 # no \"comment\""},
      {"[A]\n[B]\nkey=b\n[a]\nkey=first\nkey=again\n", "first"},
      {"key=1\n[A x]\nkey=2\n[=A]\nkey=3\n[A\nkey=4\n[[A]]\nkey=5\n[]\nkey=6\n", "-"},
      {"[A]\nother=1\n=key=2\n'key'=3\nkey=4=5\n", "4=5"},
      {"\u3000[A]\nkey\u3000=\u2003wide\u3000way\u2000\n", "wide\u3000way"},
      {"\xEF\xBB\xBF[A]\nkey=" + std::string("va\0lue", 6), "va lue"},
      {"[A]\nkey=\xFD\xBF\xBF\xBF\xBF\xBF!\n", "^!"},  // Allegro's own reader would never end
      {"[A]\nother=\xE4\nkey=a\xE2\x82", "a^"}};       // damage ends with its line
  for (const auto& [content, value] : rows) EXPECT_EQ(Value(content), value) << content;
}

TEST_F(SectionFileTest, TakesFilesForUtf8InEveryTextFormat) {
  const std::string content = "[A]\nkey=\xC3\xA4\xD0\x94\xE2\x82\xAC\xE4g\n";  // a-umlaut, De, euro
  EXPECT_EQ(Value(content), "\xC3\xA4\xD0\x94\xE2\x82\xAC^g");
  set_uformat(U_ASCII_CP);
  set_ucodepage(WesternCodePage(), nullptr);
  EXPECT_EQ(Value(content), "\xE4^\xA4^g");
  set_ucodepage(RussianCodePage(), nullptr);
  EXPECT_EQ(Value(content), "^\xE4^^g");
  EXPECT_STREQ(SectionFile{"[A]\nkey=\xE4"}.Find("A").GetText("key"), "\xE4");
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
  const SectionFile file{
      "[LINE10]\na=4294967296\nb=-99999999999999999999\n[line2]\n[LINE1]\n[LINE2]\n[LINE0]\n"
      "[LINE03]\n[LINE-4]\n[LINE+5]\n[LINE 6]\n[LINE7a]\n[LINE]\n[LINE99999999999]\n[XLINE8]\n"};
  EXPECT_EQ(file.Numbered("LINE", INT_MAX), std::vector({1, 2, 10}));
  EXPECT_EQ(file.Numbered("LINE", 9), std::vector({1, 2}));
  const SectionFile::Section& section = file.Find("LINE10");
  EXPECT_EQ(std::pair(section.GetInt("a"), section.GetInt("b")), std::pair(INT_MAX, INT_MIN));
}

TEST_F(SectionFileTest, KnowsTheLinesOfEverything) {
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

}  // namespace
}  // namespace zel
