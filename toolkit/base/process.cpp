#include "toolkit/base/process.h"

#include <memory>
#include <utility>

namespace zel {

// Known when it is compiled, wherever the compiler can make such strings: then it is there before
// any constructor runs.
Process process;

constinit Settings& settings = process.settings;
constinit TimerDriver& timerDriver = process.timerDriver;

void Process::End() {
  for (int layer = kParts - 1; layer >= 0; --layer) {
    const Held held = std::exchange(held_[layer], {});
    if (held.part) held.destroy(held.part);
  }
  hasEnded_ = true;
}

void Process::Renew() {
  End();
  delete input.queue;
  std::destroy_at(this);
  std::construct_at(this);
}

}  // namespace zel
