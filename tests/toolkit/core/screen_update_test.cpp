#include "toolkit/core/screen_update.h"

#include <random>

#include "tests/support/allegro_fixture.h"
#include "tests/support/fake_machine.h"
#include "toolkit/core/graphics_mode.h"

namespace zel {
namespace {

constexpr int kGrid = 6;

// All rectangles with corners on a small grid.
std::vector<Rect> AllRects() {
  std::vector<Rect> all;
  for (int corners = 0; corners < kGrid * kGrid * kGrid * kGrid; ++corners) {
    const int x = corners % kGrid, y = corners / kGrid % kGrid;
    const int w = corners / kGrid / kGrid % kGrid + 1, h = corners / kGrid / kGrid / kGrid + 1;
    if (x + w <= kGrid && y + h <= kGrid) all.emplace_back(x, y, w, h);
  }
  return all;
}

// One bit for each pixel of the grid; all bits for a rectangle that leaves it.
std::uint64_t Pixels(const Rect& r) {
  if (!Rect{0, 0, kGrid, kGrid}.Surrounds(r)) return ~std::uint64_t{0};
  std::uint64_t pixels = 0;
  for (int i = 0; i < r.w * r.h; ++i)
    pixels |= std::uint64_t{1} << ((r.y + i / r.w) * kGrid + r.x + i % r.w);
  return pixels;
}

// Each pixel of what was added is covered once, no other is.
bool CoversOnce(const std::vector<Rect>& added) {
  PixelArea area;
  std::uint64_t covered = 0, wanted = 0;
  for (const Rect& r : added) {
    area.Add(r);
    wanted |= Pixels(r);
  }
  for (const Rect& r : area.Rects()) {
    if (covered & Pixels(r)) return false;
    covered |= Pixels(r);
  }
  return covered == wanted;
}

TEST(PixelArea, EachPixelIsCoveredOnce) {
  const std::vector<Rect> all = AllRects();
  ASSERT_EQ(all.size(), 441u);
  for (const Rect& first : all)
    for (const Rect& second : all) ASSERT_TRUE(CoversOnce({first, second}));
  std::mt19937 random{1};
  std::vector<Rect> several(6);
  for (int round = 0; round < 20'000; ++round) {
    for (Rect& r : several) r = all[random() % all.size()];
    ASSERT_TRUE(CoversOnce(several));
  }
}

TEST(PixelArea, PiecesAreListedInTheOrderOfTheStrips) {
  PixelArea area;
  area.Add({4, 4, 2, 2});
  area.Add({6, 4, 5, 2});
  const std::vector<Rect> touching = {{4, 4, 2, 2}, {6, 4, 5, 2}};
  EXPECT_EQ(area.Rects(), touching);
  area.Add({0, 0, 11, 10});
  const std::vector<Rect> strips = {
      {4, 4, 2, 2}, {6, 4, 5, 2}, {0, 0, 11, 4}, {0, 4, 4, 2}, {0, 6, 11, 4}};
  for (const Rect& nothing : std::vector<Rect>{{1, 1, 8, 8}, {50, 50, 0, 9}, {50, 50, 9, -1}})
    area.Add(nothing);
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

constexpr const char* kDirect = "default Allegro update driver";

TEST_F(ScreenUpdateTest, EachMethodBringsItsPartOfTheFrameToTheScreen) {
  const auto expect = [](int method, const char* name, bool isDirect, bool copiesAll) {
    clear_bitmap(screen);
    ScreenUpdate& update = Install(method);
    EXPECT_STREQ(update.GetName(), name);
    EXPECT_EQ(update.RedrawsAll(), copiesAll);
    EXPECT_EQ(is_same_bitmap(update.GetCanvas(), screen) != 0, isDirect);
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
  for (const int other : {1, 2, 4, -7}) expect(other, kDirect, true, false);
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
  }
  settings.useVideoMemory = true;
  for (const int method : {0, 3}) {
    machine.videoPagesLeft = 1;
    EXPECT_TRUE(is_video_bitmap(Install(method).GetCanvas()));
    SetCurrentScreenUpdate(nullptr);
    EXPECT_EQ(machine.videoPages, 0);
    machine.videoPagesLeft = 0;
    EXPECT_TRUE(is_memory_bitmap(Install(method).GetCanvas()));
  }
}

TEST_F(ScreenUpdateTest, WithoutAScreenThereIsNoCanvasAndNothingHappens) {
  SetTextMode();
  for (const int method : {0, 1, 3}) {
    EXPECT_STREQ(Install(method).GetName(), kDirect);
    EXPECT_EQ(CurrentScreenUpdate()->Create(), kMemoryError);
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
