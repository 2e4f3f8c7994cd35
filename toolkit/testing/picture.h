// Small pictures written as letters, one string a row:
//   '.' the mask colour (magenta)   'r' red    'g' green   'b' blue   'w' white
//   'k' black                       'y' yellow 'c' cyan    '?' any other colour
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "toolkit/base/allegro.h"

namespace zel {

using Rows = std::vector<std::string>;

// The letters of the eight colours whose channels are full or off, by their bits: red 4, green 2,
// blue 1.
inline constexpr std::string_view kLetters = "kbgcr.yw";

// The pixel of a letter in a bitmap.
inline int PixelOf(BITMAP* bitmap, char letter) {
  const auto bits = static_cast<int>(kLetters.find(letter));
  const int depth = bitmap_color_depth(bitmap);
  if (letter == '.') return bitmap_mask_color(bitmap);
  if (bits < 0) return makecol_depth(depth, 60, 120, 90);
  return makecol_depth(depth, bits / 4 * 255, bits / 2 % 2 * 255, bits % 2 * 255);
}

// A memory bitmap of the current colour depth; every row as long as the first, other letters are
// a test's mistake and come out as '?'.
inline BitmapPtr Paint(const Rows& rows) {
  BitmapPtr bitmap{
      create_bitmap(static_cast<int>(rows.front().size()), static_cast<int>(rows.size()))};
  for (int y = 0; y < bitmap->h; ++y)
    for (int x = 0; x < bitmap->w; ++x)
      putpixel(bitmap.get(), x, y, PixelOf(bitmap.get(), rows[y].at(x)));
  return bitmap;
}

// The letters of a bitmap of any depth.
inline Rows Picture(BITMAP* bitmap) {
  Rows rows(bitmap->h, std::string(bitmap->w, '?'));
  for (int y = 0; y < bitmap->h; ++y)
    for (int x = 0; x < bitmap->w; ++x)
      for (const char letter : kLetters)
        if (getpixel(bitmap, x, y) == PixelOf(bitmap, letter)) rows[y][x] = letter;
  return rows;
}

}  // namespace zel
