// What this layer has once per process.
#pragma once

#include "toolkit/base/process.h"
#include "toolkit/core/event_loop.h"
#include "toolkit/draw/font.h"

namespace zel {

struct CorePart {
  static constexpr int kLayer = Process::kCore;

  EventLoop loop;
  unsigned widgetsMade = 0;
  Font libraryFont;  // of a widget without a skin
};

}  // namespace zel
