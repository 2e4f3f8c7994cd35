// JPEG pictures, through libjpeg.
#pragma once

#include "toolkit/base/allegro.h"

namespace zel {

// A loader for register_bitmap_file_type: the picture in the depth that Allegro's colour conversion
// asks for, or null when the file is none, is damaged or truncated, or holds more pixels than a
// picture may (imageformats/picture.h). Baseline and progressive pictures are read, those in
// several scans up to 128 MiB of coefficients, in colour, grey or CMYK. An 8-bit picture is made
// for the palette that it leaves in `palette`, or, without one, for the current palette. The caller
// destroys the bitmap.
BITMAP* LoadJpeg(const char* fileName, RGB* palette);

}  // namespace zel
