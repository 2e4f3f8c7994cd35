#include "toolkit/widgets/window.h"

#include <algorithm>

#include "toolkit/base/settings.h"
#include "toolkit/base/zoom.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr int kWhole = 100;  // percent of the parent
// What a title with a strip behind it leaves for the buttons.
constexpr int kRoomBesideTitle = 32;

// States of the skin's text set for windows.
constexpr int kActiveTitle = kSelected;
constexpr int kInactiveTitle = kDisabled;

constexpr int kElements[kWindowParts] = {WINLEFT, WINRIGHT, WINTOP, WINBOTTOM, WINGRIP};

int FrameOf(const Widget& part) { return part.HasFocus() ? 0 : 1; }

// What a press on a border drags: at its first end, in its middle and at its other end.
struct Zones {
  int start, middle, end;
};
constexpr Zones kZones[] = {
    {kDragTopLeft, kDragLeft, kDragBottomLeft},
    {kDragTopRight, kDragRight, kDragBottomRight},
    {kDragTopLeft, kDragTop, kDragTopRight},
    {kDragBottomLeft, kDragBottom, kDragBottomRight},
};

}  // namespace

void FramePart::SetPart(int p) {
  if (p < 0 || p >= kWindowParts) return;
  part = p;
  SetBitmap(kElements[p]);
}

void FramePart::MsgInitSkin() {
  SetPart(part);
  Widget::MsgInitSkin();
}

int FramePart::Thickness() const {
  const SkinBitmap* element = GetBitmap();
  if (!element) return 0;
  return (IsVertical() ? element->Width() : element->Height()) / kWindowStates;
}

int FramePart::CornerExtent() const {
  const SkinBitmap* element = GetBitmap();
  if (!element) return 0;
  return IsVertical() ? element->EdgeHeightOf(element->Height())
                      : element->EdgeWidthOf(element->Width());
}

// The sides have the corners.
void FramePart::DrawLine(Bitmap& canvas) const {
  const Color color = skin->menu.windowBorder;
  const int line = std::min(OrElse(skin->menu.windowBorderWidth, Zoomed(1)), Thickness());
  const int right = w() - 1, bottom = h() - 1;
  canvas.clear_to_color(skin->colors[kFace]);
  if (part != kBottomPart) canvas.rectfill(0, 0, right, line - 1, color);
  if (part != kTopPart) canvas.rectfill(0, bottom - line + 1, right, bottom, color);
  if (part == kLeftPart) canvas.rectfill(0, 0, line - 1, bottom, color);
  if (part == kRightPart) canvas.rectfill(right - line + 1, 0, right, bottom, color);
}

void FramePart::Draw(Bitmap& canvas) {
  if (part != kGripPart && skin && skin->menu.windowBorder.IsSet()) {
    DrawLine(canvas);
    return;
  }
  const SkinBitmap* element = GetBitmap();
  if (!element) return;
  if (IsVertical())
    element->DrawVFrameMasked(canvas, FrameOf(*this), 0, 0, h(), kWindowStates);
  else
    element->DrawHFrameMasked(canvas, FrameOf(*this), 0, 0, w(), kWindowStates);
}

void TitleBack::Draw(Bitmap& canvas) {
  if (const SkinBitmap* element = GetBitmap())
    element->DrawHFrameMasked(canvas, FrameOf(*this), 0, 0, w(), kWindowStates);
}

int TitleBack::ExtraWidth() const {
  const SkinBitmap* element = GetBitmap();
  return element ? element->Width() - element->TileWidthOf(element->Width()) : 0;
}

int TitleBack::EdgeWidth() const { return ExtraWidth() / 2; }

int TitleBack::Thickness() const {
  const SkinBitmap* element = GetBitmap();
  return element ? element->Height() / kWindowStates : 0;
}

WindowButton::WindowButton(int element) : icon_{element} {
  SetFlag(kFlagAutoSize);
  Disable();
}

void WindowButton::SetIcon(int element) {
  icon_ = element;
  SetBitmap(icon_);
  UpdateSize();
}

void WindowButton::MsgInitSkin() {
  Button::MsgInitSkin();
  SetIcon(icon_);
}

ClientArea::ClientArea() {
  panel.Shape(0, 0, kWhole, kWhole, true);
  Add(&panel);
}

void ClientArea::MsgInitSkin() {
  Dialog::MsgInitSkin();
  panel.SetBitmap(WINDOW);
}

void ClientArea::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  if (!IsRoot() && parent) parent->HandleEvent(sender, msg, arg1, arg2);
}

Window::Window() : minButton{ICONMIN}, maxButton{ICONMAX}, closeButton{ICONEXIT} {
  SetFlag(kFlagWindow | kFlagMovable | kFlagSizeable);
  left.SetPart(kLeftPart);
  right.SetPart(kRightPart);
  top.SetPart(kTopPart);
  bottom.SetPart(kBottomPart);
  grip.SetPart(kGripPart);
  textBack.SetBitmap(WINTEXT);
  title.SetText(Ascii("Window"));
  closeButton.MakeExit();
  clientArea.Resize(Size{});
  Widget* const widgets[] = {&left,  &right,     &top,       &bottom,      &grip, &textBack,
                             &title, &minButton, &maxButton, &closeButton, client};
  for (Widget* widget : widgets) Dialog::Add(widget);
}

Size Window::FrameSize() const {
  return {left.Thickness() + right.Thickness(), TitleBarHeight() + bottom.Thickness()};
}

int Window::TitleBarHeight() const { return top.Thickness() + grip.Thickness(); }

void Window::ResizeFrame(int width, int height) {
  SetW(width);
  SetH(height);
}

// Makes the window as large as the client area needs it; one that is rolled up becomes as high only
// when it unrolls.
void Window::TakeClientSize() {
  const Size frame = FrameSize();
  const Size whole{client->w() + frame.w, client->h() + frame.h};
  if (IsInState(kRolledUp)) {
    savedRect.w = whole.w;
    savedRect.h = whole.h;
  }
  ResizeFrame(whole.w, IsInState(kRolledUp) ? frame.h : whole.h);
}

void Window::SetTitle(const char* text) {
  title.SetText(text);
  if (running) UpdateLayout();
}

void Window::UpdateActive(int msg) {
  Widget* const parts[] = {&left, &right, &top, &bottom, &grip, &textBack};
  for (Widget* part : parts) part->SendMessage(msg);
  // The two looks of the frame need not cover the same pixels.
  RepaintBehind();
  UpdateButtons();
}

void Window::UpdateButtons() {
  Widget* const widgets[] = {&minButton, &maxButton, &closeButton, &title};
  for (Widget* widget : widgets) {
    if (HasFocus())
      widget->Enable();
    else
      widget->Disable();
  }
  if (TestFlag(kFlagSizeable)) {
    maxButton.Unhide();
    maxButton.Redraw();
  } else {
    maxButton.Hide();
    minButton.Hide();
  }
  title.UpdateSize();
  if (IsDressed()) PlaceTitle();
}

void Window::MsgGotFocus() {
  Dialog::MsgGotFocus();
  UpdateActive(MSG_GOTFOCUS);
}

void Window::MsgLostFocus() {
  Dialog::MsgLostFocus();
  UpdateActive(MSG_LOSTFOCUS);
}

void Window::MsgGotMouse() {
  Dialog::MsgGotMouse();
  // The pointer may come back to the zone that it left, in another shape.
  if (!TestFlag(kFlagPressed)) dragMode = kDragNone;
  if (!IsInState(kAutoRollup) || !IsInState(kRolledUp)) return;
  Minimize();
  UpdateButtons();
}

void Window::MsgLostMouse() {
  Dialog::MsgLostMouse();
  SetCursor(MOUSE_NORMAL);
  if (!IsInState(kAutoRollup) || IsInState(kRolledUp)) return;
  Minimize();
  UpdateButtons();
}

void Window::Enable() {
  Dialog::Enable();
  if (IsInState(kRolledUp)) client->Enable();
  // Not all parts of the frame are enabled with it.
  UpdateButtons();
}

void Window::Disable() {
  Dialog::Disable();
  if (IsInState(kRolledUp)) client->Disable();
}

void Window::Unhide() {
  Dialog::Unhide();
  if (IsInState(kRolledUp)) client->Unhide();
  // Not all parts of the frame are shown with it.
  UpdateButtons();
  if (skin && skin->windowTextBack == 0) textBack.Hide();
}

void Window::SetSkin(Skin* newSkin) {
  Dialog::SetSkin(newSkin);
  if (IsInState(kRolledUp)) client->SetSkin(skin);
}

void Window::TakeTitleLook() {
  if (!skin) return;
  const auto take = [this](int from, int to) {
    title.SetFont(skin->fontIndex[kWindowText][from], to);
    title.SetFontColor(skin->fontColor[kWindowText][from], skin->shadowColor[kWindowText][from],
                       to);
  };
  take(kActiveTitle, kNormal);
  take(kInactiveTitle, kDisabled);
  title.SetTextBackColor(Color{});
  title.SetAlignment(skin->windowAlignment);
  title.SetFlag(kFlagAutoSize);
  title.UpdateSize();
  if (skin->windowTextBack != 0)
    textBack.Unhide();
  else
    textBack.Hide();
  SetAnimationProperties(skin->windowAnimationLength, skin->windowAnimationType);
}

void Window::FitToClient() {
  const Size frame = FrameSize();
  if (!IsInState(kMaximized) && client->w() != 0 && client->h() != 0) TakeClientSize();
  minWidth += frame.w - grownMinimum_.w;
  minHeight += frame.h - grownMinimum_.h;
  grownMinimum_ = frame;
}

void Window::MsgInitSkin() {
  Dialog::MsgInitSkin();
  TakeTitleLook();
  FitToClient();
  UpdateLayout();
  UpdateButtons();
}

void Window::PlaceFrame() {
  const int inner = w() - FrameSize().w;
  const int x = left.Thickness();
  left.Shape(0, 0, x, h());
  right.Shape(w() - right.Thickness(), 0, right.Thickness(), h());
  top.Shape(x, 0, inner, top.Thickness());
  bottom.Shape(x, h() - bottom.Thickness(), inner, bottom.Thickness());
  grip.Shape(x, top.Thickness(), inner, grip.Thickness());
}

void Window::PlaceTitle() {
  const Point text = skin->windowTextPos;
  int x = text.x;
  if (skin->windowAlignment == kAlignRight) x = w() - title.w() - text.x;
  if (skin->windowAlignment == kAlignCentre) x = (w() - title.w()) / 2;
  // A title that is too long loses its end.
  if (skin->windowAlignment != kAlignLeft) x = std::max(0, x);
  title.Place(x, text.y);
  if (textBack.Hidden()) return;
  textBack.Shape(std::max(0, title.GetRelativePos().x - textBack.EdgeWidth()), 0,
                 title.w() + textBack.ExtraWidth(), textBack.Thickness());
}

void Window::UpdateLayout() {
  Dialog::UpdateLayout();
  if (!IsDressed()) return;
  PlaceFrame();
  minButton.Place(skin->windowMinPos);
  maxButton.Place(skin->windowMaxPos);
  closeButton.Place(skin->windowExitPos);
  PlaceTitle();
  minWidth = std::max(minWidth, textBack.w() + Zoomed(kRoomBesideTitle));
  minHeight = std::max(minHeight, FrameSize().h);
  if (IsInState(kRolledUp)) return;
  client->Shape(left.Thickness(), TitleBarHeight(), std::max(0, w() - FrameSize().w),
                std::max(0, h() - FrameSize().h));
}

FramePart* Window::PartUnderPointer() {
  for (FramePart* part : {&left, &right, &top, &bottom, &grip})
    if (Rect{0, 0, part->w(), part->h()}.Contains(part->GetMousePos())) return part;
  return nullptr;
}

int Window::GetDragMode() {
  if (minButton.HasMouse() || maxButton.HasMouse() || closeButton.HasMouse()) return kDragNone;
  const FramePart* part = PartUnderPointer();
  if (!part || IsInState(kMaximized)) return kDragNone;
  if (part == &grip) return TestFlag(kFlagMovable) ? kDragMove : kDragNone;
  if (!TestFlag(kFlagSizeable) || IsInState(kRolledUp)) return kDragNone;

  const Zones& zones = kZones[part->Part()];
  const Point pointer = part->GetMousePos();
  const int along = part->IsVertical() ? pointer.y : pointer.x;
  const int length = part->IsVertical() ? part->h() : part->w();
  if (along < part->CornerExtent()) return zones.start;
  return along < length - part->CornerExtent() ? zones.middle : zones.end;
}

bool Window::Add(Widget* widget) {
  const bool added = client->Add(widget);
  if (!IsInState(kRolledUp)) Dialog::Add(client);
  return added;
}

void Window::Remove(Widget* widget) { client->Remove(widget); }

void Window::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  Dialog::HandleEvent(sender, msg, arg1, arg2);
  if (msg == MSG_ACTIVATE && sender == &minButton) Minimize();
  if (msg == MSG_ACTIVATE && sender == &maxButton) Maximize();
  const bool onTitle = sender == &grip || sender == &textBack || sender == &title;
  if (msg == MSG_DCLICK && onTitle && TestFlag(kFlagSizeable)) Maximize();
  if (msg == MSG_CLOSE && sender == client) Close();
}

Widget* Window::Popup(Dialog* over, int px, int py, Widget* focusWidget) {
  if (skin) SetAnimationProperties(skin->windowAnimationLength, skin->windowAnimationType);
  StartAnimation();
  Widget* last = Dialog::Popup(over, px, py, focusWidget);
  ResetAnimation();
  return last;
}

void Window::Resize(int width, int height, bool percent) {
  if (percent) {
    Dialog::Resize(width, height, true);
    return;
  }
  client->Resize(width, height);
  TakeClientSize();
}

void Window::Resize(Size size, bool percent) { Resize(size.w, size.h, percent); }

void Window::SetClientArea(Dialog* dialog) {
  Dialog::Remove(client);
  client = dialog ? dialog : &clientArea;
  SetW(client->w() + FrameSize().w);
  if (IsInState(kRolledUp))
    savedRect.w = w();
  else
    Dialog::Add(client);
  if (running) UpdateLayout();
}

void Window::FinishStateChange() {
  // A press does not go on dragging what has another shape now.
  SetDragMode(kDragNone);
  UpdateLayout();
  // What the window no longer covers must show again.
  GetRoot()->Redraw();
}

void Window::Minimize() {
  if (IsInState(kMaximized)) return;
  state ^= kRolledUp;
  if (IsInState(kRolledUp)) {
    savedRect = {relPos.x, relPos.y, w(), h()};
    ChangeFocus(FocusWidget(), nullptr);
    Dialog::Remove(client);
    ResizeFrame(w(), FrameSize().h);
  } else {
    ResizeFrame(savedRect.w, savedRect.h);
    Dialog::Add(client);
    // To the widget that lost it when the window was rolled up.
    if (HasFocus() && !focus) SetFocus(client);
  }
  if (!HasFocus()) {
    closeButton.Enable();
    if (TestFlag(kFlagSizeable)) minButton.Enable();
    if (TestFlag(kFlagSizeable)) maxButton.Enable();
  }
  FinishStateChange();
}

void Window::Maximize() {
  if (IsInState(kRolledUp)) return;
  state ^= kMaximized;
  if (IsInState(kMaximized)) {
    savedRect = {relPos.x, relPos.y, w(), h()};
    maxButton.SetIcon(ICONRESTORE);
    Place(0, 0);
    const bool onScreen = IsRoot() || !parent;
    ResizeFrame(onScreen ? settings.screenWidth : parent->w(),
                onScreen ? settings.screenHeight : parent->h());
  } else {
    maxButton.SetIcon(ICONMAX);
    ResizeFrame(savedRect.w, savedRect.h);
    Place(savedRect.x, savedRect.y);
  }
  FinishStateChange();
}

void Window::SetAutoRollup(bool rollsUp) {
  state = rollsUp ? state | kAutoRollup : state & ~kAutoRollup;
  const bool rolls = rollsUp ? !HasFocus() && !IsInState(kRolledUp) : IsInState(kRolledUp);
  if (rolls && running) Minimize();
}

}  // namespace zel
