#include "toolkit/core/animator.h"

#include "tests/support/allegro_fixture.h"

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
    canvas.clear_to_color(0);
    animator.Start(canvas, 100);
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
