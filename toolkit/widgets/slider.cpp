#include "toolkit/widgets/slider.h"

#include <algorithm>

#include "toolkit/base/input.h"
#include "toolkit/base/zoom.h"
#include "toolkit/core/dialog.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr int kPages = 10;  // a page is this part of the range

}  // namespace

void Slider::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                   int newMin, int newMax, int newValue, int o) {
  SetRange(newMin, newMax);
  Widget::Setup(px, py, width, height, shortcut, mask);
  SetPosition(newValue);
  SetOrientation(o);
}

void Slider::SetOrientation(int o) {
  orientation = o;
  if (IsHorizontal())
    SetElements(HSLIDER_BACK, HSLIDER_GRIP);
  else
    SetElements(VSLIDER_BACK, VSLIDER_GRIP);
}

void Slider::SetElements(int back, int grip) {
  backElement = back;
  gripElement = grip;
  TakeTrackThickness();
  Redraw();
}

void Slider::TakeTrackThickness() {
  const SkinBitmap* track = GetElement(backElement);
  if (!track) return;
  const int thickness = (IsHorizontal() ? track->Height() : track->Width()) / kDrawStates;
  if (thickness == (IsHorizontal() ? h() : w())) return;
  RepaintBehind();
  IsHorizontal() ? SetH(thickness) : SetW(thickness);
}

// Beside the track the grip would leave traces.
void Slider::MsgResize() {
  Separator::MsgResize();
  TakeTrackThickness();
}

void Slider::MsgShape() {
  Separator::MsgShape();
  TakeTrackThickness();
}

void Slider::MsgInitSkin() {
  SetOrientation(orientation);
  Widget::MsgInitSkin();
}

void Slider::MsgStart() {
  // The end of the dialog may have cut a drag off.
  EndDrag();
  Separator::MsgStart();
}

void Slider::SetPosition(int p) {
  SetValue(p);
  Redraw();
}

bool Slider::MsgWantFocus() {
  Report(MSG_WANTFOCUS);
  return true;
}

int Slider::GripLength() const {
  const SkinBitmap* grip = GetElement(gripElement);
  if (!grip) return 0;
  return IsHorizontal() ? grip->Width() : grip->Height();
}

int Slider::GripStart() const {
  const int way = std::max(0, TrackLength() - GripLength());
  const double range = GetRange();
  return range != 0 ? std::clamp(RoundToInt(way * (GetValue() - GetMin()) / range), 0, way) : 0;
}

int Slider::PointerPlace() const {
  const Point pointer = GetMousePos();
  return IsHorizontal() ? pointer.x : pointer.y;
}

double Slider::ValueAt(int gripStart) const {
  const int way = TrackLength() - GripLength();
  return way > 0 ? gripStart * GetRange() / way + GetMin() : GetValue();
}

void Slider::MoveTo(std::int64_t wanted) {
  const std::int64_t lowest = RoundToInt(GetMin());
  const std::int64_t highest = std::max<std::int64_t>(lowest, RoundToInt(GetMax()));
  const int target = static_cast<int>(std::clamp(wanted, lowest, highest));
  if (target == GetPosition()) return;
  SetPosition(target);
  Report(MSG_SCROLL, target);
}

void Slider::SwitchLook() {
  if (Selected())
    Deselect();
  else
    Select();
  StartAnimation();
}

void Slider::EndDrag() {
  if (!TestFlag(kFlagPressed)) return;
  SwitchLook();
  ClearFlag(kFlagPressed);
}

void Slider::MsgLPress() {
  const int pointer = PointerPlace();
  const int half = GripLength() / 2;
  const int start = GripStart();
  const int before = GetPosition();
  const bool onGrip = start <= pointer && pointer < start + GripLength();
  grabOffset = onGrip ? pointer - (start + half) : 0;
  SetPosition(onGrip ? before : RoundToInt(ValueAt(pointer - half)));
  if (!TestFlag(kFlagPressed)) SwitchLook();
  SetFlag(kFlagPressed);
  Separator::MsgLPress();
  if (GetPosition() != before) Report(MSG_SCROLL, GetPosition());
}

void Slider::MsgMouseMove(Point p) {
  if (TestFlag(kFlagPressed)) {
    const LifeWatch watch{*this};
    MoveTo(RoundToInt(ValueAt(PointerPlace() - grabOffset - GripLength() / 2)));
    if (watch.IsGone()) return;
  }
  Separator::MsgMouseMove(p);
}

void Slider::MsgLRelease() {
  EndDrag();
  Separator::MsgLRelease();
}

// Without the focus and the pointer it would not be told of the release.

void Slider::MsgLostFocus() {
  if (!HasMouse()) EndDrag();
  Separator::MsgLostFocus();
}

void Slider::MsgLostMouse() {
  if (!HasFocus()) EndDrag();
  Separator::MsgLostMouse();
}

bool Slider::MsgChar(int code) {
  Separator::MsgChar(code);
  const std::int64_t now = GetPosition();
  const int page = RoundToInt(GetRange()) / kPages;
  const struct {
    int scancode;
    std::int64_t target;
  } rows[] = {
      {IsHorizontal() ? KEY_RIGHT : KEY_DOWN, now + 1},
      {IsHorizontal() ? KEY_LEFT : KEY_UP, now - 1},
      {KEY_HOME, RoundToInt(GetMin())},
      {KEY_END, RoundToInt(GetMax())},
      {KEY_PGUP, now + page},
      {KEY_PGDN, now - page},
  };
  const int scancode = code >> 8;
  for (const auto& row : rows) {
    if (row.scancode != scancode) continue;
    MoveTo(row.target);
    ForgetKeys();  // or a held key would go on after its release
    return true;
  }
  return false;
}

void Slider::MsgWheel(int steps) {
  Separator::MsgWheel(steps);
  const std::int64_t now = GetPosition();
  MoveTo(IsHorizontal() ? now + steps : now - steps);
}

void Slider::Draw(Bitmap& canvas) {
  const int state = LookState();
  if (const SkinBitmap* track = GetElement(backElement)) {
    if (IsHorizontal())
      track->DrawHFrame(canvas, state, 0, 0, w(), kDrawStates);
    else
      track->DrawVFrame(canvas, state, 0, 0, h(), kDrawStates);
  }
  if (ShowsFocus()) canvas.DottedRect(0, 0, w() - 1, h() - 1, skin->colors[kFontFace], Zoomed(1));
  DrawGrip(canvas, state);
}

void Slider::DrawGrip(Bitmap& canvas, int state) const {
  const SkinBitmap* grip = GetElement(gripElement);
  if (!grip) return;
  const int start = GripStart();
  if (IsHorizontal()) {
    const int height = grip->Height() / kDrawStates;
    grip->masked_blit(canvas, 0, RoundToInt(grip->Height() * state * 0.25), start,
                      (h() - height) / 2, grip->Width(), height);
  } else {
    const int width = grip->Width() / kDrawStates;
    grip->masked_blit(canvas, RoundToInt(grip->Width() * state * 0.25), 0, (w() - width) / 2, start,
                      width, grip->Height());
  }
}

}  // namespace zel
