#include "toolkit/widgets/button.h"

#include <cmath>

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

class ButtonTest : public WidgetFixture {
 protected:
  // The top left corner of what is painted in this colour, in a state given by flags.
  static Point Corner(Widget& widget, std::uint32_t state, char color) {
    widget.ClearFlag(kFlagSelected | kFlagDisabled | kFlagFocus | kFlagPressed);
    widget.SetFlag(state);
    Point corner{100, 100};
    const Rows rows = Shown(widget);
    for (int y = 0; y < widget.h(); ++y)
      if (const int x = static_cast<int>(rows[y].find(color)); x >= 0)
        corner = {std::min(corner.x, x), std::min(corner.y, y)};
    return corner;
  }
};

TEST_F(ButtonTest, LabelsShowAndReadNumbers) {
  Label label;
  const std::tuple<double, std::string, int> kNumbers[] = {
      {2.5, "2.5", 2}, {3, "3.0", 3}, {-3.75, "-3.75", -3}, {1e-7, "0.0", 0}, {NAN, "nan", 0}};
  for (const auto& [number, text, whole] : kNumbers) {
    label.SetNumber(number);
    EXPECT_EQ(label.GetText(), text);
    EXPECT_EQ(label.GetInt(), whole);
  }
  label.SetNumber(-1e308);
  EXPECT_EQ(label.GetDouble(), -1e308);
}

TEST_F(ButtonTest, OldTextsAndIconsGoWithTheChange) {
  Button behind;
  Show(behind, {0, 0, 100, 100});
  Label label;
  Show(label, {10, 10, 40, 40});
  label.ClearFlag(kFlagAutoSize);
  const auto check = [this] { EXPECT_TRUE(DrawsEnough()); };
  label.SetText("before"), Frame();
  label.SetText("now"), check();
  label.AlignRight(), check();
  label.SetMultiline(true), check();
  label.SetTextBackColor(white), label.SetText("longer"), Frame();
  label.SetFlag(kFlagAutoSize), label.SetText("x"), check();
  label.SetText(nullptr), check();
  Dress(ICONMIN, {"r..", ".g.", "...", "..b"});
  Button icon;
  Show(icon, {50, 50, 3, 1});
  icon.SetFlag(kFlagAutoSize), icon.SetBitmap(ICONMIN), Frame();
  for (const int buttons : {1, 0}) Mouse(51, 50, buttons), check();
  root->SetFocus(&behind), check();
  CurrentSkin()->buttonAnimationType = 1, CurrentSkin()->buttonAnimationLength = 100;
  icon.MsgInitSkin();
  icon.SetBitmap(ICONMIN), Mouse(51, 50, 1), Frame(), Tick(30), check();
}

TEST_F(ButtonTest, ButtonsAndCheckBoxesAreDrawnByTheirState) {
  Dress(BUTTON, {"r", "g", "b", "w"});
  CurrentSkin()->buttonDisplacement = 2;
  Button button;
  button.Setup(0, 0, 30, 20, 0, 0, "H");
  button.MsgInitSkin();
  for (int group = 0; group < kDrawStates; ++group) button.SetFontColor(black, -1, group);
  EXPECT_EQ(Corner(button, 0, 'k'), Point(10, 5));
  EXPECT_EQ(Corner(button, kFlagFocus, 'w'), Point(0, 0));
  EXPECT_EQ(Corner(button, kFlagSelected, 'k'), Point(12, 7));
  EXPECT_EQ(Corner(button, kFlagSelected | kFlagDisabled, 'b'), Point(0, 0));
  CheckBox box;
  Show(box, {10, 10, 30, 16});
  Dress(CHECKBOX, {"ry", "gk", "b.", "wc"});
  const std::pair<int, char> kStates[] = {
      {0, 'r'}, {kFlagSelected, 'y'}, {kFlagPressed, 'g'}, {kFlagFocus, 'w'}, {kFlagDisabled, 'b'}};
  for (const auto& [state, letter] : kStates) EXPECT_EQ(Corner(box, state, letter), Point(0, 3));
  box.SetText("H");
  box.SetFontColor(black, -1, kNormal);
  for (const auto& [height, boxY, textY] : {std::tuple{3, 2, 1}, {12, 0, 2}}) {
    Dress(CHECKBOX, Rows(4 * height, "rryy"));
    EXPECT_EQ(Corner(box, 0, 'r'), Point(0, boxY));
    EXPECT_EQ(Corner(box, 0, 'k'), Point(height + 4, textY));
  }
}

TEST_F(ButtonTest, APressActivatesWhenItEndsWhereItBegan) {
  Button button, other;
  Show(button, {10, 10, 50, 20});
  Show(other, {100, 10, 50, 20});
  for (const auto& [x, events] : {std::pair{30, " A0"}, {200, ""}}) {
    Mouse(20, 20, 1);
    EXPECT_TRUE(button.Selected());
    Mouse(x, 20);
    EXPECT_FALSE(button.Selected());
    EXPECT_EQ(root->Take(), events);
  }
  button.SetKey('A');
  for (const auto& [rate, delay, ticks] :
       {std::tuple{100, -1, 30}, {100, 160, 18}, {1, 0, 1}, {50, 160, 9}}) {
    settings.logicFrameRate = rate;
    settings.keyDelay = delay;
    Press(KEY_A, 'a');
    Tick(ticks - 1);
    EXPECT_TRUE(button.Selected()) << rate << ' ' << delay;
    Tick();
    EXPECT_TRUE(!button.Selected() && root->Take() == " A0") << rate << ' ' << delay;
  }
  settings.keyDelay = 100;
  for (const auto& [keyFirst, held] : {std::pair{true, 9}, {false, 9}, {false, 1}}) {
    if (keyFirst) Press(KEY_A, 'a');
    Mouse(20, 20, 1);
    if (!keyFirst) Press(KEY_A, 'a');
    Tick(held);
    Mouse(20, 20);
    Tick(9);
    EXPECT_FALSE(button.Selected());
    EXPECT_EQ(root->Take(), " A0") << keyFirst << ' ' << held;
  }
  settings.keyDelay = 2147483647;
  Press(KEY_A, 'a');
  root->Remove(&button);
  root->Add(&button);
  EXPECT_FALSE(button.Selected());
  button.SetFlag(kFlagAutoRepeat);
  for (const bool focusFirst : {true, false}) {  // without focus and pointer it ends
    Mouse(20, 20, 1);
    if (focusFirst) root->SetFocus(&other);
    Mouse(200, 150, 1);
    root->SetFocus(&other);
    root->Take();
    Tick(20);
    EXPECT_FALSE(button.Selected());
    EXPECT_EQ(root->Take(), "");
    Mouse(200, 150);
  }
  Mouse(20, 20, 1);
  button.Disable(), root->Take(), Tick(20);
  EXPECT_EQ(root->Take(), "");
}

TEST_F(ButtonTest, OneRadioButtonOfAGroupIsSelected) {
  RadioButton radios[4];  // groups 1, 1, 1 and 2 with the keys "a" to "d"
  for (int i = 0; i < 4; ++i) {
    radios[i].Setup(0, 0, 0, 0, 'a' + i, 0, "x", i < 3 ? 1 : 2);
    Show(radios[i], {10, 20 * i, 50, 15});
  }
  std::string selected;
  const auto note = [&] {
    Tick(20);
    for (const RadioButton& radio : radios) selected += radio.Selected() ? '1' : '0';
    selected += ' ';
  };
  for (const int y : {65, 5, 45, 45}) Click(20, y), note();
  Mouse(20, 5, 1), Mouse(200, 150), note();
  for (int times = 0; times < 2; ++times) Press(KEY_B, 'b'), note();
  Press(KEY_C, 'c'), Click(200, 150), note();
  EXPECT_EQ(selected, "0001 1001 0011 0011 0011 0101 0101 0011 ");
}

TEST_F(ButtonTest, TheApplicationMayDestroyWhatIsPressed) {
  for (const bool byKey : {false, true}) {
    auto doomed = std::make_unique<RadioButton>();
    Show(*doomed, {10, 10, 50, 20});
    DestroyAt(MSG_ACTIVATE, doomed);
    if (byKey) doomed->SendMessage(MSG_KEY);
    Click(byKey ? 200 : 20, 20);
    Tick(20);
    EXPECT_EQ(doomed, nullptr);
  }
}

}  // namespace
}  // namespace zel
