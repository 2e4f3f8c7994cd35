#include "toolkit/core/tooltip.h"

#include <algorithm>
#include <limits>

#include "toolkit/base/settings.h"
#include "toolkit/base/zoom.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/event_loop.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr int kSideMargins = 12;  // left and right of the text together
constexpr int kLineMargins = 6;   // above and below it together
constexpr int kWidestShape = 4;   // width to height of a wrapped box
constexpr int kBelowPointer = 20;
constexpr int kAbovePointer = 8;

constexpr const char* kNoText = "wtf?";

int WidestLine(const Font& font, const char* text) {
  int widest = 0;
  while (*text != '\0') {
    int width = 0;
    text += font.WrapCount(text, std::numeric_limits<int>::max(), &width);
    widest = std::max(widest, width);
  }
  return widest;
}

}  // namespace

Tooltip::Tooltip() : backColor{255, 255, 192}, borderColor{black} {}

void Tooltip::SetText(const char* newText) {
  text = newText ? std::make_unique<std::string>(newText) : nullptr;
}

void Tooltip::SetBackColor(Color color) {
  backColor = color;
  Redraw();
}

void Tooltip::SetBorderColor(Color color) {
  borderColor = color;
  Redraw();
}

void Tooltip::MsgInitSkin() {
  Widget::MsgInitSkin();
  TakeTextSet(kTooltipText);
  SetTextBackColor(Color{});
  if (!skin) return;
  SetBackColor(skin->tooltipBackColor);
  SetBorderColor(skin->tooltipBorderColor);
  SetAnimationProperties(skin->tooltipAnimationLength, skin->tooltipAnimationType);
}

bool Tooltip::MsgWantMouse() {
  Widget::MsgWantMouse();
  return false;
}

void Tooltip::Draw(Bitmap& canvas) {
  const Font& font = GetFont(kNormal);
  const char* shown = text ? text->c_str() : kNoText;
  canvas.clear_to_color(backColor);
  for (int i = 0; i < Zoomed(1); ++i) canvas.rect(i, i, w() - 1 - i, h() - 1 - i, borderColor);
  font.MultilineTextout(canvas, shown, GetFontColor(kNormal), GetShadowColor(kNormal), Color{}, 0,
                        (h() - font.MultilineHeight(shown, w())) / 2, w(), kAlignCentre);
}

void Tooltip::FitText() {
  const Font& font = GetFont(kNormal);
  const char* shown = text ? text->c_str() : kNoText;
  int width = WidestLine(font, shown) + Zoomed(kSideMargins);
  int height =
      std::max(font.TextHeight(), font.MultilineHeight(shown, width)) + Zoomed(kLineMargins);
  if (width > settings.screenWidth / 2) {
    do {
      width /= 2;
      height = font.MultilineHeight(shown, width - Zoomed(kSideMargins)) + Zoomed(kLineMargins);
    } while (width / height > kWidestShape);
  }
  Resize(width, height);
}

void Tooltip::PlaceNearPointer() {
  if (!parent) return;
  const int left = std::min(lastPos.x - parent->x(), settings.screenWidth - w());
  int top = lastPos.y - parent->y() + Zoomed(kBelowPointer);
  if (top + h() >= settings.screenHeight)
    top = lastPos.y - parent->y() - h() - Zoomed(kAbovePointer);
  // A negative position would count from the far edge.
  Place(std::max(0, left), std::max(0, top));
}

void Tooltip::Layout() {
  FitText();
  PlaceNearPointer();
}

void Tooltip::Show() {
  const char* tip = source ? source->GetTooltip() : nullptr;
  if (!tip || !parent) return;
  SetText(tip);
  Layout();
  // A popup may have come above a tip that shows already.
  parent->BringToFront(this);
  if (!Hidden()) parent->Redraw();
  Unhide();
  StartAnimation();
}

void Tooltip::HideTip() {
  waitCount = 0;
  Hide();
  ResetAnimation();
  if (parent) parent->Redraw();
  Loop().tipState = TipState::kIdle;
  source = UnderPointer();
}

Widget* Tooltip::UnderPointer() const { return parent ? parent->MouseWidget() : nullptr; }

Point Tooltip::PointerPosition() {
  const MousePointer* pointer = CurrentPointer();
  return pointer ? pointer->GetMousePosition() : Point{mouse_x, mouse_y};
}

void Tooltip::ShowFor(Widget* under) {
  source = under;
  Show();
  hideCount = 0;
  Loop().tipState = TipState::kShown;
}

void Tooltip::TickIdle(Widget* under, Point pointer) {
  if (under == source) return;
  source = under;
  if (!under || !under->GetTooltip()) return;
  Loop().tipState = TipState::kWaiting;
  waitCount = 0;
  lastPos = pointer;
}

void Tooltip::TickWaiting(Widget* under, Point pointer) {
  source = under;
  if (pointer != lastPos) {
    lastPos = pointer;
    waitCount = 0;
    return;
  }
  if (++waitCount < settings.Ticks(settings.tooltipDelay)) return;
  if (source && source->GetTooltip()) ShowFor(source);
}

void Tooltip::TickShown(Widget* under, Point pointer) {
  if (settings.tooltipAutohideDelay > 0 &&
      ++hideCount >= settings.Ticks(settings.tooltipAutohideDelay)) {
    Loop().tipState = TipState::kLeaving;
    hideCount = 0;
  }
  if (under == source) return;
  lastPos = pointer;
  if (under && under->GetTooltip()) {
    ShowFor(under);
  } else {
    source = under;
    Loop().tipState = TipState::kLeaving;
  }
}

void Tooltip::TickLeaving(Widget* under, Point pointer) {
  lastPos = pointer;
  if (under && under != source && under->GetTooltip()) {
    ShowFor(under);
  } else if (--waitCount < 1) {
    HideTip();
    source = under;
  }
}

void Tooltip::MsgTick() {
  Widget::MsgTick();
  // The root's tip shows over what is popped up, too; that of a popup would be cut at its edges.
  if (parent && !parent->IsRoot()) return;
  Widget* under = UnderPointer();
  const Point pointer = PointerPosition();
  switch (Loop().tipState) {
    case TipState::kIdle:
      TickIdle(under, pointer);
      break;
    case TipState::kWaiting:
      TickWaiting(under, pointer);
      break;
    case TipState::kShown:
      TickShown(under, pointer);
      break;
    case TipState::kLeaving:
      TickLeaving(under, pointer);
      break;
  }
  const MousePointer* device = CurrentPointer();
  if (!Hidden() && device && device->GetButtons() != 0) HideTip();
}

}  // namespace zel
