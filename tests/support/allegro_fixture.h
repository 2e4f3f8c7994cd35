// What most tests start from: Allegro without a display, default settings, no configuration.
#pragma once

#include <gtest/gtest.h>

#include <cerrno>

#include "toolkit/core/allegro.h"
#include "toolkit/core/settings.h"
#include "toolkit/skin/color.h"

namespace zel {

// Installs Allegro on first use; memory bitmaps, texts and configuration work, graphics modes do
// not (see FakeDisplay).
inline void NeedAllegro() {
  if (!system_driver) install_allegro(SYSTEM_NONE, &errno, nullptr);
}

// Leaves the pixel format to the test and everything else of the process as a program start finds
// it, before and after each test.
class AllegroFixture : public testing::Test {
 protected:
  explicit AllegroFixture(int depth = 16) {
    NeedAllegro();
    UseDepth(depth);
    Reset();
  }
  ~AllegroFixture() override { Reset(); }

  static void UseDepth(int depth) {
    set_color_depth(depth);
    RecomputeNamedColors();
  }

 private:
  static void Reset() {
    set_uformat(U_UTF8);
    settings = Settings{};
    set_config_data("", 0);
  }
};

}  // namespace zel
