// Toolkit timers that tick only when a test says so.
#pragma once

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

#include "toolkit/base/timers.h"

namespace zel {

// Takes the place of Allegro's timers while it lives; one at a time. All slots are freed before
// and after.
class FakeTimers {
 public:
  using Callback = void (*)();

  FakeTimers() : previous_{std::exchange(timerDriver, {Install, Remove, Sleep})} {
    current_ = this;
    FreeSlots();
  }
  ~FakeTimers() {
    FreeSlots();
    timerDriver = previous_;
    current_ = nullptr;
  }
  FakeTimers(const FakeTimers&) = delete;
  FakeTimers& operator=(const FakeTimers&) = delete;

  // Lets the timer that was installed as the `index`th of those that run tick so many times.
  void Tick(int index, int times = 1) {
    const Callback tick = Running(index).first;
    for (int i = 0; i < times; ++i) tick();
  }
  // Its period in Allegro's hardware ticks.
  long Period(int index) const { return Running(index).second; }
  int Count() const { return static_cast<int>(periods_.size()); }

  bool refuses = false;           // installing fails
  int sleeps = 0;                 // how often the processor was given up
  std::function<void()> onSleep;  // what happens meanwhile

 private:
  using Timer = std::pair<Callback, long>;

  static int Install(Callback tick, long period) {
    if (current_->refuses) return -1;
    for (Timer& timer : current_->periods_)
      if (timer.first == tick) {
        timer.second = period;
        return 0;
      }
    current_->periods_.emplace_back(tick, period);
    return 0;
  }
  static void Remove(Callback tick) {
    std::erase_if(current_->periods_, [tick](const Timer& timer) { return timer.first == tick; });
  }
  static void Sleep() {
    ++current_->sleeps;
    const std::function<void()> happens = current_->onSleep;  // which may put another one there
    if (happens) happens();
  }
  static void FreeSlots() {
    for (int id = 0; id < kTimerSlots; ++id) RemoveTimer(id);
  }
  const Timer& Running(int index) const { return periods_.at(static_cast<std::size_t>(index)); }

  static inline FakeTimers* current_ = nullptr;
  TimerDriver previous_;
  std::vector<Timer> periods_;
};

}  // namespace zel
