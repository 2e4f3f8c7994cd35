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

void Image::FollowChange() {
  RepaintBehind();
  UpdateSize();
  Redraw();
}

void Image::SetBitmap(int element) {
  bitmap.Destroy();
  Widget::SetBitmap(element);
  FollowChange();
}

void Image::SetBitmap(const SkinBitmap& picture) {
  bitmap.Set(picture, true, kNoBitmap);
  FollowChange();
}

void Image::SetBitmap(const char* fileName) {
  if (!fileName) {
    bitmap.Destroy();
    RedrawWithGround();
    return;
  }
  if (IsZoomed())
    bitmap.Take(LoadArt(fileName, CurrentZoom()));
  else if (bitmap.Load(fileName, kMemoryBitmap).IsError())
    bitmap.Destroy();
  FollowChange();
}

void Image::SetMasked(bool mask) {
  masked = mask;
  RedrawWithGround();
}

void Image::SetBackColor(Color color) {
  backColor = color;
  RedrawWithGround();
}

template <class Picture>
void Image::SetupWith(const Picture& picture, const Rect& place, int shortcut, std::uint32_t mask,
                      bool isMasked, Color back) {
  Widget::Setup(place.x, place.y, place.w, place.h, shortcut, mask);
  SetBitmap(picture);
  masked = isMasked;
  backColor = back;
}

void Image::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                  int element, bool isMasked, Color back) {
  SetupWith(element, {px, py, width, height}, shortcut, mask, isMasked, back);
}

void Image::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                  const char* fileName, bool isMasked, Color back) {
  SetupWith(fileName, {px, py, width, height}, shortcut, mask, isMasked, back);
}

void Image::Setup(int px, int py, int width, int height, int shortcut, std::uint32_t mask,
                  const SkinBitmap& picture, bool isMasked, Color back) {
  SetupWith(picture, {px, py, width, height}, shortcut, mask, isMasked, back);
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
