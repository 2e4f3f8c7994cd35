// What this layer has once per process.
#pragma once

#include <array>
#include <memory>

#include "toolkit/base/process.h"
#include "toolkit/draw/color.h"
#include "toolkit/draw/engine_font.h"
#include "toolkit/draw/screen_update.h"

namespace zel {

struct DrawPart {
  static constexpr int kLayer = Process::kDraw;

  std::array<int, NamedColor::kCount> namedColors{};  // pixels in the current format
  EngineLibrary fontEngine;                           // null while it is not started
  Color textBackground;                               // no colour is transparent
  std::unique_ptr<ScreenUpdate> screenUpdate;
};

inline DrawPart& Drawing() { return process.Of<DrawPart>(); }

}  // namespace zel
