#include "toolkit/core/animator.h"

#include "tests/support/allegro_fixture.h"
#include "tests/support/reference.h"

namespace zel {
namespace {

constexpr int kWidth = 13, kHeight = 9;

class AnimatorTest : public AllegroFixture {
 protected:
  AnimatorTest() : AllegroFixture{32} {}
  // What a transition to another colour shows at one place, tick by tick.
  std::vector<int> Play(int type, int color, int lengthMs = 100) {
    std::vector<int> colors;
    animator.Start(canvas, lengthMs);
    animator.NewImage().clear_to_color(color);
    do {
      animator.Draw(canvas, type);
      colors.push_back(canvas.getpixel(3, 3));
    } while (animator.Step());
    return colors;
  }

  Bitmap canvas{kWidth, kHeight, kMemoryBitmap};
  Animator animator;
};

// All effects but the fade, and two that there are not, in the second of five ticks over black. The
// colours of the new look say which of its pixels lies where.
TEST_F(AnimatorTest, EachEffectShowsItsPartOfTheNewLook) {
  Bitmap all{8 * (kWidth + 1), 4 * (kHeight + 1), kMemoryBitmap};
  all.clear_to_color(gray);
  for (int type = -1; type <= 27; ++type) {
    animator.Reset();
    canvas.clear_to_color(black);
    animator.Start(canvas, 100);
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x)
        animator.NewImage().putpixel(x, y, PixelOf(all.GetBitmap(), kLetters[1 + (x + 3 * y) % 7]));
    animator.Step();
    if (type != 1) animator.Draw(canvas, type);
    const int place = type + 1;
    canvas.blit(all.GetBitmap(), 0, 0, place % 8 * (kWidth + 1), place / 8 * (kHeight + 1), kWidth,
                kHeight);
  }
  ExpectLook("effects", all.GetBitmap(), {0, 0, all.Width(), all.Height()});
}

TEST_F(AnimatorTest, BeginsWithWhatTheLastTransitionEndedWith) {
  canvas.clear_to_color(0);
  EXPECT_EQ(Play(1, 0x0000FF), (std::vector{10, 40, 92, 163, 255})) << "a quadratic fade";
  canvas.clear_to_color(1);
  EXPECT_EQ(Play(-1, 2), (std::vector{255, 255, 255, 255, 2}));
  animator.Reset();
  canvas.clear_to_color(1);
  EXPECT_EQ(Play(-1, 3), (std::vector{1, 1, 1, 1, 3}));
  for (const Size size : {Size{5, kHeight}, {5, 4}}) {
    canvas.Create(size.w, size.h);
    canvas.clear_to_color(1);
    EXPECT_EQ(Play(-1, 4), (std::vector{1, 1, 1, 1, 4})) << "another size";
  }
  UseDepth(8);
  canvas.Create(5, 4);
  canvas.clear_to_color(0);
  EXPECT_EQ(Play(1, 7), (std::vector{0, 0, 0, 7, 7})) << "another depth, without blending";
}

TEST_F(AnimatorTest, LastsAsManyTicksAsItsLengthHolds) {
  for (const auto& [lengthMs, ticks] : {std::pair{300, 15u}, {20, 1}, {0, 1}, {-300, 1}}) {
    EXPECT_FALSE(animator.Running());
    EXPECT_EQ(Play(0, 1, lengthMs).size(), ticks);
  }
}

}  // namespace
}  // namespace zel
