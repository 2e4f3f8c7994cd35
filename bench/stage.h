// Where the benchmarks play.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

#include <benchmark/benchmark.h>

#include "launcher/menu_screen.h"
#include "toolkit/testing/fake_machine.h"
#include "toolkit/testing/fake_timers.h"

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
  // The screen's pixels.
  std::vector<std::uint8_t> Picture() const;

 private:
  std::unique_ptr<FakeMachine> machine_;
  FakeTimers timers_;
  std::unique_ptr<MenuScreen> screen_;
};

Stage& TheStage();

// Times `act`, which gets the number of the round, and the frame that it makes necessary, and
// counts the pixels that are copied. Rounds before, which are not timed, show that it changes what
// is seen; it is an error when it does not, or when a later round copies fewer than `leastPixels`.
template <class Act>
void MeasureFrames(benchmark::State& state, int roundsToChange, long leastPixels, const Act& act) {
  Stage& stage = TheStage();
  stage.Frame();
  const std::vector<std::uint8_t> before = stage.Picture();
  int round = 0;
  bool changes = false;
  for (; round < roundsToChange; ++round) {
    act(round);
    stage.Frame();
    changes = changes || stage.Picture() != before;
  }
  if (!changes) return state.SkipWithError("nothing was drawn");
  long pixels = 0, fewest = leastPixels;
  for (auto _ : state) {
    act(round++);
    const long copied = stage.Frame();
    pixels += copied;
    fewest = std::min(fewest, copied);
  }
  if (fewest < leastPixels) return state.SkipWithError("a frame was not drawn");
  state.counters["pixels"] =
      benchmark::Counter(static_cast<double>(pixels), benchmark::Counter::kAvgIterations);
}

}  // namespace zel
