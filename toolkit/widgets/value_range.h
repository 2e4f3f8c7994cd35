// Widgets that show a value, the numbers behind them, and the line that they share their shape
// with.
#pragma once

#include "toolkit/core/widget.h"

namespace zel {

// The nearest whole number: the nearest that there is where the number is too large, 0 for NaN.
int RoundToInt(double d);

// A value between two bounds, and the step in which it changes. The second base of widgets that
// hold a value; it tells nobody.
class ValueRange {
 public:
  virtual ~ValueRange() = default;
  // The bounds alone: the value stays as it is until it is set again.
  virtual void SetMin(double d);
  virtual void SetMax(double d);
  virtual void SetRange(double newMin, double newMax);
  virtual void SetValue(double d);  // brought between the bounds; NaN is ignored
  virtual void SetIncrement(double d);
  virtual void Setup(double newMin, double newMax, double newValue, double newIncrement);
  virtual void Increment();
  virtual void Decrement();
  virtual double GetMin() const;
  virtual double GetMax() const;
  virtual double GetRange() const;
  virtual double GetValue() const;
  virtual double GetIncrement() const;

 protected:
  double min = 0.0;
  double max = 100.0;
  double value = 0.0;
  double increment = 1.0;
};

inline constexpr int kHorizontal = 1;  // every other orientation is vertical
inline constexpr int kVertical = 0;

// A thin line of the skin.
class Separator : public Widget {
 public:
  void Draw(Bitmap& canvas) override;
  void MsgInitSkin() override;
  virtual void SetOrientation(int o);

  void Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask, int o);

 protected:
  bool IsHorizontal() const { return orientation == kHorizontal; }
  // Makes the widget as thick as its element.
  void TakeThickness();

  int orientation = kVertical;
};

// A bar that is filled in proportion to its value, from the left or from the top.
class ProgressBar : public Separator, public ValueRange {
 public:
  void Draw(Bitmap& canvas) override;
  void SetOrientation(int o) override;
  void Increment() override;

  void Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask, int o);
  using ValueRange::Setup;
  void SetPosition(int p);  // brought between the bounds

 protected:
  // The pixels of `length` that are filled, from 0 to all; 0 for a range of nothing.
  double Filled(int length) const;
};

}  // namespace zel
