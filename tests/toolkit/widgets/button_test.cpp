#include "toolkit/widgets/button.h"

#include <array>
#include <climits>
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
      widgets[i].SetFlag(kStates[i]);
      widgets[i].Redraw();
    }
  }
  // A button, or what is derived from it, and another one beside it.
  template <class T>
  std::string PlayOn(std::uint32_t flags, const std::string& script) {
    T button;
    Button other;
    Show(button, {10, 10, 50, 20});
    Show(other, {100, 10, 50, 20});
    button.SetFlag(flags);
    Mouse(20, 20);
    const Words own = {{"out", [this] { Mouse(200, 150, mouse_b); }},
                       {"in", [this] { Mouse(20, 20, mouse_b); }},
                       {"key", [&button] { button.SendMessage(MSG_KEY); }},
                       {"other", [this, &other] { root.SetFocus(&other); }},
                       {"disable", [&button] { button.Disable(); }},
                       {"restart", [&button] { button.SendMessage(MSG_START); }}};
    return Play(
        script, [&button] { return button.Selected() ? "down" : "up"; }, own);
  }
};

TEST_F(ButtonTest, LabelsShowAndReadNumbers) {
  Label label;
  const std::tuple<double, std::string, int> rows[] = {
      {2.5, "2.5", 2}, {3, "3.0", 3}, {-3.75, "-3.75", -3}, {1e-7, "0.0", 0}, {NAN, "nan", 0}};
  for (const auto& [number, text, whole] : rows) {
    label.SetNumber(number);
    EXPECT_TRUE(label.GetText() == text && label.GetInt() == whole) << label.GetText();
  }
  label.SetNumber(-1e308);
  EXPECT_EQ(label.GetDouble(), -1e308);
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
  Dress(RADIO, {"rry", "rry", "ggk", "ggk", "bb.", "bb.", "wwc", "wwc"});  // lower than a text
  std::array<Button, 5> buttons;
  std::array<CheckBox, 6> boxes;
  std::array<RadioButton, 6> radios;
  Button icon;
  ShowStates(buttons, 0, "&H");
  ShowStates(boxes, 66, "&i");
  ShowStates(radios, 132, "r");
  Show(icon, {34, 50, 9, 9});
  icon.SetFlag(kFlagAutoSize), icon.SetBitmap(ICONMAX), icon.UpdateSize();
  ExpectShown("buttons", {0, 0, 196, 72});
}

TEST_F(ButtonTest, OldTextsAndIconsGoWithTheChange) {
  Label label;
  Show(label, {10, 10, 40, 40});
  label.ClearFlag(kFlagAutoSize);
  const auto check = [this] { EXPECT_TRUE(DrawsEnough()); };
  label.SetText("before"), Frame();
  label.SetText("now"), check();
  label.AlignRight(), check();
  label.SetMultiline(true), check();
  label.SetVAlignment(kAlignBottom), check();
  label.SetFontColor(red, Color{}, kDisabled), label.Disable(), check();
  label.Enable(), check();
  label.SetTextBackColor(white), label.SetText("longer"), Frame();
  label.SetFlag(kFlagAutoSize), label.SetText("x"), check();
  label.SetText(nullptr), check();
  Dress(ICONMIN, {"r..", ".g.", "...", "..b"});
  Button icon;
  Show(icon, {50, 50, 3, 1});
  icon.SetFlag(kFlagAutoSize), icon.SetBitmap(ICONMIN), Frame();
  Do("51,50 press release");
  root.ChangeFocus(&icon, nullptr), check();
  CurrentSkin()->buttonAnimationType = 1, CurrentSkin()->buttonAnimationLength = 100;
  icon.MsgInitSkin();
  icon.SetBitmap(ICONMIN), Mouse(51, 50, 1), Frame(), Tick(30), check();
}

TEST_F(ButtonTest, APressActivatesWhenItEndsWhereItBegan) {
  const std::tuple<std::uint32_t, std::string, std::string> rows[] = {
      {0, "press release", "down, up (Activate)"},
      {0, "press out release in", "down, down, up, up"},
      {0, "press out in release", "down, down, down, up (Activate)"},
      {0, "press other out release", "down, down, up, up"},
      {0, "press out other release", "down, down, up, up"},
      {0, "press restart release", "down, up, up"},
      {0, "key wait8 wait8", "down, down, up (Activate)"},
      {0, "key wait8 key wait8 wait8", "down, down, down, down, up (Activate)"},
      {0, "key press release wait8", "down, down, up (Activate), up"},
      {0, "press key release wait8", "down, down, down, up (Activate)"},
      {0, "key press other out wait8", "down, down, down, up, up"},
      {0, "key restart wait8 wait8", "down, up, up, up"},
      {kFlagToggle, "press release press release", "down, down (Activate), up, up (Activate)"},
      {kFlagToggle, "press out release", "down, down, up"},
      {kFlagToggle, "key restart wait8 wait8", "down, down, down, down"},
      {kFlagToggle, "key wait8 wait8 key wait8 wait8",
       "down, down, down (Activate), up, up, up (Activate)"},
      {kFlagAutoRepeat, "press wait8 release wait8",
       "down (Activate), down (Activate; Activate), up, up"},
      {kFlagAutoRepeat, "key wait8 wait8", "down, down (Activate; Activate), up"},
      {kFlagAutoRepeat, "press disable wait8", "down (Activate), down, down"},
      {kFlagAutoRepeat, "press out other wait8", "down (Activate), down, up, up"},
  };
  for (const auto& [flags, script, seen] : rows)
    EXPECT_EQ(PlayOn<Button>(flags, script), seen) << flags << ' ' << script;
  EXPECT_EQ(PlayOn<CheckBox>(0, "press release press out release key wait8 wait8"),
            "down, down (Activate), up, up, down, up, up, up (Activate)");
  EXPECT_EQ(
      PlayOn<RadioButton>(0, "press release press release key wait8 wait8 other key wait8 wait8"),
      "down, down (Activate), down, down, down, down, down, down, down, down, down");
}

TEST_F(ButtonTest, AKeyPressesForAsLongAsTheKeyboardTakesToRepeatIt) {
  Button button;
  Show(button, {10, 10, 50, 20});
  button.SetKey('A');
  const std::tuple<int, int, int> rows[] = {{100, -1, 30},  {100, 0, 30}, {100, 1, 2},
                                            {100, 160, 18}, {1, 0, 1},    {100, INT_MAX, 99}};
  for (const auto& [rate, delay, ticks] : rows) {
    settings.logicFrameRate = rate;
    settings.keyDelay = delay;
    root.HandleKey('a', KEY_A);
    int held = 0;
    for (; button.Selected() && held < 99; ++held) Tick();
    EXPECT_EQ(held, ticks) << rate << ' ' << delay;
    Expect(held < 99 ? "Activate" : "");
  }
}

TEST_F(ButtonTest, OneRadioButtonOfAGroupIsSelected) {
  RadioButton radios[4];  // groups 1, 1, 1 and 2 with the keys "a" to "d"
  for (int i = 0; i < 4; ++i) {
    radios[i].Setup(0, 0, 0, 0, 'a' + i, 0, "x", i < 3 ? 1 : 2);
    Show(radios[i], {10, 20 * i, 50, 15});
  }
  const auto selected = [&radios] {
    std::string seen;
    for (const RadioButton& radio : radios) seen += radio.Selected() ? '1' : '0';
    return seen;
  };
  Watch({});
  EXPECT_EQ(Play("20,65+press+release 20,5+press+release 20,45+press+release press+release "
                 "20,5+press 200,150+release b+wait20 b+wait20 c+wait20",
                 selected),
            "0001, 1001, 0011, 0011, 1011, 0011, 0101, 0101, 0011");
}

}  // namespace
}  // namespace zel
