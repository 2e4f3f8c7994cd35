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
}

TEST_F(DamageTest, WhateverChangesTheScreenShowsIt) {
  std::mt19937 random{24};
  const auto below = [&random](int n) { return static_cast<int>(random() % n); };
  const auto anywhere = [&] { return Rect{below(40), below(40), 1 + below(60), 1 + below(60)}; };
  for (int method = 0; method < 4; ++method) {
    root.MsgEnd();
    settings.screenUpdateMethod = method;
    root.MsgStart();
    Dialog panels[2];
    std::vector<std::unique_ptr<Patch>> patches;
    for (Dialog& panel : panels) root.Add(&panel), panel.Shape(anywhere());
    for (int i = 0; i < 6; ++i)
      (i % 3 ? panels[i % 3 - 1] : static_cast<Dialog&>(root))
          .Add(patches.emplace_back(new Patch{anywhere(), 1 + below(60'000)}).get());
    for (auto& patch : patches) patch->SetAnimationProperties(60, 0);
    // What a dialog shows at a point; 0 for nothing.
    const std::function<int(Dialog&, Rect)> expected = [&](Dialog& dialog, const Rect& pixel) {
      int color = 0;
      for (Widget* child : dialog.Children()) {
        if (child->Hidden() || !child->Overlaps(pixel) || !dialog.Overlaps(pixel)) continue;
        Dialog* inner = AsDialog(child);
        const int shown = inner ? expected(*inner, pixel) : int{static_cast<Patch*>(child)->color};
        if (shown) color = shown;
      }
      return color;
    };
    for (int change = 0; change < 200; ++change) {
      Patch& patch = *patches[below(6)];
      Widget& any = below(3) ? static_cast<Widget&>(patch) : panels[below(2)];
      const std::function<void()> kChanges[] = {
          [&] { any.Hide(), root.Redraw(); },
          [&] { any.Unhide(); },
          [&] { any.Shape(anywhere()), root.Redraw(); },
          [&] { any.GetParent()->BringToFront(&any); },
          [&] {
            patch.RedrawPart({2, 2, 5, 5});
          },
          [&] { patch.color = 1 + below(60'000), patch.Redraw(); },
          [&] { patch.PlayAnimation(1 + below(26)), patch.Redraw(); },
          [&] { patch.SetOpaque(below(2) > 0); }};
      kChanges[below(std::size(kChanges))]();
      Tick(change % 4 == 0 ? 4 : 1);  // then transitions have ended
      for (int i = 0; change % 4 == 0 && i < kWidth * kHeight; ++i)
        ASSERT_EQ(At(i % kWidth, i / kWidth), expected(root, {i % kWidth, i / kWidth, 1, 1}))
            << method << ' ' << change;
    }
  }
}

}  // namespace
}  // namespace zel
