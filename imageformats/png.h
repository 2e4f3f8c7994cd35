// PNG pictures, through libpng.
#pragma once

#include "toolkit/base/allegro.h"

namespace zel {

// As LoadJpeg. Pixels that are less than half opaque come in the mask colour.
BITMAP* LoadPng(const char* fileName, RGB* palette);

}  // namespace zel
