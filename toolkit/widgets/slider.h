// A grip on a track that one drags to set a number.
#pragma once

#include <cstdint>

#include "toolkit/widgets/value_range.h"

namespace zel {

// Holds a whole number between two bounds; set by pressing or dragging, with the keys or the wheel.
//
// Tells its parent MSG_SCROLL with the number whenever the user changes it, and nothing when the
// program does. As thick as the skin's track.
class Slider : public Separator, public ValueRange {
 public:
  void MsgStart() override;
  void Draw(Bitmap& canvas) override;
  bool MsgChar(int code) override;
  bool MsgWantFocus() override;
  void MsgWheel(int steps) override;
  void MsgLPress() override;
  void MsgLRelease() override;
  void MsgLostFocus() override;
  void MsgLostMouse() override;
  void MsgMouseMove(Point p) override;
  void MsgResize() override;
  void MsgShape() override;
  void MsgInitSkin() override;
  void SetOrientation(int o) override;

  void Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask, int newMin,
             int newMax, int newValue, int o);
  // Elements of the skin with four frames each, one per DrawState.
  void SetElements(int back, int grip);
  void SetPosition(int p);  // brought between the bounds
  int GetPosition() const { return RoundToInt(value); }

 protected:
  int backElement = -1;
  int gripElement = -1;
  int grabOffset = 0;  // of the pointer from the grip's centre, while it is dragged

 private:
  // Along the slider, in pixels.
  int TrackLength() const { return IsHorizontal() ? w() : h(); }
  int GripLength() const;
  int GripStart() const;
  int PointerPlace() const;
  // The value with which the grip starts there; not brought between the bounds.
  double ValueAt(int gripStart) const;
  // Goes to the nearest number between the bounds; tells the parent if that is another one.
  void MoveTo(std::int64_t wanted);
  void TakeTrackThickness();
  void SwitchLook();
  void EndDrag();
  void DrawGrip(Bitmap& canvas, int state) const;
};

}  // namespace zel
