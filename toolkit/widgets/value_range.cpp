#include "toolkit/widgets/value_range.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zel {
namespace {

// Frames of the bar's element.
constexpr int kTrack = 0, kFilled = 1;

}  // namespace

int RoundToInt(double d) {
  using Limits = std::numeric_limits<int>;
  if (std::isnan(d)) return 0;
  return static_cast<int>(std::clamp<double>(std::round(d), Limits::min(), Limits::max()));
}

void ValueRange::SetMin(double d) { min = d; }
void ValueRange::SetMax(double d) { max = d; }

void ValueRange::SetRange(double newMin, double newMax) {
  SetMin(newMin);
  SetMax(newMax);
}

void ValueRange::SetValue(double d) {
  if (std::isnan(d)) return;
  if (d < min)
    value = min;
  else if (d > max)
    value = max;
  else
    value = d;
}

void ValueRange::SetIncrement(double d) { increment = d; }

void ValueRange::Setup(double newMin, double newMax, double newValue, double newIncrement) {
  SetRange(newMin, newMax);
  SetValue(newValue);
  SetIncrement(newIncrement);
}

void ValueRange::Increment() { value = std::min(value + increment, max); }
void ValueRange::Decrement() { value = std::max(value - increment, min); }
double ValueRange::GetMin() const { return min; }
double ValueRange::GetMax() const { return max; }
double ValueRange::GetRange() const { return max - min; }
double ValueRange::GetValue() const { return value; }
double ValueRange::GetIncrement() const { return increment; }

void Separator::SetOrientation(int o) {
  orientation = o;
  SetBitmap(IsHorizontal() ? SEPARATORH : SEPARATORV);
}

void Separator::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                      int o) {
  Widget::Setup(px, py, width, height, shortcut, mask);
  SetOrientation(o);
}

void Separator::TakeThickness() {
  const SkinBitmap* element = GetBitmap();
  if (!element) return;
  if (IsHorizontal())
    SetH(element->Height());
  else
    SetW(element->Width());
}

void Separator::MsgInitSkin() {
  Widget::MsgInitSkin();
  SetOrientation(orientation);
  TakeThickness();
}

void Separator::Draw(Bitmap& canvas) {
  const SkinBitmap* element = GetBitmap();
  if (!element) return;
  if (IsHorizontal())
    element->DrawHFrame(canvas.GetBitmap(), 0, 0, 0, w(), 1);
  else
    element->DrawVFrame(canvas.GetBitmap(), 0, 0, 0, h(), 1);
}

void ProgressBar::SetOrientation(int o) {
  orientation = o;
  SetBitmap(IsHorizontal() ? PROGRESSH : PROGRESSV);
}

void ProgressBar::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                        int o) {
  Separator::Setup(px, py, width, height, shortcut, mask, o);
  ValueRange::Setup(0.0, 100.0, 0.0, 1.0);
}

void ProgressBar::SetPosition(int p) {
  const double before = value;
  SetValue(p);
  // What is no longer filled need not lie on an opaque track.
  if (value < before) RepaintBehind();
  Redraw();
}

void ProgressBar::Increment() {
  ValueRange::Increment();
  Redraw();
}

double ProgressBar::Filled(int length) const {
  const double range = max - min;
  if (!(range > 0)) return 0;
  // Multiplied first: whole numbers give a whole number, which cutting must not make one less.
  const double filled = length * (value - min) / range;
  return std::max(0.0, std::min<double>(filled, length));
}

void ProgressBar::Draw(Bitmap& canvas) {
  const SkinBitmap* element = GetBitmap();
  BITMAP* target = canvas.GetBitmap();
  if (!element) return;
  if (IsHorizontal()) {
    element->DrawHFrameMasked(target, kTrack, 0, 0, w(), kBarFrames);
    if (const int filled = static_cast<int>(Filled(w())); filled > 0)
      element->DrawHFrameMasked(target, kFilled, 0, 0, filled, kBarFrames);
  } else {
    element->DrawVFrameMasked(target, kTrack, 0, 0, h(), kBarFrames);
    if (const int filled = static_cast<int>(Filled(h())); filled > 0)
      element->DrawVFrameMasked(target, kFilled, 0, 0, filled, kBarFrames);
  }
}

}  // namespace zel
