#include "toolkit/base/process.h"

#include <memory>

namespace zel {

// Known when it is compiled, wherever the compiler can make such strings: then it is there before
// any constructor runs.
Process process;

constinit Settings& settings = process.settings;
constinit TimerDriver& timerDriver = process.timerDriver;

void Process::End() {
  for (int layer = kParts - 1; layer >= 0; --layer) {
    // What is destroyed may ask for its own part once more.
    if (held_[layer].part) held_[layer].destroy(held_[layer].part);
    held_[layer] = {};
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
