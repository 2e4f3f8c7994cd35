#include "toolkit/core/bytes.h"

#include <sys/stat.h>

#include <iterator>
#include <numeric>
#include <string>

#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

class BytesTest : public AllegroFixture {
 protected:
  // Allegro keeps the pointer.
  static const unsigned short* Latin1() {
    static unsigned short page[256];
    std::iota(std::begin(page), std::end(page), static_cast<unsigned short>(0));
    return page;
  }
};

TEST_F(BytesTest, RegularFilesAreReadUpToALimit) {
  const TempDir folder;
  const std::string path = folder.Write("some#where.dat", std::string(1000, 'x'));
  EXPECT_EQ(ReadBytes(path.c_str(), 1000), Bytes(1000, 'x'));
  EXPECT_EQ(ReadBytes(path.c_str(), 999), Bytes{});
  EXPECT_TRUE(IsFile(path.c_str()));
  const std::string pipe = folder.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const std::string& other : {folder.Path("none"), folder.Path(), pipe}) {
    EXPECT_EQ(ReadBytes(other.c_str(), 1000), Bytes{}) << other;
    EXPECT_FALSE(IsFile(other.c_str())) << other;
  }
  EXPECT_GT(ReadBytes("/proc/self/status", 1 << 20).size(), 0u)
      << "although its size is said to be 0";
}

TEST_F(BytesTest, NamesAreInTheTextFormat) {
  const TempDir folder;
  folder.Write("\xC3\xA9", "x");
  const int encoding = get_filename_encoding();
  set_filename_encoding(U_UTF8);
  set_uformat(U_ASCII_CP);
  set_ucodepage(Latin1(), nullptr);
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
