#include "toolkit/widgets/panel.h"

#include <algorithm>

#include "toolkit/base/zoom.h"
#include "toolkit/draw/art.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr int kWhole = 100;  // percent of the parent

}  // namespace

void Panel::SetBitmap(int element) {
  Widget::SetBitmap(element);
  SetOpaque(IsPlain() || GetBitmap() != nullptr);
}

void Panel::SetPlain(Color color) {
  plain_ = color;
  SetOpaque(IsPlain() || GetBitmap() != nullptr);
  Redraw();
}

void Panel::Draw(Bitmap& canvas) {
  if (IsPlain()) {
    canvas.clear_to_color(plain_);
    return;
  }
  if (const SkinBitmap* element = GetBitmap())
    element->DrawArea(canvas.GetBitmap(), 0, 0, 0, 0, w(), h(), 1, 1);
}

void Panel::InitElement(int element) {
  Widget::MsgInitSkin();
  SetBitmap(element);
}

void Panel::MsgInitSkin() { InitElement(PANEL_RAISED); }
void PanelRaised::MsgInitSkin() { InitElement(PANEL_RAISED); }
void PanelSunken::MsgInitSkin() { InitElement(PANEL_SUNKEN); }
void PanelRidge::MsgInitSkin() { InitElement(PANEL_RIDGE); }
void PanelGroove::MsgInitSkin() { InitElement(PANEL_GROOVE); }
void ShadowBox::MsgInitSkin() { InitElement(BOX_SHADDOW); }

void ClearScreen::MsgStart() {
  Shape(0, 0, kWhole, kWhole, true);
  ApplyPercentPosition();
  ApplyPercentSize();
  Widget::MsgStart();
}

void ClearScreen::Draw(Bitmap& canvas) { canvas.clear_to_color(color); }

void ClearScreen::MsgInitSkin() {
  if (skin) color = skin->colors[kBack];
  Widget::MsgInitSkin();
}

Image::Image() { SetFlag(kFlagAutoSize); }

const SkinBitmap* Image::Source() const { return bitmap.IsEmpty() ? GetBitmap() : &bitmap; }

void Image::UpdateSize() {
  const SkinBitmap* source = Source();
  if (source && TestFlag(kFlagAutoSize)) Resize(source->Width(), source->Height());
}

void Image::SetBitmap(int element) {
  RepaintBehind();
  bitmap.Destroy();
  Widget::SetBitmap(element);
  UpdateSize();
  Redraw();
}

void Image::SetBitmap(const SkinBitmap& picture) {
  RepaintBehind();
  bitmap.Set(picture, true, kNoBitmap);
  UpdateSize();
  Redraw();
}

void Image::SetBitmap(const char* fileName) {
  RepaintBehind();
  if (!fileName) {
    bitmap.Destroy();
    Redraw();
    return;
  }
  if (IsZoomed())
    bitmap.Take(LoadArt(fileName, CurrentZoom()));
  else if (bitmap.Load(fileName, kMemoryBitmap).IsError())
    bitmap.Destroy();
  UpdateSize();
  Redraw();
}

void Image::SetMasked(bool mask) {
  RepaintBehind();
  masked = mask;
  Redraw();
}

void Image::SetBackColor(Color color) {
  RepaintBehind();
  backColor = color;
  Redraw();
}

void Image::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                  int element, bool isMasked, Color back) {
  Widget::Setup(px, py, width, height, shortcut, mask);
  SetBitmap(element);
  masked = isMasked;
  backColor = back;
}

void Image::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                  const char* fileName, bool isMasked, Color back) {
  Widget::Setup(px, py, width, height, shortcut, mask);
  SetBitmap(fileName);
  masked = isMasked;
  backColor = back;
}

void Image::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                  const SkinBitmap& picture, bool isMasked, Color back) {
  Widget::Setup(px, py, width, height, shortcut, mask);
  SetBitmap(picture);
  masked = isMasked;
  backColor = back;
}

void Image::Draw(Bitmap& canvas) {
  const SkinBitmap* source = Source();
  if (!source) return;
  const int left = std::max(0, (w() - source->Width()) / 2);
  const int top = std::max(0, (h() - source->Height()) / 2);
  if (!masked) {
    source->blit(canvas.GetBitmap(), 0, 0, left, top, w(), h());
    return;
  }
  if (backColor.IsSet()) canvas.clear_to_color(backColor);
  source->masked_blit(canvas.GetBitmap(), 0, 0, left, top, w(), h());
}

}  // namespace zel
