#include "toolkit/widgets/slider.h"

#include <array>

#include "tests/support/widget_fixture.h"
#include "toolkit/base/input.h"

namespace zel {
namespace {

// A grip of 10 pixels on a track of 110 pixels for the values -50 to 150: a pixel is 2.
class SliderTest : public WidgetFixture, public testing::WithParamInterface<int> {
 protected:
  static bool IsLying() { return GetParam() == kHorizontal; }
  void ShowSlider(int value) {
    Dress(HSLIDER_GRIP, Rows(4, "gggggggggg"));
    Dress(VSLIDER_GRIP, Rows(10, "gggg"));
    root.Remove(&slider);
    slider.Setup(20, 20, 110, 110, 0, 0, -50, 150, value, GetParam());
    Show(slider, {20, 20, slider.w(), slider.h()});
  }
  // The pointer along the slider, from its start, and beside it.
  void Put(int at, int buttons = 0, int beside = 25) {
    IsLying() ? Mouse(20 + at, beside, buttons) : Mouse(beside, 20 + at, buttons);
  }

  Slider slider;
};
INSTANTIATE_TEST_SUITE_P(, SliderTest, testing::Values(kVertical, kHorizontal));

TEST_P(SliderTest, LooksSayTheStateAndTheValue) {
  CurrentSkin()->dottedRect = 1;
  std::array<Slider, 5> sliders;
  for (int i = 0; i < 5; ++i) {
    sliders[i].Setup(24 * i, 24 * i, 60, 60, 0, 0, -50, i == 4 ? -50 : 150, 40 * i, GetParam());
    Show(sliders[i], {IsLying() ? 0 : 24 * i, IsLying() ? 24 * i : 0, 60, 60});
  }
  sliders[1].Select(), sliders[2].Disable(), sliders[3].SetFlag(kFlagFocus);
  ExpectShown(IsLying() ? "sliders_lying" : "sliders", {0, 0, 120, 120});
  for (const bool isMoved : {false, true}) {
    Tick(), IsLying() ? sliders[0].SetH(30) : sliders[0].SetW(30), Frame();
    isMoved ? sliders[0].MsgShape() : sliders[0].MsgResize();
    EXPECT_EQ(sliders[0].w() + sliders[0].h(), 60 + 22) << "as thick as the track";
    EXPECT_TRUE(DrawsEnough()) << isMoved;
  }
}

TEST_P(SliderTest, TheGripComesToThePointerAndStaysUnderIt) {
  ShowSlider(-50);
  const Steps steps = {{"press", [this] { Put(80, 1); }},
                       {"grip", [this] { Put(79, 1); }},
                       {"release", [this] { Mouse(mouse_x, mouse_y); }},
                       {"drag", [this] { Put(81, 1, 5); }},
                       {"back", [this] { Put(59, 1, 5); }},
                       {"far", [this] { Put(300, 1, 5); }},
                       {"before", [this] { Put(-9, 1, 5); }},
                       {"past", [this] { Put(140); }},
                       {"other", [this] { root.ChangeFocus(root.FocusWidget(), nullptr); }},
                       {"out", [this] { Mouse(250, 180, 1); }},
                       {"restart", [this] { slider.SendMessage(MSG_START); }}};
  const std::tuple<int, std::string, std::string> rows[] = {
      {-50, "press drag release past", "held 100 (Scroll 100), held 102 (Scroll 102), 102, 102"},
      {100, "grip back release", "held 100, held 60 (Scroll 60), 60"},
      {100, "press far before release",
       "held 100, held 150 (Scroll 150), held -50 (Scroll -50), -50"},
      {-50, "press other out release grip",
       "held 100 (Scroll 100), held 100, 150 (Scroll 150), 150, held 98 (Scroll 98)"},
      {-50, "past press out other release",
       "-50, held 100 (Scroll 100), held 150 (Scroll 150), 150, 150"},
      {-50, "press restart drag release", "held 100 (Scroll 100), 100, 100, 100"}};
  for (const auto& [value, script, seen] : rows) {
    Mouse(200, 190);
    slider.SetPosition(value);
    const auto look = [this] {
      return (slider.Selected() ? "held " : "") + std::to_string(slider.GetPosition());
    };
    EXPECT_EQ(Play(script, steps, look), seen) << script;
  }
}

TEST_P(SliderTest, KeysAndWheelMoveWithinTheRange) {
  const int more = IsLying() ? KEY_RIGHT : KEY_DOWN, less = IsLying() ? KEY_LEFT : KEY_UP;
  const int other = IsLying() ? KEY_UP : KEY_LEFT, sign = IsLying() ? 1 : -1;
  const std::tuple<int, int, int, std::string> rows[] = {
      {50, more, 0, "Scroll 51"},      {50, less, 0, "Scroll 49"},
      {50, KEY_HOME, 0, "Scroll -50"}, {149, more, 0, "Scroll 150"},
      {50, KEY_END, 0, "Scroll 150"},  {140, KEY_PGUP, 0, "Scroll 150"},
      {50, KEY_PGUP, 0, "Scroll 70"},  {50, KEY_PGDN, 0, "Scroll 30"},
      {50, 0, 3 * sign, "Scroll 53"},  {-49, 0, -9 * sign, "Scroll -50"},
      {-50, 0, -9 * sign, ""},         {50, other, 0, ""}};
  root.onEvent = [](Widget*, int, int) { simulate_keypress('k'); };
  for (const auto& [value, scancode, wheel, events] : rows) {
    ShowSlider(value);
    slider.MsgWheel(wheel);
    const bool isUsed = slider.MsgChar(scancode << 8);
    EXPECT_EQ(isUsed, scancode != 0 && scancode != other);
    EXPECT_EQ(root.Events(), events);
    InputRecord typed;
    EXPECT_TRUE(!isUsed || !TakeInput(typed)) << "typed meanwhile";
  }
  root.onEvent = nullptr;
  for (const double end : {1e308, -1e308, 50.0}) {  // an endless, a reversed and no range
    slider.SetRange(50, end);
    Put(80, 1), Put(80);
  }
  EXPECT_EQ(slider.GetPosition(), 50);
}

}  // namespace
}  // namespace zel
