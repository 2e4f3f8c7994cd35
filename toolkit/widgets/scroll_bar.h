// Scrolls a view over content that is larger than the view.
#pragma once

#include "toolkit/core/dialog.h"
#include "toolkit/widgets/button.h"
#include "toolkit/widgets/value_range.h"

namespace zel {

class ScrollBar;

// The area between the arrows. While it is pressed it tells the bar so once per logic tick.
class ScrollTrack : public Widget {
 public:
  void Draw(Bitmap& canvas) override;
  void MsgLPress() override;
  void MsgLRelease() override;
  void MsgLostMouse() override;
  void MsgStart() override;
  void MsgTick() override;

  void SetOrientation(int o) { orientation = o; }

 protected:
  int orientation = 0;
};

// The draggable grip; it takes the keyboard focus and hands the scrolling keys to the bar.
class ScrollGrip : public Button {
 public:
  void Draw(Bitmap& canvas) override;
  bool MsgChar(int code) override;
  void MsgLPress() override;
  void MsgMouseMove(Point p) override;
  // Tab goes to a grip that can move.
  bool MsgWantTab() override;

  void SetElements(int grip, int gripOverlay);

 protected:
  int overlay = -1;  // element drawn in the middle of the grip
};

// An arrow at the end of a bar. Tab passes it by: the grip scrolls from the keyboard.
class ScrollArrow : public Button {
 public:
  bool MsgWantTab() override { return false; }
};

// Two arrows, a track and a grip, all owned. The value is the position of the view in the content,
// from 0 to total - visible; the parent gets MSG_SCROLL with it when the user changes it.
class ScrollBar : public Dialog, public ValueRange {
 public:
  ScrollBar();

  void MsgInitSkin() override;
  void UpdateLayout() override;
  void HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) override;
  void Increment() override;
  void Decrement() override;
  virtual void SetOrientation(int o);  // 1 is horizontal, all else vertical

  // `total` and `visible` extent of the content, in whatever the bar counts.
  void SetRange(int total, int visible);
  using ValueRange::SetRange;
  void SetPosition(int p);  // clamped
  // Steps of the wheel, as if the pointer were over the bar.
  void ScrollByWheel(int steps);
  void Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask, int total,
             int visible, int o);
  int GetPosition() const;  // the value, rounded
  bool IsHorizontal() const;
  // The bar's thickness as the skin wants it; 0 without pictures.
  int Thickness() const;
  bool CanScroll() { return GetRange() > 0; }

 private:
  struct Arrows {  // extents along the bar
    int less, more;
  };
  bool HasArrows() const;
  Arrows ArrowExtents() const;
  void UpdateGrip();
  void TellChange(int before);
  void PageTowardPointer();
  void ScrollByKeyOrDrag(int scancode);
  double DraggedValue() const;

 protected:
  ScrollTrack track;
  ScrollArrow lessButton;
  ScrollArrow moreButton;
  ScrollGrip grip;
  int pageSize = 1;
  int orientation = 0;
  Point grab;  // of the pointer from the grip's centre, at the press
};

}  // namespace zel
