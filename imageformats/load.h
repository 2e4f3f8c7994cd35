// Loading pictures from files of any content.
#pragma once

#include "toolkit/base/allegro.h"

namespace zel {

// What load_bitmap loads, by the file's extension: Allegro's own formats (BMP, PCX, LBM, TGA) and
// those that RegisterPictureFormats adds. Null for a file that is none, is damaged or cut off, or
// holds more pixels than a picture may (imageformats/picture.h). Without a `palette` to fill, an
// 8-bit picture is made for the current one.
//
// Every picture is to be loaded through here. Allegro's readers trust the file, write past the
// bitmap where it is damaged, and always come before a registered one for the same extension.
BITMAP* LoadPicture(const char* fileName, RGB* palette);

}  // namespace zel
