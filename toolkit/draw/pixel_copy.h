// Copying of plain pixels: rows of bytes between two bitmaps in memory.
#pragma once

#include "toolkit/base/allegro.h"
#include "toolkit/base/geometry.h"

namespace zel {

// The bytes of a pixel where both bitmaps lie in memory, share nothing and have one colour depth,
// so that pixels can be copied without a look at each; else 0.
int PlainPixelBytes(const BITMAP* from, const BITMAP* to);

// What Allegro's blit does with plain pixels, without what it takes to be ready for other kinds of
// bitmaps. Both rectangles have to exist; `to` is not clipped.
void CopyPlainPixels(const BITMAP* from, Point source, BITMAP* to, const Rect& area,
                     int pixelBytes);

// Allegro's blit, by rows of bytes where that is the same.
void CopyPixels(BITMAP* from, Point source, BITMAP* to, const Rect& area);

}  // namespace zel
