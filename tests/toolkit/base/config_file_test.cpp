#include "toolkit/base/config_file.h"

#include <climits>

#include "launcher/code_pages.h"
#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"
#include "toolkit/base/text.h"

namespace zel {
namespace {

using ConfigFileTest = AllegroFixture;

std::string Value(const std::string& content) {
  return SectionFile::FromUtf8(content).Find("A").GetText("key", "-");
}

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
  for (const auto& [content, value] : rows) {
    const TempFile file{Sound(content, U_UTF8)};
    set_config_file(file.Path());
    const SectionFile read = SectionFile::FromUtf8(content);
    const SectionFile::Section& section = read.Find("A");
    EXPECT_STREQ(section.GetText("key", "-"), value) << content;
    EXPECT_STREQ(get_config_string("A", "key", "-"), value) << content;
    EXPECT_EQ(section.GetInt("key", 7), get_config_int("A", "key", 7)) << content;
    EXPECT_EQ(section.GetId("key", 7), get_config_id("A", "key", 7)) << content;
  }
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

// What SectionFile and Allegro say together.
std::string Read(const char* path) {
  const std::string value = UseConfigFile(path).Find("Section").GetText("key", "none");
  EXPECT_EQ(get_config_string("Section", "key", "none"), value);
  return value;
}

TEST_F(ConfigFileTest, FilesOfAnyContentAreReadAsFarAsTheyMakeSense) {
  const std::string start = "# comment\r\n[Section]\r\n\r\nkey = ", spaces(100'000, ' ');
  EXPECT_EQ(Read(TempFile{start + "va" + std::string(1, '\0') + "lue\nother = x"}.Path()),
            "va lue");
  EXPECT_EQ(Read(TempFile{"\xEF\xBB\xBF[Section]\nfirst = " + spaces + "x\nkey = y"}.Path()), "y");
  EXPECT_EQ(Read(TempFile{start + std::string(200'000, 'x')}.Path()), "none") << "too long a file";
  for (std::size_t length = 200; length < 260; ++length) {  // the end of Allegro's first buffer
    const std::string value = std::string(length, 'x') + "\xE2\x82\xAC";
    EXPECT_EQ(Read(TempFile{start + value}.Path()), value);
  }
  EXPECT_EQ(Read("no-such-directory/file.cfg"), "none");
  EXPECT_EQ(Read("/dev"), "none");
  UseLatin1();
  EXPECT_EQ(Read(TempFile{"[Section]\nkey = \xC3\xA9"}.Path()), "\xE9");
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

}  // namespace
}  // namespace zel
