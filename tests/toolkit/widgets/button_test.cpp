#include "toolkit/widgets/button.h"

#include <array>
#include <climits>
#include <clocale>
#include <cmath>

#include "tests/support/widget_fixture.h"

namespace zel {
namespace {

class ButtonTest : public WidgetFixture {
 protected:
  // Puts widgets into two columns, each in one of the states.
  template <class T, std::size_t kCount>
  void ShowStates(std::array<T, kCount>& widgets, int left, const char* text) {
    constexpr std::uint32_t kStates[] = {0,          kFlagSelected, kFlagPressed,
                                         kFlagFocus, kFlagDisabled, kFlagSelected | kFlagDisabled};
    for (int i = 0; i < static_cast<int>(kCount); ++i) {
      widgets[i].SetText(text);
      Show(widgets[i], {left + i % 2 * 32, i / 2 * 24, 30, 22});
      widgets[i].SetFlag(kStates[i] | kFlagDirty);
    }
  }
  // A button from 10,10 on, or what is derived from it, with the key "a".
  template <class T>
  std::string PlayOn(std::uint32_t flags, const std::string& script) {
    T button;
    button.SetFlag(flags);
    Show(button, {10, 10, 50, 20});
    button.SetKey('A');
    Mouse(10, 10);
    steps["disable"] = [&button] { button.Disable(); };
    look = [&button] { return button.Selected() ? "down" : "up"; };
    return Play(script);
  }
};

TEST_F(ButtonTest, LabelsShowAndReadNumbers) {
  std::setlocale(LC_NUMERIC, "de_DE.UTF-8");  // where there is one, with a comma
  Label label;
  std::string seen;
  for (const double number : {2.5, 3.0, -3.75, 1e-7, double{NAN}}) {
    label.SetNumber(number);
    seen += Join(label.GetText(), label.GetDouble(), label.GetInt());
  }
  std::setlocale(LC_NUMERIC, "C");
  EXPECT_EQ(seen, "2.5 2.5 2 3.0 3 3 -3.75 -3.75 -3 0.0 0 0 nan nan 0 ");
}

TEST_F(ButtonTest, TextLiesWhereItIsAligned) {
  std::array<Label, 7> labels;
  for (int i = 0; i < 7; ++i) {
    labels[i].SetMultiline(i > 2);
    labels[i].SetVAlignment(i % 3), labels[i].SetAlignment(2 - i % 3);
    Show(labels[i], {});
    if (i != 6) labels[i].ClearFlag(kFlagAutoSize);
    if (i < 3) labels[i].SetTextBackColor(white);
    labels[i].Setup(i % 3 * 30, i / 3 * 26, 28, 24, 0, 0, i > 2 ? "ab c" : "ab", i % 3);
  }
  for (Label& label : labels) label.SetFontColor(red, green, kNormal);
  labels[1].SetFontColor(blue, yellow, kDisabled);
  labels[1].Disable();
  labels[6].SetText("ab c d");
  EXPECT_EQ(labels[6].Bounds(), Rect(0, 52, 28, 16));
  ExpectShown("labels", {0, 0, 90, 70});
}

TEST_F(ButtonTest, LooksSayTheState) {
  CurrentSkin()->dottedRect = 1, CurrentSkin()->buttonDisplacement = 3;
  CurrentSkin()->fontColor[kCheckBoxText][kNormal] = blue;
  CurrentSkin()->fontColor[kRadioText][kNormal] = green;
  Dress(RADIO, {"rry", "rry", "ggk", "ggk", "bb.", "bb.", "wwc", "wwc"});  // lower than a text
  Rows box(32, "rb");                                                      // as high as a text
  box[8] = box[15] = "gy";
  Dress(CHECKBOX, box);
  std::array<Button, 5> buttons;
  std::array<CheckBox, 6> boxes;
  std::array<RadioButton, 6> radios;
  Button icon;
  ShowStates(buttons, 0, "&H");
  ShowStates(boxes, 66, "&i");
  ShowStates(radios, 132, "r");
  radios[5].Widget::SetBitmap(-1);
  Show(icon, {34, 50, 9, 9});
  icon.SetFlag(kFlagAutoSize), icon.SetBitmap(ICONMAX), icon.UpdateSize();
  ExpectShown("buttons", {0, 0, 196, 72});
}

TEST_F(ButtonTest, OldTextsAndIconsGoWithTheChange) {
  Label label;
  Show(label, {10, 10, 40, 40});
  label.ClearFlag(kFlagAutoSize), label.SetFontColor(red, Color{}, kNormal);
  label.SetText("before"), Frame();
  label.SetText("now it is"), Check();
  label.AlignRight(), Check();
  label.SetMultiline(true), Check();
  label.SetVAlignment(kAlignBottom), Check();
  label.SetFontColor(red, white, kNormal), label.Redraw(), Frame();
  label.SetFontColor(red, Color{}, kDisabled), label.Disable(), Check();
  label.SetFontColor(red, white, kDisabled), label.SetFontColor(blue, Color{}, kNormal);
  label.Redraw(), Frame(), label.Enable(), Check();
  label.SetTextBackColor(white), label.SetText("longer"), Frame();
  label.SetFlag(kFlagAutoSize), label.SetText("x"), Check();
  label.SetText(nullptr), Check();
  EXPECT_EQ(label.TextHeight(), 0);
  Rows frames;
  for (const char* row : {"r..", ".g.", "...", "..b"}) frames.insert(frames.end(), 3, row);
  Dress(ICONMIN, frames);
  Button icon;
  Show(icon, {50, 50, 3, 3});
  icon.SetFlag(kFlagAutoSize), icon.SetBitmap(ICONMIN), Frame();
  Play("51,50 press release");
  root.ChangeFocus(&icon, nullptr), Check();
  CurrentSkin()->buttonAnimationType = 6, CurrentSkin()->buttonAnimationLength = 100;
  icon.MsgInitSkin();
  icon.SetBitmap(ICONMIN), Mouse(51, 50, 1);
  for (int tick = 0; tick < 9; ++tick) Check(), Tick();
}

// Its four rows, tick by tick: of a transition that wipes downward for four ticks.
TEST_F(ButtonTest, EachChangeOfTheLookBeginsATransition) {
  Dress(BUTTON, {"r", "g", "b", "w"});
  CurrentSkin()->buttonAnimationType = 6, CurrentSkin()->buttonAnimationLength = 80;
  Button button;
  Show(button, {10, 10, 4, 4});
  button.SetKey('A');
  look = [this] {
    const Rows rows = Frame();
    return std::string{rows[10][10], rows[11][10], rows[12][10], rows[13][10]};
  };
  ExpectPlays(
      "button_transitions",
      {"11,11+press wait1 wait4 release wait1 wait4 leave wait1 wait4",
       "11,11+press wait1 wait5 leave+200,150 wait1 wait5 release wait1",
       "a wait1 wait5 wait12 wait1 wait5", "leave wait1 wait5 a wait1 wait5 11,11+press+release",
       "11,11+press wait1 wait5 leave wait1 wait5 200,150 wait1 wait5 release",
       "11,11+press wait1 wait5 200,150 release wait1 wait5"});
}

TEST_F(ButtonTest, APressActivatesWhenItEndsWhereItBegan) {
  std::string seen;
  for (const char* script :
       {"press 9,10 release 10,10", "press 9,10 10,10 release", "press leave 9,10 release",
        "press 9,10 leave release", "press restart release", "a wait5 a wait5 wait5",
        "a press release wait8", "press a release wait8", "a press leave 9,10 wait8",
        "a restart wait8 wait8"})
    seen += script + (": " + PlayOn<Button>(0, script)) + '\n';
  seen += "toggle: " + PlayOn<Button>(kFlagToggle, "a restart wait8 wait8") + '\n';
  for (const char* script : {"press wait8 release wait8", "a wait5 wait5", "press disable wait8"})
    seen += script + (" repeats: " + PlayOn<Button>(kFlagAutoRepeat, script)) + '\n';
  seen += PlayOn<CheckBox>(kFlagAutoRepeat,
                           "press release press 9,10 release 10,10 press release a wait5 wait5 "
                           "leave a wait5 wait5");
  Watch({MSG_ACTIVATE, MSG_RADIO});
  seen += '\n' + PlayOn<RadioButton>(0, "press release press release a wait8 leave a wait8");
  ExpectText("buttons_pressed", seen + '\n');
}

TEST_F(ButtonTest, AKeyPressesForAsLongAsTheKeyboardTakesToRepeatIt) {
  Button button;
  button.Setup(10, 10, 50, 20, 'A', 0, "x");
  Show(button, button.Bounds());
  constexpr int kDelays[][2] = {{1000, -1},  {1000, 0}, {1000, 1},
                                {1000, 160}, {1, 0},    {1000, INT_MAX}};
  std::string ticks;
  for (const auto& [rate, delay] : kDelays) {
    settings.logicFrameRate = rate;
    settings.keyDelay = delay;
    root.HandleKey('a', KEY_A);
    int held = 0;
    for (; button.Selected() && held < 999; ++held) Tick();
    ticks += Join(held, root.Events());
  }
  EXPECT_EQ(ticks + button.GetText(),
            "300 Activate 300 Activate 21 Activate 180 Activate 1 Activate 999  x");
}

TEST_F(ButtonTest, OneRadioButtonOfAGroupIsSelected) {
  CurrentSkin()->buttonAnimationType = 6, CurrentSkin()->buttonAnimationLength = 80;
  RadioButton radios[4];  // groups 1, 1, 1 and 2 with the keys "a" to "d"
  for (int i = 0; i < 4; ++i) {
    radios[i].Setup(0, 0, 0, 0, 'a' + i, 0, "x", i < 3 ? 1 : 2);
    Show(radios[i], {10, 20 * i, 50, 15});
  }
  look = [&radios] {
    std::string seen;
    for (const RadioButton& radio : radios)
      seen += std::string{radio.InTransition() ? "~" : ""} + (radio.Selected() ? '1' : '0');
    return seen;
  };
  ExpectPlays("radio_buttons",
              {"20,65+press+release 20,5+press+release 20,45+press+release press+release",
               "20,5+press 200,150+release b+wait20 b+wait20 c+wait20"});
}

}  // namespace
}  // namespace zel
