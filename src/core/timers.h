// One-shot timers: a function and an argument, to be called once the tick source has passed a moment.
//
// There is no thread behind them. The event loop asks between messages whether one is due and lets it fire, at most
// one a pass. What happens periodically is a timer whose function schedules the next. The tick source is
// ::GetTickCount, which wraps at 32 bits; timers keep their order across the wrap.
#pragma once

#include <cstdint>

namespace framereel {

using TimerFunction = void (*)(void* argument);

struct Timer {
  TimerFunction function;
  void* argument;
  int32_t when; // tick at which it becomes due
  Timer* next;
};

inline constexpr int32_t kNoTimer = INT32_MAX;

// Calls the function at the first pass whose tick is beyond now + delay (milliseconds); with a delay of 0 that is
// once the tick has moved on. Of timers with the same moment the last one scheduled fires first. The handle is good
// until the timer fires or is cancelled: its owner clears its copy first thing in the function.
Timer* TimerSchedule(TimerFunction function, void* argument, uint32_t delay);
// For a handle that is good; releases it. A function that runs may cancel other timers.
void TimerCancel(Timer* timer);

// Fires the next timer if it is due. The timer is off the list before its function runs.
void TimerFireDue();
// True when any timer is scheduled, due or not.
bool TimerPending();
// Milliseconds to the next timer, negative when it is overdue; kNoTimer when there is none.
int32_t TimerNextDelay();

// Forgets all timers without releasing them, for an exhausted heap is not to be touched. Their handles can still be
// cancelled. The tick source may begin anew behind it.
void TimerClearAll();

} // namespace framereel
