// Timers on the clock of the desktop in memory: order, re-entry, and the wrap of the tick.
#include "core/timers.h"

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

// At a tick: what is scheduled ("a20": timer a in 20 ms), cancelled ("-a") or forgotten (!), the delay to the next one
// then, and what fires in one pass. A capital does more than tell its name.
struct Step {
  uint32_t tick;
  const char* actions;
  int32_t next;
  const char* fires;
};

std::string fired;
std::map<char, Timer*> handles;

void Schedule(char name, uint32_t delay);

void Fire(void* name) {
  fired += *static_cast<char*>(name);
  if (fired.back() == 'A') Schedule('a', 0);  // has another come at once
  if (fired.back() == 'S') Schedule('s', 50); // has another come later
  if (fired.back() == 'N') TimerFireDue();    // lets others fire
  if (fired.back() == 'C') TimerCancel(handles['c']);
}

void Schedule(char name, uint32_t delay) {
  static char names[128];
  names[size_t(name)] = name;
  handles[name] = TimerSchedule(Fire, &names[size_t(name)], delay);
}

void Walk(const std::vector<Step>& steps) {
  TimerClearAll();
  for (const Step& step : steps) {
    SCOPED_TRACE(testing::Message() << "tick " << step.tick);
    TheMemoryDisplay().tick = step.tick;
    std::istringstream actions(step.actions);
    for (std::string action; actions >> action;) {
      if (action[0] == '!') TimerClearAll();
      if (action[0] == '-') TimerCancel(handles[action[1]]);
      if (std::isalpha(action[0])) Schedule(action[0], uint32_t(std::stoul(action.substr(1))));
    }
    EXPECT_EQ(TimerNextDelay(), step.next);
    EXPECT_EQ(TimerPending(), step.next != kNoTimer);
    fired.clear();
    TimerFireDue();
    EXPECT_EQ(fired, step.fires);
  }
}

TEST(Timers, FireOneAPassBeyondTheirMomentAndOfEqualOnesTheLastFirst) {
  Walk(
      {{0, "b20 a10 c20 d30", 10, ""}, {99, "", -89, "a"}, {99, "", -79, "c"}, {99, "", -79, "b"}, {99, "", -69, "d"}});
  Walk({{0, "d5 b3 c4 -b", 4, ""}, {9, "C0 -d", -5, "c"}, {10, "c7", -1, "C"}, {11, "", kNoTimer, ""}});
  Walk({{0, "A0", 0, ""}, {1, "", -1, "A"}, {1, "", 0, ""}, {1000, "", -999, "a"}}); // late: no catching up
  Walk({{0, "N1 x2", 1, ""}, {9, "", -8, "Nx"}});
  Walk({{0, "a1 b2 ! -a -b", kNoTimer, ""}});
}

TEST(Timers, FireInOrderOfTimeAcrossTheSignedWrap) {
  constexpr uint32_t kNear = 2147483000u, kWrap = 0x80000000u;
  // The moment of c is a negative number. The timers ahead of the wrap fire without a look at the tick; then the era is
  // over, and as a signed number the moment of c lies below the tick.
  Walk({{kNear, "", kNoTimer, ""},
        {kNear, "c2000 b200 S100", 100, "S"},
        {kNear + 1, "", 199, "b"},
        {kNear + 1, "", 1999, "c"},
        {kNear + 1, "", 49, ""},
        {kNear + 52, "", -2, "s"}});
  Walk({{kNear, "", kNoTimer, ""},
        {kNear, "a500 b600", 500, ""},
        {kWrap, "c1000", -148, "a"},
        {kWrap, "", -48, "b"},
        {kWrap, "", 1000, ""}});
}

} // namespace
} // namespace framereel
