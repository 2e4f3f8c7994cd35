#include "toolkit/widgets/animator.h"

#include "tests/support/allegro_fixture.h"

namespace zel {
namespace {

constexpr int kWidth = 13, kHeight = 9;

class AnimatorTest : public AllegroFixture {
 protected:
  AnimatorTest() : AllegroFixture{32} {}
  // Begins a transition of five ticks from a canvas of one colour.
  void Start(int color, int lengthMs = 100) {
    canvas.clear_to_color(color);
    animator.Start(canvas, lengthMs);
  }
  int FadedTo(int tick, int newColor) {
    Start(0);
    animator.NewImage().clear_to_color(newColor);
    for (int i = 1; i < tick; ++i) animator.Step();
    animator.Draw(canvas, 1);
    return canvas.getpixel(3, 3);
  }

  Bitmap canvas{kWidth, kHeight, kMemoryBitmap};
  Animator animator;
};

// Which rectangles of the new look show where in the second of five ticks: the type of the effect,
// the source, the destination, and the size of each.
constexpr int kCopies[][7] = {
    {0, 0, 0, 0, 0, 13, 9},   {2, 0, 5, 0, 0, 13, 4},  {3, 0, 0, 0, 5, 13, 4},
    {4, 0, 0, 7, 0, 6, 9},    {5, 7, 0, 0, 0, 6, 9},   {6, 0, 0, 0, 0, 13, 3},
    {7, 0, 6, 0, 6, 13, 3},   {8, 8, 0, 8, 0, 5, 9},   {9, 0, 0, 0, 0, 5, 9},
    {10, 0, 1, 0, 1, 13, 1},  {10, 0, 5, 0, 5, 13, 1}, {11, 0, 2, 0, 2, 13, 1},
    {11, 0, 6, 0, 6, 13, 1},  {12, 2, 0, 2, 0, 1, 9},  {12, 6, 0, 6, 0, 1, 9},
    {12, 10, 0, 10, 0, 1, 9}, {13, 1, 0, 1, 0, 1, 9},  {13, 5, 0, 5, 0, 1, 9},
    {13, 9, 0, 9, 0, 1, 9},   {14, 0, 0, 0, 3, 13, 1}, {14, 0, 6, 0, 4, 13, 3},
    {15, 0, 0, 4, 0, 2, 9},   {15, 9, 0, 6, 0, 4, 9},  {16, 0, 0, 4, 3, 2, 1},
    {16, 0, 6, 4, 4, 2, 2},   {16, 9, 0, 6, 3, 3, 1},  {16, 9, 6, 6, 4, 3, 2},
    {17, 0, 2, 0, 2, 13, 5},  {18, 3, 0, 3, 0, 7, 9},  {19, 3, 2, 3, 2, 7, 5},
    {20, 0, 2, 0, 0, 13, 2},  {20, 0, 4, 0, 6, 13, 2}, {21, 3, 0, 0, 0, 3, 9},
    {21, 6, 0, 9, 0, 3, 9},   {22, 3, 2, 0, 0, 3, 2},  {22, 3, 4, 0, 6, 3, 2},
    {22, 6, 2, 9, 0, 3, 2},   {22, 6, 4, 9, 6, 3, 2},  {23, 0, 0, 0, 0, 13, 1},
    {23, 0, 6, 0, 6, 13, 2},  {24, 0, 0, 0, 0, 2, 9},  {24, 9, 0, 9, 0, 3, 9},
    {25, 0, 0, 0, 0, 2, 1},   {25, 0, 6, 0, 6, 2, 2},  {25, 9, 0, 9, 0, 3, 1},
    {25, 9, 6, 9, 6, 3, 2},   {26, 0, 0, 0, 0, 13, 1}, {26, 0, 6, 0, 6, 13, 2},
    {26, 0, 0, 0, 0, 2, 9},   {26, 9, 0, 9, 0, 3, 9}};

TEST_F(AnimatorTest, EachEffectShowsItsPartOfTheNewLook) {
  for (int type = -1; type <= 27; ++type) {
    if (type == 1) continue;
    int expected[kHeight * kWidth] = {};
    for (const auto& [effect, sx, sy, dx, dy, w, h] : kCopies)
      for (int i = 0; effect == type && i < w * h; ++i)
        expected[(dy + i / w) * kWidth + dx + i % w] = 1 + (sy + i / w) * kWidth + sx + i % w;
    animator.Reset();
    Start(0);
    for (int i = 0; i < kWidth * kHeight; ++i)
      animator.NewImage().putpixel(i % kWidth, i / kWidth, 1 + i);
    animator.Step();
    animator.Draw(canvas, type);
    for (int i = 0; i < kWidth * kHeight; ++i)
      ASSERT_EQ(canvas.getpixel(i % kWidth, i / kWidth), expected[i]) << type << ": " << i;
  }
}

TEST_F(AnimatorTest, CrossFadesQuadratically) {
  const int shares[] = {10, 40, 92, 163, 256};
  for (int tick = 1; tick <= 5; ++tick)
    EXPECT_NEAR(getr(FadedTo(tick, red)), 255 * shares[tick - 1] / 256, 1) << tick;
  EXPECT_EQ(FadedTo(5, red), red);
  UseDepth(8);
  canvas.Create(kWidth, kHeight);
  for (int tick = 1; tick <= 5; ++tick)
    EXPECT_EQ(FadedTo(tick, 7), tick < 4 ? 0 : 7) << "no blending";
}

TEST_F(AnimatorTest, LastsAsManyTicksAsItsLengthHolds) {
  const auto ticks = [this](int rate, int lengthMs) {
    settings.logicFrameRate = rate;
    Start(0, lengthMs);
    int count = 1;
    for (; animator.Running(); ++count) EXPECT_TRUE(animator.Step());
    EXPECT_FALSE(animator.Step());
    return count;
  };
  EXPECT_FALSE(animator.Running());
  EXPECT_EQ(ticks(50, 300), 15);
  for (const int shortest : {10, 20, 0, -300}) EXPECT_EQ(ticks(50, shortest), 1);
  EXPECT_EQ(ticks(1000, 300), 300);
}

TEST_F(AnimatorTest, BeginsWithWhatTheLastTransitionEndedWith) {
  const auto oldLook = [this] {
    animator.Draw(canvas, -1);
    return canvas.getpixel(1, 1);
  };
  animator.Draw(canvas, 0);
  Start(red);
  animator.NewImage().clear_to_color(green);
  while (animator.Running()) animator.Step();
  Start(blue);
  EXPECT_EQ(oldLook(), green);
  animator.Reset();
  EXPECT_FALSE(animator.Running());
  Start(blue);
  EXPECT_EQ(oldLook(), blue);
  canvas.Create(5, 5);
  Start(white);
  EXPECT_EQ(oldLook(), white) << "a new size has nothing to begin with";
  EXPECT_EQ(animator.NewImage().Width(), 5);
  UseDepth(16);
  canvas.Create(5, 5);
  for (int type = 0; type < 27; ++type) animator.Draw(canvas, type);  // still in the old depth
  Start(white);
  EXPECT_EQ(bitmap_color_depth(animator.NewImage().GetBitmap()), 16);
}

}  // namespace
}  // namespace zel
