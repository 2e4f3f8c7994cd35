// Reference pictures: texts that say what something looks like, which a person has looked at.
//
// tests/pictures/NAME.txt is what Describe says of it. With ZEL_DRAW_PICTURES in the environment
// the tests write the files anew: look at them with tools/show-pictures before you keep them.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/support/temp_files.h"
#include "toolkit/base/geometry.h"
#include "toolkit/testing/picture.h"

namespace zel {

// The part of the bitmap looks like the reference picture of that name.
inline void ExpectLook(const std::string& name, BITMAP* bitmap, const Rect& part) {
  const std::string path = std::string{ZEL_PICTURES} + '/' + name + ".txt";
  const std::string seen = Describe(bitmap, part);
  if (std::getenv("ZEL_DRAW_PICTURES")) WriteFile(path, seen);
  EXPECT_EQ(seen, ReadFile(path)) << name;
}

}  // namespace zel
