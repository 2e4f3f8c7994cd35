#include "toolkit/core/config_file.h"

#include <string>

#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

class ConfigFileTest : public AllegroFixture {
 protected:
  static std::string Value() { return get_config_string("Section", "key", "none"); }
  static std::string Read(const std::string& content) {
    UseConfigFile(TempFile{content}.Path());
    return Value();
  }
};

TEST_F(ConfigFileTest, FilesOfAnyContentAreReadAsFarAsTheyMakeSense) {
  const std::string start = "# comment\r\n[Section]\r\n\r\nkey = ", spaces(100'000, ' ');
  EXPECT_EQ(Read(start + "value \r\n"), "value");
  EXPECT_EQ(Read(start + "va" + std::string(1, '\0') + "lue\nother = x"), "va lue");
  EXPECT_EQ(Read("[Section]\nfirst = " + spaces + "x\nkey = y"), "y");
  EXPECT_EQ(Read("[Section]\nkey = x" + spaces), "x");
  EXPECT_EQ(Read("\xEF\xBB\xBF[Section]\nkey = x"), "x") << "a byte order mark";
  EXPECT_EQ(Read(start + std::string(200'000, 'x')), "none") << "too long a file";
  for (std::size_t length = 240; length < 260; ++length) {
    const std::string value = std::string(length, 'x') + "\xE2\x82\xAC";
    EXPECT_EQ(Read(start + value), value) << "around the end of Allegro's first buffer";
  }
  EXPECT_EQ(Read(start + "a\xE2\x82"), "a^");
  UseConfigFile("no-such-directory/file.cfg");
  EXPECT_EQ(Value(), "none");
}

TEST_F(ConfigFileTest, FilesAreUtf8AndTextsInTheCurrentFormat) {
  UseLatin1();
  EXPECT_EQ(Read("[Section]\nkey = \xC3\xA9"), "\xE9");
  UseConfigText("[Section]\nkey = \xE9");
  EXPECT_EQ(Value(), "\xE9");
}

}  // namespace
}  // namespace zel
