// How a dialog routes the mouse: presses, movement, dragging, and which child is under the pointer.
#include <algorithm>
#include <utility>

#include "toolkit/base/input.h"
#include "toolkit/base/settings.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/loop_state.h"
#include "toolkit/core/mouse_pointer.h"
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

// True when the presses mean something for the double click.
bool NotePress(int pressed) {
  DoubleClick& state = Loop().doubleClick;
  for (const ButtonRow& row : kButtons) {
    if (!(pressed & row.button)) continue;
    if (state == DoubleClick::kNone) {
      state = row.once;
      return true;
    }
    if (state == row.once) {
      state = DoubleClick::kDetected;
      return true;
    }
  }
  return false;
}

// A press between two ticks belongs to the second one. True when that is a double click's, which
// comes with the tick after its press.
bool CountDoubleClick(int pressed, bool inTick) {
  LoopState& loop = Loop();
  const bool isDouble =
      inTick && loop.doubleClick == DoubleClick::kDetected && !loop.pressedSinceTick;
  if (isDouble) return true;
  if (NotePress(pressed)) loop.pressedSinceTick = true;
  if (!inTick || std::exchange(loop.pressedSinceTick, false)) return false;
  if (loop.doubleClick == DoubleClick::kNone) return false;
  if (++loop.doubleClickCounter >= loop.doubleClickWindow) loop.ForgetPresses();
  return false;
}

}  // namespace

void Dialog::HandleMouse() {
  MousePointer* pointer = CurrentPointer();
  if (!pointer || InputTarget()->closed) return;
  const MouseState before = pointer->State();
  if (mouse_needs_poll()) poll_mouse();
  pointer->Update();
  // What has been recorded meanwhile is told from the records.
  if (InputWaits()) pointer->Follow(before);
  TellMouse(before, true);
}

void Dialog::TellMouse(const MouseState& before, bool inTick) {
  Dialog* target = InputTarget();
  // Taken now: what follows may run a popup, which gets what happens meanwhile.
  const MouseState now = CurrentPointer()->State();
  const int pressed = now.buttons & ~before.buttons;
  const int turned = now.wheel - before.wheel;
  const Point moved{now.position.x - before.position.x, now.position.y - before.position.y};

  // Under the resting pointer, widgets may have come, gone, or become able to be pressed.
  Widget* under = target->MouseWidget();
  const bool restsAndActs = moved == Point{} && (pressed != 0 || turned != 0);
  if (restsAndActs || (under && !IfUsable(under))) target->FollowPointer();
  if (target->closed) return;
  const bool isDouble = CountDoubleClick(pressed, inTick);
  target->DispatchButtons(before.buttons, now.buttons);
  // Unless a popup came in between.
  if (isDouble && Loop().doubleClick == DoubleClick::kDetected) {
    Loop().ForgetPresses();
    if (!target->closed) target->MsgDClick();
  }
  if (target->closed) return;
  if (moved != Point{}) target->MsgMouseMove(moved);
  if (turned != 0) target->MsgWheel(turned);
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

void Dialog::DragEdges(int dx, int dy) {
  const DragRow& row = kDragRows[dragMode];
  const int right = relPos.x + w();
  const int bottom = relPos.y + h();
  if (row.left || row.right) {
    const int wanted = row.left ? right - KeepOnScreen(relPos.x + dx) : w() + dx;
    const int width = std::max(minWidth, wanted);
    if (row.right) pressPosition.x += width - w();
    SetW(width);
    if (row.left) SetX(KeepOnScreen(right - width));
  }
  if (row.top || row.bottom) {
    const int wanted = row.top ? bottom - KeepOnScreen(relPos.y + dy) : h() + dy;
    const int height = std::max(minHeight, wanted);
    if (row.bottom) pressPosition.y += height - h();
    SetH(height);
    if (row.top) SetY(KeepOnScreen(bottom - height));
  }
  MsgShape();
}

void Dialog::Drag() {
  const Point pointer = GetMousePos();
  const int dx = pointer.x - pressPosition.x;
  const int dy = pointer.y - pressPosition.y;
  if (!TestFlag(dragMode == kDragMove ? kFlagMovable : kFlagSizeable)) return;
  const Point before = relPos;
  if (dragMode == kDragMove) {
    Place(KeepOnScreen(relPos.x + dx), KeepOnScreen(relPos.y + dy));
    MsgMove();
  } else {
    DragEdges(dx, dy);
  }
  // The pointer leaves a root, which stays where it is.
  if (IsRoot())
    pressPosition = {pressPosition.x + relPos.x - before.x, pressPosition.y + relPos.y - before.y};
  // What the dialog covered before must show again.
  GetRoot()->Redraw();
}

void Dialog::SetDragMode(int mode) {
  // A dialog inside that drags nothing leaves the shape to the dialog around it.
  const int shapeBefore = kDragRows[std::exchange(dragMode, mode)].cursor;
  if (kDragRows[mode].cursor != shapeBefore) SetCursor(kDragRows[mode].cursor);
}

void Dialog::MsgMouseMove(Point delta) {
  Widget::MsgMouseMove(delta);
  if (!TestFlag(kFlagPressed))
    SetDragMode(GetDragMode());
  else if (dragMode != kDragNone)
    Drag();
  if (Widget* capturing = CapturingChild()) capturing->MsgMouseMove(delta);
  if (mouse) mouse->MsgMouseMove(delta);
  if (TakesInput()) FollowPointer(delta);
}

void Dialog::FindMouseAtStart() {
  UpdateDoubleClickWindow();
  Dialog* input = this;
  while (input && !input->TakesInput()) input = input->parent;
  // What lies below a popup gets nothing meanwhile.
  if (!input || input->InputTarget() != input) return;
  Widget* found = input->FindMousePath();
  // Inside another dialog, presses go on counting, and that one looks for what is not in here.
  if (input == this)
    Loop().ForgetPresses();
  else if (!ChildTowards(found))
    return;
  GetRoot()->SetMousePath(found);
  if (focus) return;
  Dialog* outermost = this;  // that has no focus either
  while (outermost != input && !outermost->parent->focus) outermost = outermost->parent;
  outermost->SetFocus(MouseWidget());
}

void Dialog::FollowPointer(Point delta) {
  Dialog* root = GetRoot();
  Widget* found = FindMousePath();
  if (found == root->MouseWidget()) return;
  // The dialog down to which the path stays as it is.
  Dialog* fork = root;
  while (Dialog* inner = AsDialog(fork->mouse)) {
    if (fork->ChildTowards(found) != inner) break;
    fork = inner;
  }
  root->SetMousePath(found);
  if (root->MouseWidget() != found) return;  // a handler has destroyed it
  MoveFocusWithPointer(found == this ? nullptr : found);
  if (root->Contains(fork) && fork->mouse) fork->mouse->MsgMouseMove(delta);
}

bool Dialog::FocusIsPressed() const {
  return focus && (focus->TestFlag(kFlagPressed) || FocusWidget()->TestFlag(kFlagPressed));
}

void Dialog::MoveFocusWithPointer(Widget* underPointer) {
  Widget* current = FocusWidget();
  if (!skin || underPointer == current) return;
  if (FocusIsPressed()) return;
  const bool goesToWilling = skin->focus == kFocusGoesToWilling;
  if (skin->focus != kFocusFollowsPointer && !goesToWilling) return;
  if (goesToWilling && !(underPointer && underPointer->MsgWantFocus())) return;
  // Where both lie in one dialog, the focus need not leave it.
  Dialog* shared = this;
  while (Dialog* inner = AsDialog(shared->focus)) {
    if (inner == underPointer || !inner->Contains(underPointer)) break;
    shared = inner;
  }
  shared->ChangeFocus(shared->FocusWidget(), underPointer);
}

Widget* Dialog::UnderPointer(Widget* child) {
  if (!IfUsable(child)) return nullptr;
  if (Dialog* dialog = AsDialog(child))
    if (Widget* found = dialog->FindUnderPointer()) return found;
  const bool inside = Rect{0, 0, child->w(), child->h()}.Contains(child->GetMousePos());
  return inside && child->MsgWantMouse() ? child : nullptr;
}

Widget* Dialog::FindUnderPointer() {
  // Who is asked may destroy some.
  for (std::size_t i = children.size(); i > 0; i = std::min(i - 1, children.size()))
    if (Widget* found = UnderPointer(children[i - 1])) return found;
  return nullptr;
}

Widget* Dialog::FindMousePath() { return IsRoot() ? FindUnderPointer() : UnderPointer(this); }

void Dialog::TakeInputBack() {
  Loop().ForgetPresses();
  const MousePointer* pointer = CurrentPointer();
  if (!settings.showMouse || !pointer) return;
  if (TestFlag(kFlagPressed) && !(pointer->GetButtons() & kLeftButton)) MsgLRelease();
  GetRoot()->SetMousePath(FindMousePath());
}

void Dialog::SetMousePath(const Widget* deepest) {
  Widget* direct = ChildTowards(deepest);
  if (direct != mouse) {
    Widget* left = std::exchange(mouse, direct);
    if (Dialog* dialog = AsDialog(left)) dialog->SetMousePath(nullptr);
    if (IsChild(left)) left->MsgLostMouse();
    if (direct && mouse == direct) direct->MsgGotMouse();
  }
  if (Dialog* dialog = AsDialog(mouse)) dialog->SetMousePath(deepest);
}

}  // namespace zel
