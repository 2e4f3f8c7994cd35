#include "toolkit/widgets/button.h"

#include <algorithm>
#include <clocale>
#include <cmath>
#include <iterator>
#include <limits>

#include "toolkit/base/settings.h"
#include "toolkit/base/text.h"
#include "toolkit/base/zoom.h"
#include "toolkit/core/dialog.h"
#include "toolkit/skin/skin.h"
#include "toolkit/widgets/value_range.h"

namespace zel {
namespace {

// How long a key keeps a button pressed, in milliseconds, when the keyboard has no delay of its
// own.
constexpr int kKeyPress = 300;
// What the press lasts beyond the keyboard's delay, so that holding the key keeps the button down.
constexpr int kBeyondKeyDelay = 20;
constexpr int kRepeatPeriod = 60;  // milliseconds

constexpr int kFocusInset = 3;    // of a button's dotted rectangle
constexpr int kCheckTextGap = 4;  // between the box and its text

// Removes the zeros that "%f" leaves at the end.
void TrimZeros(std::string& number) {
  const std::size_t point = number.find('.');
  if (point == std::string::npos) return;
  std::size_t last = number.find_last_not_of('0');
  if (last == point) ++last;
  number.resize(last + 1);
}

int LinesTop(int valign, int height, int textHeight) {
  if (valign == kAlignTop) return 0;
  return valign == kAlignBottom ? height - textHeight : (height - textHeight) / 2;
}

}  // namespace

Label::Label() { SetFlag(kFlagAutoSize); }

void Label::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                  const char* newText, int alignment) {
  SetText(newText);
  if (alignment == kAlignLeft) AlignLeft();
  if (alignment == kAlignRight) AlignRight();
  if (alignment == kAlignCentre) AlignCentre();
  Widget::Setup(px, py, width, height, shortcut, mask);
}

void Label::UpdateSize() {
  if (!text || !TestFlag(kFlagAutoSize)) return;
  const Font& font = GetFont(TextState());
  if (multiline)
    Resize(w(), TextHeight());
  else
    Resize(font.TextLength(text->c_str()), font.TextHeight());
}

void Label::Enable() {
  RepaintBehind();
  Widget::Enable();
}

void Label::Disable() {
  RepaintBehind();
  Widget::Disable();
}

void Label::FollowChange() {
  RepaintBehind();
  UpdateSize();
  Redraw();
}

void Label::SetText(const char* newText) {
  text = newText ? std::make_unique<std::string>(newText) : nullptr;
  FollowChange();
}

void Label::SetNumber(int n) { SetText(Ascii(std::to_string(n).c_str())); }

void Label::SetNumber(double d) {
  std::string number = std::to_string(d);
  // Some locales write a comma.
  std::replace(number.begin(), number.end(), ',', '.');
  TrimZeros(number);
  SetText(Ascii(number.c_str()));
}

const char* Label::GetText() const { return text ? text->c_str() : nullptr; }

int Label::GetInt() const { return RoundToInt(std::trunc(GetDouble())); }

double Label::GetDouble() const {
  if (!text) return 0.0;
  // The library reads a number only as the locale writes it.
  std::string number = *text;
  std::replace(number.begin(), number.end(), '.', *localeconv()->decimal_point);
  return ustrtod(number.c_str(), nullptr);
}

void Label::SetAlignment(int alignment) {
  align = alignment;
  FollowChange();
}

int Label::GetAlignment() const { return align; }
void Label::AlignLeft() { SetAlignment(kAlignLeft); }
void Label::AlignRight() { SetAlignment(kAlignRight); }
void Label::AlignCentre() { SetAlignment(kAlignCentre); }

void Label::SetVAlignment(int alignment) {
  valign = alignment;
  RedrawWithGround();
}

int Label::GetVAlignment() const { return valign; }
bool Label::IsMultiline() const { return multiline; }

void Label::SetMultiline(bool wrap) {
  if (wrap == multiline) return;
  multiline = wrap;
  FollowChange();
}

int Label::TextHeight() const {
  return text ? GetFont(TextState()).MultilineHeight(text->c_str(), w()) : 0;
}

void Label::Draw(Bitmap& canvas) {
  if (!text) return;
  const int state = TextState();
  const Font& font = GetFont(state);
  const Color color = GetFontColor(state);
  const Color shadow = GetShadowColor(state);
  if (textBackColor.IsSet()) canvas.clear_to_color(textBackColor);
  if (multiline) {
    font.MultilineTextout(canvas, text->c_str(), color, shadow, Color{}, 0,
                          LinesTop(valign, h(), TextHeight()), w(), align);
    return;
  }
  const int x = align == kAlignLeft ? 0 : align == kAlignRight ? w() : w() / 2;
  font.TextoutShadow(canvas, text->c_str(), {x, (h() - font.TextHeight()) / 2}, color, shadow,
                     Color{}, align);
}

void Label::MsgInitSkin() {
  Widget::MsgInitSkin();
  if (skin && skin->menu.hasLabels) TakeTextSet(kPlainText);
}

Button::Button() { ClearFlag(kFlagAutoSize); }

void Button::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                   const char* newText) {
  SetText(newText);
  Widget::Setup(px, py, width, height, shortcut, mask);
}

void Button::UpdateSize() {
  if (!TestFlag(kFlagAutoSize)) return;
  const SkinBitmap* element = GetBitmap();
  if (!element) return;
  const Size wanted{element->Width(), element->Height() / kDrawStates};
  if (wanted != Size{w(), h()}) Resize(wanted);
}

int Button::HeldState() const {
  if (Disabled()) return kDisabled;
  if (TestFlag(kFlagPressed)) return kSelected;
  return HasFocus() ? kFocused : kNormal;
}

void Button::Draw(Bitmap& canvas) {
  UpdateSize();
  const int state = LookState();
  if (const SkinBitmap* element = GetBitmap()) {
    if (TestFlag(kFlagAutoSize))
      element->masked_blit(canvas.GetBitmap(), 0, state * h(), 0, 0, element->Width(), h());
    else
      element->DrawArea(canvas.GetBitmap(), 0, state, 0, 0, w(), h(), 1, kDrawStates);
  }
  if (text) {
    const Font& font = GetFont(state);
    const int moved = state == kSelected && skin ? skin->buttonDisplacement : 0;
    const int raised = Zoomed(1) - moved;
    const Point point{w() / 2 - raised, (h() - font.TextHeight()) / 2 - raised};
    font.HotkeyTextout(canvas, text->c_str(), point.x, point.y, GetFontColor(state),
                       GetShadowColor(state), Color{}, kAlignCentre);
  }
  if (ShowsFocus() && !TestFlag(kFlagAutoSize))
    canvas.DottedRect(Zoomed(kFocusInset), Zoomed(kFocusInset), w() - Zoomed(kFocusInset),
                      h() - Zoomed(kFocusInset), GetFontColor(state), Zoomed(1));
}

void Button::SwitchSelected() {
  if (Selected())
    Deselect();
  else
    Select();
}

void Button::BeginPress() {
  // The mouse and the key may press together: that is one press, which the later one ends.
  if (!TestFlag(kFlagPressed)) SwitchSelected();
  ShowChange();
  SetFlag(kFlagPressed);
  keyTimer = 0;
  repeatTimer = 0;
}

void Button::ShowChange() {
  Redraw();
  StartAnimation();
  // Its frames need not cover the same pixels. A transition begins with the old one, however.
  if (TestFlag(kFlagAutoSize) && !InTransition()) RepaintBehind();
}

void Button::Activate() { Report(MSG_ACTIVATE); }

void Button::MsgStart() {
  // A press that the end of the dialog cut off is taken back.
  if (TestFlag(kFlagPressed) && !TestFlag(kFlagToggle)) SwitchSelected();
  ClearFlag(kFlagPressed);
  keyTimer = 0;
  repeatTimer = 0;
  UpdateSize();
  Label::MsgStart();
}

bool Button::MsgWantFocus() {
  Report(MSG_WANTFOCUS);
  return true;
}

void Button::MsgGotFocus() {
  Label::MsgGotFocus();
  ShowChange();
}

void Button::MsgLostFocus() {
  if (!HasMouse()) DropPress();
  Label::MsgLostFocus();
  ShowChange();
}

void Button::MsgLostMouse() {
  if (!HasFocus()) DropPress();
  Label::MsgLostMouse();
}

void Button::DropPress() {
  if (!TestFlag(kFlagPressed) || keyTimer != 0) return;
  ClearFlag(kFlagPressed);
  SwitchSelected();
  ShowChange();
}

void Button::MsgLPress() {
  Label::MsgLPress();
  BeginPress();
}

void Button::MsgLRelease() {
  Label::MsgLRelease();
  // The key, typed later, ends the press.
  if (keyTimer != 0) return;
  const bool pressed = TestFlag(kFlagPressed);
  ClearFlag(kFlagPressed);
  if (!HasMouse()) {
    // Without a press of its own there is nothing to take back.
    if (pressed) SwitchSelected();
    ShowChange();
    return;
  }
  if (!pressed) return;
  if (!TestFlag(kFlagToggle)) SwitchSelected();
  ShowChange();
  if (!TestFlag(kFlagAutoRepeat)) Activate();
}

int Button::KeyPressTicks() const {
  if (settings.keyDelay < 1) return settings.Ticks(kKeyPress);
  const int delay = std::min(settings.keyDelay, std::numeric_limits<int>::max() - kBeyondKeyDelay);
  return settings.Ticks(delay + kBeyondKeyDelay);
}

void Button::MsgKey() {
  Label::MsgKey();
  if (keyTimer == 0) BeginPress();
  // At a low tick rate the press still has to end.
  keyTimer = std::max(1, KeyPressTicks());
}

void Button::EndKeyPress() {
  ClearFlag(kFlagPressed);
  if (!TestFlag(kFlagToggle)) SwitchSelected();
  ShowChange();
  if (!TestFlag(kFlagAutoRepeat)) Activate();
}

void Button::AutoRepeat() {
  if (!TestFlag(kFlagPressed | kFlagAutoRepeat)) return;
  if (repeatTimer != 0) {
    --repeatTimer;
    return;
  }
  repeatTimer = settings.Ticks(kRepeatPeriod);
  // A press may go on in a button that is out of reach meanwhile.
  if (IfUsable(this)) Activate();
}

void Button::MsgTick() {
  const bool wasInTransition = InTransition();
  Label::MsgTick();
  if (wasInTransition && !InTransition() && TestFlag(kFlagAutoSize)) RepaintBehind();
  if (keyTimer != 0 && --keyTimer == 0)
    EndKeyPress();
  else
    AutoRepeat();
}

void Button::MsgInitSkin() {
  Label::MsgInitSkin();
  TakeTextSet(kButtonText);
  SetTextBackColor(Color{});
  SetBitmap(BUTTON);
  if (skin) SetAnimationProperties(skin->buttonAnimationLength, skin->buttonAnimationType);
}

void Button::DrawToggle(Bitmap& canvas) {
  const int state = HeldState();
  const Font& font = GetFont(state);
  const SkinBitmap* element = GetBitmap();
  const int frameHeight = element ? element->Height() / kDrawStates : 0;
  const int slack = font.TextHeight() - frameHeight;
  const int textY = slack < 0 ? -slack / 2 : Zoomed(1);

  if (textBackColor.IsSet()) canvas.clear_to_color(textBackColor);
  if (element) {
    const int frameWidth = element->Width() / kToggleFrames;
    element->masked_blit(canvas.GetBitmap(), Selected() ? frameWidth : 0, state * frameHeight, 0,
                         std::max(0, slack / 2), frameWidth, frameHeight);
  }
  const char* shown = text ? text->c_str() : empty_string;
  font.TextoutShadow(canvas, shown, {frameHeight + Zoomed(kCheckTextGap), textY},
                     GetFontColor(state), GetShadowColor(state), Color{}, kAlignLeft);
  if (ShowsFocus())
    canvas.DottedRect(frameHeight + Zoomed(2), textY - Zoomed(1),
                      font.TextLength(shown) + frameHeight + Zoomed(6), textY + font.TextHeight(),
                      GetFontColor(state), Zoomed(1));
}

void Button::InitToggleSkin(int textSet, int element) {
  Button::MsgInitSkin();
  TakeTextSet(textSet);
  if (skin) SetTextBackColor(skin->colors[kFace]);
  SetBitmap(element);
  SetFlag(kFlagToggle);
  ClearFlag(kFlagAutoSize | kFlagAutoRepeat);
}

void CheckBox::Draw(Bitmap& canvas) { DrawToggle(canvas); }
void RadioButton::Draw(Bitmap& canvas) { DrawToggle(canvas); }

void CheckBox::MsgInitSkin() { InitToggleSkin(kCheckBoxText, CHECKBOX); }

void RadioButton::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                        const char* newText, int g) {
  Label::Setup(px, py, width, height, shortcut, mask, newText, kAlignLeft);
  group = g;
}

void RadioButton::MsgInitSkin() { InitToggleSkin(kRadioText, RADIO); }

void RadioButton::MsgLPress() {
  Widget::MsgLPress();
  if (!Selected()) BeginPress();
}

void RadioButton::MsgLRelease() {
  // Whoever is told that the button was pressed may destroy it.
  Dialog* const container = parent;
  const int ownGroup = group;
  const bool stays = TestFlag(kFlagPressed | kFlagToggle) && HasMouse();
  Button::MsgLRelease();
  if (stays && container) container->SendToChildren(MSG_RADIO, ownGroup);
}

void RadioButton::MsgKey() {
  if (Selected()) {
    Widget::MsgKey();
    return;
  }
  // The button with the focus is the one that stays selected.
  if (parent && !HasFocus()) parent->ChangeFocus(parent->GetFocus(), this);
  Button::MsgKey();
  if (parent) parent->SendToChildren(MSG_RADIO, group);
}

void RadioButton::MsgRadio(int g) {
  if (g == group && !HasFocus() && Selected()) {
    Deselect();
    ShowChange();
  }
  Widget::MsgRadio(g);
}

}  // namespace zel
