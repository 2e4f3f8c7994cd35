#include "toolkit/widgets/scroll_bar.h"

#include <array>

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// Arrows are 16 pixels long and the grip 12 (lying 18), so a bar of 132 (lying 138) that begins at
// 20 has a track from 36 on, in which the grip can move by 88.
class ScrollBarTest : public WidgetFixture, public testing::WithParamInterface<int> {
 protected:
  static bool IsLying() { return GetParam() == kHorizontal; }
  void ShowBar(int total, int position) {
    bar.Setup(0, 0, 0, 0, 0, 0, total, 30, GetParam());
    Show(bar, IsLying() ? Rect{20, 20, 138, 9} : Rect{20, 20, 9, 132});
    bar.SetPosition(position);
    EXPECT_EQ(bar.w() + bar.h(), 16 + (IsLying() ? 138 : 132)) << "as thick as its element";
  }
  // The pointer along the bar, and beside it.
  void Put(int at, int buttons = 0, int wheel = 0, int beside = 25) {
    IsLying() ? Mouse(at, beside, buttons, wheel) : Mouse(beside, at, buttons, wheel);
  }
  void FocusGripAt(int at) {
    Put(at, 1), Put(at);
    ASSERT_TRUE(bar.Dialog::Contains(root.FocusWidget()));
    root.Events();
  }

  ScrollBar bar;
};
INSTANTIATE_TEST_SUITE_P(, ScrollBarTest, testing::Values(kVertical, kHorizontal));

TEST_P(ScrollBarTest, TheGripLiesWhereTheValueIs) {
  const int overlay = IsLying() ? SCROLL_HGRIPOVERLAY : SCROLL_VGRIPOVERLAY;
  Dress(overlay, {"rgb", "www", "kkk", "yyy"});
  std::array<ScrollBar, 4> bars;  // in the middle, at the end, without room, disabled
  for (int i = 0; i < 4; ++i) {
    bars[i].Setup(0, 0, 0, 0, 0, 0, 100, 30, GetParam());
    const int length = i == 2 ? 44 : 70;
    Show(bars[i], IsLying() ? Rect{0, 18 * i, length, 16} : Rect{18 * i, 0, 16, length});
    bars[i].SetPosition(i == 1 ? 900 : 35);
  }
  bars[3].Disable();
  root.SetFocus(&bars[0]);
  Mouse(IsLying() ? 5 : 23, IsLying() ? 23 : 5, 1);
  ExpectShown(IsLying() ? "scroll_bars_lying" : "scroll_bars", {0, 0, 72, 72});
  bars[1].SetRange(50, 30);
  EXPECT_EQ(bars[1].GetPosition(), 20) << "the end of the shorter range";
}

TEST_P(ScrollBarTest, HeldArrowsAndTracksScrollOnAndOn) {
  ShowBar(1030, 500);
  const Steps steps = {{"more", [this] { Put(145, 1); }},
                       {"less", [this] { Put(22, 1); }},
                       {"track", [this] { Put(120, 1); }},
                       {"above", [this] { Put(40, 1); }},
                       {"release", [this] { Mouse(mouse_x, mouse_y); }},
                       {"wait", [this] { Tick(4); }},  // 60 ms are three ticks
                       {"tick", [this] { Tick(); }},
                       {"restart", [this] { root.MsgEnd(), root.MsgStart(), root.Events(); }}};
  const std::pair<std::string, std::string> rows[] = {
      {"more wait wait release", "501 (Scroll 501), 502 (Scroll 502), 503 (Scroll 503), 503"},
      {"less wait release tick", "502 (Scroll 502), 501 (Scroll 501), 501, 501"},
      {"track tick release tick", "511 (Scroll 511), 521 (Scroll 521), 531 (Scroll 531), 531"},
      {"above release", "521 (Scroll 521), 511 (Scroll 511)"},
      {"track restart wait", "521 (Scroll 521), 521, 521"}};
  for (const auto& [script, seen] : rows)
    EXPECT_EQ(Play(script, steps, [this] { return std::to_string(bar.GetPosition()); }), seen);
  for (const int at : {120, 60}) {
    Put(at), Put(at, 1), Tick(100), Put(at);
    FocusGripAt(at);
    EXPECT_TRUE(root.FocusWidget()->Bounds().Contains({mouse_x, mouse_y})) << at;
  }
}

TEST_P(ScrollBarTest, KeysPointerAndWheelMoveTheGrip) {
  ShowBar(910, 0);  // ten units a pixel
  FocusGripAt(40);
  const int less = IsLying() ? KEY_LEFT : KEY_UP, more = IsLying() ? KEY_RIGHT : KEY_DOWN;
  const int other = IsLying() ? KEY_UP : KEY_LEFT, another = IsLying() ? KEY_DOWN : KEY_RIGHT;
  const std::tuple<int, int, std::string> kKeys[] = {
      {60, KEY_PGDN, "Scroll 90"}, {60, KEY_PGUP, "Scroll 30"},
      {20, KEY_PGUP, "Scroll 0"},  {35, KEY_HOME, "Scroll 0"},
      {35, KEY_END, "Scroll 880"}, {35, less, "Scroll 34"},
      {35, more, "Scroll 36"},     {35, other, ""},
      {35, another, ""},           {35, KEY_F1, ""}};
  for (const auto& [from, key, events] : kKeys) {
    bar.SetPosition(from);
    root.FocusWidget()->SendMessage(MSG_CHAR, key << 8);
    EXPECT_EQ(root.Events(), events) << from << ' ' << key;
  }
  bar.SetPosition(0);
  for (const auto& [at, value] : {std::pair{38, 0}, {48, 100}, {199, 880}, {0, 0}, {43, 50}}) {
    Put(at, 1, 0, at == 38 ? 25 : 90);
    EXPECT_EQ(bar.GetPosition(), value) << at;
  }
  Put(43, 0, 3);
  EXPECT_EQ(bar.GetPosition(), IsLying() ? 53 : 47);
  Type(' ', KEY_SPACE);
  Put(48);
  EXPECT_TRUE(root.FocusWidget()->Selected()) << "a key does not drag it";
  EXPECT_EQ(bar.GetPosition(), IsLying() ? 53 : 47);
  root.ChangeFocus(root.FocusWidget(), nullptr);
  for (const int total : {30, 31}) {
    bar.SetRange(total, 30);
    root.MoveFocus(FocusMove::kNext);
    EXPECT_EQ(bar.HasFocus(), total > 30) << "Tab goes to a grip that can move";
  }
}

}  // namespace
}  // namespace zel
