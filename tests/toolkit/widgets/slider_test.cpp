#include "toolkit/widgets/slider.h"

#include <memory>

#include "tests/support/widget_fixture.h"
#include "toolkit/base/input.h"

namespace zel {
namespace {

// A grip of 10 pixels on a track of 110 pixels for the values 0 to 100.
class SliderTest : public WidgetFixture {
 protected:
  SliderTest() {
    Dress(HSLIDER_GRIP, Rows(4, "gggggggggg"));
    Dress(VSLIDER_GRIP, Rows(10, "gggg"));
  }
  void ShowSlider(int orientation, int value) {
    root->Remove(&slider);
    slider.Setup(20, 30, 110, 110, 0, 0, 0, 100, value, orientation);
    Show(slider, {20, 30, slider.w(), slider.h()});
  }

  Slider slider;
};

TEST_F(SliderTest, GripComesToThePointerAndStaysUnderIt) {
  ShowSlider(kHorizontal, 0);
  Drag(20 + 80, 35, 20 + 81, 5);
  EXPECT_EQ(root->Take(), " S75 S76");
  Drag(20 + 79, 35, 20 + 59, 5);
  EXPECT_EQ(root->Take(), " S56") << "a press on the grip leaves it there";
  for (const bool isRemoved : {true, false}) {
    Mouse(20 + 59, 35, 1);
    if (isRemoved) root->Remove(&slider);
    root->ChangeFocus(root->FocusWidget(), nullptr);
    Mouse(250, 180, 1), root->Take();
    Mouse(20 + 59, 35);
    if (isRemoved) Show(slider, slider.Bounds());
    Mouse(20 + 90, 35);
    EXPECT_EQ(root->Take(), "") << "what cuts a drag off ends it";
  }
  ShowSlider(kVertical, 0);
  Drag(25, 30 + 80, 5, 30 + 81);
  EXPECT_EQ(root->Take(), " S75 S76");
  auto doomed = std::make_unique<Slider>();
  doomed->Setup(20, 160, 110, 0, 0, 0, 0, 100, 50, kHorizontal);
  Show(*doomed, doomed->Bounds());
  Mouse(75, 165, 1);
  int moves = 0;
  root->onEvent = [&](int msg, int) {
    moves += msg == MSG_MOUSEMOVE;
    if (msg == MSG_SCROLL) doomed.reset();
  };
  Mouse(85, 165, 1);
  EXPECT_TRUE(!doomed && moves == 1) << "the root's; its own would come after the change";
  root->onEvent = nullptr;
}

TEST_F(SliderTest, KeysAndWheelMoveWithinTheRange) {
  const std::tuple<int, int, int, int, std::string> rows[] = {
      {kHorizontal, 50, KEY_RIGHT, 0, " S51"}, {kHorizontal, 50, KEY_LEFT, 0, " S49"},
      {kVertical, 50, KEY_DOWN, 0, " S51"},    {kVertical, 50, KEY_UP, 0, " S49"},
      {kHorizontal, 50, KEY_HOME, 0, " S0"},   {kHorizontal, 50, KEY_END, 0, " S100"},
      {kHorizontal, 95, KEY_PGUP, 0, " S100"}, {kHorizontal, 50, KEY_PGDN, 0, " S40"},
      {kHorizontal, 50, 0, 3, " S53"},         {kVertical, 50, 0, 3, " S47"},
      {kHorizontal, 1, 0, -9, " S0"},          {kHorizontal, 0, 0, -9, ""}};
  root->onEvent = [](int, int) { simulate_keypress('k'); };
  for (const auto& [orientation, value, scancode, wheel, events] : rows) {
    ShowSlider(orientation, value);
    slider.MsgWheel(wheel);
    EXPECT_EQ(slider.MsgChar(scancode << 8), scancode != 0);
    EXPECT_EQ(root->Take(), events);
    InputRecord typed;
    EXPECT_TRUE(scancode == 0 || !TakeInput(typed)) << "typed meanwhile";
  }
  root->onEvent = nullptr;
  for (const double end : {1e308, -1e308, 50.0}) {  // an endless, a reversed and no range
    slider.SetRange(50, end);
    Click(100, 35);
  }
  EXPECT_EQ(slider.GetPosition(), 50);
}

TEST_F(SliderTest, EachStateHasItsTrackAndItsGrip) {
  Dress(HSLIDER_BACK, {"kwk", "kkk", "kck", "kbk"});
  Dress(HSLIDER_GRIP, {"gg", "rr", "..", "yy"});
  slider.Setup(20, 30, 8, 1, 0, 0, 0, 6, 3, kHorizontal);
  const auto look = [this] { return Shown(slider).front(); };
  EXPECT_EQ(look(), "kwwggwwk");
  slider.Select();
  EXPECT_EQ(look(), "kkkrrkkk");
  slider.Disable();
  EXPECT_EQ(look(), "kcccccck");
  for (const bool isMoved : {false, true}) {
    Tick(), slider.Resize(8, 9), Frame();
    isMoved ? slider.MsgShape() : slider.MsgResize();
    EXPECT_EQ(slider.h(), 1) << "as thick as the track";
    EXPECT_TRUE(DrawsEnough()) << isMoved;
  }
}

}  // namespace
}  // namespace zel
