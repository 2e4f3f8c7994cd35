#include "toolkit/widgets/group_frame.h"

#include <iterator>

#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr int kCut = 3;           // pixels that the corners lose in both directions
constexpr int kCaptionLeft = 10;  // of the caption's text
constexpr int kCaptionGap = 3;    // between the text and the line on both sides

}  // namespace

void GroupFrame::SetText(const char* caption) {
  caption_ = caption ? caption : "";
  Redraw();
}

void GroupFrame::DrawOutline(Bitmap& canvas, int top) const {
  const int right = w() - 1;
  const int bottom = h() - 1;
  const Point corners[] = {
      {kCut, top},
      {right - kCut, top},
      {right, top + kCut},
      {right, bottom - kCut},
      {right - kCut, bottom},
      {kCut, bottom},
      {0, bottom - kCut},
      {0, top + kCut},
  };
  Point from = corners[std::size(corners) - 1];
  for (const Point to : corners) {
    canvas.line(from.x, from.y, to.x, to.y, gray);
    from = to;
  }
}

void GroupFrame::Draw(Bitmap& canvas) {
  const Font& font = GetFont(kNormal);
  DrawOutline(canvas, font.TextHeight() / 2);
  if (caption_.empty()) return;
  const Color back = skin ? skin->colors[kFace] : white;
  const int width = font.TextLength(caption_.c_str());
  canvas.rectfill(kCaptionLeft - kCaptionGap, 0, kCaptionLeft + width + kCaptionGap - 1,
                  font.TextHeight() - 1, back);
  font.TextoutShadow(canvas, caption_.c_str(), {kCaptionLeft, 0}, GetFontColor(kNormal),
                     GetShadowColor(kNormal), Color{}, kAlignLeft);
}

}  // namespace zel
