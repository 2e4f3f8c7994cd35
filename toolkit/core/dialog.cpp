#include "toolkit/core/dialog.h"

#include <algorithm>

#include "toolkit/base/settings.h"
#include "toolkit/core/loop_state.h"
#include "toolkit/core/tooltip.h"

namespace zel {
namespace {

constexpr std::size_t kUsualChildren = 50;

// What a handler changes meanwhile is sent the next time.
void SettleGeometry(Widget& widget) {
  const std::uint32_t pending = widget.GetFlags() & (kFlagMoved | kFlagResized);
  if (pending == (kFlagMoved | kFlagResized))
    widget.MsgShape();
  else if (pending == kFlagMoved)
    widget.MsgMove();
  else if (pending == kFlagResized)
    widget.MsgResize();
  widget.ClearFlag(pending);
}

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
  if (Loop().root == this) EndRoot();
  if (!IsRoot() && parent) parent->Forget(this);
  parent = nullptr;
  for (Widget* child : children)
    if (child->GetParent() == this) child->SetParent(AsDialog(child));  // a root again
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

bool Dialog::IsChild(const Widget* widget) const {
  return std::find(children.begin(), children.end(), widget) != children.end();
}

Widget* Dialog::ChildTowards(const Widget* widget) const {
  const auto found = std::find_if(children.begin(), children.end(), [widget](Widget* child) {
    const Dialog* dialog = AsDialog(child);
    return child == widget || (dialog && dialog->Contains(widget));
  });
  return found != children.end() ? *found : nullptr;
}

bool Dialog::Contains(const Widget* widget) const { return widget == this || ChildTowards(widget); }

bool Dialog::Add(Widget* widget) {
  if (!widget || IsChild(widget)) return false;
  if (const Dialog* dialog = AsDialog(widget); dialog && dialog->Contains(this)) return false;
  Dialog* before = widget->GetParent();
  if (before && before->IsChild(widget) && !before->TakeOut(widget)) return false;
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
  if (IsChild(widget)) TakeOut(widget);
}

bool Dialog::TakeOut(Widget* widget) {
  if (mouse == widget) SetMousePath(nullptr);
  if (running && IsChild(widget)) widget->SendMessage(MSG_END);
  if (!IsChild(widget)) return false;
  Forget(widget);
  widget->SetParent(AsDialog(widget));  // a dialog is a root again
  GetRoot()->Redraw();
  return true;
}

void Dialog::Forget(Widget* widget) {
  std::erase(children, widget);
  if (focus == widget) focus = nullptr;
  if (mouse == widget) mouse = nullptr;
  if (Widget*& last = Loop().lastFocus; last == widget) last = nullptr;
  if (running) GetRoot()->Redraw();
}

void Dialog::BringToFront(Widget* child) {
  const auto found = std::find(children.begin(), children.end(), child);
  if (found == children.end() || found + 1 == children.end()) return;
  std::rotate(found, found + 1, children.end());
  child->Redraw();
}

void Dialog::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  if (msg == MSG_ACTIVATE && sender && sender->IsExit()) {
    Close();
  } else if (!IsRoot() && parent) {
    parent->HandleEvent(sender, msg, arg1, arg2);
  }
}

void Dialog::SendToChildren(int msg, int arg) {
  ForEachChild([msg, arg](Widget* child) { child->SendMessage(msg, arg); });
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
  ForEachChild([](Widget* child) {
    if (child->GetAbsolutePos() != Point{child->x(), child->y()}) {
      child->UpdateAbsolutePos();
      child->Redraw();
    }
    child->SendMessage(MSG_SHAPE);
  });
}

void Dialog::MsgInitSkin() {
  SendToChildren(MSG_INITSKIN);
  Widget::MsgInitSkin();
}

void Dialog::Enable() {
  Widget::Enable();
  ForEachChild([](Widget* child) { child->Enable(); });
}

void Dialog::Disable() {
  Widget::Disable();
  ForEachChild([](Widget* child) { child->Disable(); });
}

void Dialog::Hide() {
  Widget::Hide();
  ForEachChild([](Widget* child) { child->Hide(); });
}

void Dialog::Unhide() {
  Widget::Unhide();
  ForEachChild([this](Widget* child) {
    if (child != tooltipWidget_.get()) child->Unhide();
  });
}

void Dialog::Redraw() {
  Widget::Redraw();
  for (Widget* child : children) child->Redraw();
}

void Dialog::SetSkin(Skin* newSkin) {
  Widget::SetSkin(newSkin);
  ForEachChild([this](Widget* child) { child->SetSkin(skin); });
  ForEachChild([](Widget* child) {
    if (child->TestFlag(kFlagSkinChanged)) child->MsgInitSkin();
  });
}

void Dialog::InitChangedSkins() {
  if (TestFlag(kFlagSkinChanged)) {
    MsgInitSkin();
    return;
  }
  ForEachChild([](Widget* child) {
    if (Dialog* dialog = AsDialog(child))
      dialog->InitChangedSkins();
    else if (child->TestFlag(kFlagSkinChanged))
      child->MsgInitSkin();
  });
}

void Dialog::ApplyGeometry() {
  SettleGeometry(*this);
  ForEachChild([](Widget* child) {
    if (Dialog* dialog = AsDialog(child))
      dialog->ApplyGeometry();
    else
      SettleGeometry(*child);
  });
}

void Dialog::Resize(int width, int height, bool percent) { Widget::Resize(width, height, percent); }
void Dialog::Resize(Size size, bool percent) { Widget::Resize(size, percent); }

void Dialog::Centre() {
  const int outerWidth = IsRoot() ? settings.screenWidth : parent->w();
  const int outerHeight = IsRoot() ? settings.screenHeight : parent->h();
  Place(std::max(0, (outerWidth - w()) / 2), std::max(0, (outerHeight - h()) / 2));
}

}  // namespace zel
