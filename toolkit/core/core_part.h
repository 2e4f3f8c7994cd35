// What this layer has once per process.
#pragma once

#include "toolkit/base/process.h"
#include "toolkit/core/loop_state.h"
#include "toolkit/draw/font.h"

namespace zel {

struct CorePart {
  static constexpr int kLayer = Process::kCore;

  LoopState loop;
  unsigned widgetsMade = 0;
  Font libraryFont;  // of a widget without a skin
};

}  // namespace zel
