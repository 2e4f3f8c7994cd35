// How a dialog routes the keyboard and moves the focus.
#include <algorithm>
#include <cstdlib>

#include "toolkit/base/input.h"
#include "toolkit/base/settings.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/loop_state.h"
#include "toolkit/core/mouse_pointer.h"

namespace zel {
namespace {

// A character that does not fit the low byte of a key code.
constexpr int kWideCharacter = 94;

constexpr int kEnter = 13;
constexpr int kLineFeed = 10;
constexpr int kSpace = 32;
constexpr int kEscape = 27;

// What a candidate for the focus costs that lies in the wrong direction.
constexpr int kWrongDirection = 65536;

struct MoveKey {
  int scancode;
  FocusMove move;
};
constexpr MoveKey kMoveKeys[] = {
    {KEY_TAB, FocusMove::kNext},  {KEY_RIGHT, FocusMove::kRight}, {KEY_LEFT, FocusMove::kLeft},
    {KEY_DOWN, FocusMove::kDown}, {KEY_UP, FocusMove::kUp},
};

int KeyCode(int character, int scancode) {
  return (character < 256 ? character : kWideCharacter) + scancode * 256;
}

// How far `candidate` lies from `current` in the direction of the move; the smallest score wins.
int Score(FocusMove move, const Widget& current, const Widget& candidate) {
  const int dx = candidate.x() - current.x();
  const int dy = candidate.y() - current.y();
  const auto directed = [](int along, int across) {
    return along + 2 * std::abs(across) + (along > 0 ? 0 : kWrongDirection);
  };
  const auto ordered = [](int distance) { return distance + (distance < 0 ? kWrongDirection : 0); };
  const int order =
      static_cast<int>(candidate.CreationOrder()) - static_cast<int>(current.CreationOrder());
  switch (move) {
    case FocusMove::kNext:
      return ordered(order);
    case FocusMove::kPrevious:
      return ordered(-order);
    case FocusMove::kRight:
      return directed(dx, dy);
    case FocusMove::kLeft:
      return directed(-dx, dy);
    case FocusMove::kDown:
      return directed(dy, dx);
    case FocusMove::kUp:
      return directed(-dy, dx);
  }
  return 0;
}

// Joystick inputs stand for keys.
int ActiveJoystickKey() {
  const JOYSTICK_INFO& stick = joy[0];
  if (stick.stick[0].axis[0].d1) return KEY_LEFT;
  if (stick.stick[0].axis[0].d2) return KEY_RIGHT;
  if (stick.stick[0].axis[1].d1) return KEY_UP;
  if (stick.stick[0].axis[1].d2) return KEY_DOWN;
  if (stick.button[0].b || stick.button[1].b) return KEY_SPACE;
  return 0;
}

}  // namespace

bool Dialog::HandleJoystick() {
  if (!settings.useJoystick || num_joysticks < 1) return false;
  const unsigned tick = 1000u / static_cast<unsigned>(settings.UsableFrameRate());
  if (joystickHeld) rest(tick);
  poll_joystick();
  const int scancode = ActiveJoystickKey();
  if (joystickHeld) {
    if (scancode == 0) {
      joystickHeld = false;
      rest(tick);
    }
    return false;
  }
  if (scancode == 0) return false;
  joystickHeld = true;
  HandleKey(0, scancode);
  return true;
}

void Dialog::HandleKeyboard() {
  Dialog* target = InputTarget();
  if (target->closed) return;
  if (target->HandleJoystick() || !keypressed()) return;
  int scancode = 0;
  const int character = ureadkey(&scancode);
  target->HandleKey(character, scancode);
}

bool Dialog::OfferToFocus(int code, int character, int scancode) {
  Widget* target = IfUsable(focus);
  if (!target) return false;
  if (Dialog* dialog = AsDialog(target))
    if (dialog->HandleKey(character, scancode)) return true;
  if (focus == target && target->SendMessage(MSG_CHAR, code) == kMessageUsed) return true;
  return focus == target && target->SendMessage(MSG_UCHAR, character) == kMessageUsed;
}

bool Dialog::OfferToChildren(int code) {
  for (Widget* child : std::vector<Widget*>(children)) {
    if (!IsChild(child) || !IfUsable(child)) continue;
    if (child->SendMessage(MSG_XCHAR, code) == kMessageUsed) return true;
  }
  return false;
}

bool Dialog::HandleShortcut(int character, int scancode) {
  for (Widget* child : children) {
    const int shortcut = child->GetKey();
    const bool byCharacter = character > 0 && character < 256 && shortcut > 0 &&
                             utolower(shortcut) == utolower(character);
    const bool byScancode = character == 0 && shortcut != 0 && shortcut == scancode * 256;
    if (!byCharacter && !byScancode) continue;
    // Who cannot be used now keeps it from the others.
    if (IfUsable(child)) child->MsgKey();
    return true;
  }
  return false;
}

bool Dialog::HandleDialogKey(int character, int scancode) {
  if (!IsRoot() && !IsWindow()) return false;
  if (character == kEscape && escapeCloses) {
    Close();
    if (closed && focus) DropFocus(focus);
    return true;
  }
  for (const MoveKey& row : kMoveKeys) {
    if (row.scancode != scancode) continue;
    // A widget that is pressed with the mouse has to see the release.
    const MousePointer* pointer = CurrentPointer();
    if (pointer && pointer->GetButtons() != 0 && FocusIsPressed()) return true;
    const bool backward = row.move == FocusMove::kNext && (Shifts() & KB_SHIFT_FLAG);
    MoveFocus(backward ? FocusMove::kPrevious : row.move);
    return true;
  }
  return false;
}

bool Dialog::HandleKey(int character, int scancode) {
  const int code = KeyCode(character, scancode);
  if (OfferToFocus(code, character, scancode)) return true;
  if (HandleShortcut(character, scancode)) return true;
  if (OfferToChildren(code)) return true;
  const bool chooses = character == kEnter || character == kLineFeed || character == kSpace;
  if (Widget* chosen = chooses ? IfUsable(focus) : nullptr) {
    chosen->MsgKey();
    return true;
  }
  return HandleDialogKey(character, scancode);
}

void Dialog::CollectCandidates(const Widget* leftOut, std::vector<Candidate>& candidates) {
  for (Widget* child : children) {
    if (!IfUsable(child) || child->IsWindow()) continue;
    if (Dialog* dialog = AsDialog(child))
      dialog->CollectCandidates(leftOut, candidates);
    else if (child != leftOut)
      candidates.push_back({child, static_cast<int>(candidates.size())});
  }
}

void Dialog::MoveFocus(FocusMove move) {
  Widget* current = GetRoot()->FocusWidget();
  const bool byTab = move == FocusMove::kNext || move == FocusMove::kPrevious;
  std::vector<Candidate> candidates;
  CollectCandidates(byTab ? current : nullptr, candidates);
  if (current)
    for (Candidate& candidate : candidates)
      candidate.score = Score(move, *current, *candidate.widget);
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const Candidate& a, const Candidate& b) { return a.score < b.score; });
  for (const Candidate& candidate : candidates) {
    if (!Contains(candidate.widget) || !candidate.widget->MsgWantTab()) continue;
    if (candidate.widget != current) ChangeFocus(FocusWidget(), candidate.widget);
    return;
  }
}

bool Dialog::MsgWantFocus() {
  Report(MSG_WANTFOCUS);
  return true;
}

void Dialog::MsgGotFocus() {
  SetFlag(kFlagFocus);
  Report(MSG_GOTFOCUS);
  if (Widget* last = Loop().lastFocus; !focus && Contains(last)) SetFocus(last);
}

void Dialog::MsgLostFocus() {
  ClearFlag(kFlagFocus);
  Report(MSG_LOSTFOCUS);
  if (focus) DropFocus(focus);
}

void Dialog::SetFocus(Widget* widget) {
  if (widget == this || !Contains(widget) || !IfUsable(widget)) return;
  // Whoever is told may take it out or destroy it.
  if (!widget->MsgWantFocus() || !Contains(widget)) return;
  for (Widget* focused = widget; focused != this;) {
    Dialog* container = focused->GetParent();
    if (!container || container == focused) return;
    if (container->focus && container->focus != focused) container->DropFocus(container->focus);
    if (!container->IsChild(focused)) return;
    if (container->focus != focused || !focused->HasFocus()) {
      container->focus = focused;
      focused->MsgGotFocus();
    }
    // Unless the handler took it away again.
    if (container->focus == focused && focused->IsWindow()) container->BringToFront(focused);
    focused = container;
  }
}

void Dialog::DropFocus(Widget* widget) {
  if (Dialog* dialog = AsDialog(widget))
    if (dialog->focus) dialog->DropFocus(dialog->focus);
  if (widget->TestFlag(kFlagPoppedUp)) return;
  if (!widget->IsContainer()) Loop().lastFocus = widget;
  for (Widget* losing = widget; losing != this;) {
    Dialog* container = losing->GetParent();
    if (!container || container == losing) return;
    if (container->focus == losing) container->focus = nullptr;
    losing->MsgLostFocus();
    losing = container;
  }
}

void Dialog::ChangeFocus(Widget* oldFocus, Widget* newFocus) {
  if (oldFocus) DropFocus(oldFocus);
  SetFocus(newFocus);
  if (IsRoot() || !parent || !focus || parent->focus == this) return;
  parent->ChangeFocus(parent->focus, this);
}

}  // namespace zel
