// What most tests start from: Allegro without a display (memory bitmaps, texts and configuration
// work, graphics modes do not), default settings, no configuration.
#pragma once

#include <gtest/gtest.h>

#include <cerrno>

#include "toolkit/base/allegro.h"
#include "toolkit/base/process.h"
#include "toolkit/draw/color.h"

namespace zel {

// Leaves the pixel format to the test and everything else of the process as a program start finds
// it, before and after each test.
class AllegroFixture : public testing::Test {
 protected:
  explicit AllegroFixture(int depth = 16) {
    if (!system_driver) install_allegro(SYSTEM_NONE, &errno, nullptr);
    Reset();
    UseDepth(depth);
  }
  ~AllegroFixture() override { Reset(); }

  static void UseDepth(int depth) {
    set_color_depth(depth);
    RecomputeNamedColors();
  }
  // From here on texts are in ISO 8859-1.
  static void UseLatin1() { set_uformat(U_ASCII); }

 private:
  static void Reset() {
    set_uformat(U_UTF8);
    process.Renew();
    set_config_data("", 0);
  }
};

}  // namespace zel
