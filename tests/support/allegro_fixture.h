// What most tests start from: Allegro without a display, default settings, no configuration.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <numeric>

#include "toolkit/base/allegro.h"
#include "toolkit/base/process.h"
#include "toolkit/draw/color.h"

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
    Reset();
    UseDepth(depth);
  }
  ~AllegroFixture() override { Reset(); }

  static void UseDepth(int depth) {
    set_color_depth(depth);
    RecomputeNamedColors();
  }
  // From here on texts are in ISO 8859-1.
  static void UseLatin1() {
    static std::array<unsigned short, 256> page;  // Allegro keeps the pointer
    std::iota(page.begin(), page.end(), static_cast<unsigned short>(0));
    set_uformat(U_ASCII_CP);
    set_ucodepage(page.data(), nullptr);
  }

 private:
  static void Reset() {
    set_uformat(U_UTF8);
    process.Renew();
    set_config_data("", 0);
  }
};

}  // namespace zel
