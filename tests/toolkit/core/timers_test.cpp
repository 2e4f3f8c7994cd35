#include "toolkit/core/timers.h"

#include <gtest/gtest.h>

#include <climits>

#include "tests/support/fake_timers.h"
#include "toolkit/core/settings.h"

namespace zel {
namespace {

class Timers : public testing::Test {
 protected:
  Timers() { settings = Settings{}; }
  ~Timers() override { settings = Settings{}; }

  // The ticks of one pass of an event loop.
  static std::vector<int> WorkOff() {
    std::vector<int> fired;
    for (int id = NextTimerEvent(); id != kNoTimer; id = NextTimerEvent()) {
      fired.push_back(id);
      ConsumeTimerEvent(id);
    }
    ResetTimerBacklog();
    return fired;
  }
  using Ids = std::vector<int>;

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
  InstallTimer(20);
  InstallTimerEx(50);
  EXPECT_EQ(clock.Period(0), 20 * 1193);
  EXPECT_EQ(clock.Period(1), 1193181 / 50);
  ReinstallTimer(1, 7);
  ReinstallTimerEx(0, 3);
  EXPECT_EQ(clock.Period(0), 1193181 / 3);
  EXPECT_EQ(clock.Period(1), 7 * 1193);
  for (const int unused : {2, -1, 8}) {
    ReinstallTimer(unused, 100);
    ReinstallTimerEx(unused, 100);
  }
  EXPECT_EQ(clock.Count(), 2);
  for (const int least : {0, -1, INT_MIN}) {
    ReinstallTimer(0, least);
    ReinstallTimerEx(1, least);
    EXPECT_EQ(clock.Period(0), 1193);
    EXPECT_EQ(clock.Period(1), 1193181);
  }
  ReinstallTimer(0, INT_MAX);
  ReinstallTimerEx(1, INT_MAX);
  EXPECT_GT(clock.Period(0), 1000 * 1193181);
  EXPECT_EQ(clock.Period(1), 1);
}

TEST_F(Timers, TicksAreTakenInTurnAndABacklogIsDropped) {
  for (int i = 0; i < 3; ++i) InstallTimer(20);
  EXPECT_EQ(WorkOff(), Ids{});
  clock.Tick(2);
  clock.Tick(0, 2);
  EXPECT_EQ(WorkOff(), Ids({0, 0, 2}));
  clock.Tick(0, 5);
  EXPECT_EQ(WorkOff(), Ids(5, 0));
  clock.Tick(0, 50);
  clock.Tick(1);
  EXPECT_EQ(WorkOff(), Ids({0, 0, 0, 0, 0, 1}));
  EXPECT_EQ(WorkOff(), Ids{});
  for (const int limit : {1, 0, -5}) {
    settings.maxFrameSkip = limit;
    settings.yield = false;
    clock.Tick(0, 3);
    EXPECT_EQ(WorkOff(), Ids({0})) << limit;
    settings.yield = true;
    clock.Tick(0, 3);
    EXPECT_EQ(NextTimerEvent(), 0);  // noticed while waiting
    EXPECT_EQ(WorkOff(), Ids({0})) << "no limit stops the loop from ticking";
  }
}

TEST_F(Timers, AFreedSlotForgetsItsTicks) {
  InstallTimer(20);
  clock.Tick(0, 2);
  EXPECT_EQ(NextTimerEvent(), 0);
  RemoveTimer(0);
  EXPECT_EQ(NextTimerEvent(), -1);
  for (const int id : {0, -1, 8}) ConsumeTimerEvent(id);
  InstallTimer(20);
  EXPECT_EQ(WorkOff(), Ids{});
  clock.Tick(0);
  EXPECT_EQ(WorkOff(), Ids({0}));
}

}  // namespace
}  // namespace zel
