#include "toolkit/widgets/spin_box.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "toolkit/base/text.h"

namespace zel {
namespace {

constexpr int kCapacity = 10;

// Room for the largest double without digits behind the point.
constexpr int kLongestNumber = 320;

}  // namespace

void SpinButton::Draw(Bitmap& canvas) {
  const SkinBitmap* element = GetBitmap();
  if (!element) return;
  const int height = element->Height() / kDrawStates;
  element->masked_stretch_blit(canvas, 0, LookState() * height, element->Width(), height, 0, 0, w(),
                               h());
}

SpinBox::SpinBox() {
  Add(&edit);
  Add(&upButton);
  Add(&downButton);
}

void SpinBox::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                    double newMin, double newMax, double newValue, double newIncrement) {
  Shape(px, py, width, height);
  ValueRange::Setup(newMin, newMax, newValue, newIncrement);
  edit.Setup(0, 0, width, height, shortcut, mask, nullptr, kCapacity);
  ShowValue();
  integerMode = false;
}

void SpinBox::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                    int newMin, int newMax, int newValue, int newIncrement) {
  Setup(px, py, width, height, shortcut, mask, static_cast<double>(newMin),
        static_cast<double>(newMax), static_cast<double>(newValue),
        static_cast<double>(newIncrement));
  integerMode = true;
}

void SpinBox::MsgInitSkin() {
  Dialog::MsgInitSkin();
  upButton.SetBitmap(SCROLL_UP);
  downButton.SetBitmap(SCROLL_DOWN);
  upButton.SetFlag(kFlagAutoRepeat);
  downButton.SetFlag(kFlagAutoRepeat);
  UpdateLayout();
}

void SpinBox::UpdateLayout() {
  const SkinBitmap* arrow = upButton.GetBitmap();
  if (!arrow) return;
  const int width = arrow->Width();
  const int left = std::max(0, w() - width);
  upButton.Shape(left, 0, width, h() / 2);
  downButton.Shape(left, h() / 2, width, h() / 2);
  edit.Resize(left, h());
  Dialog::UpdateLayout();
}

void SpinBox::SetValue(double d) {
  ValueRange::SetValue(d);
  Redraw();
}

void SpinBox::Increment() {
  ValueRange::Increment();
  ShowValue();
}

void SpinBox::Decrement() {
  ValueRange::Decrement();
  ShowValue();
}

void SpinBox::ShowValue() {
  const int whole = RoundToInt(value);
  if (whole == std::round(value) || std::isnan(value)) {
    edit.SetNumber(whole);
  } else {
    // More digits than an int has.
    char digits[kLongestNumber];
    std::snprintf(digits, sizeof digits, "%.0f", value);
    edit.SetText(Ascii(digits));
  }
  knownText_ = edit.GetText();
  Redraw();
}

void SpinBox::TakeText() {
  const char* shown = edit.GetText();
  knownText_ = shown ? shown : "";
  SetValue(integerMode ? edit.GetInt() : edit.GetDouble());
}

bool SpinBox::IsTyping(int msg, EventArg arg) {
  if (msg == MSG_UCHAR) return edit.Filter(static_cast<int>(arg)) != -1;
  const int scancode = static_cast<int>(arg) >> 8;
  if (msg != MSG_CHAR || (scancode != KEY_DEL && scancode != KEY_BACKSPACE)) return false;
  const char* shown = edit.GetText();
  return shown && knownText_ != shown;
}

void SpinBox::Step(bool up) {
  TakeText();
  const double before = value;
  if (up)
    Increment();
  else
    Decrement();
  if (value != before) Report(MSG_SCROLL, RoundToInt(up ? increment : -increment));
}

void SpinBox::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  if (sender == &edit && IsTyping(msg, arg1))
    TakeText();
  else if (msg == MSG_ACTIVATE && sender == &upButton)
    Step(true);
  else if (msg == MSG_ACTIVATE && sender == &downButton)
    Step(false);
  else if (msg == MSG_ACTIVATE)
    Report(MSG_ACTIVATE);
  else
    Dialog::HandleEvent(sender, msg, arg1, arg2);
}

}  // namespace zel
