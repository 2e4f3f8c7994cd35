// Font files.
#pragma once

#include <string>

#include "toolkit/base/allegro.h"
#include "toolkit/draw/engine_font.h"

namespace zel {

// Reads a bitmap font for the file's extension, compared without case; null when it is damaged.
// Sets `isBitmapFont` to false, and reads nothing, for the extensions of the font engine.
FONT* LoadLibraryFont(const char* path, bool* isBitmapFont);

// Where a font file is found: as it is named, or in the directory of fonts that the environment
// names. Empty when it is in neither.
std::string FindFontFile(const char* path);

// The bytes of a file for the font engine; none when it cannot be read.
SharedBytes LoadFontBytes(const char* path);

}  // namespace zel
