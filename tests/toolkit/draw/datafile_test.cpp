#include "toolkit/draw/datafile.h"

#include <string>
#include <utility>

#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

class DatafileTest : public AllegroFixture {
 protected:
  // A datafile of one picture, the first rows of which repeat each other, written by Allegro.
  std::string WritePacked(const char* mode, bool packsObject, int bits = 8, int bytes = 1) const {
    const std::string path = dir.Path("a.dat");
    PACKFILE* file = pack_fopen(path.c_str(), mode);
    for (const int number : {DAT_MAGIC, 1, DAT_BITMAP}) pack_mputl(number, file);
    PACKFILE* object = pack_fopen_chunk(file, packsObject);
    for (const int word : {bits, kSide, kSide}) pack_mputw(word, object);
    for (int i = 0; i < kSide * kSide * bytes; ++i) pack_putc(i % kSide + i / 5000, object);
    pack_fclose(pack_fclose_chunk(object));
    return path;
  }

  static constexpr int kSide = 100;
  TempDir dir;
};

TEST_F(DatafileTest, PicturesAreThoseThatAllegroMakesHoweverTheyArePacked) {
  const std::pair<int, int> formats[] = {{8, 1}, {15, 2}, {16, 2}, {24, 3}, {32, 3}, {-32, 4}};
  for (int round = 0; round < 6 * 4; ++round) {
    const auto& [bits, bytes] = formats[round / 4];
    const char* mode = round % 2 ? F_WRITE_PACKED : F_WRITE_NOPACK;
    const std::string path = WritePacked(mode, round % 4 < 2, bits, bytes);
    for (const int depth : {8, 15, 16, 24, 32}) {
      UseDepth(depth);
      Datafile datafile;
      ASSERT_TRUE(datafile.Load(path.c_str())) << bits << mode;
      const BitmapPtr picture = MakePicture(*datafile.Find("", DAT_BITMAP));
      DATAFILE* expected = load_datafile(path.c_str());
      const int mask = depth == 32 ? 0xFFFFFF : -1;  // without its alpha channel
      int different = 0;
      for (int i = 0; i < kSide * kSide; ++i)
        different += getpixel(picture.get(), i % kSide, i / kSide) !=
                     (getpixel(static_cast<BITMAP*>(expected->dat), i % kSide, i / kSide) & mask);
      EXPECT_EQ(different, 0) << bits << mode << " to " << depth;
      unload_datafile(expected);
    }
    const std::string whole = dir.Read("a.dat");
    for (std::size_t length = 0; length < whole.size(); length += 1 + whole.size() / 90)
      EXPECT_FALSE(Datafile{}.Load(dir.Write("cut.dat", whole.substr(0, length)).c_str()));
  }
}

// The first bytes of a packed file may repeat only what Allegro has set. And a file within another
// is none.
TEST_F(DatafileTest, RepetitionsOfUndefinedBytesAndObjectsOfOthersAreRefused) {
  const auto packed = [this](const std::string& repetition) {
    // Seven bytes as they are, the last three for the number of objects, and a repetition.
    const std::string start = std::string{"slh!\177ALL."} + std::string(3, '\0');
    return Datafile{}.Load(dir.Write("packed.dat", start + repetition).c_str());
  };
  EXPECT_TRUE(packed(std::string{"\x00\x00", 2})) << "zeros from the start of the ring";
  EXPECT_FALSE(packed("\xFA\xF0")) << "from its end, which is not written yet";
  EXPECT_FALSE(Datafile{}.Load((WritePacked(F_WRITE_NOPACK, false) + "#object").c_str()));
}

}  // namespace
}  // namespace zel
