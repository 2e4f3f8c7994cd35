#include "toolkit/draw/screen_update.h"

#include <algorithm>
#include <random>

#include "tests/support/allegro_fixture.h"
#include "tests/support/fake_machine.h"
#include "toolkit/base/graphics_mode.h"

namespace zel {
namespace {

constexpr int kGrid = 6;

// All rectangles with corners on a small grid.
std::vector<Rect> AllRects() {
  std::vector<Rect> all;
  for (int x = 0; x < kGrid; ++x)
    for (int y = 0; y < kGrid; ++y)
      for (int w = 1; w <= kGrid - x; ++w)
        for (int h = 1; h <= kGrid - y; ++h) all.emplace_back(x, y, w, h);
  return all;
}

// Each pixel of what was added, but for what was removed then, is covered once, no other is.
bool CoversOnce(const std::vector<Rect>& added, const Rect& removed = {}) {
  PixelArea area;
  for (const Rect& r : added) area.Add(r);
  area.Remove(removed);
  int pixels = 0;
  for (const Rect& r : area.Rects()) pixels += r.w * r.h;
  for (int i = 0; i < kGrid * kGrid; ++i) {
    const Rect pixel{i % kGrid, i / kGrid, 1, 1};
    const auto covers = [&pixel](const Rect& r) { return r.Overlaps(pixel); };
    const bool isWanted = std::ranges::any_of(added, covers) && !removed.Overlaps(pixel);
    if (std::ranges::count_if(area.Rects(), covers) != isWanted) return false;
    pixels -= isWanted;
  }
  return pixels == 0;
}

TEST(PixelArea, EachPixelIsCoveredOnce) {
  const std::vector<Rect> all = AllRects();
  for (const Rect& first : all)
    for (const Rect& second : all) ASSERT_TRUE(CoversOnce({first, second}));
  std::mt19937 random{1};
  std::vector<Rect> several(6);
  for (int round = 0; round < 20'000; ++round) {
    for (Rect& r : several) r = all[random() % all.size()];
    ASSERT_TRUE(CoversOnce(several) && CoversOnce(several, all[random() % all.size()]));
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
  ScreenUpdateTest() { SetGraphicsMode(GFX_AUTODETECT, 80, 64, 16); }
  ~ScreenUpdateTest() override { SetCurrentScreenUpdate(nullptr); }

  static ScreenUpdate& Install(int method) {
    InstallScreenUpdate(method);
    return *CurrentScreenUpdate();
  }
  static bool Shows(int x, int y) { return getpixel(screen, x, y) == red; }

  FakeMachine machine;
};

TEST_F(ScreenUpdateTest, EachMethodBringsItsPartOfTheFrameToTheScreen) {
  const auto expect = [](int method, const char* name, bool isDirect, bool copiesAll) {
    clear_bitmap(screen);
    ScreenUpdate& update = Install(method);
    EXPECT_STREQ(update.GetName(), name);
    EXPECT_EQ(update.RedrawsAll(), copiesAll);
    EXPECT_TRUE(update.GetCanvas()->w == 80 && update.GetCanvas()->h == 64);
    EXPECT_EQ(getpixel(update.GetCanvas(), 9, 9), 0) << "a new frame is black";
    clear_to_color(update.GetCanvas(), red);
    update.AddDirtyRect(10, 12, 4, 2);
    update.AddDirtyRect(Rect{-5, 60, 7, 50});
    EXPECT_EQ(Shows(10, 12), isDirect);
    update.Redraw();
    EXPECT_TRUE(Shows(10, 12) && Shows(13, 13) && Shows(0, 63)) << method;
    for (const auto& [x, y] : {std::pair{9, 12}, {14, 13}, {10, 11}, {13, 14}, {2, 60}})
      EXPECT_EQ(Shows(x, y), isDirect || copiesAll) << method;
    clear_bitmap(screen);
    update.Redraw();
    EXPECT_EQ(Shows(10, 12), copiesAll) << "each frame copies its own parts";
  };
  expect(0, "Double Buffering", false, true);
  expect(3, "Dirty Rectangle System", false, false);
  for (const int other : {1, 2, -7}) expect(other, "default Allegro update driver", true, false);
}

TEST_F(ScreenUpdateTest, TheRetraceAndVideoMemoryAreForBackBuffers) {
  for (const int method : {0, 1, 3}) {
    for (const bool wanted : {false, true}) {
      settings.vsync = wanted;
      machine.retraces = 0;
      Install(method).AddDirtyRect(0, 0, 5, 5);
      CurrentScreenUpdate()->Redraw();
      EXPECT_EQ(machine.retraces, wanted && method == 0) << method;
    }
    settings.useVideoMemory = true;
    for (const int pages : {1, 0}) {
      machine.videoPagesLeft = pages;
      EXPECT_EQ(is_video_bitmap(Install(method).GetCanvas()) != 0, pages && method != 1);
      SetCurrentScreenUpdate(nullptr);
      EXPECT_EQ(machine.videoPages, 0);
    }
  }
  SetTextMode();
  for (const int method : {0, 1, 3}) {
    EXPECT_EQ(Install(method).Create(), kMemoryError) << "there is no screen";
    CurrentScreenUpdate()->AcquireCanvas();
    CurrentScreenUpdate()->ReleaseCanvas();
    CurrentScreenUpdate()->Redraw();
    EXPECT_EQ(CurrentScreenUpdate()->GetCanvas(), nullptr);
  }
  DirtyRectangles update;
  update.AddDirtyRect(0, 0, 5, 5);
  update.Redraw();
  EXPECT_TRUE(update.Pending().empty());
}

}  // namespace
}  // namespace zel
