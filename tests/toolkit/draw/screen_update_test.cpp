#include "toolkit/draw/screen_update.h"

#include <random>
#include <tuple>

#include "tests/support/allegro_fixture.h"
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

TEST_F(ScreenUpdateTest, EachMethodBringsItsPartOfTheFrameToTheScreen) {
  const Rows none(4, "kkkkkk"), all(4, "rrrrrr"), parts{"kkkkkk", "krrrkk", "krrrkk", "rrkkkk"};
  // While drawing, after the redraw, and after one more that nothing was drawn for.
  const std::tuple<int, const char*, Rows, Rows, Rows> cases[] = {
      {0, "Double Buffering", none, all, all},
      {3, "Dirty Rectangle System", none, parts, none},
      {2, "default Allegro update driver", all, all, none},
      {-7, "default Allegro update driver", all, all, none}};
  for (const auto& [method, name, drawn, redrawn, again] : cases) {
    clear_bitmap(screen);
    ScreenUpdate& update = Install(method);
    EXPECT_STREQ(update.GetName(), name);
    EXPECT_EQ(update.RedrawsAll(), method == 0);
    EXPECT_EQ(Picture(update.GetCanvas()), none) << "a new frame is black";
    clear_to_color(update.GetCanvas(), red);
    update.AddDirtyRect(1, 1, 3, 2);
    update.AddDirtyRect(Rect{-5, 3, 7, 50});
    EXPECT_EQ(Picture(screen), drawn) << name;
    update.Redraw();
    EXPECT_EQ(Picture(screen), redrawn) << name;
    clear_bitmap(screen);
    update.Redraw();
    EXPECT_EQ(Picture(screen), again) << name;
  }
}

TEST_F(ScreenUpdateTest, TheRetraceAndVideoMemoryAreForBackBuffers) {
  for (const int method : {0, 1, 3}) {
    settings.useVideoMemory = false;
    for (const bool wanted : {false, true}) {
      settings.vsync = wanted;
      machine.retraces = 0;
      Install(method).AddDirtyRect(0, 0, 5, 5);
      CurrentScreenUpdate()->Redraw();
      EXPECT_EQ(machine.retraces, wanted && method == 0) << method;
      EXPECT_FALSE(is_video_bitmap(CurrentScreenUpdate()->GetCanvas()));
    }
    settings.useVideoMemory = true;
    for (const int pages : {1, 0}) {
      machine.videoPagesLeft = pages;
      EXPECT_EQ(is_video_bitmap(Install(method).GetCanvas()) != 0, pages && method != 1);
      SetCurrentScreenUpdate(nullptr);
      EXPECT_EQ(machine.videoPages, 0);
    }
  }
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
  DirtyRectangles update;
  update.AddDirtyRect(0, 0, 5, 5);
  update.Redraw();
  EXPECT_TRUE(update.Pending().empty());
}

}  // namespace
}  // namespace zel
