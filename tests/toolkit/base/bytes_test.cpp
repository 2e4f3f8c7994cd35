#include "toolkit/base/bytes.h"

#include <sys/stat.h>

#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

using BytesTest = AllegroFixture;

TEST_F(BytesTest, RegularFilesOfAnyNameAreReadUpToALimit) {
  const TempDir folder;
  const std::string pipe = folder.Path("pipe"), file = folder.Write("some#where.dat", "abc");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const auto read = [](const std::string& path, std::size_t limit) {
    const auto text = [](const auto& bytes) { return std::string(bytes.begin(), bytes.end()); };
    return std::string(IsFile(path.c_str()) ? "file " : "") + text(ReadBytes(path.c_str(), limit)) +
           ' ' + text(MapBytes(path.c_str(), limit).bytes);
  };
  EXPECT_EQ(read(file, 3), "file abc abc");
  EXPECT_EQ(read(file, 2), "file  ");
  EXPECT_EQ(read(folder.Write("empty", ""), 2), "file  ");
  for (const std::string& other : {folder.Path("none"), folder.Path(), pipe})
    EXPECT_EQ(read(other, 1000), " ") << other;
  const auto grown = [](std::size_t limit) { return ReadBytes("/proc/self/status", limit).size(); };
  EXPECT_TRUE(grown(1 << 20) > 500 && grown(500) == 0) << "its size is said to be 0";
  EXPECT_TRUE(WriteBytes(file.c_str(), std::string{"de"}));
  EXPECT_EQ(folder.Read("some#where.dat"), "de");
  EXPECT_FALSE(WriteBytes("/missing/file", std::string{"de"}) ||
               WriteBytes("/dev/full", std::string{"d"}));
  folder.Write("\xC3\xA9", "x");
  const int encoding = get_filename_encoding();
  set_filename_encoding(U_UTF8);
  UseLatin1();
  EXPECT_EQ(read(folder.Path("\xE9"), 9), "file x x");
  set_filename_encoding(encoding);
}

}  // namespace
}  // namespace zel
