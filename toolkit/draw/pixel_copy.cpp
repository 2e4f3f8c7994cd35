#include "toolkit/draw/pixel_copy.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "toolkit/draw/bitmap_guard.h"
#include "toolkit/draw/skin_bitmap.h"

namespace zel {

int PlainPixelBytes(const BITMAP* from, const BITMAP* to) {
  auto* const source = const_cast<BITMAP*>(from);
  auto* const target = const_cast<BITMAP*>(to);
  const bool isPlain = is_memory_bitmap(source) && is_memory_bitmap(target) &&
                       bitmap_color_depth(source) == bitmap_color_depth(target) &&
                       !SameBitmap(from, to);
  return isPlain ? BytesPerPixel(bitmap_color_depth(source)) : 0;
}

void CopyPlainPixels(const BITMAP* from, Point source, BITMAP* to, const Rect& area,
                     int pixelBytes) {
  const std::ptrdiff_t fromLeft = std::ptrdiff_t{source.x} * pixelBytes;
  const std::ptrdiff_t toLeft = std::ptrdiff_t{area.x} * pixelBytes;
  const std::size_t bytes = static_cast<std::size_t>(area.w) * static_cast<std::size_t>(pixelBytes);
  for (int row = 0; row < area.h; ++row)
    std::memcpy(to->line[area.y + row] + toLeft, from->line[source.y + row] + fromLeft, bytes);
}

void CopyPixels(BITMAP* from, Point source, BITMAP* to, const Rect& area) {
  const int pixelBytes = PlainPixelBytes(from, to);
  if (pixelBytes == 0 || source.x < 0 || source.y < 0)
    return ::blit(from, to, source.x, source.y, area.x, area.y, area.w, area.h);
  const Rect exists{area.x, area.y, std::min(area.w, from->w - source.x),
                    std::min(area.h, from->h - source.y)};
  const Rect seen = exists.Shared({to->cl, to->ct, to->cr - to->cl, to->cb - to->ct});
  if (seen.w <= 0 || seen.h <= 0) return;
  CopyPlainPixels(from, {source.x + seen.x - area.x, source.y + seen.y - area.y}, to, seen,
                  pixelBytes);
}

}  // namespace zel
