#include "toolkit/widgets/edit_box.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cwctype>
#include <limits>

#include "toolkit/base/input.h"
#include "toolkit/base/text.h"
#include "toolkit/base/zoom.h"
#include "toolkit/core/dialog.h"
#include "toolkit/draw/cursor.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr int kUsualCapacity = 256;
constexpr int kKeepCapacity = -1;
constexpr int kRefused = -1;

constexpr int kFirstPrintable = 32;
constexpr int kLastCharacter = 0x10FFFF;  // of Unicode
constexpr int kLongestCharacter = 8;      // more than the bytes of one in any text format

constexpr std::size_t kLongestInteger = 64;  // bytes of its text

constexpr int kTextLeft = 4;
// The last glyph begins no further right than this from the right edge.
constexpr int kTextRight = 10;
constexpr int kHalfGlyph = 4;  // a press further from a glyph's end puts the cursor before it
constexpr int kFrame = 2;      // width of the border

// A letter in the other case, where the text format has that.
int InCase(int ch, int (*convert)(int)) {
  const int converted = convert(ch);
  return uisok(converted) ? converted : ch;
}

}  // namespace

EditBox::EditBox() { ClearFlag(kFlagAutoSize); }

void EditBox::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                    const char* newText, int capacity) {
  Widget::Setup(px, py, width, height, shortcut, mask);
  SetText(newText, capacity < 0 ? kUsualCapacity : capacity);
}

void EditBox::MsgInitSkin() {
  SetBitmap(PANEL_SUNKEN);
  ClearFlag(kFlagAutoSize);
  TakeTextSet(kEditText);
  SetTextBackColor(Color{});
  UpdateSize();
  Label::MsgInitSkin();
}

void EditBox::MsgStart() {
  // The end of the dialog may have cut a selection with the mouse off.
  ClearFlag(kFlagPressed);
  Label::MsgStart();
}

bool EditBox::MsgWantFocus() {
  Report(MSG_WANTFOCUS);
  return true;
}

// The text.

int EditBox::Length() const { return ustrlen(Text()); }

std::size_t EditBox::OffsetOf(int index) const {
  return static_cast<std::size_t>(uoffset(Text(), std::max(0, index)));
}

void EditBox::SetText(const char* newText, int capacity) {
  text = std::make_unique<std::string>(newText ? CutToBytes(newText, std::string::npos) : "");
  cursor = Length();
  maxLength = std::max(capacity, cursor);
  if (maxLength < 1) maxLength = kUsualCapacity;
  first = 0;
  Widget::Deselect();
}

void EditBox::SetTextLimited(const char* newText, int capacity) {
  SetText(newText, capacity == kKeepCapacity ? maxLength : capacity);
}

void EditBox::SetText(const char* newText) { SetTextLimited(newText, kKeepCapacity); }

void EditBox::SetNumber(int n) {
  if (!HasFilter(kFilterHexadecimal)) {
    Label::SetNumber(n);
    return;
  }
  char digits[16];
  std::snprintf(digits, sizeof digits, HasFilter(kFilterUpperCase) ? "%X" : "%x",
                static_cast<unsigned>(n));
  SetText(Ascii(digits));
}

int EditBox::GetInt() const {
  using Limits = std::numeric_limits<int>;
  constexpr std::int64_t kLowest = Limits::min();
  const bool isHex = HasFilter(kFilterHexadecimal);
  // A negative number in base 16 shows as the unsigned one with the same bits.
  const std::int64_t highest = isHex ? std::numeric_limits<std::uint32_t>::max() : Limits::max();
  // A long may be too narrow for that.
  char digits[kLongestInteger];
  const std::int64_t number =
      std::strtoll(uconvert_toascii(Text(), digits), nullptr, isHex ? 16 : 10);
  return static_cast<int>(static_cast<std::uint32_t>(std::clamp(number, kLowest, highest)));
}

void EditBox::Erase(int from, int to) {
  const std::size_t offset = OffsetOf(from);
  if (text) text->erase(offset, OffsetOf(to) - offset);
}

void EditBox::Insert(int character) {
  char bytes[kLongestCharacter];
  const int size = usetc(bytes, character);
  text->insert(OffsetOf(cursor), bytes, static_cast<std::size_t>(size));
  ++cursor;
}

// The selection.

void EditBox::SelectRange(int from, int to) {
  selStart = from;
  selEnd = to;
  if (from < to)
    Widget::Select();
  else
    Widget::Deselect();
}

void EditBox::EraseSelection() {
  if (!HasSelection()) return;
  Erase(selStart, selEnd);
  cursor = selStart;
  Widget::Deselect();
}

void EditBox::Select() { MsgDClick(); }

void EditBox::Deselect() {
  cursor = first = selStart = selEnd = anchor = selLength = 0;
  Widget::Deselect();
}

void EditBox::MoveCursor(int p) {
  if (!text) return;
  Deselect();
  cursor = std::clamp(p, 0, Length());
  ScrollToCursor();
}

// The keyboard.

int EditBox::Filter(int ch) {
  if (ch < kFirstPrintable || ch > kLastCharacter || !uisok(ch)) return kRefused;
  if (HasFilter(kFilterNumeric) && !uisdigit(ch) && ch != '.' && ch != ',') return kRefused;
  if (HasFilter(kFilterUpperCase))
    ch = InCase(ch, utoupper);
  else if (HasFilter(kFilterLowerCase))
    ch = InCase(ch, utolower);
  if (HasFilter(kFilterHexadecimal) && !std::iswxdigit(static_cast<std::wint_t>(ch)))
    return kRefused;
  return ch;
}

void EditBox::SetFilter(int bits) {
  filter = bits;
  Redraw();
}

bool EditBox::MsgUChar(int character) {
  const int accepted = Filter(character);
  if (accepted != kRefused) {
    const bool hasRoom = Length() < maxLength;
    EraseSelection();
    if (hasRoom) Insert(accepted);
    ScrollToCursor();
    Redraw();
  }
  Label::MsgUChar(character);
  return accepted != kRefused;
}

bool EditBox::MsgChar(int code) {
  static constexpr struct {
    int scancode;
    KeyAction action;
  } kKeys[] = {
      {KEY_LEFT, &EditBox::MoveLeft},     {KEY_RIGHT, &EditBox::MoveRight},
      {KEY_HOME, &EditBox::MoveHome},     {KEY_END, &EditBox::MoveEnd},
      {KEY_DEL, &EditBox::DeleteForward}, {KEY_BACKSPACE, &EditBox::DeleteBackward},
      {KEY_ENTER, &EditBox::Accept},
  };
  const int scancode = code >> 8;
  const auto row = std::find_if(std::begin(kKeys), std::end(kKeys),
                                [scancode](const auto& key) { return key.scancode == scancode; });
  const bool isUsed = row != std::end(kKeys);
  if (isUsed) (this->*row->action)((Shifts() & KB_SHIFT_FLAG) != 0);
  if (scancode == KEY_ENTER) {
    const LifeWatch watch{*this};
    Report(MSG_ACTIVATE);
    if (watch.IsGone()) return true;
  }
  ScrollToCursor();
  Redraw();
  Label::MsgChar(code);
  return isUsed;
}

void EditBox::MoveBy(int step, bool shift) {
  const int target = cursor + step;
  if (target >= 0 && target <= Length()) {
    if (!Selected()) selStart = selEnd = cursor;
    cursor = target;
    const bool movesEnd = step < 0 ? selStart <= cursor : selEnd < cursor;
    if (shift) SelectRange(movesEnd ? selStart : cursor, movesEnd ? cursor : selEnd);
  }
  if (!shift) Widget::Deselect();
}

void EditBox::MoveLeft(bool shift) { MoveBy(-1, shift); }
void EditBox::MoveRight(bool shift) { MoveBy(1, shift); }

void EditBox::MoveHome(bool shift) {
  if (shift)
    SelectRange(0, Selected() ? selStart : cursor);
  else
    Widget::Deselect();
  cursor = 0;
}

void EditBox::MoveEnd(bool shift) {
  if (shift)
    SelectRange(Selected() ? selEnd : cursor, Length());
  else
    Widget::Deselect();
  cursor = Length();
}

void EditBox::DeleteForward(bool) {
  if (HasSelection())
    EraseSelection();
  else
    Erase(cursor, cursor + 1);
}

void EditBox::DeleteBackward(bool) {
  if (HasSelection()) {
    EraseSelection();
  } else if (cursor >= 1) {
    --cursor;
    Erase(cursor, cursor + 1);
    if (cursor <= first) first = 0;
  }
}

void EditBox::Accept(bool) { Widget::Deselect(); }

// The mouse.

int EditBox::CharAt() {
  const Font& font = GetFont(ColorState());
  const Point hotspot = skin ? skin->cursors[MOUSE_TEXTSELECT]->GetHotspot() : Point{};
  const int pointer = GetMousePos().x + hotspot.x + Zoomed(kHalfGlyph);
  int x = Zoomed(kTextLeft);
  int index = first;
  const char* at = Text() + OffsetOf(first);
  while (ugetc(at) != 0) {
    x += font.TextLength(TakeGlyph(&at).c_str());
    if (x > pointer) break;
    ++index;
  }
  return index;
}

void EditBox::MsgLPress() {
  cursor = selStart = selEnd = anchor = CharAt();
  selLength = 0;
  Widget::Select();
  ScrollToCursor();
  SetFlag(kFlagPressed);
  Label::MsgLPress();
}

void EditBox::MsgMouseMove(Point p) {
  if (TestFlag(kFlagPressed)) {
    cursor = CharAt();
    anchor = std::min(anchor, Length());
    selStart = std::min(anchor, cursor);
    selEnd = std::max(anchor, cursor);
    selLength = selEnd - selStart;
    Widget::Select();
    ScrollToCursor();
  }
  Label::MsgMouseMove(p);
}

void EditBox::EndMouseSelection() {
  if (!HasSelection()) Widget::Deselect();
  ClearFlag(kFlagPressed);
}

void EditBox::MsgLRelease() {
  if (TestFlag(kFlagPressed)) {
    cursor = CharAt();
    EndMouseSelection();
    ScrollToCursor();
    Redraw();
  }
  Label::MsgLRelease();
}

// Without the focus and the pointer it would not be told of the release.
void EditBox::MsgLostFocus() {
  if (!HasMouse() && TestFlag(kFlagPressed)) EndMouseSelection();
  Label::MsgLostFocus();
}

void EditBox::MsgDClick() {
  // What the button does until its release no longer matters to the selection.
  ClearFlag(kFlagPressed);
  SelectRange(0, Length());
  Label::MsgDClick();
}

void EditBox::MsgGotMouse() {
  SetCursor(MOUSE_TEXTSELECT);
  Label::MsgGotMouse();
}

void EditBox::MsgLostMouse() {
  if (!HasFocus() && TestFlag(kFlagPressed)) EndMouseSelection();
  SetCursor(MOUSE_NORMAL);
  Label::MsgLostMouse();
}

// The look.

int EditBox::ColorState() const {
  if (Disabled()) return kDisabled;
  return HasFocus() ? kFocused : kNormal;
}

std::string EditBox::TakeGlyph(const char** at) const {
  const char* start = *at;
  ugetxc(at);
  return HasFilter(kFilterPassword) ? std::string{"*"} : std::string{start, *at};
}

EditBox::View EditBox::ViewFrom(int from) const {
  enum Piece { kBefore, kInside, kBehind };
  const Font& font = GetFont(ColorState());
  View view;
  int x = Zoomed(kTextLeft);
  if (from == cursor) view.caret = x;
  const char* at = Text() + OffsetOf(from);
  for (view.last = from; ugetc(at) != 0; ++view.last) {
    const bool isMarked = Selected() && view.last >= selStart;
    const Piece piece = !isMarked ? kBefore : view.last < selEnd ? kInside : kBehind;
    const std::string glyph = TakeGlyph(&at);
    view.pieces[piece] += glyph;
    x += font.TextLength(glyph.c_str());
    const bool isFull = x > w() - Zoomed(kTextRight);
    if (view.last + 1 == cursor || (isFull && !view.caret)) view.caret = x;
    if (isFull) break;
  }
  return view;
}

void EditBox::ScrollToCursor() {
  Bitmap nothing;
  const auto shows = [this, &nothing](int from) { return cursor <= DrawText(from, nothing) + 1; };
  first = std::min(first, cursor);
  if (shows(first)) return;
  // The further right it starts, the more of the text shows: look for the first start that will do.
  int hiding = first;
  first = cursor;
  while (first - hiding > 1) {
    const int middle = hiding + (first - hiding) / 2;
    (shows(middle) ? first : hiding) = middle;
  }
}

int EditBox::DrawText(int from, Bitmap& canvas) {
  const View view = ViewFrom(std::clamp(from, 0, Length()));
  if (!canvas.IsEmpty()) Paint(canvas, view);
  return view.last;
}

void EditBox::Paint(Bitmap& canvas, const View& view) const {
  const int state = ColorState();
  const Font& font = GetFont(state);
  const int marked = HasFocus() ? kSelected : state;
  const Color back = skin ? skin->colors[HasFocus() ? kSelect : kDeselect] : Color{};
  const int y = h() / 2 - font.TextHeight() / 2 + Zoomed(1);
  const struct {
    const std::string& text;
    int state;
    Color background;
  } pieces[] = {{view.pieces[0], state, Color{}},
                {view.pieces[1], marked, back},
                {view.pieces[2], state, Color{}}};
  int x = Zoomed(kTextLeft);
  for (const auto& piece : pieces) {
    if (piece.text.empty()) continue;
    font.TextoutShadow(canvas, piece.text.c_str(), {x, y}, GetFontColor(piece.state),
                       GetShadowColor(piece.state), piece.background, kAlignLeft);
    x += font.TextLength(piece.text.c_str());
  }
  if (!view.caret || !HasFocus()) return;
  // Behind a glyph that is cut off the caret stays in sight.
  const int width = Zoomed(1);
  const int caretX = std::min(*view.caret, w() - Zoomed(kFrame) - width) - width;
  canvas.rectfill(caretX, y, caretX + width - 1, y + font.TextHeight() - 1, GetFontColor(state));
}

void EditBox::Draw(Bitmap& canvas) {
  if (const SkinBitmap* frame = GetBitmap()) frame->DrawArea(canvas, 0, 0, 0, 0, w(), h(), 1, 1);
  // The last glyph may be cut off, but leaves the border alone.
  SubCanvas inside{canvas, 0, 0, w() - Zoomed(kFrame), h() - Zoomed(kFrame)};
  DrawText(first, inside);
  if (ShowsFocus())
    canvas.DottedRect(Zoomed(kFrame), Zoomed(kFrame), w() - 1 - Zoomed(kFrame),
                      h() - 1 - Zoomed(kFrame), skin->colors[kFontFace], Zoomed(1));
}

}  // namespace zel
