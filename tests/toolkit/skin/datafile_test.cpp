#include "toolkit/skin/datafile.h"

#include <string>
#include <utility>

#include "tests/support/allegro_fixture.h"
#include "tests/support/temp_files.h"

namespace zel {
namespace {

class DatafileTest : public AllegroFixture {
 protected:
  // A datafile of one picture, the first rows of which repeat each other, written by Allegro.
  std::string WritePacked(const char* name, const char* mode, bool packsObject, int bits = 8,
                          int bytes = 1) const {
    const std::string path = dir.Path(name);
    PACKFILE* file = pack_fopen(path.c_str(), mode);
    pack_mputl(DAT_MAGIC, file);
    pack_mputl(1, file);
    pack_mputl(DAT_BITMAP, file);
    PACKFILE* object = pack_fopen_chunk(file, packsObject);
    for (const int word : {bits, kSide, kSide}) pack_mputw(word, object);
    for (int i = 0; i < kSide * kSide * bytes; ++i) pack_putc(i % kSide + i / 5000, object);
    pack_fclose(pack_fclose_chunk(object));
    return path;
  }

  static constexpr int kSide = 100;
  TempDir dir;
};

TEST_F(DatafileTest, MayBePackedAsAWholeOrObjectByObject) {
  for (const char* mode : {F_WRITE_PACKED, F_WRITE_NOPACK}) {
    for (const bool packsObject : {true, false}) {
      const std::string path = WritePacked("picture.dat", mode, packsObject);
      UseDepth(8);
      Datafile datafile;
      ASSERT_TRUE(datafile.Load(path.c_str())) << mode << packsObject;
      const BitmapPtr picture = MakePicture(*datafile.Find("", DAT_BITMAP));
      EXPECT_EQ(getpixel(picture.get(), 7, 3), 7);
      EXPECT_EQ(getpixel(picture.get(), 99, 99), 100);
      const std::string whole = dir.Read("picture.dat");
      for (std::size_t length = 0; length < whole.size(); length += 7)
        EXPECT_FALSE(Datafile{}.Load(dir.Write("cut.dat", whole.substr(0, length)).c_str()));
    }
  }
}

TEST_F(DatafileTest, PicturesAreThoseThatAllegroMakes) {
  const auto content = [](const BITMAP* picture, int depth) {
    return std::string(static_cast<const char*>(picture->dat), kSide * kSide * ((depth + 7) / 8));
  };
  for (const auto& [bits, bytes] :
       {std::pair{8, 1}, {15, 2}, {16, 2}, {24, 3}, {32, 3}, {-32, 4}}) {
    const std::string path = WritePacked("a.dat", F_WRITE_NOPACK, false, bits, bytes);
    for (const int depth : {8, 15, 16, 24, 32}) {
      UseDepth(depth);
      Datafile datafile;
      ASSERT_TRUE(datafile.Load(path.c_str())) << bits;
      const BitmapPtr picture = MakePicture(*datafile.Find("", DAT_BITMAP));
      DATAFILE* expected = load_datafile(path.c_str());
      EXPECT_EQ(content(picture.get(), depth), content(static_cast<BITMAP*>(expected->dat), depth))
          << bits << " to " << depth;
      unload_datafile(expected);
    }
  }
}

// The first bytes of a packed file may repeat only what Allegro has set.
TEST_F(DatafileTest, RepetitionsOfUndefinedBytesAreRefused) {
  const auto packed = [this](const std::string& repetition) {
    // Seven bytes as they are, the last three for the number of objects, and a repetition.
    const std::string file =
        std::string{
            "slh!\x7F"
            "ALL.",
            9} +
        std::string(3, '\0') + repetition;
    return Datafile{}.Load(dir.Write("packed.dat", file).c_str());
  };
  EXPECT_TRUE(packed(std::string{"\x00\x00", 2})) << "zeros from the start of the ring";
  EXPECT_FALSE(packed("\xFA\xF0")) << "from its end, which is not written yet";
}

TEST_F(DatafileTest, AreNotLookedForInsideOthers) {
  const std::string path = WritePacked("a.dat", F_WRITE_NOPACK, false);
  EXPECT_TRUE(Datafile{}.Load(path.c_str()));
  EXPECT_FALSE(Datafile{}.Load((path + "#object").c_str()));
}

}  // namespace
}  // namespace zel
