#include "toolkit/widgets/group_frame.h"

#include <iterator>

#include "toolkit/base/zoom.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr int kCut = 3;           // pixels that the corners lose in both directions
constexpr int kCaptionLeft = 10;  // of the caption's text
constexpr int kCaptionGap = 3;    // between the text and the line on both sides

// A rectangle without its corners.
void DrawCutCorners(Bitmap& canvas, const Rect& area, int cut, Color color) {
  const int left = area.x, top = area.y, right = area.Right(), bottom = area.Bottom();
  const Point corners[] = {
      {left + cut, top},     {right - cut, top},   {right, top + cut},   {right, bottom - cut},
      {right - cut, bottom}, {left + cut, bottom}, {left, bottom - cut}, {left, top + cut},
  };
  Point from = corners[std::size(corners) - 1];
  for (const Point to : corners) {
    canvas.line(from.x, from.y, to.x, to.y, color);
    from = to;
  }
}

}  // namespace

void GroupFrame::SetText(const char* caption) {
  caption_ = caption ? caption : "";
  RedrawWithGround();
}

void GroupFrame::DrawOutline(Bitmap& canvas, int top) const {
  if (skin && !skin->menu.hasGroupBorder) return;
  const Color said = skin ? skin->menu.groupBorder : Color{};
  const Color color = said.IsSet() ? said : Color{gray};
  // A thick line grows inwards, in steps of one direction at a time, so that its corners are full.
  for (int step = 0; step < 2 * Zoomed(1) - 1; ++step) {
    const int dx = step / 2, dy = step - dx;
    DrawCutCorners(canvas, {dx, top + dy, w() - 1 - 2 * dx, h() - 1 - top - 2 * dy}, Zoomed(kCut),
                   color);
  }
}

void GroupFrame::Draw(Bitmap& canvas) {
  const Font& font = GetFont(kNormal);
  DrawOutline(canvas, font.TextHeight() / 2);
  if (caption_.empty()) return;
  const Color back = skin ? skin->colors[kFace] : white;
  const int width = font.TextLength(caption_.c_str());
  canvas.rectfill(Zoomed(kCaptionLeft) - Zoomed(kCaptionGap), 0,
                  Zoomed(kCaptionLeft) + width + Zoomed(kCaptionGap) - 1, font.TextHeight() - 1,
                  back);
  font.TextoutShadow(canvas, caption_.c_str(), {Zoomed(kCaptionLeft), 0}, GetFontColor(kNormal),
                     GetShadowColor(kNormal), Color{}, kAlignLeft);
}

void GroupFrame::MsgInitSkin() {
  Widget::MsgInitSkin();
  if (skin && skin->menu.hasLabels) TakeTextSet(kPlainText);
}

}  // namespace zel
