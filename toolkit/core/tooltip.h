// The short text that shows when the pointer rests on a widget.
#pragma once

#include <memory>
#include <string>

#include "toolkit/core/widget.h"

namespace zel {

// Every dialog owns one and has it among its children while it runs. There is one state for all of
// them, driven by the logic tick of the root's, which shows over popups too: after the pointer has
// rested on a widget with a tooltip text, the text shows near it, follows the pointer from widget
// to widget and hides by itself.
class Tooltip : public Widget {
 public:
  Tooltip();

  void Draw(Bitmap& canvas) override;
  bool MsgWantMouse() override;  // never
  void MsgTick() override;
  void MsgInitSkin() override;

  // The virtual operations that a tooltip adds; their order is part of the interface.
  virtual void Show();
  virtual void HideTip();
  virtual void Layout();
  virtual void PlaceNearPointer();
  // Takes the size of the text; one wider than half the screen is wrapped.
  virtual void FitText();
  virtual void SetBackColor(Color color);
  virtual void SetBorderColor(Color color);
  virtual void SetText(const char* newText);  // copied; null for none

 private:
  Widget* UnderPointer() const;
  static Point PointerPosition();
  void TickIdle(Widget* under, Point pointer);
  void TickWaiting(Widget* under, Point pointer);
  void TickShown(Widget* under, Point pointer);
  void TickLeaving(Widget* under, Point pointer);
  void ShowFor(Widget* under);

 protected:
  int waitCount = 0;  // logic ticks in the current state
  int hideCount = 0;  // logic ticks that the tip has been shown
  Color backColor;
  Color borderColor;
  Point lastPos{-1, -1};
  std::unique_ptr<std::string> text;
  Widget* source = nullptr;  // the widget whose text is shown or awaited; only compared, never used
};

}  // namespace zel
