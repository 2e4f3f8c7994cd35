// Entries as a skin wants them that says something of them.

#include <algorithm>

#include "launcher/menu_widgets.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/contrast.h"
#include "toolkit/draw/smooth.h"

namespace zel {
namespace {

// Where a skin is silent, what has places without a skin that says anything lies there.
constexpr int kMarkRight = 3;
constexpr int kMarkGap = 8;  // between a title and the mark behind it

// More is not wanted of what cannot be chosen.
constexpr double kDisabledContrast = kReadableContrast;

// Shares of the height of a line of text.
constexpr double kMarkHeight = 0.22;  // half of it
constexpr double kStroke = 0.09;
constexpr double kLeastStroke = 1.5;  // pixels

int IconX(const MenuLook& look) { return OrElse(look.iconX, Zoomed(kEntryIconLeft)); }
int TextX(const MenuLook& look) { return OrElse(look.textX, Zoomed(kEntryTextLeft)); }
int MarkX(const MenuLook& look) { return OrElse(look.markX, Zoomed(kMarkRight)); }

int HalfMark(const Font& font) { return static_cast<int>(font.TextHeight() * kMarkHeight); }

}  // namespace

const MenuLook* MenuEntry::Look() const {
  const Skin* skin = owner ? owner->GetSkin() : nullptr;
  return skin && (skin->menu.hasEntries || skin->listHeight > 0) ? &skin->menu : nullptr;
}

Rect MenuEntry::Field(const MenuLook& look, Size canvas) const {
  const int left = std::min(OrElse(look.fieldX, Zoomed(kEntryFrameLeft)), canvas.w / 4);
  const int right = std::min(OrElse(look.fieldX, Zoomed(kEntryFrameRight)), canvas.w / 4);
  const int top = std::min(OrElse(look.fieldY, 0), canvas.h / 4);
  return {left, top, canvas.w - left - right, canvas.h - 2 * top};
}

// Up to the mark, or as far from the right end as the icon is from the left one.
MenuEntry::Columns MenuEntry::TitlePlace(const MenuLook& look, int width) const {
  const int left = std::min(TextX(look), width / 2);
  int right = width - std::min({IconX(look), left, width / 4});
  if (HasMark() && owner->GetParent()) {
    const int mark = 2 * HalfMark(owner->GetParent()->GetFont(kNormal));
    right = width - MarkX(look) - mark - Zoomed(kMarkGap);
  }
  return {left, std::max(1, right - left)};
}

int MenuEntry::TitleHeight(const MenuLook& look, int width) const {
  const Font& font = owner->GetParent()->GetFont(kNormal);
  const Measured now{width, font.TextHeight(), &font};
  if (measured_ == now) return titleHeight_;
  measured_ = now;
  const int room = TitlePlace(look, width).width;
  titleHeight_ = font.TextLength(TitleOf(item_)) <= room
                     ? now.lineHeight
                     : std::max(now.lineHeight, font.MultilineHeight(TitleOf(item_), room));
  return titleHeight_;
}

int MenuEntry::GetHeight() const {
  const MenuLook* look = Look();
  const int height = ListItem::GetHeight();
  if (!look) return height;
  if (IsSeparator()) return std::max(1, OrElse(look->separatorHeight, height));
  if (look->wraps < 1 || !owner->GetParent() || owner->w() < 1) return height;
  const int line = owner->GetParent()->GetFont(kNormal).TextHeight();
  return height + TitleHeight(*look, owner->w()) - line;
}

Rect MenuEntry::StyledPart(const MenuLook& look, Size canvas) const {
  return look.field.IsSet() || !owner->GetBitmap() ? Rect{} : Field(look, canvas);
}

Size MenuEntry::StyledIconRoom(const MenuLook& look) const {
  if (look.icons == 0) return {kMostPixels, kMostPixels};
  return {TextX(look) - IconX(look), GetHeight()};
}

Color MenuEntry::Ground(const MenuLook& look, const SkinBitmap* skinBitmap, int state) const {
  const Skin& skin = *owner->GetSkin();
  if (look.field.IsSet()) {
    const Color behind = look.IsFlat() ? look.ground : skin.colors[kSunken];
    if (!selected) return behind;
    if (owner->HasFocus() || !(look.idle.IsSet() || look.idleBorder.IsSet())) return look.field;
    return look.idle.IsSet() ? look.idle : behind;
  }
  if (!skinBitmap) return skin.colors[kSunken];
  const int frame = skinBitmap->Height() / kListStates;
  return Color{skinBitmap->getpixel(skinBitmap->Width() / 2, state * frame + frame / 2)};
}

Color MenuEntry::TextColor(const MenuLook& look, Color ground) const {
  const auto said = [](Color inSkin, Color otherwise) {
    return inSkin.IsSet() ? inSkin : otherwise;
  };
  double least = look.leastContrast;
  Color color = item_.hasOwnColor ? item_.color : said(look.text, item_.color);
  if (item_.flags & kItemBack && !item_.hasOwnColor) color = said(look.returnText, item_.color);
  const bool isOnField = selected && (!look.field.IsSet() || ground == look.field);
  if (item_.flags & kItemDisabled) {
    color = said(look.disabledText, item_.color);
    least = std::min(least, kDisabledContrast);
  } else if (isOnField) {
    color = said(look.selectedText, white);
  }
  return WithContrast(color, ground, least);
}

void MenuEntry::DrawStyled(Bitmap& canvas, const MenuLook& look, const SkinBitmap* skinBitmap,
                           int state) {
  const Size size{canvas.Width(), canvas.Height()};
  const Rect field = Field(look, size);
  const Color ground = Ground(look, skinBitmap, state);
  if (!look.field.IsSet()) {
    if (skinBitmap)
      skinBitmap->DrawArea(canvas.GetBitmap(), 0, state, field.x, field.y, field.w, field.h, 1,
                           kListStates);
  } else if (selected) {
    const bool isIdle = ground != look.field || (!owner->HasFocus() && look.idleBorder.IsSet());
    DrawRoundBox(canvas.GetBitmap(), {.area = field,
                                      .radius = OrElse(look.fieldRadius, 0),
                                      .fill = ground,
                                      .borderColor = isIdle ? look.idleBorder : look.fieldBorder,
                                      .border = OrElse(look.fieldBorderWidth, Zoomed(1))});
  }
  if (IsSeparator()) {
    const int left = look.iconX == MenuLook::kAbsent ? TextX(look) : IconX(look);
    const int right = look.iconX == MenuLook::kAbsent ? Zoomed(kEntrySeparatorRight) : IconX(look);
    const bool isOwn = item_.hasOwnColor || !look.separator.IsSet();
    canvas.rectfill(left, size.h / 2, size.w - right - 1, size.h / 2 + Zoomed(1) - 1,
                    isOwn ? item_.color : look.separator);
    return;
  }
  if (!owner->GetParent()) return;
  const int group = TextStateOfItem(state);
  const Widget& styled = *owner->GetParent();
  const Font& font = styled.GetFont(group);
  const Color color = TextColor(look, ground);
  if (icon_ && look.icons != 0 && canvas.GetBitmap() && !(item_.flags & kItemBack))
    draw_sprite(canvas.GetBitmap(), icon_.get(), IconX(look), (size.h - icon_->h) / 2);
  DrawMark(canvas, look, font, color);
  const Columns place = TitlePlace(look, size.w);
  SubCanvas title{canvas, place.left, 0, place.width, size.h};
  if (title.IsEmpty()) return;
  const Color shadow = styled.GetShadowColor(group);
  const int height = look.wraps > 0 ? TitleHeight(look, size.w) : font.TextHeight();
  const int y = (size.h - height) / 2;
  if (height > font.TextHeight())
    font.MultilineTextout(title, TitleOf(item_), color, shadow, Color{}, 0, y, place.width,
                          kAlignLeft);
  else
    font.TextoutShadow(title, TitleOf(item_), {0, y}, color, shadow, Color{}, kAlignLeft);
}

// A hook to the right leads on; an arrow to the left, in the icon's place where there are icons,
// leads back.
void MenuEntry::DrawMark(Bitmap& canvas, const MenuLook& look, const Font& font,
                         Color color) const {
  if (!HasMark()) return;
  const double width = std::max(kLeastStroke * CurrentZoom(), font.TextHeight() * kStroke);
  const double half = HalfMark(font);
  const double middle = (canvas.Height() - 1) / 2.0;
  const double right = canvas.Width() - 1 - MarkX(look) - width / 2;
  if (item_.flags & kItemSubmenu) {
    const StrokePoint hook[] = {
        {right - half, middle - half}, {right, middle}, {right - half, middle + half}};
    DrawStroke(canvas.GetBitmap(), hook, width, color);
    return;
  }
  const int room = TextX(look) - IconX(look) - Zoomed(kMarkGap);
  const bool hasPlace = look.icons != 0 && room > 2 * half;
  const double centre = hasPlace ? IconX(look) + room / 2.0 : right - half;
  const StrokePoint shaft[] = {{centre - 1.3 * half, middle}, {centre + 1.3 * half, middle}};
  const StrokePoint head[] = {
      {centre - 0.3 * half, middle - half}, shaft[0], {centre - 0.3 * half, middle + half}};
  DrawStroke(canvas.GetBitmap(), shaft, width, color);
  DrawStroke(canvas.GetBitmap(), head, width, color);
}

}  // namespace zel
