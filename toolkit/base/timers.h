// Eight process-wide timers that the event loop turns into messages.
//
// The library's callbacks only count; the loop takes the counts with NextTimerEvent and
// ConsumeTimerEvent. A slot whose ticks pile up beyond Settings::maxFrameSkip loses them.
#pragma once

#include <atomic>

#include "toolkit/base/wakeup.h"

namespace zel {

inline constexpr int kTimerSlots = 8;
inline constexpr int kNoTimer = -1;

// Takes the first free slot, with a period in milliseconds (below 1 counts as 1). Answers the
// slot's id, or kNoTimer when all slots are taken or the library refuses.
int InstallTimer(int ms);
// The same with a number of ticks per second (below 1 counts as 1).
int InstallTimerEx(int perSecond);
// Changes the period of slot `id`; ids outside 0..7 and free slots are ignored.
void ReinstallTimer(int id, int ms);
void ReinstallTimerEx(int id, int perSecond);
// Frees the slot; ids outside 0..7 and free slots are ignored.
void RemoveTimer(int id);

// The first slot with a pending tick, or -1. Counts the slot's backlog; see above.
int NextTimerEvent();
void ConsumeTimerEvent(int id);
void ResetTimerBacklog();

struct TimerSlot {
  std::atomic<int> ticks = 0;  // counted by Allegro's timer thread
  int backlog = 0;
  long period = 0;  // hardware ticks; 0 is free
};

int InstallWithAllegro(void (*tick)(), long speed);
void RemoveFromAllegro(void (*tick)());

// How the slots are driven: by Allegro, unless a test has put its own clock here.
struct TimerDriver {
  // Calls `tick` every `speed` of Allegro's hardware ticks; 0 on success (install_int_ex).
  int (*install)(void (*tick)(), long speed) = InstallWithAllegro;
  void (*remove)(void (*tick)()) = RemoveFromAllegro;
  // Gives up the processor until there may be a tick or input.
  void (*sleep)() = SleepUntilWoken;
};
extern TimerDriver& timerDriver;

}  // namespace zel
