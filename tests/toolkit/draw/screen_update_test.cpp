#include "toolkit/draw/screen_update.h"

#include <random>

#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"
#include "toolkit/testing/fake_machine.h"
#include "toolkit/testing/picture.h"

namespace zel {
namespace {

TEST(PixelArea, EachPixelIsCoveredOnce) {
  constexpr int kGrid = 6;
  std::mt19937 random{1};
  for (int round = 0; round < 30'000; ++round) {
    PixelArea area;
    std::string wanted(kGrid * kGrid, '0'), covered = wanted;
    const auto fill = [](std::string& grid, const Rect& r, auto change) {
      for (int y = r.y; y < r.Bottom(); ++y)
        for (int x = r.x; x < r.Right(); ++x) change(grid[y * kGrid + x]);
    };
    for (int i = round % 7; i >= 0; --i) {  // the last one is removed in every other round
      const int x = random() % kGrid, y = random() % kGrid;
      const Rect r{x, y, static_cast<int>(1 + random() % (kGrid - x)),
                   static_cast<int>(1 + random() % (kGrid - y))};
      const bool isAdded = i > 0 || round % 2;
      isAdded ? area.Add(r) : area.Remove(r);
      fill(wanted, r, [=](char& c) { c = isAdded ? '1' : '0'; });
    }
    for (const Rect& r : area.Rects()) fill(covered, r, [](char& c) { ++c; });
    ASSERT_EQ(covered, wanted) << round;
    for (const Rect& r : area.Rects()) ASSERT_TRUE(r.w > 0 && r.h > 0) << round;
  }
}

TEST(PixelArea, PiecesAreListedInTheOrderOfTheStrips) {
  PixelArea area;
  const Rect added[] = {{4, 4, 2, 2}, {6, 4, 5, 2},   {0, 0, 11, 10},
                        {1, 1, 8, 8}, {50, 50, 0, 9}, {50, 50, 9, -1}};
  for (const Rect& r : added) area.Add(r);
  const std::vector<Rect> strips = {
      {4, 4, 2, 2}, {6, 4, 5, 2}, {0, 0, 11, 4}, {0, 4, 4, 2}, {0, 6, 11, 4}};
  EXPECT_EQ(area.Rects(), strips);
}

class ScreenUpdateTest : public AllegroFixture {
 protected:
  ScreenUpdateTest() { set_gfx_mode(GFX_AUTODETECT_FULLSCREEN, 6, 4, 0, 0); }
  ~ScreenUpdateTest() override { SetCurrentScreenUpdate(nullptr); }

  static ScreenUpdate& Install(int method) {
    InstallScreenUpdate(method);
    return *CurrentScreenUpdate();
  }

  FakeMachine machine;
};

// With so many pages of video memory, if any are wanted: where is drawn, and what is on the screen
// while drawing, after the redraw, and after one more that nothing was drawn for.
TEST_F(ScreenUpdateTest, EachMethodBringsItsPartOfTheFrameToTheScreen) {
  std::string seen;
  const auto show = [&seen] { seen += Describe(screen, {0, 0, 6, 4}) + '\n'; };
  for (const int method : {0, 3, 2, -7})
    for (const int pages : {-1, 0, 8}) {
      settings.useVideoMemory = settings.vsync = pages >= 0;
      machine.videoPagesLeft = pages;
      machine.retraces = 0;
      clear_bitmap(screen);
      ScreenUpdate& update = Install(method);
      EXPECT_EQ(Picture(update.GetCanvas()), Rows(4, "kkkkkk")) << "a new frame is black";
      seen += std::to_string(method) + ": " + update.GetName() +
              (update.RedrawsAll() ? ", redraws all" : "") + ", pages " + std::to_string(pages) +
              (is_video_bitmap(update.GetCanvas()) ? ", draws on one\n" : "\n");
      clear_to_color(update.GetCanvas(), red);
      update.AddDirtyRect(1, 1, 3, 2);
      update.AddDirtyRect(Rect{-5, 3, 7, 50});
      show();
      update.Redraw();
      show();
      clear_bitmap(screen);
      update.Redraw();
      show();
      seen += std::to_string(machine.retraces) + " retraces\n\n";
      SetCurrentScreenUpdate(nullptr);
      EXPECT_EQ(machine.videoPages, 0);
    }
  ExpectText("screen_updates", seen);
}

TEST_F(ScreenUpdateTest, WithoutAScreenNothingHappens) {
  set_gfx_mode(GFX_TEXT, 0, 0, 0, 0);
  for (const int method : {0, 1, 3}) {
    ScreenUpdate& update = Install(method);
    EXPECT_EQ(update.Create(), kMemoryError);
    EXPECT_STREQ(update.GetName(), "default Allegro update driver");
    update.AcquireCanvas();
    update.ReleaseCanvas();
    update.Redraw();
    EXPECT_EQ(update.GetCanvas(), nullptr);
  }
}

}  // namespace
}  // namespace zel
