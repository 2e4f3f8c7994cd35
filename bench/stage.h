// Where the benchmarks play.
#pragma once

#include <memory>

#include "launcher/menu_screen.h"
#include "tests/support/fake_machine.h"
#include "tests/support/fake_timers.h"

namespace zel {

inline constexpr int kStageWidth = 800;
inline constexpr int kStageHeight = 600;

// The example menu in a directory of its own, on a screen of 16 bits in memory.
class Stage {
 public:
  Stage();

  MenuScreen& Menu() { return *screen_; }
  // What the loop does between a tick and the screen; answers the pixels that were copied.
  long Frame();

 private:
  std::unique_ptr<FakeMachine> machine_;
  FakeTimers timers_;
  std::unique_ptr<MenuScreen> screen_;
};

Stage& TheStage();

}  // namespace zel
