#include "toolkit/core/dialog.h"

#include <algorithm>

#include "toolkit/base/settings.h"
#include "toolkit/core/animator.h"
#include "toolkit/core/damage.h"
#include "toolkit/core/dialog_run.h"
#include "toolkit/core/event_loop.h"
#include "toolkit/core/focus_search.h"
#include "toolkit/core/input_router.h"
#include "toolkit/core/key_router.h"
#include "toolkit/core/mouse_path.h"
#include "toolkit/draw/screen_update.h"

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

Dialog::Dialog() {
  SetFlag(kFlagContainer);
  parent = this;
  Rect::w = settings.screenWidth;
  Rect::h = settings.screenHeight;
  children.reserve(kUsualChildren);
}

Dialog::~Dialog() {
  if (Loop().Root() == this) Loop().End();
  if (Dialog* around = Around()) around->Forget(this);
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

bool Dialog::HasChild(const Widget* widget) const {
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
  if (!widget || HasChild(widget)) return false;
  if (const Dialog* dialog = AsDialog(widget); dialog && dialog->Contains(this)) return false;
  Dialog* before = widget->GetParent();
  if (before && before->HasChild(widget) && !before->TakeOut(widget)) return false;
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
  if (HasChild(widget)) TakeOut(widget);
}

bool Dialog::TakeOut(Widget* widget) {
  if (mouse == widget) MousePath::Set(*this, nullptr);
  if (running && HasChild(widget)) widget->SendMessage(MSG_END);
  if (!HasChild(widget)) return false;
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
  } else if (Dialog* around = Around()) {
    around->HandleEvent(sender, msg, arg1, arg2);
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
  const Widget* tip = run_ ? &run_->tooltip : nullptr;
  ForEachChild([tip](Widget* child) {
    if (child != tip) child->Unhide();
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

Dialog::CanvasBase Dialog::FindCanvasBase(bool ownDrawing) const {
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
  return {Bitmap{base.bitmap}, left, top, width, height};
}

Point Dialog::CanvasOrigin() const { return FindCanvasBase(false).origin; }

void Dialog::MsgDraw() {
  Widget::MsgDraw();
  DrawChildren(*this);
}

void Dialog::RedrawBehind(const Widget* child, const Rect& part) {
  const Rect area{child->x() + part.x, child->y() + part.y, part.w, part.h};
  for (Widget* under : children) {
    if (under == child) return;
    if (!under->Hidden() && !under->IsContainer()) under->RedrawArea(area);
  }
}

void Dialog::DrawDirty() {
  ScreenUpdate* update = CurrentScreenUpdate();
  if (!update) return;
  if (!update->RedrawsAll()) PrepareDrawing(*this);
  update->AcquireCanvas();
  MousePointer* pointer = CurrentPointer();
  if (pointer) pointer->Hide();
  DrawTree(*this, update->RedrawsAll());
  if (pointer) pointer->Draw();
  update->ReleaseCanvas();
  ClearFlag(kFlagDirty);
}

void Dialog::HandleMouse() { InputRouter{*this}.LookAtMouse(); }
void Dialog::HandleKeyboard() { InputRouter{*this}.LookAtKeyboard(); }

bool Dialog::HandleKey(int character, int scancode) {
  return KeyRouter{*this}.Route(character, scancode);
}

bool Dialog::FocusIsPressed() const {
  return focus && (focus->TestFlag(kFlagPressed) || FocusWidget()->TestFlag(kFlagPressed));
}

void Dialog::MoveFocus(FocusMove move) {
  Widget* current = GetRoot()->FocusWidget();
  for (Widget* candidate : FocusCandidates(*this, move, current)) {
    if (!Contains(candidate) || !candidate->MsgWantTab()) continue;
    if (candidate != current) ChangeFocus(FocusWidget(), candidate);
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
    if (!container->HasChild(focused)) return;
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
  Dialog* around = Around();
  if (around && focus && around->focus != this) around->ChangeFocus(around->focus, this);
}

}  // namespace zel
