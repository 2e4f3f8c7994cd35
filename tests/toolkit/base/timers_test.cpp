#include "toolkit/base/timers.h"

#include <climits>

#include "tests/support/allegro_fixture.h"
#include "tests/support/fake_timers.h"

namespace zel {
namespace {

class Timers : public AllegroFixture {
 protected:
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
  for (const bool refuses : {true, false}) {
    clock.refuses = refuses;
    EXPECT_EQ(InstallTimerEx(50), refuses ? -1 : 3);
  }
}

TEST_F(Timers, PeriodsAreCountedInHardwareTicks) {
  const auto expect = [this](long first, long second) {
    for (const int unused : {2, -1, 8}) ReinstallTimer(unused, 100), ReinstallTimerEx(unused, 100);
    EXPECT_EQ(clock.Count(), 2);
    EXPECT_EQ(clock.Period(0), first);
    EXPECT_EQ(clock.Period(1), second);
  };
  InstallTimer(20);
  InstallTimerEx(50);
  expect(20 * 1193, 1193181 / 50);
  for (const int least : {0, INT_MIN, 1}) {
    ReinstallTimer(0, least);
    ReinstallTimerEx(1, least);
    expect(1193, 1193181);
  }
  ReinstallTimer(0, INT_MAX);
  ReinstallTimerEx(1, INT_MAX);
  EXPECT_GT(clock.Period(0), 1000 * 1193181);
  EXPECT_EQ(clock.Period(1), 1);
}

TEST_F(Timers, TicksAreTakenInTurnAndABacklogIsDropped) {
  for (int i = 0; i < 3; ++i) InstallTimer(20);
  clock.Tick(2);
  clock.Tick(0, 2);
  EXPECT_EQ(WorkOff(), Ids({0, 0, 2}));
  clock.Tick(0, 5);
  EXPECT_EQ(WorkOff(), Ids(5, 0));
  clock.Tick(0, 50);
  clock.Tick(1);
  EXPECT_EQ(WorkOff(), Ids({0, 0, 0, 0, 0, 1}));
  for (const int limit : {1, -5}) {
    settings.maxFrameSkip = limit;
    for (const bool yield : {false, true}) {
      settings.yield = yield;
      clock.Tick(0, 3);
      if (yield) NextTimerEvent();  // noticed while waiting
      EXPECT_EQ(WorkOff(), Ids({0})) << "no limit stops the loop from ticking";
    }
  }
  clock.Tick(0, 2);
  RemoveTimer(0);
  for (const int id : {0, -1, 8}) ConsumeTimerEvent(id);
  InstallTimer(20);
  EXPECT_EQ(WorkOff(), Ids{}) << "a freed slot forgets its ticks";
}

}  // namespace
}  // namespace zel
