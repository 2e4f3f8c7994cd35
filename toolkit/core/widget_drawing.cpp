// How a widget is repainted: whole, in parts, or as a frame of its transition.
#include <utility>

#include "toolkit/core/animator.h"
#include "toolkit/core/damage.h"
#include "toolkit/core/dialog.h"
#include "toolkit/core/widget.h"
#include "toolkit/draw/screen_update.h"

namespace zel {

void Widget::Paint(Bitmap& canvas) {
  if (TestFlag(kFlagStartAnimation) && !animator->Running()) {
    animator->Start(canvas, animationLength);
    if (!animator->NewImage().IsEmpty()) {
      Draw(animator->NewImage());
      animator->Draw(canvas, animationType);
    }
    ClearFlag(kFlagStartAnimation);
  } else if (!TestFlag(kFlagStartAnimation) && animator->Running()) {
    animator->Draw(canvas, animationType);
  } else {
    PaintShown(canvas);
  }
}

// Paints no more than what shows, where that saves something.
void Widget::PaintShown(Bitmap& canvas) {
  constexpr int kManyPixels = 2000;
  constexpr std::size_t kMostParts = 8;
  if (w() * h() < kManyPixels) return Draw(canvas);
  const PixelArea shown = ShownPart(*parent, *this);
  if (shown.Rects().size() > kMostParts) return Draw(canvas);
  for (const Rect& part : shown.Rects())
    DrawPart(canvas, {part.x - x(), part.y - y(), part.w, part.h});
}

void Widget::DrawPart(Bitmap& canvas, const Rect& part) {
  // A clip rectangle outside of the canvas would be brought to its edge, where a pixel is drawn.
  if (!part.Overlaps({0, 0, canvas.Width(), canvas.Height()})) return;
  canvas.set_clip_rect(part.x, part.y, part.Right() - 1, part.Bottom() - 1);
  Draw(canvas);
}

void Widget::PaintParts(Bitmap& canvas) {
  const PixelArea parts = std::exchange(dirtyParts_, {});
  for (const Rect& part : parts.Rects()) {
    DrawPart(canvas, part);
    if (ScreenUpdate* update = CurrentScreenUpdate())
      update->AddDirtyRect(x() + part.x, y() + part.y, part.w, part.h);
  }
}

void Widget::MsgDraw() {
  const bool inParts = DirtyInParts();
  if (parent) {
    SubCanvas canvas = parent->GetCanvas(this);
    if (!canvas.IsEmpty()) {
      if (inParts)
        PaintParts(canvas);
      else
        Paint(canvas);
    }
  }
  ForgetRedraw();
  ScreenUpdate* update = CurrentScreenUpdate();
  if (update && !inParts) update->AddDirtyRect(*this);
  Report(MSG_DRAW);
}

void Widget::Redraw() {
  dirtyParts_.Clear();
  SetFlag(kFlagDirty);
}

void Widget::RedrawPart(const Rect& part) {
  if (Dirty() && dirtyParts_.IsEmpty()) return;
  dirtyParts_.Add(part.Shared({0, 0, w(), h()}));
  if (!dirtyParts_.IsEmpty()) SetFlag(kFlagDirty);
}

void Widget::RepaintBehind() {
  if (parent) parent->RedrawBehind(this, {0, 0, w(), h()});
}

void Widget::RedrawWithGround() {
  RepaintBehind();
  Redraw();
}

void Widget::ForgetRedraw() {
  dirtyParts_.Clear();
  ClearFlag(kFlagDirty);
}

bool Widget::DirtyInParts() const { return Dirty() && !dirtyParts_.IsEmpty() && !InTransition(); }

bool Widget::InTransition() const { return TestFlag(kFlagStartAnimation) || animator->Running(); }

bool Widget::IsOpaque() const { return opaque_ && !Hidden() && !InTransition(); }

Rect Widget::PaintedPart() const { return IsOpaque() ? Bounds() : Rect{}; }

void Widget::RedrawArea(const Rect& area) {
  if (!Overlaps(area)) return;
  if (IsContainer()) {
    if (!Dirty()) Redraw();
    return;
  }
  RedrawPart({area.x - x(), area.y - y(), area.w, area.h});
}

}  // namespace zel
