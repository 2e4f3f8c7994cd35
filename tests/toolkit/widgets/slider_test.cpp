#include "toolkit/widgets/slider.h"

#include <array>

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// A grip of 10 pixels on a track of 110 pixels for the values -50 to 150: a pixel is 2.
class SliderTest : public WidgetFixture, public testing::WithParamInterface<int> {
 protected:
  SliderTest() { isTransposed = GetParam() == kVertical; }
  void ShowSlider(int value) {
    Dress(HSLIDER_GRIP, Rows(4, "gggggggggg"));
    Dress(VSLIDER_GRIP, Rows(10, "gggg"));
    root.Remove(&slider);
    slider.Setup(20, 20, 110, 110, 0, 0, -50, 150, value, GetParam());
    Show(slider, {20, 20, slider.w(), slider.h()});
  }

  Slider slider;
};
INSTANTIATE_TEST_SUITE_P(, SliderTest, testing::Values(kVertical, kHorizontal));

TEST_P(SliderTest, LooksSayTheStateAndTheValue) {
  CurrentSkin()->dottedRect = 1;
  std::array<Slider, 5> sliders;
  for (int i = 0; i < 5; ++i) {
    sliders[i].Setup(0, 0, 60, 60, 0, 0, -50, i == 4 ? -50 : 150, 40 * i, GetParam());
    Show(sliders[i], isTransposed ? Rect{24 * i, 0, 60, 60} : Rect{0, 24 * i, 60, 60});
  }
  sliders[1].Select(), sliders[2].Disable(), sliders[3].SetFlag(kFlagFocus);
  ExpectShown(isTransposed ? "sliders" : "sliders_lying", {0, 0, 120, 120});
  for (const bool isMoved : {false, true}) {
    Tick(), isTransposed ? sliders[0].SetW(30) : sliders[0].SetH(30), Frame();
    isMoved ? sliders[0].MsgShape() : sliders[0].MsgResize();
    EXPECT_EQ(sliders[0].w() + sliders[0].h(), 60 + 22) << "as thick as the track";
    EXPECT_TRUE(DrawsEnough()) << isMoved;
  }
}

TEST_P(SliderTest, TheGripComesToThePointerAndStaysUnderIt) {
  ShowSlider(-50);
  const Words own = {{"other", [this] { root.ChangeFocus(root.FocusWidget(), nullptr); }},
                     {"restart", [this] { slider.SendMessage(MSG_START); }}};
  const std::tuple<int, std::string, std::string> rows[] = {
      {-50, "100,25+press 101,5 release 160,25",
       "held 100 (Scroll 100), held 102 (Scroll 102), 102, 102"},
      {100, "99,25+press 79,5 release", "held 100, held 60 (Scroll 60), 60"},
      {100, "100,25+press 320,5 11,5 release",
       "held 100, held 150 (Scroll 150), held -50 (Scroll -50), -50"},
      {-50, "100,25+press other 250,180 release 99,25+press",
       "held 100 (Scroll 100), held 100, 150 (Scroll 150), 150, held 98 (Scroll 98)"},
      {-50, "160,25 100,25+press 250,180 other release",
       "-50, held 100 (Scroll 100), held 150 (Scroll 150), 150, 150"},
      {-50, "100,25+press restart 101,5 release", "held 100 (Scroll 100), 100, 100, 100"}};
  for (const auto& [value, script, seen] : rows) {
    Mouse(200, 190);
    slider.SetPosition(value);
    const auto look = [this] {
      return (slider.Selected() ? "held " : "") + std::to_string(slider.GetPosition());
    };
    EXPECT_EQ(Play(script, look, own), seen) << script;
  }
}

TEST_P(SliderTest, KeysAndWheelMoveWithinTheRange) {
  ShowSlider(0);
  root.SetFocus(&slider);
  Mouse(25, 25);
  root.onEvent = [](Widget*, int msg, int) {
    if (msg == MSG_SCROLL) TypeKey('k', 0);
  };
  Watch({MSG_SCROLL, MSG_UCHAR});
  const std::tuple<int, std::string, std::string> rows[] = {
      {50, "right", "51 (Scroll 51)"},  {50, "left", "49 (Scroll 49)"},
      {50, "home", "-50 (Scroll -50)"}, {149, "right", "150 (Scroll 150)"},
      {50, "end", "150 (Scroll 150)"},  {140, "pageup", "150 (Scroll 150)"},
      {50, "pageup", "70 (Scroll 70)"}, {50, "pagedown", "30 (Scroll 30)"},
      {50, "up", "50 (UChar)"},         {50, "down", "50 (UChar)"}};
  const auto look = [this] { return std::to_string(slider.GetPosition()); };
  for (const auto& [value, key, seen] : rows) {
    slider.SetPosition(value);
    EXPECT_EQ(Play(key + "+wait1", look), seen) << "what was typed meanwhile is forgotten";
  }
  root.onEvent = nullptr;
  EXPECT_EQ(Play("wheel3 wheel-200 wheel-1", look), "53 (Scroll 53), -50 (Scroll -50), -50");
  for (const double end : {1e308, -1e308, 50.0}) {  // an endless, a reversed and no range
    slider.SetRange(50, end);
    Do("100,25 press release");
  }
  EXPECT_EQ(slider.GetPosition(), 50);
}

}  // namespace
}  // namespace zel
