#include "toolkit/core/animator.h"

#include <iterator>

#include "toolkit/base/settings.h"

namespace zel {
namespace {

constexpr int kOpaque = 256;  // of the cross-fade's alpha
constexpr int kBand = 4;      // pixels between the lines of the line effects

// What an effect knows of the moment: the new look and how much of it is to show.
struct Moment {
  const SkinBitmap& look;
  BITMAP* target;
  int frame, length;
  int w, h;    // of the look
  int w2, h2;  // half of it

  // `extent` in the proportion of the frames gone, and of those to come.
  int Gone(int extent) const { return Share(extent, frame); }
  int Left(int extent) const { return Share(extent, length - frame); }

  // Copies without moving, and with.
  void Copy(int x, int y, int width, int height) const { Copy(x, y, x, y, width, height); }
  void Copy(int sx, int sy, int dx, int dy, int width, int height) const {
    look.blit(target, sx, sy, dx, dy, width, height);
  }

 private:
  int Share(int extent, int frames) const {
    return static_cast<int>(static_cast<long long>(extent) * frames / length);
  }
};

void ShowAll(const Moment& m) { m.Copy(0, 0, m.w, m.h); }

void CrossFade(const Moment& m) {
  const long long square = static_cast<long long>(m.frame) * m.frame;
  const long long whole = static_cast<long long>(m.length) * m.length;
  const int alpha = static_cast<int>(square * kOpaque / whole);
  // Allegro's blenders end one step before the new look; 8-bit modes have no blending to speak of.
  const bool blends = bitmap_color_depth(m.target) != 8;
  if (alpha >= (blends ? kOpaque : kOpaque / 2)) return ShowAll(m);
  if (!blends) return;
  set_trans_blender(0, 0, 0, alpha);
  m.look.draw_trans_sprite(m.target, 0, 0);
}

void SlideFromTop(const Moment& m) {
  const int d = m.Left(m.h);
  m.Copy(0, d, 0, 0, m.w, m.h - d);
}

void SlideFromBottom(const Moment& m) {
  const int d = m.Left(m.h);
  m.Copy(0, 0, 0, d, m.w, m.h - d);
}

void SlideFromRight(const Moment& m) {
  const int d = m.Left(m.w);
  m.Copy(0, 0, d, 0, m.w - d, m.h);
}

void SlideFromLeft(const Moment& m) {
  const int d = m.Left(m.w);
  m.Copy(d, 0, 0, 0, m.w - d, m.h);
}

void WipeDown(const Moment& m) { m.Copy(0, 0, m.w, m.Gone(m.h)); }

void WipeUp(const Moment& m) {
  const int height = m.Gone(m.h);
  m.Copy(0, m.h - height, m.w, height);
}

void WipeLeft(const Moment& m) {
  const int width = m.Gone(m.w);
  m.Copy(m.w - width, 0, width, m.h);
}

void WipeRight(const Moment& m) { m.Copy(0, 0, m.Gone(m.w), m.h); }

void RowOfEachBand(const Moment& m, int k) {
  for (int y = k; y < m.h; y += kBand) m.Copy(0, y, m.w, 1);
}

void ColumnOfEachBand(const Moment& m, int k) {
  for (int x = k; x < m.w; x += kBand) m.Copy(x, 0, 1, m.h);
}

void HorizontalLines(const Moment& m) { RowOfEachBand(m, m.Gone(kBand)); }
void HorizontalLinesReversed(const Moment& m) { RowOfEachBand(m, m.Left(kBand)); }
void VerticalLinesReversed(const Moment& m) { ColumnOfEachBand(m, m.Left(kBand)); }
void VerticalLines(const Moment& m) { ColumnOfEachBand(m, m.Gone(kBand)); }

void UnfoldFromRow(const Moment& m) {
  const int a = m.Gone(m.h2);
  const int b = m.Left(m.h2) + m.h2;
  m.Copy(0, 0, 0, m.h2 - a, m.w, a);
  m.Copy(0, b, 0, m.h2, m.w, m.h - b);
}

void UnfoldFromColumn(const Moment& m) {
  const int a = m.Gone(m.w2);
  const int b = m.Left(m.w2) + m.w2;
  m.Copy(0, 0, m.w2 - a, 0, a, m.h);
  m.Copy(b, 0, m.w2, 0, m.w - b, m.h);
}

void UnfoldFromPoint(const Moment& m) {
  const int a = m.Gone(m.w2), v = m.Gone(m.h2);
  const int restX = m.Left(m.w2), restY = m.Left(m.h2);
  m.Copy(0, 0, m.w2 - a, m.h2 - v, a, v);
  m.Copy(0, m.h2 + restY, m.w2 - a, m.h2, a, m.h2 - restY);
  m.Copy(m.w2 + restX, 0, m.w2, m.h2 - v, m.w2 - restX, v);
  m.Copy(m.w2 + restX, m.h2 + restY, m.w2, m.h2, m.w2 - restX, m.h2 - restY);
}

void OpenRows(const Moment& m) {
  const int d = m.Left(m.h2);
  m.Copy(0, d, m.w, m.h - 2 * d);
}

void OpenColumns(const Moment& m) {
  const int d = m.Left(m.w2);
  m.Copy(d, 0, m.w - 2 * d, m.h);
}

void OpenBox(const Moment& m) {
  const int dx = m.Left(m.w2), dy = m.Left(m.h2);
  m.Copy(dx, dy, m.w - 2 * dx, m.h - 2 * dy);
}

void HalvesFromTopAndBottom(const Moment& m) {
  const int d = m.Left(m.h2);
  m.Copy(0, d, 0, 0, m.w, m.h2 - d);
  m.Copy(0, m.h2, 0, m.h2 + d, m.w, m.h2 - d);
}

void HalvesFromLeftAndRight(const Moment& m) {
  const int d = m.Left(m.w2);
  m.Copy(d, 0, 0, 0, m.w2 - d, m.h);
  m.Copy(m.w2, 0, m.w2 + d, 0, m.w2 - d, m.h);
}

void QuartersFromCorners(const Moment& m) {
  const int dx = m.Left(m.w2), dy = m.Left(m.h2);
  const int width = m.w2 - dx, height = m.h2 - dy;
  m.Copy(dx, dy, 0, 0, width, height);
  m.Copy(dx, m.h2, 0, m.h2 + dy, width, height);
  m.Copy(m.w2, dy, m.w2 + dx, 0, width, height);
  m.Copy(m.w2, m.h2, m.w2 + dx, m.h2 + dy, width, height);
}

void WipeFromTopAndBottom(const Moment& m) {
  const int rest = m.Left(m.h2);
  m.Copy(0, 0, m.w, m.Gone(m.h2));
  m.Copy(0, rest + m.h2, m.w, m.h2 - rest);
}

void WipeFromLeftAndRight(const Moment& m) {
  const int rest = m.Left(m.w2);
  m.Copy(0, 0, m.Gone(m.w2), m.h);
  m.Copy(rest + m.w2, 0, m.w2 - rest, m.h);
}

void GrowFromCorners(const Moment& m) {
  const int a = m.Gone(m.w2), v = m.Gone(m.h2);
  const int restX = m.Left(m.w2), restY = m.Left(m.h2);
  m.Copy(0, 0, a, v);
  m.Copy(0, restY + m.h2, a, m.h2 - restY);
  m.Copy(restX + m.w2, 0, m.w2 - restX, v);
  m.Copy(restX + m.w2, restY + m.h2, m.w2 - restX, m.h2 - restY);
}

void CrossWipe(const Moment& m) {
  WipeFromTopAndBottom(m);
  WipeFromLeftAndRight(m);
}

using Effect = void (*)(const Moment&);
constexpr Effect kEffects[] = {
    ShowAll,
    CrossFade,
    SlideFromTop,
    SlideFromBottom,
    SlideFromRight,
    SlideFromLeft,
    WipeDown,
    WipeUp,
    WipeLeft,
    WipeRight,
    HorizontalLines,
    HorizontalLinesReversed,
    VerticalLinesReversed,
    VerticalLines,
    UnfoldFromRow,
    UnfoldFromColumn,
    UnfoldFromPoint,
    OpenRows,
    OpenColumns,
    OpenBox,
    HalvesFromTopAndBottom,
    HalvesFromLeftAndRight,
    QuartersFromCorners,
    WipeFromTopAndBottom,
    WipeFromLeftAndRight,
    GrowFromCorners,
    CrossWipe,
};
static_assert(std::size(kEffects) == 27);

void CopyWhole(const SkinBitmap& from, SkinBitmap& to) {
  from.blit(to.GetBitmap(), 0, 0, 0, 0, from.Width(), from.Height());
}

void MakeLike(const SkinBitmap& canvas, SkinBitmap& image) {
  image.CreateEx(bitmap_color_depth(canvas.GetBitmap()), canvas.Width(), canvas.Height());
  CopyWhole(canvas, image);
}

}  // namespace

void Animator::Start(const Bitmap& canvas, int lengthMs) {
  if (canvas.IsEmpty()) return;
  const bool fits =
      newImage.Width() == canvas.Width() && newImage.Height() == canvas.Height() &&
      bitmap_color_depth(newImage.GetBitmap()) == bitmap_color_depth(canvas.GetBitmap());
  if (!fits) MakeLike(canvas, newImage);
  if (!fits || oldImage.IsEmpty()) MakeLike(canvas, oldImage);
  length = std::max(1, settings.Ticks(lengthMs));
  frame = 1;
}

bool Animator::Step() {
  ++frame;
  if (frame >= length) CopyWhole(newImage, oldImage);
  return frame <= length;
}

void Animator::Reset() {
  length = 0;
  frame = 1;
  oldImage.Destroy();
}

void Animator::Draw(Bitmap& canvas, int type) {
  CopyWhole(oldImage, canvas);
  if (type < 0 || type >= std::ssize(kEffects) || canvas.IsEmpty() || length == 0) return;
  kEffects[type]({newImage, canvas.GetBitmap(), frame, length, newImage.Width(), newImage.Height(),
                  newImage.Width() / 2, newImage.Height() / 2});
}

}  // namespace zel
