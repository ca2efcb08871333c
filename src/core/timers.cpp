// The list is ordered by `when` as a signed number. Across a wrap of the tick source that order and
// the order in time part; `lastTick` tells the two eras apart.
#include "core/timers.h"

#include "core/memory.h"
#include "win32/win32_system.h"

namespace framereel {

namespace {

Timer head = {nullptr, nullptr, INT32_MIN, nullptr}; // permanent; never fired
int32_t lastTick = INT32_MIN;                        // the tick or `when` last dealt with

int32_t Now() {
  return int32_t(::GetTickCount());
}

// True when, in time, the timers with a `when` from lastTick on come ahead of those below it.
bool HasWrapped(int32_t now) {
  return now < lastTick || (head.next && head.next->when < lastTick);
}

// The link that leads to the first timer of the era before the wrap, or to null when there is none left.
Timer** OldEraLink() {
  Timer** link = &head.next;
  while (*link && (*link)->when < lastTick) link = &(*link)->next;
  return link;
}

void Fire(Timer** link) {
  Timer* timer = *link;
  *link = timer->next;
  lastTick = timer->when;
  timer->function(timer->argument);
  MemFree(timer);
}

const Timer* NextTimer(int32_t now) {
  const Timer* old = HasWrapped(now) ? *OldEraLink() : nullptr;
  return old ? old : head.next;
}

} // namespace

Timer* TimerSchedule(TimerFunction function, void* argument, uint32_t delay) {
  auto* timer = static_cast<Timer*>(MemAlloc(sizeof(Timer)));
  if (!timer) return nullptr; // only while the program ends for want of memory
  auto when = int32_t(::GetTickCount() + delay);
  Timer* ahead = &head;
  while (ahead->next && ahead->next->when < when) ahead = ahead->next;
  *timer = {function, argument, when, ahead->next};
  ahead->next = timer;
  return timer;
}

void TimerCancel(Timer* timer) {
  Timer** link = &head.next;
  while (*link && *link != timer) link = &(*link)->next;
  if (*link) *link = timer->next;
  MemFree(timer);
}

void TimerFireDue() {
  int32_t now = Now();
  if (HasWrapped(now)) {
    Timer** link = OldEraLink();
    if (*link) {
      Fire(link); // without a look at the tick, which may have wrapped past its moment
      return;
    }
  }
  if (head.next && now > head.next->when) {
    Fire(&head.next);
  } else {
    lastTick = now;
  }
}

bool TimerPending() {
  return head.next != nullptr;
}

int32_t TimerNextDelay() {
  int32_t now = Now();
  const Timer* next = NextTimer(now);
  if (!next) return kNoTimer;
  return int32_t(uint32_t(next->when) - uint32_t(now));
}

void TimerClearAll() {
  head.next = nullptr;
  lastTick = INT32_MIN;
}

} // namespace framereel
