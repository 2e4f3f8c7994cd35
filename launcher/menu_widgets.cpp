#include "launcher/menu_widgets.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "launcher/backdrop.h"
#include "launcher/state.h"
#include "toolkit/base/input.h"
#include "toolkit/base/settings.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/contrast.h"
#include "toolkit/draw/smooth.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

// Between the hint and its frame; at the right, Zoomed(kHintMargin) leaves room enough.
constexpr int kHintInset = 4;
// What ShowHint leaves of the text viewer's width for its frame and scroll bar.
constexpr int kHintMargin = 24;
// A font has no picture of a tab and its like.
constexpr const char* kWordEnds = " \n\t\v\f";

// What a skin says of a margin, as far as it leaves room on a panel of this size.
int Padding(int said, int usual, int size) {
  return std::min(OrElse(said, usual), std::max(usual, size / 6));
}

// What of a word stays on one line.
std::vector<std::string> PartsOf(const char* word, const Font& font) {
  std::vector<std::string> parts;
  int before = 0;  // 0 at the start
  for (const char* next = word; *next != '\0';) {
    const char* const start = next;
    const int character = ugetxc(&next);
    if (before == 0 || font.BreaksBetween(before, character)) parts.emplace_back();
    parts.back().append(start, next);
    before = character;
  }
  return parts;
}

// The characters of a word, one by one.
std::vector<std::string> CharactersOf(const std::string& word) {
  std::vector<std::string> characters;
  for (const char* next = word.c_str(); *next != '\0';) {
    const char* const start = next;
    ugetxc(&next);
    characters.emplace_back(start, next);
  }
  return characters;
}

// The words of a text in lines that are no wider than the room, with a blank behind each word.
// Where long words are to be cut, none is wider.
std::vector<std::string> Wrapped(const std::string& text, const Font& font, int room, bool cuts) {
  std::string words{text};
  const int space = font.TextLength(" ");
  std::vector<std::string> lines;
  std::string line;
  int width = 0;
  const auto add = [&](const std::string& part, int partWidth) {
    if (width + space + partWidth > room) {
      lines.push_back(std::exchange(line, {}));
      width = 0;
    }
    line += part;
    width += partWidth;
  };
  char* position = nullptr;
  for (char* word = ustrtok_r(words.data(), kWordEnds, &position); word;
       word = ustrtok_r(nullptr, kWordEnds, &position)) {
    for (const std::string& part : PartsOf(word, font)) {
      const int partWidth = font.TextLength(part.c_str());
      if (cuts && space + partWidth > room) {
        // The rest of a line would hold a piece that nobody can read.
        if (!line.empty()) lines.push_back(std::exchange(line, {}));
        width = 0;
        for (const std::string& piece : CharactersOf(part))
          add(piece, font.TextLength(piece.c_str()));
      } else {
        add(part, partWidth);
      }
    }
    line += ' ';
    width += space;
  }
  lines.push_back(std::move(line));
  return lines;
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
  int before = current;
  const bool used = HandleKey(code);
  // A key that has opened another menu must not choose in it too.
  while (current != before && pendingIndex_ == -1 && IsSeparatorAt(current)) {
    before = current;
    HandleKey(code);
  }
  if (current != before) Report(MSG_ITEM_SELECTED, reinterpret_cast<EventArg>(GetItem(current)));
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
  IsFlat() ? RedrawWithGround() : Redraw();
}

const Font& TitledPanel::TitleFont() const {
  const int said = skin ? skin->menu.titleFont : MenuLook::kAbsent;
  return said == MenuLook::kAbsent ? GetFont(kNormal) : *skin->fonts[said];
}

int TitledPanel::TitleRoom() const {
  const bool isBeside = skin && skin->menu.titleAlignment >= 0 && skin->menu.titleAlignment < 2;
  return w() - 2 * horizontalMargin - (isBeside ? OrElse(skin->menu.titleX, 0) : 0);
}

int TitledPanel::TitleHeight() const {
  const int usual = TitleFont().TextHeight() * 5 / 4;
  if (!skin) return usual;
  const int height = std::min(OrElse(skin->menu.titleHeight, usual), std::max(usual, h() / 4));
  return std::max(TitleFont().TextHeight(), height);
}

void TitledPanel::MsgInitSkin() {
  Dialog::MsgInitSkin();
  if (skin && !IsFlat()) {
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
  if (IsFlat()) {
    const int border = OrElse(skin->menu.borderWidth, Zoomed(1));
    horizontalMargin = border + Padding(skin->menu.paddingX, 0, w());
    verticalMargin = border + Padding(skin->menu.paddingY, 0, h());
  }
  const int titleHeight = title.IsEmpty() ? 0 : TitleHeight();
  child.Shape(horizontalMargin, verticalMargin + titleHeight, w() - 2 * horizontalMargin,
              h() - titleHeight - 2 * verticalMargin);
  // At once, so that a list knows how many rows it shows before its current entry is set.
  child.SendMessage(MSG_SHAPE);
}

void TitledPanel::DrawTitle(Bitmap& band, Color ground) const {
  const MenuLook& look = skin->menu;
  const Font& font = TitleFont();
  const int width = font.TextLength(title);
  const int inset = Padding(look.titleX, 0, band.Width());
  int x = (band.Width() - width) / 2;
  if (look.titleAlignment == kAlignLeft) x = inset;
  if (look.titleAlignment == kAlignRight) x = band.Width() - inset - width;
  const Color said = look.titleText.IsSet() ? look.titleText : skin->colors[kFontFace];
  font.Textout(band, title, x, (band.Height() - font.TextHeight()) / 2,
               WithContrast(said, ground, look.leastContrast), Color{}, kAlignLeft);
}

// A box with a line in another colour where the focus is, its title at the top and perhaps a line
// below that.
void TitledPanel::DrawFlat(Bitmap& canvas) const {
  const MenuLook& look = skin->menu;
  const int border = OrElse(look.borderWidth, Zoomed(1));
  const bool showsFocus = HasFocus() && look.focusBorder.IsSet();
  DrawRoundBox(canvas.GetBitmap(), {.area = {0, 0, w(), h()},
                                    .radius = OrElse(look.radius, 0),
                                    .fill = look.ground,
                                    .borderColor = showsFocus ? look.focusBorder : look.border,
                                    .border = border});
  if (title.IsEmpty()) return;
  const int width = w() - 2 * horizontalMargin;
  SubCanvas band{canvas, horizontalMargin, verticalMargin, width, TitleHeight()};
  if (band.IsEmpty()) return;
  if (look.titleGround.IsSet()) band.clear_to_color(look.titleGround);
  DrawTitle(band, look.titleGround.IsSet() ? look.titleGround : look.ground);
  if (look.titleLine.IsSet())
    band.rectfill(0, band.Height() - Zoomed(1), width - 1, band.Height() - 1, look.titleLine);
}

void TitledPanel::Draw(Bitmap& canvas) {
  Dialog::Draw(canvas);
  if (IsFlat()) return DrawFlat(canvas);
  const int width = w() - 2 * horizontalMargin;
  const int height = h() - 2 * verticalMargin;
  const bool hasRoom = verticalMargin < canvas.Height() && width > 0 && height > 0;
  if (title.IsEmpty() || !hasRoom || !skin) return;
  const Color light = skin->colors[kShad1];
  const Color dark = skin->colors[kShad2];
  const Color ground = skin->menu.titleGround;
  const Color face = skin->colors[kFace];
  SubCanvas inner{canvas, horizontalMargin, verticalMargin, width, height};
  inner.Box3D(0, 0, width - 1, height - 1, face, light, dark, Zoomed(1));

  const int bandHeight = TitleHeight();
  inner.Box3D(0, 0, width - 1, bandHeight - 1, ground.IsSet() ? ground : face, light, dark,
              Zoomed(1));
  SubCanvas band{inner, 0, 0, width, bandHeight};
  DrawTitle(band, ground.IsSet() ? ground : face);
}

// The corners of a box take the colour of what lies behind it, which has to be drawn again.
void TitledPanel::ShowFocus() {
  if (IsFlat() && skin->menu.focusBorder.IsSet()) GetRoot()->Redraw();
}

void TitledPanel::MsgGotFocus() {
  ShowFocus();
  Dialog::MsgGotFocus();
}

void TitledPanel::MsgLostFocus() {
  ShowFocus();
  Dialog::MsgLostFocus();
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

void MenuPanel::MsgInitSkin() {
  listBox_.SetGround(FlatGround());
  TitledPanel::MsgInitSkin();
}

void HintView::MsgInitSkin() {
  TextView::MsgInitSkin();
  if (!skin || !skin->menu.IsFlat()) return;
  for (const int state : {kNormal, kFocused})
    SetFontColor(WithContrast(GetFontColor(state), skin->menu.ground, skin->menu.leastContrast),
                 GetShadowColor(state), state);
}

HintPanel::HintPanel() : TitledPanel{view_} { Add(&view_); }

void HintPanel::MsgInitSkin() {
  view_.SetGround(FlatGround());
  TitledPanel::MsgInitSkin();
}

void HintPanel::UpdateLayout() {
  if (const MenuLook* look = skin ? &skin->menu : nullptr; look && HasHintMargins()) {
    const int x = Padding(look->hintX, Zoomed(kHintInset), w());
    const int y = Padding(look->hintY, Zoomed(kHintInset), h());
    TitledPanel::UpdateLayout();
    // Whole lines only.
    const int rest = std::max(0, view_.h() - 2 * y) % view_.GetFont(kNormal).TextHeight();
    return view_.SetMargins(x, y, x, y + rest);
  }
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
  const char* hint = entry->Item().hintText;
  if (!HasHintMargins())
    return view_.SetLines(Wrapped(hint, font, view_.w() - Zoomed(kHintMargin), false));
  const int x = Padding(skin->menu.hintX, Zoomed(kHintInset), w());
  const int y = Padding(skin->menu.hintY, Zoomed(kHintInset), h());
  const int room = view_.w() - 2 * x;
  auto lines = Wrapped(hint, font, room, true);
  const auto height = static_cast<int>(lines.size()) * font.TextHeight();
  // Only a long one has a bar beside it.
  if (height > view_.h() - 2 * y) lines = Wrapped(hint, font, room - view_.BarThickness(), true);
  view_.SetLines(std::move(lines));
}

void HintPanel::WrapAgain(const MenuEntry* entry, const Font& font) {
  const auto lines = [this] { return std::max<std::size_t>(1, view_.Lines().size()); };
  const double before = 1.0 * view_.FirstLine() / static_cast<double>(lines());
  ShowHint(entry, font);
  view_.ShowLine(static_cast<int>(std::lround(before * static_cast<double>(lines()))));
}

int HintPanel::LineRoom() const {
  return view_.VisibleHeight() - view_.GetFont(kNormal).TextHeight();
}

int HintPanel::WordRoom() const {
  if (!HasHintMargins()) return view_.w() - Zoomed(kHintMargin);
  return view_.w() - 2 * Padding(skin->menu.hintX, Zoomed(kHintInset), w());
}

void ScreenLabel::Show(const ScreenText& text) {
  const Point place = launcherState.layout.OnScreen({text.left, text.top});
  font_ = text.font;
  color_ = text.color;
  TakeLook();
  SetText(text.text);
  Place(place.x, place.y);
  Wrap();
}

void ScreenLabel::MsgInitSkin() {
  Label::MsgInitSkin();
  TakeLook();
  Wrap();
}

void ScreenLabel::Wrap() {
  const ScreenLayout& layout = launcherState.layout;
  const int end =
      layout.section.empty() ? settings.screenWidth : layout.OnScreen({layout.size.w, 0}).x;
  SetMultiline(false);
  UpdateSize();
  const int room = end - Zoomed(kTextMargin) - GetRelativePos().x;
  if (w() <= room || room < 1) return;
  SetW(room);
  SetMultiline(true);
}

void ScreenLabel::TakeLook() {
  SetFont(font_, kNormal);
  Color color = color_;
  if (skin) {
    const MenuLook& look = skin->menu;
    if (const Color said = look.*skinColor_; said.IsSet()) color = said;
    // What a picture has behind the text nobody knows.
    if (look.picture == 0) color = WithContrast(color, skin->colors[kBack], look.leastContrast);
  }
  SetFontColor(color, Color{}, kNormal);
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

void WallpaperPanel::MsgInitSkin() {
  Dialog::MsgInitSkin();
  if (WantsPicture() != hasPicture_) SetPicture(std::string{file_}.c_str());
}

void WallpaperPanel::SetPicture(const char* fileName) {
  file_ = fileName;
  hasPicture_ = WantsPicture();
  image_.ResetSource();
  if (!hasPicture_) {
    image_.Take(nullptr);
    image_.Resize(w(), h());
    return;
  }
  if (const ScreenLayout& layout = launcherState.layout; layout.section.empty())
    image_.SetBitmap(fileName);
  else
    image_.Take(LoadBackdrop(fileName, layout, {w(), h()}));
  image_.Resize(w(), h());
}

void WallpaperPanel::Uncover(const Rect& area) {
  clearScreen_.RedrawArea(area);
  image_.RedrawArea(area);
}

}  // namespace zel
