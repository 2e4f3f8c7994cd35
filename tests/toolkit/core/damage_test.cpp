#include "toolkit/core/damage.h"

#include <random>

#include "tests/support/stage.h"
#include "toolkit/draw/screen_update.h"
#include "toolkit/testing/picture.h"

namespace zel {
namespace {

// What is drawn where on a stage of 8 x 4 pixels: before each frame it is erased, so that the
// picture is what the frame has drawn.
class DamageTest : public StageTest {
 protected:
  DamageTest() {
    settings.showMouse = false;
    for (Patch* patch : {&red1, &blue1}) root.Add(patch);
    Start();
  }
  ~DamageTest() override { End(); }

  Rows Drawn() {
    BITMAP* canvas = CurrentScreenUpdate()->GetCanvas();
    clear_to_color(canvas, magenta);
    root.DrawDirty();
    CurrentScreenUpdate()->Redraw();
    BitmapPtr part{create_bitmap(8, 4)};
    blit(canvas, part.get(), 0, 0, 0, 0, 8, 4);
    return Picture(part.get());
  }

  Patch red1{{0, 0, 6, 3}, red}, blue1{{4, 1, 4, 3}, blue};
};

TEST_F(DamageTest, NoMoreIsDrawnThanWhatIsDirtyAndWhatLiesAboveIt) {
  EXPECT_EQ(Drawn(), Rows(4, "........")) << "nothing is dirty";
  blue1.Redraw();
  EXPECT_EQ(Drawn(), Rows({"........", "....bbbb", "....bbbb", "....bbbb"}));
  red1.Redraw();
  red1.RedrawPart({1, 1, 3, 2});
  EXPECT_EQ(Drawn(), Rows({"rrrrrr..", "rrrrbb..", "rrrrbb..", "........"}));
  red1.RedrawPart({1, 0, 4, 2});
  red1.RedrawPart({0, 0, 0, 9});
  EXPECT_EQ(Drawn(), Rows({".rrrr...", ".rrrb...", "........", "........"}));
  root.Redraw();
  EXPECT_EQ(Drawn(), Rows({"rrrrrrkk", "rrrrbbbb", "rrrrbbbb", "kkkkbbbb"}));
}

TEST_F(DamageTest, WhatIsCoveredIsNotDrawnAndForgets) {
  Dialog panel;
  Patch inPanel{{1, 1, 2, 2}, yellow}, cover{{0, 0, 8, 4}, green};
  panel.Add(&inPanel);
  root.Add(&panel);
  root.Add(&cover);
  panel.Shape(0, 0, 8, 4);
  cover.SetOpaque(true);
  Tick();
  red1.Redraw();
  inPanel.Redraw();
  EXPECT_EQ(Drawn(), Rows(4, "........"));
  cover.Hide();
  EXPECT_EQ(Drawn(), Rows(4, "........"));
  root.Redraw();
  EXPECT_EQ(Drawn(), Rows({"rrrrrrkk", "ryyrbbbb", "ryyrbbbb", "kkkkbbbb"}));
  inPanel.RedrawPart({0, 0, 1, 1});
  blue1.RedrawPart({0, 0, 9, 9});
  cover.Unhide();
  cover.Shape(0, 0, 6, 4);
  EXPECT_EQ(Drawn(), Rows({"gggggg..", "ggggggbb", "ggggggbb", "ggggggbb"}));
}

TEST_F(DamageTest, ALargeWidgetIsDrawnOnlyWhereItShows) {
  Patch large{{0, 0, 60, 60}, green}, cover{{10, 10, 20, 20}, blue};
  Dialog around;
  around.Add(&cover);
  root.Add(&large);
  root.Add(&around);
  around.Shape(0, 0, 25, 60);  // which cuts the cover
  cover.SetOpaque(true);
  Tick();
  EXPECT_TRUE(ShownPart(root, cover).Rects() == std::vector({Rect{10, 10, 20, 20}}));
  large.draws = 0;
  large.Redraw();
  Tick();
  EXPECT_EQ(large.draws, 4) << "on each side of the cover";
  cover.Hide();
  large.Redraw();
  Tick();
  EXPECT_EQ(large.draws, 5);
}

// Drawn in full for each frame, or only where something has changed: it shows the same.
TEST_F(DamageTest, WhateverChangesEachWayOfUpdatingShowsIt) {
  std::string first;
  for (const int method : {1, 0, 2, 3}) {
    std::mt19937 random{24};
    const auto below = [&random](int n) { return static_cast<int>(random() % n); };
    const auto anywhere = [&] { return Rect{below(40), below(40), 1 + below(60), 1 + below(60)}; };
    root.MsgEnd();
    settings.screenUpdateMethod = method;
    root.MsgStart();
    Dialog panels[2];
    Patch patches[6];
    for (Dialog& panel : panels) root.Add(&panel), panel.Shape(anywhere());
    for (int i = 0; i < 6; ++i) {
      (i % 3 ? panels[i % 3 - 1] : static_cast<Dialog&>(root)).Add(&patches[i]);
      patches[i].Shape(anywhere());
      patches[i].SetAnimationProperties(60, 0);
    }
    std::string shown;
    for (int change = 0; change < 200; ++change) {
      Patch& patch = patches[below(6)];
      Widget& any = below(3) ? static_cast<Widget&>(patch) : panels[below(2)];
      const std::function<void()> kChanges[] = {
          [&] { any.Hide(), root.Redraw(); },
          [&] { any.Unhide(); },
          [&] { any.Shape(anywhere()), root.Redraw(); },
          [&] { any.GetParent()->BringToFront(&any); },
          [&] { patch.RedrawPart(anywhere()); },
          [&] { patch.color = 1 + below(60'000), patch.Redraw(); },
          [&] { patch.PlayAnimation(1 + below(26)), patch.Redraw(); },
          [&] { patch.SetOpaque(below(2) > 0); }};
      kChanges[below(std::size(kChanges))]();
      Tick();
      for (int y = 0; y < kHeight; ++y)
        shown.append(reinterpret_cast<const char*>(screen->line[y]), 2 * kWidth);
    }
    if (first.empty()) first = shown;
    EXPECT_TRUE(shown == first) << method;
  }
}

}  // namespace
}  // namespace zel
