// Reference pictures: texts that say what something looks like, which a person has looked at.
//
// tests/pictures/NAME.txt begins with the colours that have no letter in picture.h, lettered from
// 'A' on in the order in which they come; then each line is a row of pixels behind the number of
// times that it comes in a row. With ZEL_DRAW_PICTURES in the environment the tests write the files
// anew: look at them with tools/show-pictures before you keep them.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

#include "tests/support/picture.h"
#include "tests/support/temp_files.h"
#include "toolkit/base/geometry.h"

namespace zel {

// A part of a bitmap in that form.
inline std::string Describe(BITMAP* bitmap, const Rect& part) {
  std::map<int, char> letters;
  for (const char letter : kLetters) letters[PixelOf(bitmap, letter)] = letter;
  std::string colors, rows, last;
  int times = 0;
  const auto endRun = [&] {
    if (times > 0) rows += std::to_string(times) + ' ' + last + '\n';
  };
  for (int y = part.y; y < part.y + part.h; ++y) {
    std::string row;
    for (int x = part.x; x < part.x + part.w; ++x) {
      const int pixel = getpixel(bitmap, x, y), depth = bitmap_color_depth(bitmap);
      const auto next = static_cast<char>('A' + letters.size() - kLetters.size());
      const auto [known, isNew] = letters.try_emplace(pixel, next);
      if (isNew)
        colors += std::string{next} + " = " + std::to_string(getr_depth(depth, pixel)) + ',' +
                  std::to_string(getg_depth(depth, pixel)) + ',' +
                  std::to_string(getb_depth(depth, pixel)) + '\n';
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

// The part of the bitmap looks like the reference picture of that name.
inline void ExpectLook(const std::string& name, BITMAP* bitmap, const Rect& part) {
  const std::string path = std::string{ZEL_PICTURES} + '/' + name + ".txt";
  const std::string seen = Describe(bitmap, part);
  if (std::getenv("ZEL_DRAW_PICTURES")) WriteFile(path, seen);
  EXPECT_EQ(seen, ReadFile(path)) << name;
}

}  // namespace zel
