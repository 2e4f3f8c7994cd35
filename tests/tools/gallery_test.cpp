#include <filesystem>
#include <set>

#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"
#include "toolkit/testing/offscreen.h"
#include "toolkit/testing/stage.h"
#include "tools/gallery/gallery.h"

namespace zel {
namespace {

struct GalleryTest : AllegroFixture {
  Offscreen offscreen;
};

TEST_F(GalleryTest, EveryPageShowsSomethingElseInEveryLook) {
  for (const char* skin : {"default", "data/skin/zel.skin"}) {
    ASSERT_EQ(Offscreen::LoadSkin(skin), "");
    for (const int depth : {8, 16, 32}) {
      ASSERT_TRUE(offscreen.SetMode({640, 480}, depth));
      std::set<std::vector<int>> seen;
      for (const Page& page : Pages()) {
        const auto sheet = BuildPage(page, {640, 480});
        Dialog root;
        root.Add(sheet.get());
        offscreen.Run(root, 20);  // frames, until transitions have ended
        EXPECT_TRUE(seen.insert(Pixels(offscreen.Frame())).second) << page.name << skin << depth;
      }
    }
  }
}

TEST_F(GalleryTest, ScreensInMemoryHaveSizesAndDepthsOfScreensAndAClockOfTheirOwn) {
  settings.yield = false;
  std::string seen;
  for (const auto& [w, h, depth] : {std::tuple{16384, 1, 8},
                                    {16385, 1, 8},
                                    {1, 16385, 8},
                                    {0, 9, 8},
                                    {9, 0, 8},
                                    {9, 9, 12},
                                    {1, 2, 15}})
    seen += offscreen.SetMode({w, h}, depth) ? "set " : "refused ";
  EXPECT_EQ(seen, "set refused refused refused refused refused set ");
  EXPECT_EQ(Join(settings.screenWidth, settings.screenHeight, settings.colorDepth,
                 settings.showMouse, settings.useKeyboard, settings.yield),
            "1 2 15 0 0 1 ");
  EXPECT_EQ(Offscreen::LoadSkin("/no"), "/no: Error: skin description file not found!");
  Recorder root;
  root.watched = {MSG_TIMER, MSG_DRAW, MSG_END};
  root.onEvent = [&root](Widget*, int, int) { root.Redraw(); };
  settings.logicFrameRate = 50;
  for (const int ms : {10, 45}) InstallTimer(ms);
  offscreen.Run(root, 4);
  EXPECT_EQ(root.Events(),
            "root: Draw; root, ?, root, ?: Timer; root: Draw; root, ?, root, ?: Timer; root: Draw; "
            "root, ?, root, ?, root, ?: Timer; root: Draw; ?, root: End")
      << "after 20, 40 and 60 ms; what has no name is the tip";
  EXPECT_EQ(offscreen.onFrame, nullptr);
}

TEST_F(GalleryTest, PictureFileReadsBack) {
  const TempDir directory;
  for (const int depth : {15, 24}) {
    ASSERT_TRUE(offscreen.SetMode({60, 40}, depth));
    for (int x = 0; x < 60; ++x)
      vline(offscreen.Frame(), x, 0, 39, makecol(4 * x, 255 - x, x * x & 255));
    const std::string path = directory.Path("picture.png");
    ASSERT_TRUE(SavePng(path.c_str(), offscreen.Frame()));
    const BitmapPtr read{load_bitmap(path.c_str(), nullptr)};
    ASSERT_TRUE(read);
    EXPECT_EQ(Pixels(read.get()), Pixels(offscreen.Frame())) << depth;
    SavePng(path.c_str(), offscreen.Frame(), {20, 50});
    const BitmapPtr part{load_bitmap(path.c_str(), nullptr)};
    EXPECT_EQ(Join(part->w, part->h, getpixel(part.get(), 19, 39) == getpixel(read.get(), 19, 39)),
              "20 40 1 ");
  }
  EXPECT_FALSE(SavePng(directory.Path("none/picture.png").c_str(), offscreen.Frame()));
  const std::string full = directory.Path("full.png");
  std::filesystem::create_symlink("/dev/full", full);
  EXPECT_FALSE(SavePng(full.c_str(), offscreen.Frame()));
  EXPECT_TRUE(std::filesystem::is_symlink(full)) << "what cannot be written is deleted";
}

TEST_F(GalleryTest, SizesHaveTwoNumbers) {
  Size size;
  for (const char* text : {"", "800", "800x", "0x600", "800x600x16"})
    EXPECT_FALSE(ParseSize(text, &size)) << text;
  EXPECT_TRUE(ParseSize("800x600", &size) && size == (Size{800, 600}));
}

}  // namespace
}  // namespace zel
