#include "toolkit/core/mouse_path.h"

#include <algorithm>
#include <utility>

#include "toolkit/base/settings.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/event_loop.h"
#include "toolkit/core/input_router.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

// What the skin's "focus" value means.
enum FocusRule : int { kFocusFollowsPointer = 0, kFocusGoesToWilling = 1 };

Widget* FindIn(const Dialog& dialog);

// The child, or what lies in it, if the pointer is there.
Widget* UnderPointer(Widget* child) {
  if (!IfUsable(child)) return nullptr;
  if (const Dialog* dialog = AsDialog(child))
    if (Widget* found = FindIn(*dialog)) return found;
  const bool inside = Rect{0, 0, child->w(), child->h()}.Contains(child->GetMousePos());
  return inside && child->MsgWantMouse() ? child : nullptr;
}

Widget* FindIn(const Dialog& dialog) {
  const std::vector<Widget*>& children = dialog.Children();
  // Who is asked may destroy some.
  for (std::size_t i = children.size(); i > 0; i = std::min(i - 1, children.size()))
    if (Widget* found = UnderPointer(children[i - 1])) return found;
  return nullptr;
}

}  // namespace

Widget* MousePath::Find() const { return input_.IsRoot() ? FindIn(input_) : UnderPointer(&input_); }

void MousePath::FindAtStart(Dialog& dialog) {
  UpdateDoubleClickWindow();
  Dialog* input = &dialog;
  while (input && !input->TakesInput()) input = input->parent;
  // What lies below a popup gets nothing meanwhile.
  if (!input || &InputRouter{*input}.Target() != input) return;
  Widget* found = MousePath{*input}.Find();
  // Inside another dialog, presses go on counting, and that one looks for what is not in here.
  if (input == &dialog)
    Loop().doubleClicks.Forget();
  else if (!dialog.ChildTowards(found))
    return;
  Set(*dialog.GetRoot(), found);
  if (dialog.focus) return;
  Dialog* outermost = &dialog;  // that has no focus either
  while (outermost != input && !outermost->parent->focus) outermost = outermost->parent;
  outermost->SetFocus(dialog.MouseWidget());
}

void MousePath::Follow(Point delta) {
  Dialog* root = input_.GetRoot();
  Widget* found = Find();
  if (found == root->MouseWidget()) return;
  // The dialog down to which the path stays as it is.
  Dialog* fork = root;
  while (Dialog* inner = AsDialog(fork->mouse)) {
    if (fork->ChildTowards(found) != inner) break;
    fork = inner;
  }
  Set(*root, found);
  if (root->MouseWidget() != found) return;  // a handler has destroyed it
  MoveFocus(found == &input_ ? nullptr : found);
  if (root->Contains(fork) && fork->mouse) fork->mouse->MsgMouseMove(delta);
}

void MousePath::MoveFocus(Widget* underPointer) {
  const Skin* skin = input_.GetSkin();
  Widget* current = input_.FocusWidget();
  if (!skin || underPointer == current) return;
  if (input_.FocusIsPressed()) return;
  const bool goesToWilling = skin->focus == kFocusGoesToWilling;
  if (skin->focus != kFocusFollowsPointer && !goesToWilling) return;
  if (goesToWilling && !(underPointer && underPointer->MsgWantFocus())) return;
  // Where both lie in one dialog, the focus need not leave it.
  Dialog* shared = &input_;
  while (Dialog* inner = AsDialog(shared->focus)) {
    if (inner == underPointer || !inner->Contains(underPointer)) break;
    shared = inner;
  }
  shared->ChangeFocus(shared->FocusWidget(), underPointer);
}

void MousePath::TakeBack() {
  Loop().doubleClicks.Forget();
  const MousePointer* pointer = CurrentPointer();
  if (!settings.showMouse || !pointer) return;
  if (input_.TestFlag(kFlagPressed) && !(pointer->GetButtons() & kLeftButton)) input_.MsgLRelease();
  Set(*input_.GetRoot(), Find());
}

void MousePath::Set(Dialog& dialog, const Widget* deepest) {
  Widget* direct = dialog.ChildTowards(deepest);
  if (direct != dialog.mouse) {
    Widget* left = std::exchange(dialog.mouse, direct);
    if (Dialog* inner = AsDialog(left)) Set(*inner, nullptr);
    if (dialog.HasChild(left)) left->MsgLostMouse();
    if (direct && dialog.mouse == direct) direct->MsgGotMouse();
  }
  if (Dialog* inner = AsDialog(dialog.mouse)) Set(*inner, deepest);
}

}  // namespace zel
