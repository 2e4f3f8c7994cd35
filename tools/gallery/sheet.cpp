#include "tools/gallery/sheet.h"

#include <algorithm>
#include <string>

#include "toolkit/base/text.h"
#include "toolkit/skin/skin.h"
#include "toolkit/widgets/button.h"
#include "toolkit/widgets/dialog_template.h"

namespace zel {
namespace {

constexpr int kMargin = 8;
constexpr int kGap = 8;         // between columns, and below a row
constexpr int kCaptionGap = 4;  // below a caption
constexpr int kFrameRoom = 10;  // above and below a text in a frame
constexpr int kLetterUnits = 4;
constexpr int kFrame = 4;  // of a grid

}  // namespace

void LoadCaptionFont() {
  Skin& skin = *CurrentSkin();
  if (!skin.skinFile) return;  // the built-in font is small enough
  const char* file = skin.File().Find("FONT0").GetText("file", "none");
  char path[1024];
  replace_filename(path, skin.skinFile->c_str(), file, sizeof path);
  const int size = skin.fonts[0]->TextHeight() * 3 / 4;
  skin.SetFontFile(path, kCaptionFont, size);
}

const Font& CaptionFont() { return *CurrentSkin()->fonts[kCaptionFont]; }

Color CaptionColor() {
  const Skin& skin = *CurrentSkin();
  return MixNear(skin.colors[kFontFace], skin.colors[kFace]);
}

Sheet::Sheet(Size room) : room_{room}, next_{kMargin} {
  Resize(room);
  SetOpaque(true);
}

void Sheet::Draw(Bitmap& canvas) { canvas.clear_to_color(CurrentSkin()->colors[kFace]); }

int Sheet::Line() const { return GetFont(kNormal).TextHeight(); }

int Sheet::Letters(int count) const {
  return DialogUnits{GetFont(kNormal)}.X(count * kLetterUnits);
}

int Sheet::Tall() const { return Line() + kFrameRoom; }
int Sheet::CaptionHeight() const { return CaptionFont().TextHeight() + kCaptionGap; }

void Sheet::Caption(const char* text, int x, int width) {
  auto& label = Make<Label>();
  label.ClearFlag(kFlagAutoSize);
  label.SetFont(kCaptionFont, kNormal);
  label.SetFontColor(CaptionColor(), Color{}, kNormal);
  label.Setup(x, next_, width, CaptionHeight(), 0, 0, text);
  Take(x + CaptionFont().TextLength(text), next_ + CaptionHeight());
}

void Sheet::Columns(std::initializer_list<const char*> captions, int letters) {
  columns_ = static_cast<int>(captions.size());
  columnWidth_ = std::min(Letters(letters), (room_.w - 2 * kMargin + kGap) / columns_ - kGap);
  int x = kMargin;
  for (const char* text : captions) {
    Caption(text, x, columnWidth_);
    x += columnWidth_ + kGap;
  }
  next_ += CaptionHeight();
}

void Sheet::StateColumns(int letters) {
  Columns({"normal", "pressed", "disabled", "focused"}, letters);
}

void Sheet::Row(int height, const Fill& fill) {
  for (int column = 0; column < columns_; ++column) {
    const int x = kMargin + column * (columnWidth_ + kGap);
    fill({x, next_, columnWidth_, height}, column);
    Take(x + columnWidth_, next_ + height);
  }
  next_ += height + kGap;
}

Rect Sheet::Band(const char* caption, int height, int letters) {
  const int all = room_.w - 2 * kMargin;
  const int width = letters ? std::min(all, Letters(letters)) : all;
  Caption(caption, kMargin, width);
  next_ += CaptionHeight();
  const Rect place{kMargin, next_, width, height};
  next_ += height + kGap;
  Take(place.Right(), place.Bottom());
  return place;
}

void Sheet::Space(int height) {
  next_ += height;
  extent_.h = std::max(extent_.h, next_);
}

Rect Sheet::Whole(Size wanted) {
  extent_ = wanted;
  return {0, 0, room_.w, room_.h};
}

void Sheet::Take(int right, int bottom) {
  extent_ = {std::max(extent_.w, right + kMargin), std::max(extent_.h, bottom + kMargin)};
}

void Pose(Widget& widget, int state) {
  if (state == kSelected) widget.SetFlag(kFlagSelected);
  if (state == kDisabled) widget.Disable();
  if (state == kFocused) widget.SendMessage(MSG_GOTFOCUS);
}

Grid::Grid(std::vector<const char*> names, Size picture)
    : names_{std::move(names)}, picture_{picture} {
  marginLeft = marginTop = marginRight = marginBottom = kFrame;
  int widest = picture.w;
  for (const char* name : names_) widest = std::max(widest, CaptionFont().TextLength(name));
  cell_ = {widest + 2 * kGap, CaptionFont().TextHeight() + kCaptionGap + picture.h + kGap};
}

int Grid::ColumnsIn(int width) const { return std::max(1, (width - kGap) / cell_.w); }

Size Grid::ContentIn(int width) const {
  const int columns = ColumnsIn(width);
  const int rows = (static_cast<int>(names_.size()) + columns - 1) / columns;
  return {columns * cell_.w + kGap, rows * cell_.h + kGap};
}

Size Grid::WantedSize(int width) const {
  const Size all = ContentIn(width - 2 * kFrame);
  return {all.w + 2 * kFrame, all.h + 2 * kFrame};
}

void Grid::UpdateLayout() {
  const int width = w() - 2 * kFrame;
  Size all = ContentIn(width);
  if (all.h > h() - 2 * kFrame) all = ContentIn(width - vBar.Thickness());
  contentW = all.w;
  contentH = all.h;
  ScrollView::UpdateLayout();
}

void Grid::DrawContent(Bitmap& canvas) {
  const Font& font = CaptionFont();
  const int columns = ColumnsIn(contentW);
  canvas.clear_to_color(CurrentSkin()->colors[kFace]);
  for (int i = 0; i < static_cast<int>(names_.size()); ++i) {
    const int x = kGap + i % columns * cell_.w - scrollX;
    const int y = kGap + i / columns * cell_.h - scrollY;
    if (y + cell_.h < 0 || y >= canvas.Height()) continue;
    font.Textout(canvas, names_[i], x, y, CaptionColor(), Color{}, kAlignLeft);
    SkinBitmap picture{picture_.w, picture_.h, kMemoryBitmap};
    picture.clear_to_color(CurrentSkin()->colors[kFace]);
    DrawCell(picture, i);
    picture.blit(canvas, 0, 0, x, y + font.TextHeight() + kCaptionGap, picture_.w, picture_.h);
  }
}

}  // namespace zel
