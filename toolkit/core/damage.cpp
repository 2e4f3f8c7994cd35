#include "toolkit/core/damage.h"

#include <algorithm>

#include "toolkit/core/dialog.h"

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
  if (widget->x() >= 0 && widget->y() >= 0) {
    const Rect painted = widget->PaintedPart().Shared(limit);
    area.Remove(painted);
    if (painted == inside) return;
  }
  if (const Dialog* dialog = AsDialog(widget))
    for (Widget* child : dialog->Children()) RemovePainted(area, child, inside);
}

// Nothing of the child shows: another one that paints its whole area lies above it. A transition
// goes on nevertheless, or it would show later.
bool IsCovered(const Dialog& dialog, std::size_t index) {
  const std::vector<Widget*>& children = dialog.Children();
  Widget* child = children[index];
  const bool covered = std::any_of(children.begin() + static_cast<std::ptrdiff_t>(index) + 1,
                                   children.end(), [&dialog, child](const Widget* above) {
                                     if (!above->IsOpaque() || !above->Bounds().Surrounds(*child))
                                       return false;
                                     // There is no canvas for what begins to the left of it or
                                     // above it.
                                     const Point origin = dialog.CanvasOrigin();
                                     return above->x() >= origin.x && above->y() >= origin.y;
                                   });
  return covered && !HasTransition(child);
}

// False for what does not show, which forgets that it was dirty where something covers it.
bool NeedsDrawing(const Dialog& dialog, std::size_t index) {
  Widget* child = dialog.Children()[index];
  if (child->Hidden()) return false;
  const bool isCovered = IsCovered(dialog, index);
  if (isCovered) ForgetRedraws(child);
  return !isCovered;
}

// Repaints what lies above a changed child, here and in all dialogs around.
void MarkAbove(const Dialog& dialog, const Widget* changed, const Rect& area) {
  const std::vector<Widget*>& children = dialog.Children();
  auto above = std::find(children.begin(), children.end(), changed);
  while (above != children.end() && ++above != children.end())
    if (!(*above)->Hidden()) (*above)->RedrawArea(area);
  if (const Dialog* around = dialog.Around()) MarkAbove(*around, &dialog, area);
}

void MarkCovering(const Dialog& dialog, const Widget& changed) {
  if (!changed.DirtyInParts()) {
    MarkAbove(dialog, &changed, changed.Bounds());
    return;
  }
  for (const Rect& part : changed.DirtyParts())
    MarkAbove(dialog, &changed, {changed.x() + part.x, changed.y() + part.y, part.w, part.h});
}

}  // namespace

PixelArea ShownPart(const Dialog& dialog, Widget& child) {
  PixelArea area{child.Bounds()};
  if (const Dialog* itself = AsDialog(&child))
    for (Widget* inside : itself->Children()) RemovePainted(area, inside, child.Bounds());
  const Widget* below = &child;
  for (const Dialog* around = &dialog; around; around = around->Around()) {
    // What a transition draws is shown for several frames.
    if (around->InTransition()) return PixelArea{child.Bounds()};
    const std::vector<Widget*>& children = around->Children();
    const auto found = std::find(children.begin(), children.end(), below);
    for (auto above = found; above != children.end(); ++above)
      if (*above != below) RemovePainted(area, *above, around->Bounds());
    below = around;
  }
  return area;
}

void DrawChildren(Dialog& dialog) {
  const std::vector<Widget*>& children = dialog.Children();
  for (std::size_t i = 0; i < children.size(); ++i)
    if (NeedsDrawing(dialog, i)) DrawWhole(children[i]);
}

// This goes the way that the drawing will go, so that what is marked here is looked at in its turn.
void PrepareDrawing(Dialog& dialog) {
  const std::vector<Widget*>& children = dialog.Children();
  for (std::size_t i = 0; i < children.size(); ++i) {
    if (!NeedsDrawing(dialog, i)) continue;
    Widget* child = children[i];
    if (child->Dirty()) MarkCovering(dialog, *child);
    if (Dialog* inner = AsDialog(child)) PrepareDrawing(*inner);
  }
}

void DrawTree(Dialog& dialog, bool redrawsAll) {
  if (dialog.Dirty()) {
    dialog.MsgDraw();
    dialog.ClearFlag(kFlagDirty);
    return;
  }
  const std::vector<Widget*>& children = dialog.Children();
  for (std::size_t i = 0; i < children.size(); ++i) {
    if (!NeedsDrawing(dialog, i)) continue;
    Widget* child = children[i];
    if (redrawsAll || child->Dirty()) {
      redrawsAll ? DrawWhole(child) : child->MsgDraw();
      if (dialog.HasChild(child)) child->ClearFlag(kFlagDirty);
    } else if (Dialog* inner = AsDialog(child)) {
      DrawTree(*inner, redrawsAll);
    }
  }
}

}  // namespace zel
