// Small pictures written as letters, one string a row:
//   '.' the mask colour (magenta)   'r' red    'g' green   'b' blue   'w' white
//   'k' black                       'y' yellow 'c' cyan    '?' any other colour
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/base/allegro.h"
#include "toolkit/base/geometry.h"

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

// The letter of the colour that comes after one with that letter, beginning with 'A': the printable
// ones that stand for no other colour, and then Latin ones with accents, in UTF-8.
inline int NextLetter(int letter) {
  do letter = letter == '~' ? 0xC0 : letter + 1;
  while (letter < 0x80 && kLetters.find(static_cast<char>(letter)) != kLetters.npos);
  return letter;
}

// A part of a bitmap of any colours as text: first the colours that have no letter, lettered from
// 'A' on in the order in which they come; then each line is a row of pixels behind the number of
// times that it comes in a row.
inline std::string Describe(BITMAP* bitmap, const Rect& part) {
  std::map<int, std::string> letters;
  for (const char letter : kLetters) letters[PixelOf(bitmap, letter)] = letter;
  int code = static_cast<int>('A' - 1 + letters.size() - kLetters.size());
  std::string colors, rows, last;
  int times = 0;
  const auto endRun = [&] {
    if (times > 0) rows += std::to_string(times) + ' ' + last + '\n';
  };
  for (int y = part.y; y < part.y + part.h; ++y) {
    std::string row;
    for (int x = part.x; x < part.x + part.w; ++x) {
      const int pixel = getpixel(bitmap, x, y), depth = bitmap_color_depth(bitmap);
      const auto [known, isNew] = letters.try_emplace(pixel);
      if (isNew) {
        code = NextLetter(code);
        known->second = code < 0x80 ? std::string(1, static_cast<char>(code))
                                    : std::string{static_cast<char>(0xC0 | code >> 6),
                                                  static_cast<char>(0x80 | (code & 0x3F))};
        colors += known->second + " = " + std::to_string(getr_depth(depth, pixel)) + ',' +
                  std::to_string(getg_depth(depth, pixel)) + ',' +
                  std::to_string(getb_depth(depth, pixel)) + '\n';
      }
      row += known->second;
    }
    if (row != last) {
      endRun();
      times = 0;
      last = row;
    }
    ++times;
  }
  endRun();
  return colors + rows;
}

}  // namespace zel
