#include "toolkit/core/widget.h"

#include <algorithm>
#include <utility>

#include "toolkit/core/animator.h"
#include "toolkit/core/core_part.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/mouse_pointer.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

// The bits that end with MSG_END.
constexpr std::uint32_t kRunningFlags =
    kFlagFocus | kFlagMouse | kFlagMoved | kFlagResized | kFlagSkinChanged;

constexpr int kNotUsed = -1;  // in the percent geometry

int InLimits(int pixels) { return std::clamp(pixels, -kMostPixels, kMostPixels); }

int PercentOf(int extent, int percent) {
  return static_cast<int>(static_cast<long long>(extent) * percent / 100);
}

}  // namespace

Widget::Widget()
    : skin{CurrentSkin()},
      animator{std::make_unique<Animator>()},
      creationOrder_{process.Of<CorePart>().widgetsMade++} {
  for (Color& color : fontColor) color = black;
}

Widget::~Widget() {
  if (Widget*& last = Loop().lastFocus; last == this) last = nullptr;
  if (IsNested()) parent->Forget(this);
}

bool Widget::IsNested() const { return parent && static_cast<const Widget*>(parent) != this; }

void Widget::Report(int msg, EventArg arg1, EventArg arg2) {
  if (parent) parent->HandleEvent(this, msg, arg1, arg2);
}

void Widget::SetCursor(int index) {
  MousePointer* pointer = CurrentPointer();
  if (!parent || !pointer || index < 0 || index >= Skin::kCursors) return;
  if (Skin* shapes = parent->GetSkin()) pointer->SetCursor(shapes->cursors[index].get());
}

void Widget::UpdateAbsolutePos() {
  const Point place = parent ? GetAbsolutePos() : relPos;
  Rect::x = place.x;
  Rect::y = place.y;
}

void Widget::MsgStart() {
  UpdateAbsolutePos();
  Report(MSG_START);
}

void Widget::MsgEnd() {
  Report(MSG_END);
  ClearFlag(kRunningFlags);
}

void Widget::Draw(Bitmap&) {}

void Widget::MsgClick() { Report(MSG_CLICK); }
void Widget::MsgDClick() { Report(MSG_DCLICK); }
void Widget::MsgKey() { Report(MSG_KEY); }

bool Widget::MsgChar(int code) {
  Report(MSG_CHAR, code);
  return false;
}

bool Widget::MsgUChar(int character) {
  Report(MSG_UCHAR, character);
  return false;
}

bool Widget::MsgXChar(int code) {
  Report(MSG_XCHAR, code);
  return false;
}

bool Widget::MsgWantFocus() {
  Report(MSG_WANTFOCUS);
  return false;
}

void Widget::MsgGotFocus() {
  ChangeFlag(kFlagFocus, true);
  Report(MSG_GOTFOCUS);
}

void Widget::MsgLostFocus() {
  ChangeFlag(kFlagFocus, false);
  Report(MSG_LOSTFOCUS);
}

bool Widget::MsgWantMouse() {
  Report(MSG_WANTMOUSE);
  return true;
}

void Widget::MsgGotMouse() {
  SetFlag(kFlagMouse);
  Report(MSG_GOTMOUSE);
}

void Widget::MsgLostMouse() {
  ClearFlag(kFlagMouse);
  Report(MSG_LOSTMOUSE);
}

void Widget::MsgIdle() {}

void Widget::MsgRadio(int group) { Report(MSG_RADIO, group); }
void Widget::MsgWheel(int steps) { Report(MSG_WHEEL, steps); }
void Widget::MsgLPress() { Report(MSG_LPRESS); }
void Widget::MsgMPress() { Report(MSG_MPRESS); }
void Widget::MsgRPress() { Report(MSG_RPRESS); }
void Widget::MsgLRelease() { Report(MSG_LRELEASE); }
void Widget::MsgMRelease() { Report(MSG_MRELEASE); }
void Widget::MsgRRelease() { Report(MSG_RRELEASE); }
void Widget::MsgTimer(int id) { Report(MSG_TIMER, id); }

void Widget::MsgTick() {
  if (!animator->HasSteps()) return;
  animator->Step();
  Redraw();
}

void Widget::ApplyPercentPosition() {
  if (!parent) return;
  if (relGeom.x != kNotUsed) SetX(PercentOf(parent->w(), relGeom.x));
  if (relGeom.y != kNotUsed) SetY(PercentOf(parent->h(), relGeom.y));
}

void Widget::ApplyPercentSize() {
  if (!parent) return;
  if (relGeom.w != kNotUsed) SetW(PercentOf(parent->w(), relGeom.w));
  if (relGeom.h != kNotUsed) SetH(PercentOf(parent->h(), relGeom.h));
}

void Widget::MsgMove() {
  Report(MSG_MOVE);
  ClearFlag(kFlagMoved);
  ApplyPercentPosition();
}

void Widget::MsgResize() {
  Report(MSG_RESIZE);
  ClearFlag(kFlagResized);
  ApplyPercentSize();
}

void Widget::MsgShape() {
  Report(MSG_SHAPE);
  ClearFlag(kFlagMoved | kFlagResized);
  ApplyPercentPosition();
  ApplyPercentSize();
}

void Widget::MsgMouseMove(Point p) { Report(MSG_MOUSEMOVE, p.x, p.y); }

void Widget::MsgInitSkin() {
  Report(MSG_INITSKIN);
  ClearFlag(kFlagSkinChanged);
}

bool Widget::MsgClose() { return true; }
bool Widget::MsgWantTab() { return MsgWantFocus(); }

int Widget::x() const { return Rect::x; }
int Widget::y() const { return Rect::y; }
int Widget::x2() const { return x() + w(); }
int Widget::y2() const { return y() + h(); }
int Widget::w() const { return Rect::w; }
int Widget::h() const { return Rect::h; }
Point Widget::GetRelativePos() const { return relPos; }
int Widget::GetKey() const { return key; }
std::uint32_t Widget::GetFlags() const { return flags; }
bool Widget::TestFlag(std::uint32_t mask) const { return (flags & mask) == mask; }
bool Widget::HasFocus() const { return TestFlag(kFlagFocus); }
bool Widget::HasMouse() const { return TestFlag(kFlagMouse); }
bool Widget::Hidden() const { return TestFlag(kFlagHidden); }
bool Widget::IsExit() const { return TestFlag(kFlagExit); }
bool Widget::Selected() const { return TestFlag(kFlagSelected); }
bool Widget::Disabled() const { return TestFlag(kFlagDisabled); }
bool Widget::Dirty() const { return TestFlag(kFlagDirty); }
bool Widget::IsContainer() const { return TestFlag(kFlagContainer); }
bool Widget::IsWindow() const { return TestFlag(kFlagWindow); }
Dialog* Widget::GetParent() const { return parent; }

void Widget::SetX(int v, bool percent) {
  if (percent) {
    relGeom.x = InLimits(v);
  } else {
    relPos.x = InLimits(v < 0 && parent ? v + parent->w() : v);
    UpdateAbsolutePos();
  }
  Redraw();
  SetFlag(kFlagMoved);
}

void Widget::SetY(int v, bool percent) {
  if (percent) {
    relGeom.y = InLimits(v);
  } else {
    relPos.y = InLimits(v < 0 && parent ? v + parent->h() : v);
    UpdateAbsolutePos();
  }
  Redraw();
  SetFlag(kFlagMoved);
}

void Widget::SetW(int v, bool percent) {
  (percent ? relGeom.w : Rect::w) = InLimits(v);
  Redraw();
  SetFlag(kFlagResized);
}

void Widget::SetH(int v, bool percent) {
  (percent ? relGeom.h : Rect::h) = InLimits(v);
  Redraw();
  SetFlag(kFlagResized);
}

void Widget::SetKey(int shortcut) { key = shortcut; }
void Widget::SetFlag(std::uint32_t mask) { flags |= mask; }
void Widget::ClearFlag(std::uint32_t mask) { flags &= ~mask; }

void Widget::ChangeFlag(std::uint32_t mask, bool set) {
  if (set)
    SetFlag(mask);
  else
    ClearFlag(mask);
  Redraw();
}

void Widget::Enable() { ChangeFlag(kFlagDisabled, false); }
void Widget::Disable() { ChangeFlag(kFlagDisabled, true); }
void Widget::Hide() { SetFlag(kFlagHidden); }
void Widget::Unhide() { ChangeFlag(kFlagHidden, false); }
void Widget::MakeExit() { ChangeFlag(kFlagExit, true); }
void Widget::DontExit() { ChangeFlag(kFlagExit, false); }

void Widget::Place(int px, int py, bool percent) {
  SetX(px, percent);
  SetY(py, percent);
}
void Widget::Place(Point p, bool percent) { Place(p.x, p.y, percent); }

void Widget::Resize(int width, int height, bool percent) {
  SetW(width, percent);
  SetH(height, percent);
}
void Widget::Resize(Size size, bool percent) { Resize(size.w, size.h, percent); }

void Widget::Shape(int px, int py, int width, int height, bool percent) {
  Resize(width, height, percent);
  Place(px, py, percent);
}
void Widget::Shape(Point p, Size size, bool percent) { Shape(p.x, p.y, size.w, size.h, percent); }
void Widget::Shape(const Rect& rect, bool percent) {
  Shape(rect.x, rect.y, rect.w, rect.h, percent);
}

void Widget::Select() { ChangeFlag(kFlagSelected, true); }
void Widget::Deselect() { ChangeFlag(kFlagSelected, false); }
void Widget::SetParent(Dialog* dialog) { parent = dialog; }

void Widget::SetAnimator(std::unique_ptr<Animator> newAnimator) {
  if (newAnimator) animator = std::move(newAnimator);
}

void Widget::SetAnimationProperties(int length, int type) {
  animationLength = length;
  animationType = type;
}

void Widget::StartAnimation() {
  StopAnimation();
  if (animationType != 0) SetFlag(kFlagStartAnimation);
}

void Widget::PlayAnimation(int type) {
  animationType = type;
  StartAnimation();
}

void Widget::StopAnimation() { ClearFlag(kFlagStartAnimation); }

void Widget::ResetAnimation() {
  ClearFlag(kFlagStartAnimation);
  animator->Reset();
}

void Widget::SetTooltip(const char* text) {
  tooltip = text ? std::make_unique<std::string>(text) : nullptr;
}

const char* Widget::GetTooltip() const {
  if (tooltip) return tooltip->c_str();
  return IsNested() ? parent->GetTooltip() : nullptr;
}

void Widget::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask) {
  Shape(px, py, width, height);
  SetKey(shortcut);
  SetFlag(mask);
}

void Widget::SetSkin(Skin* newSkin) {
  skin = newSkin ? newSkin : CurrentSkin();
  SetFlag(kFlagSkinChanged);
  if (!Hidden()) Redraw();
}

Skin* Widget::GetSkin() const { return skin; }

Point Widget::GetMousePos() const {
  const MousePointer* device = CurrentPointer();
  const Point pointer = device ? device->GetMousePosition() : Point{mouse_x, mouse_y};
  return {pointer.x - x(), pointer.y - y()};
}

int Widget::SendMessage(int msg, int arg) {
  using Plain = void (Widget::*)();
  using WithArg = void (Widget::*)(int);
  using KeyHandler = bool (Widget::*)(int);
  using Question = bool (Widget::*)();
  struct Row {
    int msg;
    Plain plain = nullptr;
    WithArg withArg = nullptr;
    KeyHandler keyHandler = nullptr;
    Question question = nullptr;
  };
  static constexpr Row kRows[] = {
      {.msg = MSG_END, .plain = &Widget::MsgEnd},
      {.msg = MSG_DRAW, .plain = &Widget::MsgDraw},
      {.msg = MSG_CLICK, .plain = &Widget::MsgClick},
      {.msg = MSG_DCLICK, .plain = &Widget::MsgDClick},
      {.msg = MSG_KEY, .plain = &Widget::MsgKey},
      {.msg = MSG_CHAR, .keyHandler = &Widget::MsgChar},
      {.msg = MSG_UCHAR, .keyHandler = &Widget::MsgUChar},
      {.msg = MSG_XCHAR, .keyHandler = &Widget::MsgXChar},
      {.msg = MSG_WANTFOCUS, .question = &Widget::MsgWantFocus},
      {.msg = MSG_GOTFOCUS, .plain = &Widget::MsgGotFocus},
      {.msg = MSG_LOSTFOCUS, .plain = &Widget::MsgLostFocus},
      {.msg = MSG_GOTMOUSE, .plain = &Widget::MsgGotMouse},
      {.msg = MSG_LOSTMOUSE, .plain = &Widget::MsgLostMouse},
      {.msg = MSG_IDLE, .plain = &Widget::MsgIdle},
      {.msg = MSG_RADIO, .withArg = &Widget::MsgRadio},
      {.msg = MSG_WHEEL, .withArg = &Widget::MsgWheel},
      {.msg = MSG_LPRESS, .plain = &Widget::MsgLPress},
      {.msg = MSG_LRELEASE, .plain = &Widget::MsgLRelease},
      {.msg = MSG_MPRESS, .plain = &Widget::MsgMPress},
      {.msg = MSG_MRELEASE, .plain = &Widget::MsgMRelease},
      {.msg = MSG_RPRESS, .plain = &Widget::MsgRPress},
      {.msg = MSG_RRELEASE, .plain = &Widget::MsgRRelease},
      {.msg = MSG_TIMER, .withArg = &Widget::MsgTimer},
      {.msg = MSG_TICK, .plain = &Widget::MsgTick},
      {.msg = MSG_INITSKIN, .plain = &Widget::MsgInitSkin},
      {.msg = MSG_MOVE, .plain = &Widget::MsgMove},
      {.msg = MSG_RESIZE, .plain = &Widget::MsgResize},
      {.msg = MSG_SHAPE, .plain = &Widget::MsgShape},
      {.msg = MSG_CLOSE, .question = &Widget::MsgClose},
      {.msg = MSG_WANTMOUSE, .question = &Widget::MsgWantMouse},
      {.msg = MSG_WANTTAB, .question = &Widget::MsgWantTab},
  };

  if (msg == MSG_START) {
    MsgStart();
    StartAnimation();
    return kMessageOk;
  }
  for (const Row& row : kRows) {
    if (row.msg != msg) continue;
    if (row.plain) (this->*row.plain)();
    if (row.withArg) (this->*row.withArg)(arg);
    if (row.keyHandler) return (this->*row.keyHandler)(arg) ? kMessageUsed : kMessageOk;
    if (row.question) return (this->*row.question)() ? kMessageWanted : kMessageOk;
    return kMessageOk;
  }
  return kMessageOk;
}

void Widget::SetFontColor(Color text, Color shadow, int state) {
  fontColor[state] = text;
  shadowColor[state] = shadow;
}

void Widget::SetFont(int index, int state) { fontIndex[state] = index; }

const Font& Widget::GetFont(int state) const {
  const int index = fontIndex[state];
  if (!skin || index < 0 || index >= Skin::kFonts) return process.Of<CorePart>().libraryFont;
  return *skin->fonts[index];
}

void Widget::TakeTextSet(int textSet) {
  if (!skin) return;
  for (int state = 0; state < kDrawStates; ++state) {
    SetFont(skin->fontIndex[textSet][state], state);
    SetFontColor(skin->fontColor[textSet][state], skin->shadowColor[textSet][state], state);
  }
}

SkinBitmap* Widget::GetElement(int index) const {
  if (!skin || index < 0 || index >= Skin::kBitmaps) return nullptr;
  SkinBitmap* element = skin->bitmaps[index].get();
  return element->IsEmpty() ? nullptr : element;
}

int Widget::LookState() const {
  if (Disabled()) return kDisabled;
  if (Selected()) return kSelected;
  return HasFocus() ? kFocused : kNormal;
}

bool Widget::ShowsFocus() const { return skin && skin->dottedRect != 0 && HasFocus(); }

Point Widget::GetAbsolutePos() const {
  if (!IsNested()) return {0, 0};
  const Point origin = parent->GetAbsolutePos();
  return {origin.x + relPos.x, origin.y + relPos.y};
}

}  // namespace zel
