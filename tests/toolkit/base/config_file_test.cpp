#include "toolkit/base/config_file.h"

#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

using ConfigFileTest = AllegroFixture;

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
  const auto flushed = [](const std::string& content, const char* name = "test.cfg") {
    const TempFile file{content, name};
    UseConfigFile(file.Path());
    set_config_int("Section", "key", 2);
    flush_config_file();
    set_config_data("", 0);
    return file.Content();
  };
  EXPECT_EQ(flushed("# \u20AC\n[Section]\nkey = 1\n"), "# \u20AC\n[Section]\nkey = 2\n");
  EXPECT_NE(flushed(std::string(240, '#')), std::string(240, '#'));
  for (const std::string& content : {std::string(200'000, '#'), std::string(241, '#'),
                                     std::string{"\xFF"}, std::string{"\xEF\xBB\xBF# mark"}})
    EXPECT_EQ(flushed(content), content);
  EXPECT_EQ(flushed("# old", "a#b.cfg"), "# old");
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
