// Picture files whose header promises more than memory holds.
#pragma once

namespace zel {

constexpr int BytesPerPixel(int depth) { return (depth + 7) / 8; }

// True when a bitmap of this size is worth asking for: at most 256 MB, no negative side.
bool IsPossibleBitmap(int depth, int w, int h);

// Makes Allegro refuse impossible bitmaps: a file that asks for one cannot be loaded. On its own
// Allegro computes their size in 32 bits and writes past the end of what it got. Called after
// install_allegro, lasts until allegro_exit.
void InstallBitmapGuard();

}  // namespace zel
