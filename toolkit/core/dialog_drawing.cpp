// What a dialog draws on, what has to be drawn, and in which order.
#include <algorithm>

#include "toolkit/core/animator.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/draw/screen_update.h"

namespace zel {
namespace {

bool HasTransition(Widget* widget) {
  if (widget->InTransition()) return true;
  const Dialog* dialog = AsDialog(widget);
  return dialog && std::any_of(dialog->Children().begin(), dialog->Children().end(), HasTransition);
}

// What does not show need not be drawn later either: whatever uncovers it redraws it.
void ForgetRedraws(Widget* widget) {
  widget->ForgetRedraw();
  if (const Dialog* dialog = AsDialog(widget))
    for (Widget* child : dialog->Children()) ForgetRedraws(child);
}

// Paints all of a widget: what lies under it has just been painted, and must not be marked again by
// an override.
void DrawWhole(Widget* widget) {
  if (widget->DirtyInParts()) widget->Widget::Redraw();
  widget->SendMessage(MSG_DRAW);
}

// Takes out of an area what a widget, or what lies in it, paints inside of a limit.
void RemovePainted(PixelArea& area, Widget* widget, const Rect& limit) {
  if (widget->Hidden() || widget->InTransition()) return;
  const Rect inside = widget->Bounds().Shared(limit);
  // There is no canvas for what begins to the left of the screen or above it.
  if (widget->IsOpaque() && widget->x() >= 0 && widget->y() >= 0) return area.Remove(inside);
  if (const Dialog* dialog = AsDialog(widget))
    for (Widget* child : dialog->Children()) RemovePainted(area, child, inside);
}

}  // namespace

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

PixelArea Dialog::ShownPart(Widget* child) const {
  PixelArea area{child->Bounds()};
  if (const Dialog* dialog = AsDialog(child))
    for (Widget* inside : dialog->children) RemovePainted(area, inside, child->Bounds());
  const Widget* below = child;
  for (const Dialog* around = this; around; around = around->parent) {
    // What a transition draws is shown for several frames.
    if (around->InTransition()) return PixelArea{child->Bounds()};
    const auto found = std::find(around->children.begin(), around->children.end(), below);
    for (auto above = found; above != around->children.end(); ++above)
      if (*above != below) RemovePainted(area, *above, around->Bounds());
    if (around->IsRoot()) break;
    below = around;
  }
  return area;
}

void Dialog::MsgDraw() {
  Widget::MsgDraw();
  for (std::size_t i = 0; i < children.size(); ++i) {
    if (children[i]->Hidden()) continue;
    if (IsCovered(i))
      ForgetRedraws(children[i]);
    else
      DrawWhole(children[i]);
  }
}

// Nothing of the child shows: another one that paints its whole area lies above it. A transition
// goes on nevertheless, or it would show later.
bool Dialog::IsCovered(std::size_t index) const {
  Widget* child = children[index];
  const bool covered = std::any_of(children.begin() + static_cast<std::ptrdiff_t>(index) + 1,
                                   children.end(), [this, child](const Widget* above) {
                                     if (!above->IsOpaque() || !above->Bounds().Surrounds(*child))
                                       return false;
                                     // There is no canvas for what begins to the left of it or
                                     // above it.
                                     const Point origin = FindCanvasBase(false).origin;
                                     return above->x() >= origin.x && above->y() >= origin.y;
                                   });
  return covered && !HasTransition(child);
}

void Dialog::RedrawBehind(const Widget* child, const Rect& part) {
  const Rect area{child->x() + part.x, child->y() + part.y, part.w, part.h};
  for (Widget* under : children) {
    if (under == child) return;
    if (!under->Hidden() && !under->IsContainer()) under->RedrawArea(area);
  }
}

// Repaints what lies above a changed child, here and in all dialogs around.
void Dialog::MarkAbove(const Widget* changed, const Rect& area) const {
  auto above = std::find(children.begin(), children.end(), changed);
  while (above != children.end() && ++above != children.end())
    if (!(*above)->Hidden()) (*above)->RedrawArea(area);
  if (!IsRoot() && parent) parent->MarkAbove(this, area);
}

void Dialog::MarkCovering(const Widget& changed) const {
  if (!changed.DirtyInParts()) {
    MarkAbove(&changed, changed.Bounds());
    return;
  }
  for (const Rect& part : changed.DirtyParts())
    MarkAbove(&changed, {changed.x() + part.x, changed.y() + part.y, part.w, part.h});
}

// Finds out what has to be drawn. This goes the way that the drawing will go, so that what is
// marked here is looked at in its turn.
void Dialog::PrepareDrawing() {
  for (std::size_t i = 0; i < children.size(); ++i) {
    Widget* child = children[i];
    if (child->Hidden()) continue;
    if (IsCovered(i)) {
      ForgetRedraws(child);
      continue;
    }
    if (child->Dirty()) MarkCovering(*child);
    if (Dialog* dialog = AsDialog(child)) dialog->PrepareDrawing();
  }
}

// A dialog that is drawn draws everything in it.
void Dialog::DrawTree(bool redrawsAll) {
  if (Dirty()) {
    MsgDraw();
    ClearFlag(kFlagDirty);
    return;
  }
  for (std::size_t i = 0; i < children.size(); ++i) {
    Widget* child = children[i];
    if (child->Hidden()) continue;
    if (IsCovered(i)) {
      ForgetRedraws(child);
    } else if (redrawsAll || child->Dirty()) {
      redrawsAll ? DrawWhole(child) : child->MsgDraw();
      if (IsChild(child)) child->ClearFlag(kFlagDirty);
    } else if (Dialog* dialog = AsDialog(child)) {
      dialog->DrawTree(redrawsAll);
    }
  }
}

void Dialog::DrawDirty() {
  ScreenUpdate* update = CurrentScreenUpdate();
  if (!update) return;
  if (!update->RedrawsAll()) PrepareDrawing();
  update->AcquireCanvas();
  MousePointer* pointer = CurrentPointer();
  if (pointer) pointer->Hide();
  DrawTree(update->RedrawsAll());
  if (pointer) pointer->Draw();
  update->ReleaseCanvas();
  ClearFlag(kFlagDirty);
}

}  // namespace zel
