// Signals are blocked but while it waits, so that none is lost between a look and a wait.
#include "record/signals.h"

#include <cerrno>
#include <ctime>
#include <initializer_list>

namespace framereel {

namespace {

constexpr int64_t kNanosecondsPerSecond = 1000000000;

int64_t Nanoseconds() {
  timespec now;
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * kNanosecondsPerSecond + now.tv_nsec;
}

} // namespace

void StopSignalsBlock(StopSignals& signals) {
  ::sigemptyset(&signals.watched);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    // nohup and shells without job control ignore signals on behalf of what they start; that stands.
    struct sigaction action;
    if (::sigaction(number, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
      ::sigaddset(&signals.watched, number);
    }
  }
  ::sigprocmask(SIG_BLOCK, &signals.watched, &signals.before);
  ::signal(SIGPIPE, SIG_IGN);
  ::signal(SIGXFSZ, SIG_IGN);
}

bool StopSignalsWait(StopSignals& signals, uint32_t milliseconds) {
  const int64_t end = Nanoseconds() + int64_t{milliseconds} * 1000000;
  int64_t left = int64_t{milliseconds} * 1000000;
  for (;;) {
    const timespec time = {left / kNanosecondsPerSecond, left % kNanosecondsPerSecond};
    if (::sigtimedwait(&signals.watched, nullptr, &time) > 0) return true;
    if (errno != EINTR) return false;
    // Stopped and continued by job control: wait for the rest.
    left = end - Nanoseconds();
    if (left < 0) left = 0;
  }
}

void StopSignalsRelease(StopSignals& signals) {
  while (StopSignalsWait(signals, 0)) {
  }
  ::sigprocmask(SIG_SETMASK, &signals.before, nullptr);
}

} // namespace framereel
