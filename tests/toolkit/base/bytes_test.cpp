#include "toolkit/base/bytes.h"

#include <sys/stat.h>

#include <algorithm>
#include <string>

#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

using BytesTest = AllegroFixture;

TEST_F(BytesTest, RegularFilesOfAnyNameAreReadUpToALimit) {
  const TempDir folder;
  const std::string path = folder.Write("some#where.dat", std::string(1000, 'x'));
  EXPECT_EQ(ReadBytes(path.c_str(), 1000), Bytes(1000, 'x'));
  EXPECT_EQ(ReadBytes(path.c_str(), 999), Bytes{});
  const SharedBytes mapped = MapBytes(path.c_str(), 1000);
  EXPECT_TRUE(std::ranges::equal(mapped.bytes, Bytes(1000, 'x')));
  EXPECT_TRUE(MapBytes(path.c_str(), 999).bytes.empty());
  EXPECT_TRUE(IsFile(path.c_str()));
  const std::string pipe = folder.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const std::string& other : {folder.Path("none"), folder.Path(), pipe}) {
    EXPECT_EQ(ReadBytes(other.c_str(), 1000), Bytes{}) << other;
    EXPECT_FALSE(IsFile(other.c_str())) << other;
  }
  EXPECT_FALSE(ReadBytes("/proc/self/status", 1 << 20).empty()) << "its size is said to be 0";

  folder.Write("\xC3\xA9", "x");
  const int encoding = get_filename_encoding();
  set_filename_encoding(U_UTF8);
  UseLatin1();
  EXPECT_TRUE(IsFile(folder.Path("\xE9").c_str()));
  EXPECT_EQ(ReadBytes(folder.Path("\xE9").c_str(), 9), Bytes{'x'});
  set_filename_encoding(encoding);
}

TEST_F(BytesTest, NumbersBeyondTheEndAreZeroAndNoted) {
  const Bytes bytes{1, 2, 3, 4, 5, 6, 7, 8};
  ByteReader reader{bytes};
  EXPECT_EQ(reader.Little16(), 0x0201);
  EXPECT_EQ(reader.Big16(), 0x0304);
  EXPECT_EQ(ByteReader{reader}.Little32(), 0x08070605u);
  EXPECT_EQ(ByteReader{reader}.Big32(), 0x05060708u);
  reader.Skip(2);
  EXPECT_TRUE(reader.IsSound());
  EXPECT_TRUE(reader.Take(3).empty());
  EXPECT_FALSE(reader.IsSound());
  EXPECT_EQ(reader.Byte(), 0);
}

}  // namespace
}  // namespace zel
