#include "toolkit/base/timers.h"

#include <sys/resource.h>

#include <climits>

#include "tests/support/allegro_fixture.h"
#include "toolkit/base/wakeup.h"
#include "toolkit/testing/fake_timers.h"

namespace zel {
namespace {

class Timers : public AllegroFixture {
 protected:
  // The ticks of one pass of an event loop, by the numbers of their timers.
  static std::string WorkOff() {
    std::string fired;
    for (int id = NextTimerEvent(); id != kNoTimer; id = NextTimerEvent()) {
      fired += std::to_string(id);
      ConsumeTimerEvent(id);
    }
    ResetTimerBacklog();
    return fired;
  }

  FakeTimers clock;
};

TEST_F(Timers, TakeTheFirstFreeOfEightSlots) {
  for (int id = 0; id < 8; ++id) EXPECT_EQ(InstallTimer(100), id);
  EXPECT_EQ(InstallTimer(100), -1);
  for (const int id : {3, 3, -1, 8, INT_MAX, INT_MIN}) RemoveTimer(id);
  EXPECT_EQ(clock.Count(), 7);
  clock.refuses = true;
  EXPECT_EQ(InstallTimerEx(50), -1);
  clock.refuses = false;
  EXPECT_EQ(InstallTimerEx(50), 3);
}

TEST_F(Timers, PeriodsAreCountedInHardwareTicks) {
  constexpr int kSecond = 1193181;
  constexpr int kPeriods[][3] = {
      {20, 20 * 1193, kSecond / 20}, {0, 1193, kSecond},
      {INT_MIN, 1193, kSecond},      {1, 1193, kSecond},
      {1000, 1193000, 1193},         {INT_MAX, INT_MAX / 1193 * 1193, 1}};
  InstallTimer(5);
  InstallTimerEx(5);
  for (const auto& [number, ofMilliseconds, ofRate] : kPeriods) {
    for (int id = -1; id < 9; ++id) (id == 1 ? ReinstallTimerEx : ReinstallTimer)(id, number);
    EXPECT_EQ(clock.Count(), 2);
    EXPECT_EQ(std::pair(clock.Period(0), clock.Period(1)),
              std::pair(long{ofMilliseconds}, long{ofRate}));
  }
}

TEST_F(Timers, TicksAreTakenInTurnAndABacklogIsDropped) {
  for (int i = 0; i < 3; ++i) InstallTimer(20);
  clock.Tick(2);
  clock.Tick(0, 2);
  EXPECT_EQ(WorkOff(), "002");
  clock.Tick(0, 5);
  EXPECT_EQ(WorkOff(), "00000");
  clock.Tick(0, 50);
  clock.Tick(1);
  EXPECT_EQ(WorkOff(), "000001");
  for (const int limit : {1, -5})
    for (const bool yield : {false, true}) {
      settings.maxFrameSkip = limit;
      settings.yield = yield;
      clock.Tick(0, 3);
      if (yield) NextTimerEvent();  // noticed while waiting
      EXPECT_EQ(WorkOff(), "0") << "no limit stops the loop from ticking";
    }
  clock.Tick(0, 2);
  RemoveTimer(0);
  for (const int id : {0, -1, 8}) ConsumeTimerEvent(id);
  InstallTimer(20);
  EXPECT_EQ(WorkOff(), "") << "a freed slot forgets its ticks";
}

// Who sleeps gives up the processor by itself, which the system counts.
TEST(Wakeup, EndsOneSleepHoweverOftenItIsTold) {
  const auto sleeps = [] {
    rusage before, after;
    getrusage(RUSAGE_THREAD, &before);
    SleepUntilWoken();
    getrusage(RUSAGE_THREAD, &after);
    return after.ru_nvcsw != before.ru_nvcsw;
  };
  sleeps();  // until what was told before
  WakeLoop();
  WakeLoop();
  EXPECT_FALSE(sleeps());
  EXPECT_TRUE(sleeps());
}

}  // namespace
}  // namespace zel
