#include "toolkit/draw/nine_slice.h"

#include <algorithm>
#include <cassert>
#include <cstdint>

#include "toolkit/draw/pixel_copy.h"

namespace zel {
namespace {

// Coordinates on the target may be anything that a widget computes; in 64 bits no sum of them
// overflows.
using Wide = std::int64_t;

int TileOf(int wanted, int frame) { return std::min(wanted < 0 ? frame / 3 : wanted, frame); }

// The pixels from `begin` up to and without `end`.
struct Range {
  Wide begin, end;
};

// Copies rectangles from a picture to a target, leaving out what nobody would see.
class Copier {
 public:
  Copier(BITMAP* picture, BITMAP* target, bool masked)
      : picture_{picture},
        target_{target},
        masked_{masked},
        pixelBytes_{masked ? 0 : PlainPixelBytes(picture, target)} {}

  // Whether pixels are copied as they are, without a look at each.
  bool IsPlain() const { return pixelBytes_ != 0; }
  Range VisibleX() const { return {target_->cl, target_->cr}; }
  Range VisibleY() const { return {target_->ct, target_->cb}; }

  void Copy(Wide sx, Wide sy, Wide dx, Wide dy, Wide w, Wide h) const {
    w = std::min(w, picture_->w - sx);
    h = std::min(h, picture_->h - sy);
    if (sx < 0 || sy < 0) return;
    const Wide left = std::max(dx, VisibleX().begin), right = std::min(dx + w, VisibleX().end);
    const Wide top = std::max(dy, VisibleY().begin), bottom = std::min(dy + h, VisibleY().end);
    if (left >= right || top >= bottom) return;
    CopyVisible({static_cast<int>(sx + left - dx), static_cast<int>(sy + top - dy)},
                {static_cast<int>(left), static_cast<int>(top), static_cast<int>(right - left),
                 static_cast<int>(bottom - top)});
  }

  // Both fill what is visible of an area of a plain target with what its first pixels show already:
  // the first `tile` columns or rows, none of which may lie before what is visible.
  void RepeatColumns(Wide tile, Wide x, Wide y, Wide w, Wide h) const {
    const Wide total = std::min(w, VisibleX().end - x);
    const Wide end = std::min(y + h, VisibleY().end);
    for (Wide row = std::max(y, VisibleY().begin); row < end; ++row)
      for (Wide done = tile; done < total; done *= 2)
        CopyRow(x, row, x + done, row, std::min(done, total - done));
  }
  void RepeatRows(Wide tile, Wide x, Wide y, Wide w, Wide h) const {
    const Wide left = std::max(x, VisibleX().begin), right = std::min(x + w, VisibleX().end);
    const Wide end = std::min(y + h, VisibleY().end);
    for (Wide row = y + tile; row < end; ++row) CopyRow(left, row - tile, left, row, right - left);
  }

 private:
  void CopyVisible(Point from, const Rect& to) const {
    if (masked_) return ::masked_blit(picture_, target_, from.x, from.y, to.x, to.y, to.w, to.h);
    if (pixelBytes_ == 0) return ::blit(picture_, target_, from.x, from.y, to.x, to.y, to.w, to.h);
    CopyPlainPixels(picture_, from, target_, to, pixelBytes_);
  }

  // Within the target.
  void CopyRow(Wide sx, Wide sy, Wide dx, Wide dy, Wide w) const {
    std::copy_n(target_->line[sy] + sx * pixelBytes_, w * pixelBytes_,
                target_->line[dy] + dx * pixelBytes_);
  }

  BITMAP* picture_;
  BITMAP* target_;
  bool masked_;
  int pixelBytes_;  // where rows of pixels are plain bytes, else 0
};

// How a line of `total` pixels, which begins at `start` on the target, is put together from an
// edge, tiles and an edge.
struct Layout {
  Wide edge, tile, start, total;

  // Where the tiles end and the second edge begins.
  Wide End() const { return start + total - edge; }

  // Calls draw(offset in the frame, place on the target, length) for the pieces of the line from
  // its start to its end; tiles outside of what is visible are passed over.
  template <class Draw>
  void ForEachPiece(Range visible, const Draw& draw) const {
    draw(0, start, edge);
    const Wide end = End();
    const Wide step = std::max<Wide>(tile, 1);
    const Wide hidden = std::max<Wide>(visible.begin - (start + edge), 0);
    for (Wide at = start + edge + hidden / step * step; at < std::min(end, visible.end);
         at += step) {
      draw(edge, at, std::min(step, end - at));
    }
    draw(edge + tile, end, edge);
  }
};

}  // namespace

int NineSlice::TileWidthOf(int frameWidth) const { return TileOf(tile_.w, frameWidth); }
int NineSlice::TileHeightOf(int frameHeight) const { return TileOf(tile_.h, frameHeight); }

int NineSlice::EdgeWidthOf(int frameWidth) const {
  return (frameWidth - TileWidthOf(frameWidth)) / 2;
}

int NineSlice::EdgeHeightOf(int frameHeight) const {
  return (frameHeight - TileHeightOf(frameHeight)) / 2;
}

// Copying converts between colour depths, masked copying cannot.
bool NineSlice::CanDraw(BITMAP* target, bool masked) const {
  return picture_ && target &&
         (!masked || bitmap_color_depth(picture_) == bitmap_color_depth(target));
}

void NineSlice::DrawHSlice(BITMAP* target, const HSlice& slice, int dx, int dy, int total,
                           bool masked) const {
  if (!CanDraw(target, masked)) return;
  const Copier copier{picture_, target, masked};
  Layout{slice.edge, slice.tile, dx, total}.ForEachPiece(
      copier.VisibleX(), [&](Wide offset, Wide x, Wide width) {
        copier.Copy(slice.sx + offset, slice.sy, x, dy, width, slice.height);
      });
}

void NineSlice::DrawVSlice(BITMAP* target, const VSlice& slice, int dx, int dy, int total,
                           bool masked) const {
  if (!CanDraw(target, masked)) return;
  const Copier copier{picture_, target, masked};
  Layout{slice.edge, slice.tile, dy, total}.ForEachPiece(
      copier.VisibleY(), [&](Wide offset, Wide y, Wide height) {
        copier.Copy(slice.sx, slice.sy + offset, dx, y, slice.width, height);
      });
}

void NineSlice::DrawHFrame(BITMAP* target, int frame, int x, int y, int total, int frames,
                           bool masked) const {
  assert(frames >= 1);
  if (!picture_) return;
  const int height = picture_->h / frames;
  const HSlice slice{0, frame * height, EdgeWidthOf(picture_->w), height, TileWidthOf(picture_->w)};
  DrawHSlice(target, slice, x, y, total, masked);
}

void NineSlice::DrawVFrame(BITMAP* target, int frame, int x, int y, int total, int frames,
                           bool masked) const {
  assert(frames >= 1);
  if (!picture_) return;
  const int width = picture_->w / frames;
  const VSlice slice{frame * width, 0, EdgeHeightOf(picture_->h), width, TileHeightOf(picture_->h)};
  DrawVSlice(target, slice, x, y, total, masked);
}

void NineSlice::DrawArea(BITMAP* target, int column, int row, int x, int y, int w, int h,
                         int columns, int rows, bool masked) const {
  assert(columns >= 1 && rows >= 1);
  if (!CanDraw(target, masked)) return;
  const Copier copier{picture_, target, masked};
  const int frameWidth = picture_->w / columns, frameHeight = picture_->h / rows;
  const Wide sx = Wide{column} * frameWidth, sy = Wide{row} * frameHeight;
  const Layout across{EdgeWidthOf(frameWidth), TileWidthOf(frameWidth), x, w};
  const Layout down{EdgeHeightOf(frameHeight), TileHeightOf(frameHeight), y, h};
  // Of plain pixels the first tile is copied, then the first row of tiles.
  const bool isInPicture = column >= 0 && column < columns && row >= 0 && row < rows;
  const bool repeats = copier.IsPlain() && isInPicture && w >= 2 * across.edge;
  const auto isTile = [repeats](const Layout& line, Wide offset, Wide length) {
    return repeats && offset == line.edge && line.tile > 0 && length > 0;
  };
  bool hasRow = false;
  down.ForEachPiece(copier.VisibleY(), [&](Wide offsetY, Wide top, Wide height) {
    if (isTile(down, offsetY, height) && hasRow) return;
    bool hasTile = false;
    across.ForEachPiece(copier.VisibleX(), [&](Wide offsetX, Wide left, Wide width) {
      if (isTile(across, offsetX, width) && hasTile) return;
      copier.Copy(sx + offsetX, sy + offsetY, left, top, width, height);
      hasTile = isTile(across, offsetX, width) && left >= copier.VisibleX().begin;
      if (hasTile) copier.RepeatColumns(across.tile, left, top, across.End() - left, height);
    });
    hasRow = isTile(down, offsetY, height) && top >= copier.VisibleY().begin;
    if (hasRow) copier.RepeatRows(down.tile, x, top, w, down.End() - top);
  });
}

}  // namespace zel
