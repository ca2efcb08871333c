// Timers on the clock of the desktop in memory: order, re-entry, and the wrap of the tick.
#include "core/timers.h"

#include <gtest/gtest.h>
#include <string>

#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

std::string fired;

void Note(void* argument) {
  fired += *static_cast<const char*>(argument);
}

char a = 'a', b = 'b', c = 'c', d = 'd';

// The list and the tick that it dealt with last outlive a test. Each one therefore starts with an empty list and with a
// pass at tick 0, which is not below anything it could have seen.
class TimerTest : public ::testing::Test {
protected:
  TimerTest() {
    fired.clear();
    // A wrap on the way: the pass behind it forgets what the last tick was.
    for (const uint32_t tick : {uint32_t{INT32_MAX}, 0x80000000u, 0u}) PassAt(tick);
  }
  ~TimerTest() override { EXPECT_FALSE(TimerPending()); }

  void SetTick(uint32_t tick) { TheMemoryDisplay().tick = tick; }

  // What fires in one pass at the tick.
  std::string PassAt(uint32_t tick) {
    SetTick(tick);
    fired.clear();
    TimerFireDue();
    return fired;
  }
};

TEST_F(TimerTest, ATimerFiresOnceTheTickIsBeyondItsMoment) {
  EXPECT_EQ(TimerNextDelay(), kNoTimer);
  EXPECT_EQ(PassAt(0), "");
  TimerSchedule(Note, &a, 100);
  EXPECT_TRUE(TimerPending());
  EXPECT_EQ(TimerNextDelay(), 100);
  EXPECT_EQ(PassAt(100), "");
  EXPECT_EQ(TimerNextDelay(), 0);
  EXPECT_TRUE(TimerPending());
  EXPECT_EQ(PassAt(250), "a");
}

TEST_F(TimerTest, OneFiresAPassInOrderOfTimeAndEqualTimesLastScheduledFirst) {
  TimerSchedule(Note, &b, 20);
  TimerSchedule(Note, &a, 10);
  TimerSchedule(Note, &c, 20);
  TimerSchedule(Note, &d, 30);
  for (const char* next : {"a", "c", "b", "d", ""}) EXPECT_EQ(PassAt(1000), next);
}

Timer* other;
int periods;

TEST_F(TimerTest, CancellingTakesOutAnyOfThemAlsoFromAFunction) {
  other = TimerSchedule(Note, &d, 5);
  Timer* middle = TimerSchedule(Note, &b, 3);
  TimerSchedule(Note, &c, 4);
  TimerSchedule([](void*) { TimerCancel(other); }, nullptr, 1);
  TimerCancel(middle);
  EXPECT_EQ(PassAt(10), "");
  EXPECT_EQ(PassAt(10), "c");
  EXPECT_FALSE(TimerPending());
}

void Repeat(void*) {
  EXPECT_FALSE(TimerPending());
  if (++periods < 3) TimerSchedule(Repeat, nullptr, 0);
}

TEST_F(TimerTest, AFunctionThatSchedulesItselfWithNoDelayWaitsForTheNextTick) {
  periods = 0;
  TimerSchedule(Repeat, nullptr, 0);
  PassAt(0);
  EXPECT_EQ(periods, 0);
  PassAt(1);
  EXPECT_EQ(periods, 1);
  PassAt(1);
  EXPECT_EQ(periods, 1);
  PassAt(2);
  PassAt(1000); // late: no catching up
  PassAt(1000);
  EXPECT_EQ(periods, 3);
}

TEST_F(TimerTest, NestedPassesSeeTheListWithoutTheTimerThatRuns) {
  TimerSchedule(
      [](void*) {
        fired += '(';
        TimerFireDue();
        fired += ')';
      },
      nullptr, 1);
  TimerSchedule(Note, &a, 2);
  EXPECT_EQ(PassAt(10), "(a)");
}

TEST_F(TimerTest, ClearingForgetsAllAndTheirHandlesCanStillBeCancelled) {
  Timer* one = TimerSchedule(Note, &a, 1);
  Timer* two = TimerSchedule(Note, &b, 2);
  TimerClearAll();
  EXPECT_FALSE(TimerPending());
  EXPECT_EQ(PassAt(10), "");
  TimerCancel(one);
  TimerCancel(two);
}

// ---- The wrap -----------------------------------------------------------------------------------------------------

TEST_F(TimerTest, TimersOfBothErasFireInOrderOfTimeAcrossTheSignedWrap) {
  PassAt(2147483000u);
  TimerSchedule(Note, &c, 2000); // its moment is a negative number
  EXPECT_EQ(TimerNextDelay(), 2000);
  TimerSchedule(Note, &b, 200);
  TimerSchedule(
      [](void*) {
        fired += 'a';
        TimerSchedule(Note, &d, 50);
      },
      nullptr, 100);
  EXPECT_EQ(TimerNextDelay(), 100);
  // The timers ahead of the wrap fire without a look at the tick.
  EXPECT_EQ(PassAt(2147483001u), "a");
  EXPECT_EQ(PassAt(2147483001u), "b");
  // Then the era is over, and as a signed number the moment of the last one lies below the tick.
  EXPECT_EQ(PassAt(2147483001u), "c");
  EXPECT_EQ(PassAt(2147483001u), "");
  EXPECT_EQ(PassAt(2147483052u), "d");
}

TEST_F(TimerTest, ATickThatWrapsAheadOfItsTimersLetsThemFireFirst) {
  PassAt(2147483000u);
  TimerSchedule(Note, &a, 500);
  TimerSchedule(Note, &b, 600);
  SetTick(2147483648u);
  TimerSchedule(Note, &c, 1000);
  EXPECT_EQ(TimerNextDelay(), -148);
  EXPECT_EQ(PassAt(2147483648u), "a");
  EXPECT_EQ(PassAt(2147483648u), "b");
  EXPECT_EQ(PassAt(2147483648u), "");
  EXPECT_EQ(TimerNextDelay(), 1000);
  EXPECT_EQ(PassAt(2147484649u), "c");
}

TEST_F(TimerTest, TheUnsignedWrapIsNoSpecialMoment) {
  PassAt(2147483648u);
  PassAt(4294967290u);
  TimerSchedule(Note, &a, 3);
  TimerSchedule(Note, &b, 10);
  EXPECT_EQ(PassAt(4294967294u), "a");
  EXPECT_EQ(TimerNextDelay(), 6);
  EXPECT_EQ(PassAt(4), "");
  EXPECT_EQ(PassAt(5), "b");
}

} // namespace
} // namespace framereel
