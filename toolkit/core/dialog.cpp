#include "toolkit/core/dialog.h"

#include <algorithm>

#include "toolkit/core/loop_state.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/core/screen_update.h"
#include "toolkit/core/settings.h"
#include "toolkit/skin/skin.h"
#include "toolkit/widgets/animator.h"
#include "toolkit/widgets/tooltip.h"

namespace zel {
namespace {

constexpr std::size_t kUsualChildren = 50;

}  // namespace

Dialog::Dialog() : tooltipWidget_{std::make_unique<Tooltip>()} {
  SetFlag(kFlagContainer);
  parent = this;
  Rect::w = settings.screenWidth;
  Rect::h = settings.screenHeight;
  children.reserve(kUsualChildren);
  tooltipWidget_->Hide();
}

Dialog::~Dialog() {
  if (!IsRoot() && parent) parent->Forget(this);
  parent = nullptr;
  for (Widget* child : children)
    if (child->GetParent() == this) child->SetParent(nullptr);
}

Dialog* Dialog::GetRoot() {
  Dialog* dialog = this;
  while (!dialog->IsRoot() && dialog->GetParent()) dialog = dialog->GetParent();
  return dialog;
}

Widget* Dialog::FocusWidget() const {
  Widget* found = focus;
  while (Dialog* inner = AsDialog(found)) {
    if (!inner->focus) break;
    found = inner->focus;
  }
  return found;
}

Widget* Dialog::MouseWidget() const {
  Widget* found = mouse;
  while (Dialog* inner = AsDialog(found)) {
    if (!inner->mouse) break;
    found = inner->mouse;
  }
  return found;
}

bool Dialog::Add(Widget* widget) {
  if (std::find(children.begin(), children.end(), widget) != children.end()) return false;
  children.push_back(widget);
  widget->SetParent(this);
  if (running) {
    if (!widget->GetSkin()) widget->SetSkin(skin);
    widget->MsgInitSkin();
    widget->MsgStart();
  }
  widget->Redraw();
  if (widget->TestFlag(kFlagPoppedUp)) ChangeFocus(focus, widget);
  return true;
}

void Dialog::Remove(Widget* widget) {
  if (std::find(children.begin(), children.end(), widget) == children.end()) return;
  if (running) widget->SendMessage(MSG_END);
  Forget(widget);
  widget->SetParent(nullptr);
  if (Dialog* dialog = AsDialog(widget)) dialog->SetParent(dialog);
  GetRoot()->Redraw();
}

void Dialog::Forget(Widget* widget) {
  std::erase(children, widget);
  if (focus == widget) focus = nullptr;
  if (mouse == widget) mouse = nullptr;
  if (loopState.lastFocus == widget) loopState.lastFocus = nullptr;
}

void Dialog::BringToFront(Widget* child) {
  const auto found = std::find(children.begin(), children.end(), child);
  if (found == children.end()) return;
  std::rotate(found, found + 1, children.end());
}

void Dialog::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  if (msg == MSG_ACTIVATE && sender && sender->IsExit()) {
    Close();
  } else if (!IsRoot() && parent) {
    parent->HandleEvent(sender, msg, arg1, arg2);
  }
}

void Dialog::SendToChildren(int msg, int arg) {
  // A handler may take children in or out: go on behind the child that was served last.
  for (std::size_t i = 0; i < children.size();) {
    Widget* child = children[i];
    child->SendMessage(msg, arg);
    const auto served = std::find(children.begin(), children.end(), child);
    i = served == children.end() ? i : static_cast<std::size_t>(served - children.begin()) + 1;
  }
}

void Dialog::MsgTimer(int id) {
  Widget::MsgTimer(id);
  SendToChildren(MSG_TIMER, id);
}

void Dialog::MsgMove() {
  Widget::MsgMove();
  UpdateLayout();
}

void Dialog::MsgResize() {
  Widget::MsgResize();
  UpdateLayout();
}

void Dialog::MsgShape() {
  Widget::MsgShape();
  UpdateLayout();
}

void Dialog::UpdateLayout() {
  for (Widget* child : children) {
    const Point position = child->GetRelativePos();
    // Placing a child where it lies makes its absolute position follow this dialog.
    if (child->GetAbsolutePos() != Point{child->x(), child->y()}) child->Place(position);
    child->SendMessage(MSG_SHAPE);
  }
}

void Dialog::MsgInitSkin() {
  SendToChildren(MSG_INITSKIN);
  Widget::MsgInitSkin();
}

void Dialog::Enable() {
  Widget::Enable();
  for (Widget* child : children) child->Enable();
}

void Dialog::Disable() {
  Widget::Disable();
  for (Widget* child : children) child->Disable();
}

void Dialog::Hide() {
  Widget::Hide();
  for (Widget* child : children) child->Hide();
}

void Dialog::Unhide() {
  Widget::Unhide();
  for (Widget* child : children) child->Unhide();
}

void Dialog::Redraw() {
  Widget::Redraw();
  for (Widget* child : children) child->Redraw();
}

void Dialog::SetSkin(Skin* newSkin) {
  Widget::SetSkin(newSkin);
  for (Widget* child : children) child->SetSkin(skin);
  for (Widget* child : children)
    if (child->TestFlag(kFlagSkinChanged)) child->MsgInitSkin();
}

void Dialog::InitChangedSkins() {
  if (TestFlag(kFlagSkinChanged)) {
    MsgInitSkin();
    return;
  }
  for (Widget* child : children) {
    if (Dialog* dialog = AsDialog(child))
      dialog->InitChangedSkins();
    else if (child->TestFlag(kFlagSkinChanged))
      child->MsgInitSkin();
  }
}

void Dialog::ApplyGeometry() {
  const bool moved = TestFlag(kFlagMoved);
  const bool resized = TestFlag(kFlagResized);
  if (moved && resized)
    MsgShape();
  else if (moved)
    MsgMove();
  else if (resized)
    MsgResize();
  ClearFlag(kFlagMoved | kFlagResized);
  for (Widget* child : children) {
    if (Dialog* dialog = AsDialog(child)) {
      dialog->ApplyGeometry();
      continue;
    }
    const bool childMoved = child->TestFlag(kFlagMoved);
    const bool childResized = child->TestFlag(kFlagResized);
    if (childMoved && childResized)
      child->MsgShape();
    else if (childMoved)
      child->MsgMove();
    else if (childResized)
      child->MsgResize();
    child->ClearFlag(kFlagMoved | kFlagResized);
  }
}

void Dialog::Resize(int width, int height, bool percent) { Widget::Resize(width, height, percent); }
void Dialog::Resize(Size size, bool percent) { Widget::Resize(size, percent); }

void Dialog::Centre() {
  const int outerWidth = IsRoot() ? settings.screenWidth : parent->w();
  const int outerHeight = IsRoot() ? settings.screenHeight : parent->h();
  Place(std::max(0, (outerWidth - w()) / 2), std::max(0, (outerHeight - h()) / 2));
}

Dialog::CanvasBase Dialog::FindCanvasBase(bool ownDrawing) {
  if (!ownDrawing) {
    const bool starting = TestFlag(kFlagStartAnimation);
    if (starting && !animator->Running()) return {nullptr, {}};
    if (!starting && animator->Running()) return {animator->NewImage().GetBitmap(), {x(), y()}};
  }
  if (!IsRoot()) return parent ? parent->FindCanvasBase(false) : CanvasBase{nullptr, {}};
  ScreenUpdate* update = CurrentScreenUpdate();
  return {update ? update->GetCanvas() : nullptr, {0, 0}};
}

SubCanvas Dialog::GetCanvas(const Widget* widget) {
  const CanvasBase base = FindCanvasBase(widget == this);
  if (!base.bitmap) return {};
  const int left = widget->x() - base.origin.x;
  const int top = widget->y() - base.origin.y;
  const int width = std::min(widget->x2(), x2()) - widget->x();
  const int height = std::min(widget->y2(), y2()) - widget->y();
  if (left < 0 || top < 0 || left >= base.bitmap->w || top >= base.bitmap->h) return {};
  if (width < 1 || height < 1) return {};
  return {Bitmap{base.bitmap}, left, top, width, height};
}

void Dialog::MsgDraw() {
  Widget::MsgDraw();
  for (std::size_t i = 0; i < children.size(); ++i) {
    if (children[i]->Hidden()) continue;
    if (IsCovered(i))
      ForgetDirty(children[i]);
    else
      children[i]->SendMessage(MSG_DRAW);
  }
}

// What does not show need not be drawn later either: whatever uncovers it redraws it.
void Dialog::ForgetDirty(Widget* widget) {
  widget->ClearFlag(kFlagDirty);
  if (Dialog* dialog = AsDialog(widget))
    for (Widget* child : dialog->children) ForgetDirty(child);
}

// Nothing of the child shows: another one that paints its whole area lies above it.
bool Dialog::IsCovered(std::size_t index) const {
  const Rect& area = children[index]->Bounds();
  return std::any_of(children.begin() + static_cast<std::ptrdiff_t>(index) + 1, children.end(),
                     [&area](const Widget* above) {
                       const Rect& cover = above->Bounds();
                       return above->IsOpaque() && cover.x <= area.x && cover.y <= area.y &&
                              cover.Right() >= area.Right() && cover.Bottom() >= area.Bottom();
                     });
}

void Dialog::RedrawBehind(const Widget* child, const Rect& part) {
  const Rect area{child->x() + part.x, child->y() + part.y, part.w, part.h};
  for (Widget* under : children) {
    if (under == child) return;
    if (!under->Hidden() && !under->IsContainer()) under->RedrawArea(area);
  }
}

void Dialog::MarkCovering(const Widget* changed, const Rect& area) {
  const Widget* child = changed;
  for (Dialog* dialog = this;; dialog = dialog->parent) {
    auto above = std::find(dialog->children.begin(), dialog->children.end(), child);
    while (above != dialog->children.end() && ++above != dialog->children.end())
      if (!(*above)->Hidden()) (*above)->RedrawArea(area);
    if (dialog->IsRoot() || !dialog->parent) return;
    child = dialog;
  }
}

void Dialog::MarkCovering(Widget* changed) {
  if (!changed->DirtyInParts()) {
    MarkCovering(changed, changed->Bounds());
    return;
  }
  for (const Rect& part : changed->DirtyParts())
    MarkCovering(changed, {changed->x() + part.x, changed->y() + part.y, part.w, part.h});
}

void Dialog::DrawTree(bool redrawsAll) {
  if (!redrawsAll) {
    for (std::size_t i = 0; i < children.size(); ++i)
      if (children[i]->Dirty() && !children[i]->Hidden()) MarkCovering(children[i]);
  }
  if (Dirty()) {
    MsgDraw();
    ClearFlag(kFlagDirty);
  }
  for (std::size_t i = 0; i < children.size(); ++i) {
    Widget* child = children[i];
    if (child->Hidden()) continue;
    if (IsCovered(i)) {
      ForgetDirty(child);
      continue;
    }
    const bool draws = redrawsAll || child->Dirty();
    if (draws) {
      child->SendMessage(MSG_DRAW);
      child->ClearFlag(kFlagDirty);
    }
    Dialog* dialog = AsDialog(child);
    // Drawing a dialog has drawn everything in it.
    if (dialog && !(redrawsAll && draws)) dialog->DrawTree(redrawsAll);
  }
}

void Dialog::DrawDirty() {
  ScreenUpdate* update = CurrentScreenUpdate();
  if (!update) return;
  update->AcquireCanvas();
  if (mousePointer) mousePointer->Hide();
  DrawTree(update->RedrawsAll());
  if (mousePointer) mousePointer->Draw();
  update->ReleaseCanvas();
  ClearFlag(kFlagDirty);
}

}  // namespace zel
