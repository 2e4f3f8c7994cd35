// Allegro's loaders on bytes in memory.
#pragma once

#include "imageformats/picture.h"

namespace zel {

using Loader = BITMAP* (*)(PACKFILE* file, RGB* palette);

// What one of Allegro's loaders for open files, such as load_bmp_pf, makes of the bytes. Colours
// that the palette of a paletted picture lacks are black.
BITMAP* LoadFromMemory(const Bytes& bytes, Loader load, bool isPaletted, RGB* palette);

}  // namespace zel
