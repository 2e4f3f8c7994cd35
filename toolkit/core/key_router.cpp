#include "toolkit/core/key_router.h"

#include <vector>

#include "toolkit/base/input.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/mouse_pointer.h"

namespace zel {
namespace {

constexpr int kEnter = 13;
constexpr int kLineFeed = 10;
constexpr int kSpace = 32;
constexpr int kEscape = 27;

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

}  // namespace

bool KeyRouter::OfferToFocus(int code, int character, int scancode) {
  Widget* target = IfUsable(dialog_.focus);
  if (!target) return false;
  if (Dialog* inner = AsDialog(target))
    if (inner->HandleKey(character, scancode)) return true;
  if (dialog_.focus == target && target->SendMessage(MSG_CHAR, code) == kMessageUsed) return true;
  return dialog_.focus == target && target->SendMessage(MSG_UCHAR, character) == kMessageUsed;
}

bool KeyRouter::OfferToChildren(int code) {
  for (Widget* child : std::vector<Widget*>(dialog_.children)) {
    if (!dialog_.HasChild(child) || !IfUsable(child)) continue;
    if (child->SendMessage(MSG_XCHAR, code) == kMessageUsed) return true;
  }
  return false;
}

bool KeyRouter::OfferShortcut(int character, int scancode) {
  for (Widget* child : dialog_.children) {
    const int shortcut = child->GetKey();
    const bool byCharacter =
        character < 256 && shortcut > 0 && utolower(shortcut) == utolower(character);
    const bool byScancode = character == 0 && shortcut != 0 && shortcut == scancode * 256;
    if (!byCharacter && !byScancode) continue;
    // Who cannot be used now keeps it from the others.
    if (IfUsable(child)) child->MsgKey();
    return true;
  }
  return false;
}

bool KeyRouter::TakeForDialog(int character, int scancode) {
  if (!dialog_.IsRoot() && !dialog_.IsWindow()) return false;
  if (character == kEscape && dialog_.escapeCloses) {
    dialog_.Close();
    if (dialog_.closed && dialog_.focus) dialog_.DropFocus(dialog_.focus);
    return true;
  }
  for (const MoveKey& row : kMoveKeys) {
    if (row.scancode != scancode) continue;
    // A widget that is pressed with the mouse has to see the release.
    const MousePointer* pointer = CurrentPointer();
    if (pointer && pointer->GetButtons() != 0 && dialog_.FocusIsPressed()) return true;
    const bool backward = row.move == FocusMove::kNext && (Shifts() & KB_SHIFT_FLAG);
    dialog_.MoveFocus(backward ? FocusMove::kPrevious : row.move);
    return true;
  }
  return false;
}

bool KeyRouter::Route(int character, int scancode) {
  const int code = KeyCode(character, scancode);
  if (OfferToFocus(code, character, scancode)) return true;
  if (OfferShortcut(character, scancode)) return true;
  if (OfferToChildren(code)) return true;
  const bool chooses = character == kEnter || character == kLineFeed || character == kSpace;
  if (Widget* chosen = chooses ? IfUsable(dialog_.focus) : nullptr) {
    chosen->MsgKey();
    return true;
  }
  return TakeForDialog(character, scancode);
}

}  // namespace zel
