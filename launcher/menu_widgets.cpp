#include "launcher/menu_widgets.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "launcher/backdrop.h"
#include "launcher/state.h"
#include "toolkit/base/input.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/zoom.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

// Between the hint and its frame; at the right, Zoomed(kHintMargin) leaves room enough.
constexpr int kHintInset = 4;
// What ShowHint leaves of the text viewer's width for its frame and scroll bar.
constexpr int kHintMargin = 24;
// Between a text on the background and the layout's right end.
constexpr int kTextMargin = 16;
// A font has no picture of a tab and its like.
constexpr const char* kWordEnds = " \n\t\v\f";

// What of a word stays on one line.
std::vector<std::string> PartsOf(const char* word, const Font& font) {
  std::vector<std::string> parts;
  int before = 0;
  for (const char* next = word; *next != '\0';) {
    const char* const start = next;
    const int character = ugetxc(&next);
    if (parts.empty() || font.BreaksBetween(before, character)) parts.emplace_back();
    parts.back().append(start, next);
    before = character;
  }
  return parts;
}

}  // namespace

MenuEntry* MenuList::GetEntry(int index) const { return static_cast<MenuEntry*>(GetItem(index)); }

bool MenuList::IsSeparatorAt(int index) const {
  const MenuEntry* entry = GetEntry(index);
  return entry && entry->IsSeparator();
}

bool MenuList::HandlePadKey(int scancode) {
  int target = current;
  switch (scancode) {
    case KEY_1_PAD:
      target = Count() - 1;
      break;
    case KEY_2_PAD:
      target = current + 1;
      break;
    case KEY_3_PAD:
      target = current + PageSize();
      break;
    case KEY_7_PAD:
      target = 0;
      break;
    case KEY_8_PAD:
      target = current - 1;
      break;
    case KEY_9_PAD:
      target = current - PageSize();
      break;
    case KEY_ENTER_PAD:
      if (!IsValid(current)) return true;
      if (!multiSelect || IsSelected(current))
        ActivateItem(current);
      else
        SelectItem(current);
      return true;
    default:
      return false;
  }
  if (Count() > 0) MoveCurrentTo(target);
  return true;
}

bool MenuList::HandleKey(int code) {
  if (ListView::MsgChar(code)) return true;
  return HandlePadKey(code >> 8);
}

void MenuList::MsgStart() {
  ListView::MsgStart();
  heldKey_.Begin();
  heldKey_.HoldAny();
}

bool MenuList::MsgChar(int code) {
  TakeReleasedKey();
  const int scancode = code >> 8;
  // Nobody chooses what he does not see.
  if (heldKey_.Ignores(scancode) || (IsLate() && HeldKey::Chooses(scancode))) return true;
  const int waiting = std::exchange(waitingKey_, 0);
  if (waiting != 0 && waiting >> 8 == scancode) {
    heldKey_.Hold(scancode);
    return true;
  }
  if (heldKey_.MayBeOld(scancode)) {
    waitingKey_ = code;
    return true;
  }
  return TakeKey(code);
}

void MenuList::TakeReleasedKey() {
  if (waitingKey_ != 0 && !heldKey_.IsStillDown(waitingKey_ >> 8))
    TakeKey(std::exchange(waitingKey_, 0));
}

bool MenuList::TakeKey(int code) {
  heldKey_.Hold(code >> 8);
  // What the mouse has opened is settled; its index would take this key's step back.
  pendingIndex_ = -1;
  bool used = false;
  bool moved = false;
  do {
    const int before = current;
    used = HandleKey(code);
    moved = current != before;
    // A key that has opened another menu must not choose in it too.
  } while (moved && pendingIndex_ == -1 && IsSeparatorAt(current));
  if (moved) Report(MSG_ITEM_SELECTED, reinterpret_cast<EventArg>(GetItem(current)));
  SelectItem(std::exchange(pendingIndex_, -1));
  return used;
}

void MenuList::MsgTick() {
  ListView::MsgTick();
  heldKey_.Poll();
  TakeReleasedKey();
}

void MenuList::MsgGotFocus() { Widget::MsgGotFocus(); }

void MenuList::MsgLPress() {
  Widget::MsgLPress();
  // What it would have chosen may no longer be what is current.
  heldKey_.Hold(std::exchange(waitingKey_, 0) >> 8);
  const int pressed = ItemAt();
  if (!IsValid(pressed) || IsSeparatorAt(pressed)) return;
  if (pressed != current) SetCurrent(pressed);
  RedrawItems(current, pressed);
  Report(MSG_ITEM_SELECTED, reinterpret_cast<EventArg>(GetItem(pressed)));
}

TitledPanel::TitledPanel(Widget& childWidget) : child{childWidget} {}

void TitledPanel::SetTitle(const char* text) {
  title.Assign(text);
  Redraw();
}

int TitledPanel::TitleHeight() const { return GetFont(kNormal).TextHeight() * 5 / 4; }

void TitledPanel::MsgInitSkin() {
  Dialog::MsgInitSkin();
  if (skin) {
    // The tile as it is stored: here -1 does not stand for a third.
    const SkinBitmap& ridge = *skin->bitmaps[PANEL_RIDGE];
    const Size tile = ridge.GetTileSize();
    horizontalMargin = (ridge.Width() - tile.w) / 2;
    verticalMargin = (ridge.Height() - tile.h) / 2;
  }
  UpdateLayout();
}

void TitledPanel::UpdateLayout() {
  Dialog::UpdateLayout();
  const int titleHeight = title.IsEmpty() ? 0 : TitleHeight();
  child.Shape(horizontalMargin, verticalMargin + titleHeight, w() - 2 * horizontalMargin,
              h() - titleHeight - 2 * verticalMargin);
  // At once, so that a list knows how many rows it shows before its current entry is set.
  child.SendMessage(MSG_SHAPE);
}

void TitledPanel::Draw(Bitmap& canvas) {
  Dialog::Draw(canvas);
  const int width = w() - 2 * horizontalMargin;
  const int height = h() - 2 * verticalMargin;
  const bool hasRoom = verticalMargin < canvas.Height() && width > 0 && height > 0;
  if (title.IsEmpty() || !hasRoom || !skin) return;
  const Color face = skin->colors[kFace];
  const Color light = skin->colors[kShad1];
  const Color dark = skin->colors[kShad2];
  SubCanvas inner{canvas, horizontalMargin, verticalMargin, width, height};
  inner.Box3D(0, 0, width - 1, height - 1, face, light, dark, Zoomed(1));

  const Font& font = GetFont(kNormal);
  const int bandHeight = TitleHeight();
  inner.Box3D(0, 0, width - 1, bandHeight - 1, face, light, dark, Zoomed(1));
  const Point point{(width - font.TextLength(title)) / 2, (bandHeight - font.TextHeight()) / 2};
  font.Textout(inner, title, point.x, point.y, skin->colors[kFontFace], Color{}, kAlignLeft);
}

bool TitledPanel::MsgXChar(int code) {
  if (code >> 8 != KEY_TAB) return false;
  GetRoot()->MoveFocus(FocusMove::kNext);
  return true;
}

MenuPanel::MenuPanel() : MenuPanel{std::make_unique<MenuList>()} {}

MenuPanel::MenuPanel(std::unique_ptr<MenuList> menuList)
    : TitledPanel{listBox_}, list_{menuList.get()}, listBox_{std::move(menuList)} {
  Add(&listBox_);
}

void MenuPanel::HandleEvent(Widget* sender, int msg, EventArg arg1, EventArg arg2) {
  TitledPanel::HandleEvent(sender, msg, arg1, arg2);
  if (msg == MSG_ACTIVATE && sender == &listBox_)
    Report(MSG_ITEM_CHOSEN, reinterpret_cast<EventArg>(CurrentEntry()));
}

HintPanel::HintPanel() : TitledPanel{view_} { Add(&view_); }

void HintPanel::UpdateLayout() {
  // Beside a wide scroll bar no line may need another one.
  const int left = std::clamp(Zoomed(kHintMargin) - view_.BarThickness(), 0, Zoomed(kHintInset));
  view_.SetMargins(left, Zoomed(kHintInset), 0, Zoomed(kHintInset));
  TitledPanel::UpdateLayout();
}

void HintPanel::Draw(Bitmap& canvas) {
  if (Hidden())
    Dialog::Draw(canvas);
  else
    TitledPanel::Draw(canvas);
}

void HintPanel::ShowHint(const MenuEntry* entry, const Font& font) {
  if (!entry || entry->Item().hintText.IsEmpty()) return view_.SetLines({});
  const int room = view_.w() - Zoomed(kHintMargin);
  const int space = font.TextLength(" ");
  std::vector<std::string> lines;
  std::string line;
  int width = 0;
  std::string rest = entry->Item().hintText.c_str();
  char* position = nullptr;
  for (char* word = ustrtok_r(rest.data(), kWordEnds, &position); word;
       word = ustrtok_r(nullptr, kWordEnds, &position)) {
    for (const std::string& part : PartsOf(word, font)) {
      const int partWidth = font.TextLength(part.c_str());
      if (width + space + partWidth > room) {
        lines.push_back(std::exchange(line, {}));
        width = 0;
      }
      line += part;
      width += partWidth;
    }
    line += ' ';
    width += space;
  }
  lines.push_back(std::move(line));
  view_.SetLines(std::move(lines));
}

void ScreenLabel::Show(const ScreenText& text) {
  const Rect place = launcherState.layout.OnScreen({text.left, text.top, 0, 0});
  font_ = text.font;
  color_ = text.color;
  TakeLook();
  SetText(text.text);
  Place(place.x, place.y);
  Wrap();
  if (text.text.IsEmpty())
    Hide();
  else
    Unhide();
}

void ScreenLabel::MsgInitSkin() {
  Label::MsgInitSkin();
  TakeLook();
  Wrap();
}

void ScreenLabel::Wrap() {
  const ScreenLayout& layout = launcherState.layout;
  const int end = layout.section.empty() ? settings.screenWidth
                                         : layout.OnScreen({0, 0, layout.size.w, 0}).Right();
  SetMultiline(false);
  UpdateSize();
  const int room = end - Zoomed(kTextMargin) - GetRelativePos().x;
  if (w() <= room || room < 1) return;
  SetW(room);
  SetMultiline(true);
}

void ScreenLabel::TakeLook() {
  SetFont(font_, kNormal);
  SetFontColor(color_, Color{}, kNormal);
  SetTextBackColor(Color{});
}

CenteredImage::CenteredImage() { ClearFlag(kFlagAutoSize); }

void CenteredImage::Draw(Bitmap& canvas) {
  if (bitmap.IsEmpty()) return;
  const int left = std::max(0, (w() - bitmap.Width()) / 2);
  const int top = std::max(0, (h() - bitmap.Height()) / 2);
  bitmap.blit(canvas.GetBitmap(), sourceX_, sourceY_, left, top, w(), h());
}

void CenteredImage::Take(BitmapPtr picture) {
  bitmap.Take(std::move(picture));
  Redraw();
}

void CenteredImage::UpdateOpacity() { SetOpaque(bitmap.Width() >= w() && bitmap.Height() >= h()); }

void CenteredImage::MsgResize() {
  Image::MsgResize();
  UpdateOpacity();
}

void CenteredImage::MsgShape() {
  Image::MsgShape();
  UpdateOpacity();
}

WallpaperPanel::WallpaperPanel() {
  SetOpaque(true);
  Add(&clearScreen_);
  Add(&image_);
}

void WallpaperPanel::SetPicture(const char* fileName) {
  image_.ResetSource();
  if (const ScreenLayout& layout = launcherState.layout; layout.section.empty())
    image_.SetBitmap(fileName);
  else
    image_.Take(LoadBackdrop(fileName, layout, {w(), h()}));
  image_.Resize(w(), h());
}

}  // namespace zel
