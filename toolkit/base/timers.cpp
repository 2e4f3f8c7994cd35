#include "toolkit/base/timers.h"

#include <algorithm>
#include <array>
#include <climits>
#include <utility>

#include "toolkit/base/allegro.h"
#include "toolkit/base/process.h"

namespace zel {
namespace {

constexpr auto& slots = process.timers;

// Allegro's callbacks take no argument, so each slot has one of its own.
using Callback = void (*)();
template <int kId>
void OnTick() {
  ++slots[kId].ticks;
  WakeLoop();
}
template <int... kIds>
constexpr std::array<Callback, sizeof...(kIds)> MakeCallbacks(std::integer_sequence<int, kIds...>) {
  return {&OnTick<kIds>...};
}
constexpr auto kCallbacks = MakeCallbacks(std::make_integer_sequence<int, kTimerSlots>{});

// Allegro's timers count this many hardware ticks a second (its manual, install_int_ex).
constexpr long kHardwareTicks = TIMERS_PER_SECOND;
static_assert(kHardwareTicks == 1193181);

// Longer periods would not fit a long of 32 bits.
constexpr int kMostMilliseconds = INT_MAX / (kHardwareTicks / 1000);

long PeriodOfMilliseconds(int ms) { return MSEC_TO_TIMER(std::clamp(ms, 1, kMostMilliseconds)); }
long PeriodOfRate(int perSecond) { return std::max(1L, kHardwareTicks / std::max(1, perSecond)); }

bool InUse(int id) { return id >= 0 && id < kTimerSlots && slots[id].period != 0; }

void Clear(TimerSlot& slot) {
  slot.ticks = 0;
  slot.backlog = 0;
}

int Install(long period) {
  for (int id = 0; id < kTimerSlots; ++id) {
    TimerSlot& slot = slots[id];
    if (slot.period != 0) continue;
    Clear(slot);
    if (timerDriver.install(kCallbacks[id], period) != 0) return kNoTimer;
    slot.period = period;
    return id;
  }
  return kNoTimer;
}

void Reinstall(int id, long period) {
  if (!InUse(id)) return;
  // Installing a callback again only changes its period.
  if (timerDriver.install(kCallbacks[id], period) == 0) slots[id].period = period;
}

}  // namespace

int InstallWithAllegro(Callback tick, long speed) { return install_int_ex(tick, speed); }
void RemoveFromAllegro(Callback tick) { remove_int(tick); }

int InstallTimer(int ms) { return Install(PeriodOfMilliseconds(ms)); }
int InstallTimerEx(int perSecond) { return Install(PeriodOfRate(perSecond)); }
void ReinstallTimer(int id, int ms) { Reinstall(id, PeriodOfMilliseconds(ms)); }
void ReinstallTimerEx(int id, int perSecond) { Reinstall(id, PeriodOfRate(perSecond)); }

void RemoveTimer(int id) {
  if (!InUse(id)) return;
  timerDriver.remove(kCallbacks[id]);
  slots[id].period = 0;
  Clear(slots[id]);
}

int NextTimerEvent() {
  for (int id = 0; id < kTimerSlots; ++id) {
    TimerSlot& slot = slots[id];
    if (slot.ticks <= 0) continue;
    if (++slot.backlog <= settings.UsableFrameSkip()) return id;
    Clear(slot);
  }
  return kNoTimer;
}

void ConsumeTimerEvent(int id) {
  if (InUse(id) && slots[id].ticks > 0) --slots[id].ticks;
}

void ResetTimerBacklog() {
  for (TimerSlot& slot : slots) slot.backlog = 0;
}

}  // namespace zel
