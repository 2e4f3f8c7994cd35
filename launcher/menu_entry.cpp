#include <algorithm>

#include "imageformats/load.h"
#include "launcher/menu_widgets.h"
#include "launcher/texts.h"

namespace zel {
namespace {

// The frame of the list's element begins behind the icon and ends before the mark of a submenu.
constexpr int kFrameLeft = 22;
constexpr int kFrameMargin = 33;
constexpr int kTextLeft = 25;
constexpr int kIconLeft = 3;
constexpr int kSeparatorMargin = 15;

constexpr int kBackText = 1515;

struct Triangle {
  int x1, y1, x2, y2, x3, y3;
};

void Fill(Bitmap& canvas, const Triangle& t, Color color) {
  canvas.triangle(t.x1, t.y1, t.x2, t.y2, t.x3, t.y3, color);
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
  if (isNew)
    found->second = std::shared_ptr<BITMAP>{LoadPicture(fileName, nullptr), BitmapDeleter{}};
  return found->second;
}

MenuEntry::MenuEntry(const MenuItem& menuItem) : item_{menuItem} {}

MenuEntry::MenuEntry(const MenuItem& menuItem, IconCache& icons) : item_{menuItem} {
  if (!item_.icon.IsEmpty()) icon_ = icons.Get(item_.icon);
}

Rect MenuEntry::PaintedPart(Size canvas) const {
  if (!owner || !owner->GetBitmap()) return {};
  return {kFrameLeft, 0, std::max(0, canvas.w - kFrameMargin), canvas.h};
}

void MenuEntry::Draw(Bitmap& canvas, const SkinBitmap* skinBitmap, int state) {
  if (const int width = canvas.Width() - kFrameMargin; skinBitmap && width > 0)
    skinBitmap->DrawArea(canvas.GetBitmap(), 0, state, kFrameLeft, 0, width, canvas.Height(), 1,
                         kListStates);
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

void MenuEntry::DrawSeparator(Bitmap& canvas) const {
  const int middle = canvas.Height() / 2;
  canvas.rectfill(kTextLeft, middle, canvas.Width() - kSeparatorMargin, middle + 1, item_.color);
}

void MenuEntry::DrawBack(Bitmap& canvas, const TextLook& look) const {
  const int right = canvas.Width();
  const int middle = canvas.Height() / 2;
  canvas.rectfill(10, middle + 2, 16, middle + 4, item_.color);
  canvas.rectfill(6, 1, 8, middle, item_.color);
  // The bend between stem and bar: a quarter of a circle from the left down to the bottom. Allegro
  // counts 256 degrees anticlockwise from the right.
  for (const int radius : {4, 3, 2})
    canvas.arc(10, middle, itofix(128), itofix(192), radius, item_.color);
  Fill(canvas, {7, 0, 11, 8, 4, 8}, item_.color);
  Fill(canvas, {right - 10, middle + 4, right - 2, middle + 4, right - 6, middle - 3}, item_.color);
  look.font.TextoutShadow(canvas, Text(kBackText), {kTextLeft, look.y}, look.color, look.shadow,
                          Color{}, kAlignLeft);
}

void MenuEntry::DrawItem(Bitmap& canvas, const TextLook& look) const {
  // Allegro draws a paletted sprite in the colours of its palette.
  if (icon_ && canvas.GetBitmap())
    draw_sprite(canvas.GetBitmap(), icon_.get(), kIconLeft, look.y - 1);
  look.font.TextoutShadow(canvas, item_.title, {kTextLeft, look.y}, look.color, look.shadow,
                          Color{}, kAlignLeft);
  if (!(item_.flags & kItemSubmenu)) return;
  const int right = canvas.Width();
  const int middle = canvas.Height() / 2;
  Fill(canvas, {right - 8, middle - 4, right - 8, middle + 4, right - 3, middle}, item_.color);
}

}  // namespace zel
