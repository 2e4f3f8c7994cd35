// The look of a skin without pictures, drawn in code.
#pragma once

#include "toolkit/skin/color.h"
#include "toolkit/skin/elements.h"
#include "toolkit/skin/skin_bitmap.h"

namespace zel {

// Makes `target` a new memory bitmap with the frames of element `id` (an ElementIndex; for another
// number nothing happens) in a skin's colours, and gives it the tile size of the element.
void DrawBuiltinElement(SkinBitmap& target, int id, const Color (&colors)[kSkinColorCount]);

}  // namespace zel
