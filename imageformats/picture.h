// What the picture loaders share.
#pragma once

#include <cstdint>

#include "toolkit/base/allegro.h"
#include "toolkit/base/bytes.h"

namespace zel {

// Pixels in a side and in the whole; a picture that claims more is not worth its memory on any
// screen.
inline constexpr long kLargestSide = 16384;
inline constexpr long kLargestArea = 1L << 25;

// True for at least one pixel and no more than that.
bool IsPictureSize(long width, long height);

// The bytes of a picture's file; empty when there is none.
Bytes ReadPicture(const char* fileName);

// The depth in which a true-colour picture is to be made now.
int PictureDepth();

// A new bitmap for a picture of that depth: of 24 bits for a depth of 8, or when colours are to be
// dithered, since FinishPicture reduces the colours of the whole. Null for a size beyond the limits
// or without memory.
BITMAP* NewPicture(int depth, unsigned width, unsigned height);

// Writes a row of red, green, blue and alpha bytes. Pixels less than half opaque come in the mask
// colour.
void WriteRgbaRow(BITMAP* picture, int y, const std::uint8_t* row);

// Brings the picture to its depth; takes it over. What has the mask colour keeps having it in 8
// bits, where it is no colour but a place in the palette. As Allegro's loaders do, fills the
// palette, if any, with one for the picture or, for other depths, with a fixed one.
BITMAP* FinishPicture(BITMAP* picture, int depth, RGB* palette);

}  // namespace zel
