// Pictures as they stand in datafiles.
#pragma once

#include <string>

#include "toolkit/base/allegro.h"

namespace zel {

// Colours of 6 bits, with one of no colour behind the last.
struct SkinPalette {
  PALETTE colors;

  bool operator==(const SkinPalette& other) const;
};

// A picture of 24 bits; one of 8 bits as it is in the file where the file's palette is that of the
// skin. Null for what is no picture that can be read.
BitmapPtr LoadForDatafile(const std::string& path, const SkinPalette& skin);
// The palette of a BMP picture of 8 bits; false when there is none.
bool LoadPalette(const std::string& path, SkinPalette* palette);

// Write PNG for pictures of 24 bits, and BMP for those of 8 and for palettes: the same bytes for
// the same pixels. False when that fails.
bool SavePicture(const std::string& path, BITMAP* picture, const SkinPalette& palette);
bool SavePalette(const std::string& path, const SkinPalette& palette);

}  // namespace zel
