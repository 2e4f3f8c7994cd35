// Reference pictures: texts that say what something looks like, which a person has looked at.
//
// tests/pictures/NAME.txt is what Describe says of it, tests/texts/NAME.txt what else there is to
// say in many lines. With ZEL_DRAW_PICTURES in the environment the tests write the files anew: look
// at them, at pictures with tools/show-pictures, before you keep them.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/temp_files.h"
#include "toolkit/base/geometry.h"
#include "toolkit/testing/picture.h"

namespace zel {

// The values, each with a blank behind it.
template <class... Values>
std::string Join(const Values&... values) {
  std::ostringstream text;
  ((text << values << ' '), ...);
  return text.str();
}

// Every bit of them, row by row.
inline std::vector<int> Pixels(BITMAP* bitmap) {
  std::vector<int> pixels;
  for (int y = 0; y < bitmap->h; ++y)
    for (int x = 0; x < bitmap->w; ++x) pixels.push_back(getpixel(bitmap, x, y));
  return pixels;
}

// The text is the reference of that name.
inline void ExpectText(const std::string& name, const std::string& seen,
                       const std::string& folder = "texts") {
  const std::string path = std::string{ZEL_PICTURES} + "/../" + folder + '/' + name + ".txt";
  if (std::getenv("ZEL_DRAW_PICTURES")) WriteFile(path, seen);
  const std::string meant = ReadFile(path);
  const auto at = std::mismatch(seen.begin(), seen.end(), meant.begin(), meant.end()).first;
  EXPECT_TRUE(seen == meant) << path << ':' << 1 + std::count(seen.begin(), at, '\n') << ": it is "
                             << std::string{at, seen.end()}.substr(0, 200);
}

// The part of the bitmap looks like the reference picture of that name.
inline void ExpectLook(const std::string& name, BITMAP* bitmap, const Rect& part) {
  ExpectText(name, Describe(bitmap, part), "pictures");
}

}  // namespace zel
