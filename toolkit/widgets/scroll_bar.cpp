#include "toolkit/widgets/scroll_bar.h"

#include <algorithm>
#include <cmath>

#include "toolkit/base/input.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

// What the grip sends for a drag, where keys send their scan code.
constexpr int kDragged = -1;

// A press on the track moves by this share of the range, but at least by one.
constexpr double kTrackStep = 0.01;

struct Parts {
  int track, less, more, grip, overlay;
};
constexpr Parts kHorizontalParts = {SCROLL_HBACK, SCROLL_LEFT, SCROLL_RIGHT, SCROLL_HGRIP,
                                    SCROLL_HGRIPOVERLAY};
constexpr Parts kVerticalParts = {SCROLL_VBACK, SCROLL_UP, SCROLL_DOWN, SCROLL_VGRIP,
                                  SCROLL_VGRIPOVERLAY};

// What of the content does not show. In a view without room nothing shows.
double Overhang(int total, int visible) {
  return std::max(0.0, static_cast<double>(total) - std::max(0, visible));
}

bool IsScrollKey(int scancode) {
  constexpr int kKeys[] = {KEY_HOME, KEY_END,   KEY_PGUP, KEY_PGDN,
                           KEY_LEFT, KEY_RIGHT, KEY_UP,   KEY_DOWN};
  return std::find(std::begin(kKeys), std::end(kKeys), scancode) != std::end(kKeys);
}

}  // namespace

void ScrollTrack::Draw(Bitmap& canvas) {
  if (const SkinBitmap* element = GetBitmap())
    element->DrawArea(canvas.GetBitmap(), 0, LookState(), 0, 0, w(), h(), 1, kDrawStates);
}

void ScrollTrack::MsgStart() {
  // The end of the dialog may have cut a press off.
  ClearFlag(kFlagPressed);
  Widget::MsgStart();
}

void ScrollTrack::MsgLPress() {
  Widget::MsgLPress();
  SetFlag(kFlagPressed);
}

void ScrollTrack::MsgLRelease() {
  Widget::MsgLRelease();
  ClearFlag(kFlagPressed);
}

void ScrollTrack::MsgLostMouse() {
  Widget::MsgLostMouse();
  ClearFlag(kFlagPressed);
}

void ScrollTrack::MsgTick() {
  Widget::MsgTick();
  if (!TestFlag(kFlagPressed)) return;
  Redraw();
  if (HasMouse()) Report(MSG_ACTIVATE);
}

void ScrollGrip::SetElements(int gripElement, int gripOverlay) {
  SetBitmap(gripElement);
  overlay = gripOverlay;
}

void ScrollGrip::Draw(Bitmap& canvas) {
  const int state = LookState();
  if (const SkinBitmap* element = GetBitmap())
    element->DrawArea(canvas.GetBitmap(), 0, state, 0, 0, w(), h(), 1, kDrawStates);
  const SkinBitmap* mark = GetElement(overlay);
  if (!mark) return;
  const int markHeight = mark->Height() / kDrawStates;
  if (mark->Width() > w() || markHeight > h()) return;
  mark->masked_blit(canvas.GetBitmap(), 0, state * markHeight, (w() - mark->Width()) / 2,
                    (h() - markHeight) / 2, mark->Width(), markHeight);
}

bool ScrollGrip::MsgChar(int code) {
  const int scancode = code >> 8;
  if (IsScrollKey(scancode)) {
    Report(MSG_SCROLL, scancode);
    ForgetKeys();
  }
  return Button::MsgChar(code);
}

void ScrollGrip::MsgLPress() {
  Button::MsgLPress();
  const Point pointer = GetMousePos();
  Report(MSG_LPRESS, pointer.x - w() / 2, pointer.y - h() / 2);
}

void ScrollGrip::MsgMouseMove(Point p) {
  // A key presses the grip, too, but does not drag it.
  if (Selected() && keyTimer == 0) Report(MSG_SCROLL, kDragged);
  Report(MSG_MOUSEMOVE, p.x, p.y);
}

bool ScrollGrip::MsgWantTab() {
  // The grip lives in its bar.
  return parent && static_cast<ScrollBar*>(parent)->CanScroll() && Button::MsgWantTab();
}

ScrollBar::ScrollBar() {
  Add(&track);
  Add(&lessButton);
  Add(&grip);
  Add(&moreButton);
}

bool ScrollBar::IsHorizontal() const { return orientation == kHorizontal; }

int ScrollBar::GetPosition() const { return RoundToInt(value); }

bool ScrollBar::HasArrows() const { return lessButton.GetBitmap() && moreButton.GetBitmap(); }

ScrollBar::Arrows ScrollBar::ArrowExtents() const {
  const SkinBitmap* less = lessButton.GetBitmap();
  const SkinBitmap* more = moreButton.GetBitmap();
  const auto extent = [this](const SkinBitmap* arrow) {
    if (!arrow) return 0;
    return IsHorizontal() ? arrow->Width() : arrow->Height() / kDrawStates;
  };
  return {extent(less), extent(more)};
}

int ScrollBar::Thickness() const {
  const SkinBitmap* back = track.GetBitmap();
  if (!back) return 0;
  return IsHorizontal() ? back->Height() / kDrawStates : back->Width();
}

void ScrollBar::SetOrientation(int o) {
  orientation = o;
  track.SetOrientation(o);
  const Parts& parts = IsHorizontal() ? kHorizontalParts : kVerticalParts;
  track.SetBitmap(parts.track);
  lessButton.SetBitmap(parts.less);
  moreButton.SetBitmap(parts.more);
  grip.SetElements(parts.grip, parts.overlay);
  UpdateLayout();
}

void ScrollBar::SetRange(int total, int visible) {
  ValueRange::SetRange(0, Overhang(total, visible));
  SetValue(value);
  if (!HasArrows()) return;
  if (IsHorizontal())
    SetW(w());
  else
    SetH(h());
  pageSize = std::max(1, visible);
  UpdateGrip();
}

void ScrollBar::SetPosition(int p) {
  SetValue(p);
  UpdateGrip();
  Redraw();
}

void ScrollBar::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                      int total, int visible, int o) {
  Shape(px, py, width, height);
  SetKey(shortcut);
  SetFlag(mask);
  ValueRange::Setup(0, Overhang(total, visible), 0, increment);
  SetOrientation(o);
  SetRange(total, visible);
}

void ScrollBar::MsgInitSkin() {
  Dialog::MsgInitSkin();
  for (ScrollArrow* arrow : {&lessButton, &moreButton})
    arrow->SetFlag(kFlagAutoSize | kFlagAutoRepeat);
  SetOrientation(orientation);
}

void ScrollBar::UpdateLayout() {
  const Arrows arrows = ArrowExtents();
  const int thickness = Thickness();
  const SkinBitmap* gripElement = grip.GetBitmap();
  if (IsHorizontal()) {
    if (thickness != 0 && h() != thickness) SetH(thickness);
    track.Shape(arrows.less, 0, w() - arrows.less - arrows.more, h());
    lessButton.Shape(0, 0, arrows.less, h());
    if (gripElement) grip.SetW(gripElement->Width());
    grip.SetY(0);
    grip.SetH(h());
    moreButton.Shape(std::max(0, w() - arrows.more), 0, arrows.more, h());
  } else {
    if (thickness != 0 && w() != thickness) SetW(thickness);
    track.Shape(0, arrows.less, w(), h() - arrows.less - arrows.more);
    lessButton.Shape(0, 0, w(), arrows.less);
    grip.SetX(0);
    grip.SetW(w());
    if (gripElement) grip.SetH(gripElement->Height() / kDrawStates);
    moreButton.Shape(0, std::max(0, h() - arrows.more), w(), arrows.more);
  }
  UpdateGrip();
  Dialog::UpdateLayout();
}

void ScrollBar::UpdateGrip() {
  if (!HasArrows()) return;
  const Arrows arrows = ArrowExtents();
  const int length = IsHorizontal() ? w() : h();
  const int gripLength = IsHorizontal() ? grip.w() : grip.h();
  // On a bar too short for its grip the grip stays at the first arrow.
  const double way = std::max(0, length - arrows.less - arrows.more - gripLength);
  const double range = GetRange();
  const double moved = range > 0 ? std::clamp(way * value / range, 0.0, way) : 0;
  const int position = arrows.less + RoundToInt(moved);
  if (IsHorizontal())
    grip.SetX(position);
  else
    grip.SetY(position);
}

void ScrollBar::TellChange(int before) {
  if (GetPosition() != before) Report(MSG_SCROLL, GetPosition());
}

void ScrollBar::Increment() {
  ValueRange::Increment();
  UpdateGrip();
  Redraw();
}

void ScrollBar::Decrement() {
  ValueRange::Decrement();
  UpdateGrip();
  Redraw();
}

void ScrollBar::ScrollByWheel(int steps) {
  const int before = GetPosition();
  SetPosition(RoundToInt(IsHorizontal() ? value + steps : value - steps));
  TellChange(before);
}

void ScrollBar::PageTowardPointer() {
  const Point pointer = GetMousePos();
  const Point gripPos = grip.GetRelativePos();
  const int at = IsHorizontal() ? pointer.x : pointer.y;
  const int start = IsHorizontal() ? gripPos.x : gripPos.y;
  const int length = IsHorizontal() ? grip.w() : grip.h();
  const double page = std::max(1.0, (max - min) * kTrackStep);
  const double step = at < start ? -page : at > start + length ? page : 0;
  const int before = GetPosition();
  const int after = RoundToInt(std::clamp(value + step, min, std::max(min, max)));
  if (after == before) return;
  SetPosition(after);
  TellChange(before);
}

double ScrollBar::DraggedValue() const {
  const Point pointer = GetMousePos();
  const int at = IsHorizontal() ? pointer.x - grab.x : pointer.y - grab.y;
  const int gripLength = IsHorizontal() ? grip.w() : grip.h();
  const int trackLength = IsHorizontal() ? track.w() : track.h();
  if (trackLength <= gripLength) return value;
  const int gripStart = at - gripLength / 2 - ArrowExtents().less;
  return gripStart * (max - min) / (trackLength - gripLength);
}

void ScrollBar::ScrollByKeyOrDrag(int scancode) {
  double wanted = value;
  switch (scancode) {
    case KEY_HOME:
      wanted = min;
      break;
    case KEY_END:
      wanted = max;
      break;
    case KEY_PGUP:
      wanted = value - pageSize;
      break;
    case KEY_PGDN:
      wanted = value + pageSize;
      break;
    case KEY_LEFT:
      if (IsHorizontal()) wanted = value - 1;
      break;
    case KEY_RIGHT:
      if (IsHorizontal()) wanted = value + 1;
      break;
    case KEY_UP:
      if (!IsHorizontal()) wanted = value - 1;
      break;
    case KEY_DOWN:
      if (!IsHorizontal()) wanted = value + 1;
      break;
    case kDragged:
      wanted = DraggedValue();
      break;
  }
  const int before = GetPosition();
  const int after = RoundToInt(std::trunc(std::clamp(wanted, min, std::max(min, max))));
  if (after == before) return;
  SetPosition(after);
  Report(MSG_SCROLL, after);
}

void ScrollBar::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  const int before = GetPosition();
  if (msg == MSG_ACTIVATE && sender == &lessButton) {
    Decrement();
    TellChange(before);
  } else if (msg == MSG_ACTIVATE && sender == &moreButton) {
    Increment();
    TellChange(before);
  } else if (msg == MSG_ACTIVATE && sender == &track && !grip.HasMouse()) {
    PageTowardPointer();
  } else if (msg == MSG_LPRESS && sender == &grip) {
    grab = {static_cast<int>(arg1), static_cast<int>(arg2)};
  } else if (msg == MSG_SCROLL && sender == &grip) {
    ScrollByKeyOrDrag(static_cast<int>(arg1));
  } else if (msg == MSG_WHEEL) {
    ScrollByWheel(static_cast<int>(arg1));
  }
  Dialog::HandleEvent(sender, msg, arg1, arg2);
}

}  // namespace zel
