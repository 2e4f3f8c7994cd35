// The formats that Allegro reads itself.
#pragma once

#include "imageformats/picture.h"

namespace zel {

// Each makes a picture of a file's bytes as Allegro's loader for the format does, in the depth that
// the colour conversion asks for; null when the file is damaged. They look at all that Allegro
// trusts, unpack what it would unpack without regard to the bitmap's size, and leave the rest to
// it.
BITMAP* LoadBmp(const Bytes& file, RGB* palette);
BITMAP* LoadPcx(const Bytes& file, RGB* palette);
BITMAP* LoadTga(const Bytes& file, RGB* palette);
// Read without Allegro, whose loader is wrong about the last pixels of most widths.
BITMAP* LoadLbm(const Bytes& file, RGB* palette);

}  // namespace zel
