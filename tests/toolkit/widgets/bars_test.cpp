// What has a value and lies or stands.
#include <array>

#include "tests/support/widget_fixture.h"
#include "toolkit/widgets/scroll_bar.h"
#include "toolkit/widgets/slider.h"

namespace zel {
namespace {

// Scripts and places are those of a lying bar.
class BarTest : public WidgetFixture, public testing::WithParamInterface<int> {
 protected:
  BarTest() {
    isTransposed = GetParam() == kVertical;
    steps["typing"] = [this] {  // what is typed while it scrolls is forgotten
      Watch({MSG_SCROLL, MSG_UCHAR});
      root.onEvent = [](Widget*, int msg, int) {
        if (msg == MSG_SCROLL) TypeKey('k', 0);
      };
    };
    steps["quiet"] = [this] { Watch({MSG_SCROLL}), root.onEvent = nullptr; };
  }
};
const auto kOrientations = testing::Values(kVertical, kHorizontal);
INSTANTIATE_TEST_SUITE_P(, BarTest, kOrientations);

TEST_P(BarTest, IsFilledInProportionToItsValue) {
  Dress(PROGRESSH, {"r.b", "wy."});  // the track above the fill
  Dress(PROGRESSV, {"rw", ".y", "b."});
  const std::tuple<int, int, double> rows[] = {{0, 100, -7},   {0, 100, 9.9}, {0, 100, 10},
                                               {0, 100, 99.9}, {0, 100, 900}, {100, 101, 100.5},
                                               {5, 5, 5}};
  std::array<ProgressBar, 7> bars;
  for (int i = 0; i < 7; ++i) {
    const auto& [min, max, value] = rows[i];
    bars[i].Setup(0, 0, 0, 0, 0, 0, GetParam());
    bars[i].SetRange(min, max);
    bars[i].SetValue(value);
    Show(bars[i], isTransposed ? Rect{4 * i, 0, 2, 10} : Rect{0, 4 * i, 10, 2});
  }
  ExpectShown(isTransposed ? "progress_bars" : "progress_bars_lying", {0, 0, 28, 28});
  for (const int position : {0, 50, 29}) bars[4].SetPosition(position), Play("wait1");
  bars[4].Increment(), Play("wait1");
  EXPECT_EQ(bars[4].GetValue(), 30);
  bars[4].Setup(0, 0, 0, 0, 0, 0, GetParam());
  EXPECT_EQ(bars[4].GetValue(), 0);
}

// A grip of 10 pixels on a track of 110 pixels for the values -50 to 150: a pixel is 2.
class SliderTest : public BarTest {
 protected:
  void ShowSlider() {
    Dress(HSLIDER_GRIP, Rows(4, "gggggggggg"));
    Dress(VSLIDER_GRIP, Rows(10, "gggg"));
    slider.Setup(20, 20, 110, 110, 0, 0, -50, 150, 0, GetParam());
    Show(slider, {20, 20, slider.w(), slider.h()});
    look = [this] {
      return (slider.Selected() ? "held " : "") + std::to_string(slider.GetPosition());
    };
  }

  Slider slider;
};
INSTANTIATE_TEST_SUITE_P(, SliderTest, kOrientations);

TEST_P(SliderTest, LooksSayTheStateAndTheValue) {
  CurrentSkin()->dottedRect = 1;
  std::array<Slider, 6> sliders;  // the last ones for one value and for two
  for (int i = 0; i < 6; ++i) {
    sliders[i].Setup(0, 0, 60, 60, 0, 0, -50, i < 4 ? 150 : i - 54, 40 * i, GetParam());
    Show(sliders[i], isTransposed ? Rect{24 * i, 0, 60, 60} : Rect{0, 24 * i, 60, 60});
  }
  sliders[1].Select(), sliders[2].Disable(), sliders[3].SetFlag(kFlagFocus);
  ExpectShown(isTransposed ? "sliders" : "sliders_lying", {0, 0, 144, 144});
  for (const bool isMoved : {false, true}) {
    Tick(), isTransposed ? sliders[0].SetW(30) : sliders[0].SetH(30), Frame();
    isMoved ? sliders[0].MsgShape() : sliders[0].MsgResize();
    EXPECT_EQ(sliders[0].w() + sliders[0].h(), 60 + 22) << "as thick as the track";
    EXPECT_TRUE(DrawsEnough()) << isMoved;
  }
}

TEST_P(SliderTest, TheGripComesToThePointerAndStaysUnderIt) {
  ShowSlider();
  for (const int at : {-50, 100})
    steps["at" + std::to_string(at)] = [this, at] { Mouse(200, 190), slider.SetPosition(at); };
  ExpectPlays("slider_grip", {"at-50+100,25+press 101,5 release 160,25",
                              "at100+99,25+press 79,5 320,5 11,5 release",
                              "at100+95,25+press release at100+105,25+press release",
                              "at-50+100,25+press leave 250,180 release 99,25+press release",
                              "at-50+160,25 100,25+press 250,180 leave release",
                              "at-50+100,25+press restart 101,5 release"});
}

TEST_P(SliderTest, KeysAndWheelMoveWithinTheRange) {
  ShowSlider();
  ExpectShown(isTransposed ? "slider_thin" : "slider_thin_lying", {18, 18, 114, 114});
  root.SetFocus(&slider);
  Mouse(25, 25);
  ExpectPlays(
      "slider_keys",
      {"typing+right+wait1 left+wait1 left+wait1 up+wait1 down+wait1 pageup+wait1 home+wait1",
       "pagedown+wait1 pageup+wait1 end+wait1 right+wait1 pagedown+wait1",
       "quiet+wheel3 wheel-200 wheel-1"});
  for (const double end : {1e308, -1e308, 50.0}) {  // an endless, a reversed and no range
    slider.SetRange(50, end);
    Play("100,25 press release");
  }
  EXPECT_EQ(slider.GetPosition(), 50);
  for (const int grip : {HSLIDER_GRIP, VSLIDER_GRIP}) CurrentSkin()->bitmaps[grip]->Destroy();
  slider.SetRange(0, 110), root.Redraw(), Play("75,25 press");
  EXPECT_EQ(slider.GetPosition(), 55) << "the skin has no grip";
}

// Arrows are 16 pixels long and the grip 12 (lying 18), so a bar of 132 (lying 138) that begins at
// 20 has a track from 36 on, in which the grip can move by 88.
class ScrollBarTest : public BarTest {
 protected:
  ScrollBarTest() {
    look = [this] { return std::to_string(bar.GetPosition()); };
  }
  void ShowBar(int total, int position) {
    const Size size = isTransposed ? Size{9, 132} : Size{138, 9};
    bar.Setup(20, 20, size.w, size.h, 0, 0, total, 30, GetParam());
    Show(bar, {20, 20, bar.w(), bar.h()});
    bar.SetPosition(position);
    EXPECT_EQ(bar.w() + bar.h(), 16 + (isTransposed ? 132 : 138)) << "as thick as its element";
  }

  ScrollBar bar;
};
INSTANTIATE_TEST_SUITE_P(, ScrollBarTest, kOrientations);

TEST_P(ScrollBarTest, TheGripLiesWhereTheValueIs) {
  Rows marks;  // as large as the grip of a standing bar
  for (const char letter : {'r', 'w', 'k', 'y'}) {
    marks.emplace_back(16, letter);
    marks.resize(marks.size() + 11, "g.............." + std::string{letter});
  }
  Dress(isTransposed ? SCROLL_VGRIPOVERLAY : SCROLL_HGRIPOVERLAY, marks);
  // In the middle, at the end, without room, disabled, for all of it and for one step.
  std::array<ScrollBar, 6> bars;
  for (int i = 0; i < 6; ++i) {
    const int length = i == 2 ? 44 : 70;
    const Rect place = isTransposed ? Rect{18 * i, 0, 16, length} : Rect{0, 18 * i, length, 16};
    Show(bars[i], place);
    bars[i].SetOrientation(1 - GetParam()), Tick();  // not for long
    bars[i].Setup(place.x, place.y, place.w, place.h, 0, 0, i < 4 ? 100 : i - 3, i < 4 ? 30 : 1,
                  GetParam());
    bars[i].SetPosition(i == 1 ? 900 : 35);
  }
  bars[0].SetPosition(0), bars[3].SetPosition(70);
  for (const int i : {0, 3}) bars[i].SetIncrement(35);
  bars[0].Increment(), bars[3].Decrement();
  bars[3].Disable();
  root.SetFocus(&bars[0]);
  Play("5,23 press");
  ExpectShown(isTransposed ? "scroll_bars" : "scroll_bars_lying", {0, 0, 108, 108});
  bars[0].Decrement(), Check(), bars[0].Increment(), Check();
  bars[1].SetRange(50, 30);
  EXPECT_EQ(bars[1].GetPosition(), 20) << "the end of the shorter range";
  for (int id = SCROLL_DOWN; id <= SCROLL_VGRIPOVERLAY; ++id) CurrentSkin()->bitmaps[id]->Destroy();
  bars[1].SetSkin(nullptr), Tick();
  EXPECT_EQ(bars[1].w() + bars[1].h(), 16 + 70) << "also where the skin has no pictures of it";
}

TEST_P(ScrollBarTest, HeldArrowsAndTracksScrollOnAndOn) {
  ShowBar(1030, 500);
  ExpectPlays(
      "scroll_bar_held",
      {"145,25+press wait4 wait4 release",  // 60 ms are three ticks
       "22,25+press wait4 release wait1", "120,25+press wait1 release wait1", "40,25+press release",
       "120,25+press restart wait4", "release 120,25+press 120,90 120,25 wait1 release"});
  for (const std::string at : {"120,25", "60,25"}) {
    Play("release " + at + " press wait100 release press release");
    EXPECT_TRUE(bar.Dialog::Contains(root.FocusWidget())) << at;
    EXPECT_TRUE(root.FocusWidget()->Bounds().Contains({mouse_x, mouse_y})) << at;
  }
}

TEST_P(ScrollBarTest, KeysPointerAndWheelMoveTheGrip) {
  ShowBar(910, 0);  // ten units a pixel
  steps["blind"] = [this] { bar.SetRange(910, 0); };
  steps["sighted"] = [this] { bar.SetRange(910, 30); };
  Play("40,25 press release");
  ExpectPlays("scroll_bar_moved",
              {"pagedown right right left pagedown pageup up down x pageup pageup end right home",
               "typing+right+wait1 quiet blind+pagedown end sighted+home",
               "38,25+press 48,90 199,90 0,90 43,90 43,25+release+wheel3 space+48,25"});
  EXPECT_TRUE(root.FocusWidget()->Selected());
  root.ChangeFocus(root.FocusWidget(), nullptr);
  bar.Setup(20, 20, bar.w(), bar.h(), 'b', kFlagExit, 910, 30, GetParam());
  EXPECT_EQ(Join(bar.GetPosition(), bar.GetKey(), bar.TestFlag(kFlagExit)), "0 98 1 ");
  for (const int total : {30, 31}) {
    bar.SetRange(total, 30);
    root.MoveFocus(FocusMove::kNext);
    EXPECT_EQ(bar.HasFocus(), total > 30) << "Tab goes to a grip that can move";
  }
}

}  // namespace
}  // namespace zel
