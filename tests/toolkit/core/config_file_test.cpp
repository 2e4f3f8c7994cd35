#include "toolkit/core/config_file.h"

#include <iterator>
#include <numeric>
#include <string>

#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

class ConfigFileTest : public AllegroFixture {
 protected:
  static std::string Read(const std::string& content, const char* key = "key") {
    const TempFile file{content};
    UseConfigFile(file.Path());
    return get_config_string("Section", key, "none");
  }
};

TEST_F(ConfigFileTest, FilesOfAnyContentAreReadAsFarAsTheyMakeSense) {
  const std::string start = "# comment\r\n[Section]\r\n\r\nkey = ";
  const std::string euro = "\xE2\x82\xAC";
  EXPECT_EQ(Read(start + "value \r\n"), "value");
  EXPECT_EQ(Read(start + "va" + std::string(1, '\0') + "lue\nother = x"), "va lue");
  EXPECT_EQ(Read("[Section]\nfirst = " + std::string(100000, ' ') + "x\nkey = y"), "y");
  EXPECT_EQ(Read("[Section]\nkey = x" + std::string(100000, ' ')), "x");
  EXPECT_EQ(Read("[Section]\nkey = " + std::string(200000, 'x')), "none") << "too long a file";
  for (std::size_t length = 240; length < 260; ++length) {
    const std::string value = std::string(length, 'x') + euro;
    EXPECT_EQ(Read(start + value), value) << "around the end of Allegro's first buffer";
  }
  EXPECT_EQ(Read("[Section]\nkey = a\xE2\x82"), "a^");
}

TEST_F(ConfigFileTest, MissingFilesAreEmpty) {
  Read("[Section]\nkey = x");
  UseConfigFile("no-such-directory/file.cfg");
  EXPECT_STREQ(get_config_string("Section", "key", "none"), "none");
}

TEST_F(ConfigFileTest, FilesAreUtf8AndTextsInTheCurrentFormat) {
  set_uformat(U_ASCII_CP);
  static unsigned short page[256];  // Allegro keeps the pointer
  std::iota(std::begin(page), std::end(page), static_cast<unsigned short>(0));
  set_ucodepage(page, nullptr);
  EXPECT_EQ(Read("[Section]\nkey = \xC3\xA9"), "\xE9");
  UseConfigText("[Section]\nkey = \xE9");
  EXPECT_STREQ(get_config_string("Section", "key", "none"), "\xE9");
}

}  // namespace
}  // namespace zel
