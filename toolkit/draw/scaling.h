// Pictures made larger or smaller, well.
#pragma once

#include "toolkit/base/allegro.h"
#include "toolkit/base/geometry.h"

namespace zel {

// Fills an area with what lies in another one of a picture of the same depth, both within their
// memory bitmaps. A pixel becomes the mean of what it covers (a box filter), so that whole
// multiples stay as sharp as they are; where most of that has the mask colour it has it as well,
// and elsewhere that colour counts for nothing. In 8 bits it becomes the pixel in the middle.
void Scale(BITMAP* from, const Rect& source, BITMAP* to, const Rect& area);

// A whole picture at another size; null without memory.
BitmapPtr Scaled(BITMAP* picture, Size size);

// The frames of a picture, each fitted to so many times its size: its edges, and the tile between
// them, each by itself, so that the tile still fits to its like. `tile` is that of the frames, see
// NineSlice, and becomes that of the scaled ones. What is left beside whole frames is lost. Null
// without memory.
BitmapPtr ScaledFrames(BITMAP* picture, Size grid, Size* tile, double factor);

}  // namespace zel
