// The clock of the X11 display is the machine's; it needs no connection. Before time passes, the screen shows what was
// drawn.
#include <cerrno>
#include <ctime>

#include "win32/x11/x11_display.h"

namespace framereel {

uint32_t DisplayTick() {
  timespec now;
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return uint32_t(uint64_t(now.tv_sec) * 1000 + now.tv_nsec / 1'000'000);
}

void X11Rest(uint32_t milliseconds) {
  timespec end;
  ::clock_gettime(CLOCK_MONOTONIC, &end);
  end.tv_sec += milliseconds / 1000;
  end.tv_nsec += long(milliseconds % 1000) * 1'000'000;
  if (end.tv_nsec >= 1'000'000'000) {
    end.tv_sec += 1;
    end.tv_nsec -= 1'000'000'000;
  }
  while (::clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &end, nullptr) == EINTR) {
  }
}

void DisplaySleep(uint32_t milliseconds) {
  if (X11Connection* x = X11Live()) X11SettleMarks(x);
  X11Rest(milliseconds);
}

} // namespace framereel
