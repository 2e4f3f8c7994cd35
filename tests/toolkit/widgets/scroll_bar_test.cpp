#include "toolkit/widgets/scroll_bar.h"

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

// Arrows are 16 pixels long and the grip 12 (lying 18), so the bar of 132 pixels at (50, 20) has a
// track of 100 from y = 36 on, in which the grip can move by 88.
class ScrollBarTest : public WidgetFixture {
 protected:
  void ShowBar(int total, int position) {
    bar.Setup(0, 0, 0, 0, 0, 0, total, 30, kVertical);
    Show(bar, {50, 20, 16, 132});
    bar.SetPosition(position);
  }
  Widget& Grip() { return *bar.Children()[2]; }

  ScrollBar bar;
};

TEST_F(ScrollBarTest, TheGripLiesWhereTheValueIs) {
  ShowBar(100, 35);
  EXPECT_EQ(Grip().Bounds(), Rect(50, 36 + 44, 16, 12));
  bar.SetH(44);
  Tick();
  EXPECT_EQ(Grip().y(), 36) << "there is no room to move";
  bar.SetOrientation(kHorizontal);
  bar.Resize(150, 9);
  bar.SetPosition(900);
  Tick();
  EXPECT_EQ(Grip().Bounds(), Rect(50 + 16 + 100, 20, 18, 16));
  bar.SetRange(50, 30);
  EXPECT_EQ(bar.GetPosition(), 20) << "the end of the shorter range";
}

TEST_F(ScrollBarTest, HeldArrowsAndTracksScrollOnAndOn) {
  ShowBar(1030, 500);
  Mouse(55, 140, 1);
  Tick(8);  // 60 ms are three ticks; the one after them presses
  Mouse(55, 120);
  EXPECT_EQ(root->Take(), " S501 S502 S503");
  Mouse(55, 120, 1);
  Tick();
  EXPECT_EQ(root->Take(), " S513 S523");
  Tick(100);
  EXPECT_TRUE(Grip().Bounds().Contains({55, 120}));
  Mouse(55, 150, 1);
  root->MsgEnd(), root->MsgStart(), root->Take();
  Tick(9);
  EXPECT_EQ(root->Take(), "") << "the end of the dialog lets go";
}

TEST_F(ScrollBarTest, KeysPointerAndWheelMoveTheGrip) {
  ShowBar(910, 0);  // ten units a pixel
  const std::tuple<int, int, std::string> kKeys[] = {
      {60, KEY_PGDN, " S90"}, {60, KEY_PGUP, " S30"}, {20, KEY_PGUP, " S0"},  {35, KEY_HOME, " S0"},
      {35, KEY_END, " S880"}, {35, KEY_UP, " S34"},   {35, KEY_DOWN, " S36"}, {35, KEY_LEFT, ""}};
  for (const auto& [from, key, events] : kKeys) {
    bar.SetPosition(from);
    EXPECT_EQ(Grip().SendMessage(MSG_CHAR, key << 8), kMessageOk);
    EXPECT_EQ(root->Take(), events) << from << ' ' << key;
  }
  bar.SetPosition(0);
  for (const auto& [y, value] : {std::pair{38, 0}, {48, 100}, {199, 880}, {0, 0}, {43, 50}}) {
    Mouse(55, y, 1);
    EXPECT_EQ(bar.GetPosition(), value) << y;
  }
  Mouse(55, 43, 0, 3);
  EXPECT_EQ(bar.GetPosition(), 47);
  Press(KEY_SPACE, ' ');
  Mouse(55, 48);
  EXPECT_TRUE(Grip().Selected() && bar.GetPosition() == 47) << "a key does not drag it";
}

}  // namespace
}  // namespace zel
