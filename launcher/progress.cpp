#include "launcher/progress.h"

#include <algorithm>
#include <cstdlib>

#include "toolkit/base/zoom.h"
#include "toolkit/core/dialog.h"
#include "toolkit/draw/art.h"
#include "toolkit/draw/smooth.h"
#include "toolkit/skin/skin.h"

namespace zel {
namespace {

constexpr int kCopies = 64;     // in a run of pictures
constexpr int kBelowSteps = 3;  // rows of the step bar that stay free
constexpr int kBelowTrack = 4;  // rows of the rest that its track leaves free, less one

constexpr double kBusyHeight = 0.75;  // of the bar's height
constexpr double kBlockWidth = 0.15;  // of the bar's width
constexpr int kBlockInset = 3;        // at the left and the top
constexpr int kBelowBlock = 7;
constexpr int kBlockStep = 2;
constexpr int kTurnMargin = 5;  // between the block and the end of the bar where it turns back

// The thickness of Box3D's lines, behind which the pictures of the step bar begin.
constexpr int kBevel = 2;
int Bevel() { return kBevel * Zoomed(1); }

constexpr int kFlatShare = 3;  // of the height, of a flat bar

bool HasFlatBar(const Skin* skin) { return skin && skin->menu.bar.IsSet(); }

// A bar without bevels, with the part that is done, or where the work is.
void DrawFlatBar(Bitmap& canvas, const MenuLook& look, const Rect& area, const Rect& part) {
  DrawRoundBox(
      canvas.GetBitmap(),
      {.area = area, .fill = look.barGround, .borderColor = look.barBorder, .border = Zoomed(1)});
  DrawRoundBox(canvas.GetBitmap(), {.area = part.Shared(area), .fill = look.bar});
}

BitmapPtr NewBitmap(int depth, int width, int height) {
  BitmapPtr bitmap{create_bitmap_ex(depth, width, height)};
  if (bitmap) clear_to_color(bitmap.get(), bitmap_mask_color(bitmap.get()));
  return bitmap;
}

}  // namespace

StepBar::StepBar() { ReadPicture(); }

void StepBar::ReadPicture() {
  picture_ = LoadArt(kProgressPicture, CurrentZoom());
  if (!picture_) return;
  run_ = NewBitmap(bitmap_color_depth(picture_.get()), picture_->w + kCopies - 1, picture_->h);
  for (int x = 0; run_ && x < kCopies; ++x) draw_sprite(run_.get(), picture_.get(), x, 0);
}

int StepBar::FillEnd() const {
  if (HasFlatBar(skin)) return RoundToInt(Filled(w()));
  return std::max(Bevel(), RoundToInt(Filled(w())) - Bevel());
}

// A picture that fills what the lines leave does so at every zoom, however the numbers are rounded.
int StepBar::TrackHeight() const {
  int inside = h() - Zoomed(kBelowSteps + kBelowTrack - 1 + 2 * kBevel);
  const bool fills = picture_ && std::abs(inside - picture_->h) <= Zoomed(1);
  if (IsZoomed() && fills) inside = picture_->h;
  return 2 * Bevel() + inside;
}

void StepBar::ShowSteps(int done, int all) {
  const int before = FillEnd();
  SetRange(0, all);
  SetValue(done);
  RedrawFill(before, FillEnd());
}

void StepBar::RedrawFill(int from, int to) {
  if (from == to) return;
  const int left = std::min(from, to);
  const int width = std::abs(to - from);
  if (HasFlatBar(skin)) return RedrawPart({left, 0, width, h()});
  if (!picture_) return;
  const Rect part{left, 0, width + picture_->w - 1, h() - Zoomed(kBelowSteps)};
  RedrawPart(part);
  // A high picture reaches below the track, where nothing else wipes it away.
  if (to < from && parent && Bevel() + picture_->h > TrackHeight())
    parent->RedrawBehind(this, part);
}

void StepBar::DrawFill(Bitmap& area) const {
  const int end = FillEnd();
  int x = Bevel();
  // A run shows the same as its pictures one by one: each covers the ones before it.
  if (run_)
    for (; x + kCopies <= end; x += kCopies) draw_sprite(area.GetBitmap(), run_.get(), x, Bevel());
  for (; x < end; ++x) draw_sprite(area.GetBitmap(), picture_.get(), x, Bevel());
}

void StepBar::Draw(Bitmap& canvas) {
  const int height = h() - Zoomed(kBelowSteps);
  if (!IsHorizontal() || canvas.IsEmpty() || height < 1) return;
  if (HasFlatBar(skin)) {
    const int thick = std::max(1, height / kFlatShare), top = (height - thick) / 2;
    DrawFlatBar(canvas, skin->menu, {0, top, w(), thick}, {0, top, FillEnd(), thick});
    return;
  }
  canvas.Box3D(0, 0, w() - 1, TrackHeight() - 1, white, black, gray, Zoomed(1));
  SubCanvas area{canvas, 0, 0, w(), height};
  if (picture_ && !area.IsEmpty()) DrawFill(area);
}

int BusyBar::TrackHeight() const { return RoundToInt(h() * kBusyHeight); }

int BusyBar::ShareOfWidth(double share) const {
  return GetRange() > 0 ? RoundToInt(w() * max * share / GetRange()) : 0;
}

int BusyBar::BlockWidth() const { return ShareOfWidth(kBlockWidth); }

BusyBar::Span BusyBar::Block() const {
  return {position_ + Zoomed(kBlockInset), position_ + BlockWidth()};
}

void BusyBar::Move() {
  const int last = ShareOfWidth(1) - BlockWidth() - Zoomed(kTurnMargin);
  if (position_ < Zoomed(kBlockStep)) {
    position_ = 1;
    step_ = Zoomed(kBlockStep);
  } else if (position_ > last) {
    position_ = last;
    step_ = -Zoomed(kBlockStep);
  }
  position_ += step_;
}

void BusyBar::Increment() {
  ValueRange::Increment();
  const Span before = Block();
  Move();
  const Span after = Block();
  // Inside and outside of the block nothing changes.
  const int width = std::abs(after.left - before.left) + Bevel();
  RedrawPart({std::min(before.left, after.left), 0, width, TrackHeight()});
  RedrawPart({std::min(before.right, after.right) - Bevel() + 1, 0, width, TrackHeight()});
}

void BusyBar::Draw(Bitmap& canvas) {
  const int height = TrackHeight();
  if (!IsHorizontal() || canvas.IsEmpty()) return;
  if (HasFlatBar(skin)) {
    const Span span = Block();
    const int thick = std::max(1, height / 2), top = (height - thick) / 2;
    DrawFlatBar(canvas, skin->menu, {0, top, w(), thick},
                {span.left, top, span.right - span.left + 1, thick});
    return;
  }
  canvas.Box3D(0, 0, w() - 1, height - Zoomed(kBelowTrack), white, gray, gray, Zoomed(1));
  SubCanvas area{canvas, 0, 0, w(), height};
  const Span block = Block();
  area.Box3D(block.left, Zoomed(kBlockInset), block.right, height - Zoomed(kBelowBlock),
             Color{110, 120, 190}, darkgray, darkgray, Zoomed(1));
}

}  // namespace zel
