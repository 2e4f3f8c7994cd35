#include "tools/gallery/sheet.h"

#include <algorithm>
#include <string>

#include "toolkit/base/text.h"
#include "toolkit/base/zoom.h"
#include "toolkit/skin/skin.h"
#include "toolkit/widgets/button.h"
#include "toolkit/widgets/dialog_template.h"

namespace zel {
namespace {

int Margin() { return Zoomed(8); }
int Gap() { return Zoomed(8); }         // between columns, and below a row
int CaptionGap() { return Zoomed(4); }  // below a caption
int FrameRoom() { return Zoomed(10); }  // above and below a text in a frame
int Frame() { return Zoomed(4); }       // of a grid
constexpr int kLetterUnits = 4;

}  // namespace

void LoadCaptionFont() {
  Skin& skin = *CurrentSkin();
  if (!skin.skinFile) return;  // the built-in font is small enough
  const char* file = skin.File().Find("FONT0").GetText("file", "none");
  char path[1024];
  replace_filename(path, skin.skinFile->c_str(), file, sizeof path);
  // At the zoom, which setting it brings in.
  const int size = static_cast<int>(skin.fonts[0]->TextHeight() / CurrentZoom() * 3 / 4);
  skin.SetFontFile(path, kCaptionFont, size);
}

const Font& CaptionFont() { return *CurrentSkin()->fonts[kCaptionFont]; }

Color CaptionColor() {
  const Skin& skin = *CurrentSkin();
  return MixNear(skin.colors[kFontFace], skin.colors[kFace]);
}

Sheet::Sheet(Size room) : room_{room}, next_{Margin()} {
  Resize(room);
  SetOpaque(true);
}

void Sheet::Draw(Bitmap& canvas) { canvas.clear_to_color(CurrentSkin()->colors[kFace]); }

int Sheet::Line() const { return GetFont(kNormal).TextHeight(); }

int Sheet::Letters(int count) const {
  return DialogUnits{GetFont(kNormal)}.X(count * kLetterUnits);
}

int Sheet::Tall() const { return Line() + FrameRoom(); }
int Sheet::CaptionHeight() const { return CaptionFont().TextHeight() + CaptionGap(); }

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
  columnWidth_ = std::min(Letters(letters), (room_.w - 2 * Margin() + Gap()) / columns_ - Gap());
  int x = Margin();
  for (const char* text : captions) {
    Caption(text, x, columnWidth_);
    x += columnWidth_ + Gap();
  }
  next_ += CaptionHeight();
}

void Sheet::StateColumns(int letters) {
  Columns({"normal", "pressed", "disabled", "focused"}, letters);
}

void Sheet::Row(int height, const Fill& fill) {
  for (int column = 0; column < columns_; ++column) {
    const int x = Margin() + column * (columnWidth_ + Gap());
    fill({x, next_, columnWidth_, height}, column);
    Take(x + columnWidth_, next_ + height);
  }
  next_ += height + Gap();
}

Rect Sheet::Band(const char* caption, int height, int letters) {
  const int all = room_.w - 2 * Margin();
  const int width = letters ? std::min(all, Letters(letters)) : all;
  Caption(caption, Margin(), width);
  next_ += CaptionHeight();
  const Rect place{Margin(), next_, width, height};
  next_ += height + Gap();
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
  extent_ = {std::max(extent_.w, right + Margin()), std::max(extent_.h, bottom + Margin())};
}

void Pose(Widget& widget, int state) {
  if (state == kSelected) widget.SetFlag(kFlagSelected);
  if (state == kDisabled) widget.Disable();
  if (state == kFocused) widget.SendMessage(MSG_GOTFOCUS);
}

Grid::Grid(std::vector<const char*> names, Size picture)
    : names_{std::move(names)}, picture_{Zoomed(picture.w), Zoomed(picture.h)} {
  marginLeft = marginTop = marginRight = marginBottom = Frame();
  int widest = picture_.w;
  for (const char* name : names_) widest = std::max(widest, CaptionFont().TextLength(name));
  cell_ = {widest + 2 * Gap(), CaptionFont().TextHeight() + CaptionGap() + picture_.h + Gap()};
}

int Grid::ColumnsIn(int width) const { return std::max(1, (width - Gap()) / cell_.w); }

Size Grid::ContentIn(int width) const {
  const int columns = ColumnsIn(width);
  const int rows = (static_cast<int>(names_.size()) + columns - 1) / columns;
  return {columns * cell_.w + Gap(), rows * cell_.h + Gap()};
}

Size Grid::WantedSize(int width) const {
  const Size all = ContentIn(width - 2 * Frame());
  return {all.w + 2 * Frame(), all.h + 2 * Frame()};
}

void Grid::UpdateLayout() {
  const int width = w() - 2 * Frame();
  Size all = ContentIn(width);
  if (all.h > h() - 2 * Frame()) all = ContentIn(width - vBar.Thickness());
  contentW = all.w;
  contentH = all.h;
  ScrollView::UpdateLayout();
}

void Grid::DrawContent(Bitmap& canvas) {
  const Font& font = CaptionFont();
  const int columns = ColumnsIn(contentW);
  canvas.clear_to_color(CurrentSkin()->colors[kFace]);
  for (int i = 0; i < static_cast<int>(names_.size()); ++i) {
    const int x = Gap() + i % columns * cell_.w - scrollX;
    const int y = Gap() + i / columns * cell_.h - scrollY;
    if (y + cell_.h < 0 || y >= canvas.Height()) continue;
    font.Textout(canvas, names_[i], x, y, CaptionColor(), Color{}, kAlignLeft);
    SkinBitmap picture{picture_.w, picture_.h, kMemoryBitmap};
    picture.clear_to_color(CurrentSkin()->colors[kFace]);
    DrawCell(picture, i);
    picture.blit(canvas, 0, 0, x, y + font.TextHeight() + CaptionGap(), picture_.w, picture_.h);
  }
}

}  // namespace zel
