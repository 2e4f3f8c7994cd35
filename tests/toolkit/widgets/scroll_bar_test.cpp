#include "toolkit/widgets/scroll_bar.h"

#include <array>

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// Arrows are 16 pixels long and the grip 12 (lying 18), so a bar of 132 (lying 138) that begins at
// 20 has a track from 36 on, in which the grip can move by 88.
class ScrollBarTest : public WidgetFixture, public testing::WithParamInterface<int> {
 protected:
  ScrollBarTest() { isTransposed = GetParam() == kVertical; }
  void ShowBar(int total, int position) {
    bar.Setup(0, 0, 0, 0, 0, 0, total, 30, GetParam());
    Show(bar, isTransposed ? Rect{20, 20, 9, 132} : Rect{20, 20, 138, 9});
    bar.SetPosition(position);
    EXPECT_EQ(bar.w() + bar.h(), 16 + (isTransposed ? 132 : 138)) << "as thick as its element";
  }

  ScrollBar bar;
  const std::function<std::string()> position = [this] {
    return std::to_string(bar.GetPosition());
  };
};
INSTANTIATE_TEST_SUITE_P(, ScrollBarTest, testing::Values(kVertical, kHorizontal));

TEST_P(ScrollBarTest, TheGripLiesWhereTheValueIs) {
  Dress(isTransposed ? SCROLL_VGRIPOVERLAY : SCROLL_HGRIPOVERLAY, {"rgb", "www", "kkk", "yyy"});
  std::array<ScrollBar, 4> bars;  // in the middle, at the end, without room, disabled
  for (int i = 0; i < 4; ++i) {
    bars[i].Setup(0, 0, 0, 0, 0, 0, 100, 30, GetParam());
    const int length = i == 2 ? 44 : 70;
    Show(bars[i], isTransposed ? Rect{18 * i, 0, 16, length} : Rect{0, 18 * i, length, 16});
    bars[i].SetPosition(i == 1 ? 900 : 35);
  }
  bars[3].Disable();
  root.SetFocus(&bars[0]);
  Do("5,23 press");
  ExpectShown(isTransposed ? "scroll_bars" : "scroll_bars_lying", {0, 0, 72, 72});
  bars[1].SetRange(50, 30);
  EXPECT_EQ(bars[1].GetPosition(), 20) << "the end of the shorter range";
}

TEST_P(ScrollBarTest, HeldArrowsAndTracksScrollOnAndOn) {
  ShowBar(1030, 500);
  const Words own = {{"restart", [this] { root.MsgEnd(), root.MsgStart(), root.Events(); }}};
  const std::pair<std::string, std::string> rows[] = {
      // 60 ms are three ticks
      {"145,25+press wait4 wait4 release",
       "501 (Scroll 501), 502 (Scroll 502), 503 (Scroll 503), 503"},
      {"22,25+press wait4 release wait1", "502 (Scroll 502), 501 (Scroll 501), 501, 501"},
      {"120,25+press wait1 release wait1",
       "511 (Scroll 511), 521 (Scroll 521), 531 (Scroll 531), 531"},
      {"40,25+press release", "521 (Scroll 521), 511 (Scroll 511)"},
      {"120,25+press restart wait4", "521 (Scroll 521), 521, 521"}};
  for (const auto& [script, seen] : rows) EXPECT_EQ(Play(script, position, own), seen);
  for (const std::string at : {"120,25", "60,25"}) {
    Do("release " + at + " press wait100 release press release");
    EXPECT_TRUE(bar.Dialog::Contains(root.FocusWidget())) << at;
    EXPECT_TRUE(root.FocusWidget()->Bounds().Contains({mouse_x, mouse_y})) << at;
  }
}

TEST_P(ScrollBarTest, KeysPointerAndWheelMoveTheGrip) {
  ShowBar(910, 0);  // ten units a pixel
  Do("40,25 press release");
  const std::tuple<int, std::string, std::string> rows[] = {{60, "pagedown", "90 (Scroll 90)"},
                                                            {60, "pageup", "30 (Scroll 30)"},
                                                            {20, "pageup", "0 (Scroll 0)"},
                                                            {35, "home", "0 (Scroll 0)"},
                                                            {35, "end", "880 (Scroll 880)"},
                                                            {35, "left", "34 (Scroll 34)"},
                                                            {35, "right", "36 (Scroll 36)"},
                                                            {35, "up", "35"},
                                                            {35, "down", "35"},
                                                            {35, "x", "35"}};
  for (const auto& [from, key, seen] : rows) {
    bar.SetPosition(from);
    EXPECT_EQ(Play(key, position), seen) << from << ' ' << key;
  }
  bar.SetPosition(0);
  EXPECT_EQ(
      Play("38,25+press 48,90 199,90 0,90 43,90 43,25+release+wheel3 space+48,25", position),
      "0, 100 (Scroll 100), 880 (Scroll 880), 0 (Scroll 0), 50 (Scroll 50), 53 (Scroll 53), 53")
      << "a key does not drag it";
  EXPECT_TRUE(root.FocusWidget()->Selected());
  root.ChangeFocus(root.FocusWidget(), nullptr);
  for (const int total : {30, 31}) {
    bar.SetRange(total, 30);
    root.MoveFocus(FocusMove::kNext);
    EXPECT_EQ(bar.HasFocus(), total > 30) << "Tab goes to a grip that can move";
  }
}

}  // namespace
}  // namespace zel
