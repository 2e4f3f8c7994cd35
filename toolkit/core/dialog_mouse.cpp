// What a dialog does with presses and moves: it hands them on to its children, or is dragged
// itself.
#include <utility>

#include "toolkit/core/dialog.h"
#include "toolkit/core/mouse_path.h"

namespace zel {

void Dialog::MsgClick() {
  Widget::MsgClick();
  Widget* clicked = IfUsable(mouse);
  if (!clicked) return;
  if (clicked != focus && clicked->MsgWantFocus()) ChangeFocus(focus, clicked);
  if (mouse == clicked) clicked->MsgClick();
}

void Dialog::MsgDClick() {
  Widget::MsgDClick();
  if (Widget* clicked = IfUsable(mouse)) clicked->MsgDClick();
}

Widget* Dialog::CapturingChild() const {
  return focus && focus != mouse && focus->TestFlag(kFlagPressed) ? focus : nullptr;
}

void Dialog::RoutePress(Handler handler) {
  if (Widget* capturing = CapturingChild()) (capturing->*handler)();
  if (Widget* pressed = IfUsable(mouse)) (pressed->*handler)();
}

// Whoever saw the press sees the release too.
void Dialog::RouteRelease(Handler handler) {
  if (Widget* capturing = CapturingChild()) (capturing->*handler)();
  if (mouse) (mouse->*handler)();
}

void Dialog::MsgLPress() {
  Widget::MsgLPress();
  pressPosition = GetMousePos();
  // The dialog may have changed its shape under the resting pointer.
  SetDragMode(GetDragMode());
  SetFlag(kFlagPressed);
  RoutePress(&Widget::MsgLPress);
}

void Dialog::MsgLRelease() {
  Widget::MsgLRelease();
  ClearFlag(kFlagPressed);
  RouteRelease(&Widget::MsgLRelease);
}

void Dialog::MsgMPress() {
  Widget::MsgMPress();
  RoutePress(&Widget::MsgMPress);
}

void Dialog::MsgRPress() {
  Widget::MsgRPress();
  RoutePress(&Widget::MsgRPress);
}

void Dialog::MsgMRelease() {
  Widget::MsgMRelease();
  RouteRelease(&Widget::MsgMRelease);
}

void Dialog::MsgRRelease() {
  Widget::MsgRRelease();
  RouteRelease(&Widget::MsgRRelease);
}

void Dialog::MsgWheel(int steps) {
  Widget::MsgWheel(steps);
  if (Widget* turned = IfUsable(mouse)) turned->MsgWheel(steps);
}

int Dialog::GetDragMode() {
  if (IsRoot()) return kDragNone;
  return mouse != focus ? kDragMove : kDragNone;
}

void Dialog::Drag() {
  const DragEdges edges = EdgesOf(dragMode);
  if (!TestFlag(dragMode == kDragMove ? kFlagMovable : kFlagSizeable)) return;
  const Point pointer = GetMousePos(), before = relPos;
  const Rect shape{relPos.x, relPos.y, w(), h()};
  const Point delta{pointer.x - pressPosition.x, pointer.y - pressPosition.y};
  const Rect wanted = Dragged(dragMode, shape, delta, {minWidth, minHeight});
  if (dragMode == kDragMove) {
    Place(wanted.x, wanted.y);
    MsgMove();
  } else {
    // The press goes with what it dragged, unless that is where positions count from.
    if (edges.right) pressPosition.x += wanted.w - shape.w;
    if (edges.bottom) pressPosition.y += wanted.h - shape.h;
    if (edges.left || edges.right) SetW(wanted.w);
    if (edges.left) SetX(wanted.x);
    if (edges.top || edges.bottom) SetH(wanted.h);
    if (edges.top) SetY(wanted.y);
    MsgShape();
  }
  // The pointer leaves a root, which stays where it is.
  if (IsRoot())
    pressPosition = {pressPosition.x + relPos.x - before.x, pressPosition.y + relPos.y - before.y};
  // What the dialog covered before must show again.
  GetRoot()->Redraw();
}

void Dialog::SetDragMode(int mode) {
  // A dialog inside that drags nothing leaves the shape to the dialog around it.
  const int shapeBefore = DragCursor(std::exchange(dragMode, mode));
  if (DragCursor(mode) != shapeBefore) SetCursor(DragCursor(mode));
}

void Dialog::MsgMouseMove(Point delta) {
  Widget::MsgMouseMove(delta);
  if (!TestFlag(kFlagPressed))
    SetDragMode(GetDragMode());
  else if (dragMode != kDragNone)
    Drag();
  if (Widget* capturing = CapturingChild()) capturing->MsgMouseMove(delta);
  if (mouse) mouse->MsgMouseMove(delta);
  if (TakesInput()) MousePath{*this}.Follow(delta);
}

}  // namespace zel
