// The look of a skin without pictures, drawn in code.
#pragma once

#include "toolkit/draw/color.h"
#include "toolkit/draw/skin_bitmap.h"
#include "toolkit/skin/elements.h"

namespace zel {

// Makes `target` a new memory bitmap with the frames of element `id`, an ElementIndex, in a skin's
// colours, and gives it the tile size of the element.
void DrawBuiltinElement(SkinBitmap& target, int id, const Color (&colors)[kSkinColorCount]);

}  // namespace zel
