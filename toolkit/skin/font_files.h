// Font files.
#pragma once

#include "toolkit/core/allegro.h"
#include "toolkit/skin/engine_font.h"

namespace zel {

// Reads a bitmap font for the file's extension, compared without case; null when it is damaged.
// Sets `isBitmapFont` to false, and reads nothing, for the extensions of the font engine.
FONT* LoadLibraryFont(const char* path, bool* isBitmapFont);

// The bytes of a file for the font engine; files with the same bytes share them while a face of any
// is open.
// Null when the file cannot be read.
FontBytes LoadFontBytes(const char* path);

}  // namespace zel
