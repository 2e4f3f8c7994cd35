#include "toolkit/core/animator.h"

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

  Bitmap canvas{kWidth, kHeight, kMemoryBitmap};
  Animator animator;
};

// What the effects show in the second of five ticks: by columns and rows, which column ("a" to "m")
// and row ("a" to "i") of the new look lies there, '.' for none.
constexpr const char* kShown[] = {
    "abcdefghijklm abcdefghi", "(fades the new look in)", "abcdefghijklm fghi.....",
    "abcdefghijklm .....abcd", ".......abcdef abcdefghi", "hijklm....... abcdefghi",
    "abcdefghijklm abc......", "abcdefghijklm ......ghi", "........ijklm abcdefghi",
    "abcde........ abcdefghi", "abcdefghijklm .b...f...", "abcdefghijklm ..c...g..",
    "..c...g...k.. abcdefghi", ".b...f...j... abcdefghi", "abcdefghijklm ...aghi..",
    "....abjklm... abcdefghi", "....abjkl.... ...agh...", "abcdefghijklm ..cdefg..",
    "...defghij... abcdefghi", "...defghij... ..cdefg..", "abcdefghijklm cd....ef.",
    "def......ghi. abcdefghi", "def......ghi. cd....ef.", "abcdefghijklm a.....gh.",
    "ab.......jkl. abcdefghi", "ab.......jkl. a.....gh."};

TEST_F(AnimatorTest, EachEffectShowsItsPartOfTheNewLook) {
  const auto shown = [](int type, int i) {
    if (type < 0 || type > 25) return 0;
    const int x = kShown[type][i % kWidth] - 'a', y = kShown[type][kWidth + 1 + i / kWidth] - 'a';
    return x < 0 || y < 0 ? 0 : 1 + y * kWidth + x;
  };
  for (int type = -1; type <= 27; ++type) {
    if (type == 1) continue;
    animator.Reset();
    Start(0);
    for (int i = 0; i < kWidth * kHeight; ++i)
      animator.NewImage().putpixel(i % kWidth, i / kWidth, 1 + i);
    animator.Step();
    animator.Draw(canvas, type);
    for (int i = 0; i < kWidth * kHeight; ++i) {
      const int expected = type == 26 ? shown(23, i) | shown(24, i) : shown(type, i);
      ASSERT_EQ(canvas.getpixel(i % kWidth, i / kWidth), expected) << type << ": " << i;
    }
  }
}

TEST_F(AnimatorTest, CrossFadesQuadratically) {
  const auto fade = [this](int newColor) {
    std::vector<int> colors;
    Start(0);
    animator.NewImage().clear_to_color(newColor);
    do {
      animator.Draw(canvas, 1);
      colors.push_back(canvas.getpixel(3, 3));
    } while (animator.Step());
    return colors;
  };
  EXPECT_EQ(fade(0x0000FF), (std::vector{10, 40, 92, 163, 255}));
  UseDepth(8);
  canvas.Create(kWidth, kHeight);
  EXPECT_EQ(fade(7), (std::vector{0, 0, 0, 7, 7})) << "no blending";
}

TEST_F(AnimatorTest, LastsAsManyTicksAsItsLengthHolds) {
  for (const auto& [rate, lengthMs, ticks] :
       {std::tuple{50, 300, 15}, {50, 20, 1}, {50, 0, 1}, {50, -300, 1}, {1000, 300, 300}}) {
    EXPECT_FALSE(animator.Running());
    settings.logicFrameRate = rate;
    Start(0, lengthMs);
    int count = 1;
    while (animator.Step()) ++count;
    EXPECT_EQ(count, ticks);
  }
}

TEST_F(AnimatorTest, BeginsWithWhatTheLastTransitionEndedWith) {
  const auto expectOldLook = [this](int color) {
    animator.Draw(canvas, -1);
    EXPECT_EQ(canvas.getpixel(1, 1), color);
  };
  Start(red);
  animator.NewImage().clear_to_color(green);
  while (animator.Running()) animator.Step();
  Start(blue);
  expectOldLook(green);
  animator.Reset();
  Start(blue);
  expectOldLook(blue);
  canvas.Create(5, 5);
  Start(white);
  expectOldLook(white);  // a new size has nothing to begin with
}

}  // namespace
}  // namespace zel
