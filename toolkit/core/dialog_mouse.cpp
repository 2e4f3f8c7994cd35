// How a dialog routes the mouse: presses, movement, dragging, and which child is under the pointer.
#include <algorithm>
#include <utility>

#include "toolkit/core/dialog.h"
#include "toolkit/core/loop_state.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/core/settings.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

enum Button : int { kLeftButton = 1, kRightButton = 2, kMiddleButton = 4 };

struct ButtonRow {
  int button;
  DoubleClick once;
  void (Widget::*press)();
  void (Widget::*release)();
};
constexpr ButtonRow kButtons[] = {
    {kLeftButton, DoubleClick::kLeftOnce, &Widget::MsgLPress, &Widget::MsgLRelease},
    {kRightButton, DoubleClick::kRightOnce, &Widget::MsgRPress, &Widget::MsgRRelease},
    {kMiddleButton, DoubleClick::kMiddleOnce, &Widget::MsgMPress, &Widget::MsgMRelease},
};

struct DragRow {
  int cursor;
  bool left, right, top, bottom;  // the edges that follow the pointer
};
constexpr DragRow kDragRows[] = {
    {MOUSE_NORMAL, false, false, false, false},
    {MOUSE_NORMAL, false, false, false, false},
    {MOUSE_SIZE_DIAGONAL1, true, false, true, false},
    {MOUSE_SIZE_DIAGONAL2, false, true, true, false},
    {MOUSE_SIZE_DIAGONAL2, true, false, false, true},
    {MOUSE_SIZE_DIAGONAL1, false, true, false, true},
    {MOUSE_SIZE_VERTICAL, false, false, true, false},
    {MOUSE_SIZE_VERTICAL, false, false, false, true},
    {MOUSE_SIZE_HORIZONTAL, true, false, false, false},
    {MOUSE_SIZE_HORIZONTAL, false, true, false, false},
};

// What the skin's "focus" value means.
enum FocusRule : int { kFocusFollowsPointer = 0, kFocusGoesToWilling = 1 };

// A dragged dialog never leaves the left or the top edge.
int KeepOnScreen(int coordinate) { return coordinate < 1 ? 0 : coordinate; }

}  // namespace

Dialog* Dialog::InputTarget() {
  Dialog* popup = AsDialog(focus);
  return popup && popup->TestFlag(kFlagPoppedUp) ? popup : this;
}

void Dialog::HandleMouse() {
  if (!mousePointer) return;
  Dialog* target = InputTarget();
  const Point position = mousePointer->GetMousePosition();
  const int buttons = mousePointer->GetButtons();
  const int wheel = mousePointer->GetWheel();
  poll_mouse();
  mousePointer->Update();

  target->DispatchButtons(buttons, mousePointer->GetButtons());
  target->CountDoubleClick(mousePointer->GetButtons() & ~buttons);
  const Point moved = mousePointer->GetMousePosition();
  if (moved != position) target->MsgMouseMove({moved.x - position.x, moved.y - position.y});
  if (mousePointer->GetWheel() != wheel) target->MsgWheel(mousePointer->GetWheel() - wheel);
}

void Dialog::DispatchButtons(int before, int now) {
  for (const ButtonRow& row : kButtons) {
    const bool wasDown = before & row.button;
    const bool isDown = now & row.button;
    if (isDown && !wasDown) {
      MsgClick();
      (this->*row.press)();
    } else if (wasDown && !isDown) {
      (this->*row.release)();
    }
  }
}

void Dialog::CountDoubleClick(int pressed) {
  if (loopState.doubleClick == DoubleClick::kDetected) {
    loopState.doubleClick = DoubleClick::kNone;
    loopState.doubleClickCounter = 0;
    MsgDClick();
    return;
  }
  for (const ButtonRow& row : kButtons) {
    if (loopState.doubleClick == DoubleClick::kNone && (pressed & row.button)) {
      loopState.doubleClick = row.once;
      return;
    }
    if (loopState.doubleClick == row.once && (pressed & row.button)) {
      loopState.doubleClick = DoubleClick::kDetected;
      return;
    }
  }
  if (loopState.doubleClick == DoubleClick::kNone) return;
  if (++loopState.doubleClickCounter < loopState.doubleClickWindow) return;
  loopState.doubleClick = DoubleClick::kNone;
  loopState.doubleClickCounter = 0;
}

void Dialog::MsgClick() {
  Widget::MsgClick();
  if (!mouse) return;
  Widget* clicked = mouse;
  if (clicked != focus && clicked->MsgWantFocus()) ChangeFocus(focus, clicked);
  clicked->MsgClick();
}

void Dialog::MsgDClick() {
  Widget::MsgDClick();
  if (mouse) mouse->MsgDClick();
}

Widget* Dialog::CapturingChild() const {
  return focus && focus != mouse && focus->TestFlag(kFlagPressed) ? focus : nullptr;
}

void Dialog::RoutePress(Handler handler) {
  if (Widget* capturing = CapturingChild()) (capturing->*handler)();
  if (mouse) (mouse->*handler)();
}

void Dialog::MsgLPress() {
  Widget::MsgLPress();
  pressPosition = GetMousePos();
  SetFlag(kFlagPressed);
  RoutePress(&Widget::MsgLPress);
}

void Dialog::MsgLRelease() {
  Widget::MsgLRelease();
  ClearFlag(kFlagPressed);
  RoutePress(&Widget::MsgLRelease);
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
  RoutePress(&Widget::MsgMRelease);
}

void Dialog::MsgRRelease() {
  Widget::MsgRRelease();
  RoutePress(&Widget::MsgRRelease);
}

void Dialog::MsgWheel(int steps) {
  Widget::MsgWheel(steps);
  if (mouse) mouse->MsgWheel(steps);
}

int Dialog::GetDragMode() {
  if (IsRoot()) return kDragNone;
  return mouse != focus ? kDragMove : kDragNone;
}

void Dialog::DragEdges(int dx, int dy) {
  const DragRow& row = kDragRows[dragMode];
  const int right = relPos.x + w();
  const int bottom = relPos.y + h();
  if (row.left || row.right) {
    const int wanted = row.left ? right - KeepOnScreen(relPos.x + dx) : w() + dx;
    const int width = std::max(minWidth, wanted);
    if (row.right) pressPosition.x += width - w();
    SetW(width);
    if (row.left) SetX(right - width);
  }
  if (row.top || row.bottom) {
    const int wanted = row.top ? bottom - KeepOnScreen(relPos.y + dy) : h() + dy;
    const int height = std::max(minHeight, wanted);
    if (row.bottom) pressPosition.y += height - h();
    SetH(height);
    if (row.top) SetY(bottom - height);
  }
  MsgShape();
}

void Dialog::Drag() {
  const Point pointer = GetMousePos();
  const int dx = pointer.x - pressPosition.x;
  const int dy = pointer.y - pressPosition.y;
  if (dragMode == kDragMove) {
    if (!TestFlag(kFlagMovable)) return;
    Place(KeepOnScreen(relPos.x + dx), KeepOnScreen(relPos.y + dy));
    MsgMove();
  } else if (TestFlag(kFlagSizeable)) {
    DragEdges(dx, dy);
  }
  // What the dialog covered before must show again.
  GetRoot()->Redraw();
}

void Dialog::MsgMouseMove(Point delta) {
  Widget::MsgMouseMove(delta);
  if (!TestFlag(kFlagPressed)) {
    const int mode = GetDragMode();
    // A dialog inside that drags nothing leaves the shape to the dialog around it.
    const int shapeBefore = kDragRows[std::exchange(dragMode, mode)].cursor;
    if (kDragRows[mode].cursor != shapeBefore) SetCursor(kDragRows[mode].cursor);
  } else if (dragMode != kDragNone) {
    Drag();
  }
  if (Widget* capturing = CapturingChild()) capturing->MsgMouseMove(delta);
  if (mouse) mouse->MsgMouseMove(delta);
  FollowPointer();
}

void Dialog::FollowPointer() {
  Widget* before = MouseWidget();
  Widget* found = FindUnderPointer();
  if (found == before) return;
  SetMousePath(found);
  MoveFocusWithPointer(found);
  if (found) found->MsgMouseMove({0, 0});
}

void Dialog::MoveFocusWithPointer(Widget* underPointer) {
  if (!skin || (focus && focus->TestFlag(kFlagPressed))) return;
  Widget* current = FocusWidget();
  if (underPointer == current) return;
  if (skin->focus == kFocusFollowsPointer)
    ChangeFocus(current, underPointer);
  else if (skin->focus == kFocusGoesToWilling && underPointer && underPointer->MsgWantFocus())
    ChangeFocus(current, underPointer);
}

Widget* Dialog::FindUnderPointer() {
  for (std::size_t i = children.size(); i-- > 0;) {
    Widget* child = children[i];
    if (child->Hidden() || child->Disabled()) continue;
    if (Dialog* dialog = AsDialog(child))
      if (Widget* found = dialog->FindUnderPointer()) return found;
    const Point pointer = child->GetMousePos();
    const bool inside = Rect{0, 0, child->w(), child->h()}.Contains(pointer);
    if (inside && child->MsgWantMouse()) return child;
  }
  return nullptr;
}

void Dialog::SetMousePath(Widget* deepest) {
  Widget* direct = deepest;
  while (direct && direct->GetParent() != this) {
    direct = direct->GetParent();
    if (direct && direct->GetParent() == direct) direct = nullptr;
  }
  if (direct != mouse) {
    Widget* left = mouse;
    mouse = direct;
    if (Dialog* dialog = AsDialog(left)) dialog->SetMousePath(nullptr);
    if (left) left->MsgLostMouse();
    if (direct) direct->MsgGotMouse();
  }
  if (Dialog* dialog = AsDialog(mouse)) dialog->SetMousePath(deepest == mouse ? nullptr : deepest);
}

}  // namespace zel
