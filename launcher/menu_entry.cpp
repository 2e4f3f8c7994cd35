#include <cmath>

#include "launcher/menu_widgets.h"
#include "launcher/texts.h"
#include "toolkit/base/zoom.h"
#include "toolkit/draw/art.h"

namespace zel {
namespace {

constexpr int kFrameMargin = kEntryFrameLeft + kEntryFrameRight;
constexpr int kMarkWidth = 8;  // of a submenu, to the right end

struct Triangle {
  int x1, y1, x2, y2, x3, y3;
};

void Fill(Bitmap& canvas, const Triangle& t, Color color) {
  canvas.triangle(t.x1, t.y1, t.x2, t.y2, t.x3, t.y3, color);
}

// The bend between stem and bar of the way back: a quarter of a ring from the left of its centre
// down to the bottom.
void DrawBend(Bitmap& canvas, Point centre, Color color) {
  // Allegro counts 256 degrees anticlockwise from the right.
  if (!IsZoomed()) {
    for (const int radius : {4, 3, 2})
      canvas.arc(centre.x, centre.y, itofix(128), itofix(192), radius, color);
    return;
  }
  // Arcs that are drawn one in the other leave holes between them.
  const double inner = 1.5 * CurrentZoom(), outer = 4.5 * CurrentZoom();
  for (int y = 0; y <= outer; ++y)
    for (int x = 0; x <= outer; ++x)
      if (const double radius = std::hypot(x, y); inner <= radius && radius < outer)
        canvas.putpixel(centre.x - x, centre.y + y, color);
}

}  // namespace

struct MenuEntry::TextLook {
  const Font& font;
  Color color;
  Color shadow;
  int y;
};

std::shared_ptr<BITMAP> IconCache::Get(const char* fileName) {
  const auto [found, isNew] = icons_.try_emplace(fileName);
  if (isNew) found->second = LoadArt(fileName, CurrentZoom());
  return found->second;
}

MenuEntry::MenuEntry(const MenuItem& menuItem) : item_{menuItem} {}

MenuEntry::MenuEntry(const MenuItem& menuItem, IconCache& icons) : item_{menuItem} {
  if (!item_.icon.IsEmpty()) icon_ = icons.Get(item_.icon);
}

Rect MenuEntry::PaintedPart(Size canvas) const {
  if (const MenuLook* look = Look()) return StyledPart(*look, canvas);
  if (!owner || !owner->GetBitmap()) return {};
  return {Zoomed(kEntryFrameLeft), 0, canvas.w - Zoomed(kFrameMargin), canvas.h};
}

void MenuEntry::Draw(Bitmap& canvas, const SkinBitmap* skinBitmap, int state) {
  if (const MenuLook* look = Look()) {
    DrawStyled(canvas, *look, skinBitmap, state);
    return;
  }
  if (const int width = canvas.Width() - Zoomed(kFrameMargin); skinBitmap && width > 0)
    skinBitmap->DrawArea(canvas.GetBitmap(), 0, state, Zoomed(kEntryFrameLeft), 0, width,
                         canvas.Height(), 1, kListStates);
  if (IsSeparator()) {
    DrawSeparator(canvas);
    return;
  }
  if (!owner || !owner->GetParent()) return;
  const Widget& styled = *owner->GetParent();
  const int group = TextStateOfItem(state);
  const Font& font = styled.GetFont(group);
  const TextLook look{font, selected ? white : item_.color, styled.GetShadowColor(group),
                      (GetHeight() - font.TextHeight()) / 2};
  if (item_.flags & kItemBack)
    DrawBack(canvas, look);
  else
    DrawItem(canvas, look);
}

int MenuEntry::TitleRoom() const {
  const MenuLook* look = Look();
  return look && look->wraps > 0 ? kMostPixels : LineRoom();
}

int MenuEntry::LineRoom() const {
  if (const MenuLook* look = Look()) return TitlePlace(*look, owner->w()).width;
  const bool hasMark = item_.flags & kItemSubmenu;
  return owner->w() - Zoomed(kEntryTextLeft) - (hasMark ? Zoomed(kMarkWidth) : 0);
}

Size MenuEntry::IconRoom() const {
  if (const MenuLook* look = Look()) return StyledIconRoom(*look);
  return {Zoomed(kEntryTextLeft - kEntryIconLeft), GetHeight()};
}

void MenuEntry::DrawSeparator(Bitmap& canvas) const {
  const int middle = canvas.Height() / 2;
  canvas.rectfill(Zoomed(kEntryTextLeft), middle, canvas.Width() - Zoomed(kEntrySeparatorRight),
                  middle + Zoomed(2) - 1, item_.color);
}

void MenuEntry::DrawBack(Bitmap& canvas, const TextLook& look) const {
  const int right = canvas.Width();
  const int middle = canvas.Height() / 2;
  canvas.rectfill(Zoomed(10), middle + Zoomed(2), Zoomed(17) - 1, middle + Zoomed(5) - 1,
                  item_.color);
  canvas.rectfill(Zoomed(6), Zoomed(1), Zoomed(9) - 1, middle, item_.color);
  DrawBend(canvas, {Zoomed(10), middle}, item_.color);
  Fill(canvas, {Zoomed(7), 0, Zoomed(11), Zoomed(8), Zoomed(4), Zoomed(8)}, item_.color);
  Fill(canvas,
       {right - Zoomed(10), middle + Zoomed(4), right - Zoomed(2), middle + Zoomed(4),
        right - Zoomed(6), middle - Zoomed(3)},
       item_.color);
  look.font.TextoutShadow(canvas, Text(kBackText), {Zoomed(kEntryTextLeft), look.y}, look.color,
                          look.shadow, Color{}, kAlignLeft);
}

void MenuEntry::DrawItem(Bitmap& canvas, const TextLook& look) const {
  // Allegro draws a paletted sprite in the colours of its palette.
  if (icon_ && canvas.GetBitmap())
    draw_sprite(canvas.GetBitmap(), icon_.get(), Zoomed(kEntryIconLeft), look.y - Zoomed(1));
  look.font.TextoutShadow(canvas, item_.title, {Zoomed(kEntryTextLeft), look.y}, look.color,
                          look.shadow, Color{}, kAlignLeft);
  if (!(item_.flags & kItemSubmenu)) return;
  const int right = canvas.Width();
  const int middle = canvas.Height() / 2;
  Fill(canvas,
       {right - Zoomed(kMarkWidth), middle - Zoomed(4), right - Zoomed(kMarkWidth),
        middle + Zoomed(4), right - Zoomed(3), middle},
       item_.color);
}

}  // namespace zel
