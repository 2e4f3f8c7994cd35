// Pictures for every zoom.
#pragma once

#include <string>

#include "toolkit/base/allegro.h"

namespace zel {

// A file whose pictures are drawn at a multiple of their size.
struct Art {
  std::string path;
  int scale = 1;
};

// For a zoom the best of what there is of a file: beside "disk.bmp" there may be "disk@2x.bmp" and
// "disk@3x.bmp" with the same at twice and three times the size. The file itself where neither is
// needed or there.
Art FindArt(const char* path, double zoom);

// "disk@2x.bmp" for "disk.bmp".
std::string ArtName(const std::string& path, int scale);

// A picture that is drawn at `scale` times its size, at `zoom` times its size.
BitmapPtr ZoomArt(BitmapPtr picture, int scale, double zoom);

// The picture of a file at that many times its size; null for one that cannot be loaded.
BitmapPtr LoadArt(const char* path, double zoom);

}  // namespace zel
