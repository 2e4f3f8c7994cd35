// Font files.
#pragma once

#include "toolkit/base/allegro.h"
#include "toolkit/draw/engine_font.h"

namespace zel {

// Reads a bitmap font for the file's extension, compared without case; null when it is damaged.
// Sets `isBitmapFont` to false, and reads nothing, for the extensions of the font engine.
FONT* LoadLibraryFont(const char* path, bool* isBitmapFont);

// The bytes of a file for the font engine; none when it cannot be read.
SharedBytes LoadFontBytes(const char* path);

}  // namespace zel
