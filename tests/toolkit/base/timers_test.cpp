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
  for (const bool refuses : {true, false}) {
    clock.refuses = refuses;
    EXPECT_EQ(InstallTimerEx(50), refuses ? -1 : 3);
  }
}

TEST_F(Timers, PeriodsAreCountedInHardwareTicks) {
  InstallTimer(20);
  InstallTimerEx(50);
  EXPECT_EQ(clock.Period(0), 20 * 1193);
  EXPECT_EQ(clock.Period(1), 1193181 / 50);
  for (const int least : {0, INT_MIN, 1}) {
    for (int id = -1; id < 9; ++id) (id == 1 ? ReinstallTimerEx : ReinstallTimer)(id, least);
    EXPECT_TRUE(clock.Count() == 2 && clock.Period(0) == 1193 && clock.Period(1) == 1193181);
  }
  ReinstallTimer(0, INT_MAX);
  ReinstallTimerEx(1, INT_MAX);
  EXPECT_TRUE(clock.Period(0) > 1000 * 1193181 && clock.Period(1) == 1);
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
