// The wait that signals end.
#include "record/signals.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

namespace framereel {
namespace {

constexpr uint32_t kTooLong = 3600 * 1000; // ms; a test that waits for it has failed

struct Blocked {
  StopSignals signals;
  Blocked() { StopSignalsBlock(signals); }
  ~Blocked() { StopSignalsRelease(signals); }
};

TEST(StopSignals, EndAWaitAtOnce) {
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    Blocked blocked;
    std::raise(number); // it comes ahead of the wait, and counts all the same
    EXPECT_TRUE(StopSignalsWait(blocked.signals, kTooLong));
    EXPECT_FALSE(StopSignalsWait(blocked.signals, 0)) << "one signal ends one wait";
  }
}

TEST(StopSignals, EndAWaitThatHasBegun) {
  Blocked blocked;
  const pid_t child = ::fork();
  if (child == 0) {
    ::kill(::getppid(), SIGTERM);
    ::_exit(0);
  }
  EXPECT_TRUE(StopSignalsWait(blocked.signals, kTooLong));
  ::waitpid(child, nullptr, 0);
}

TEST(StopSignals, AreForgottenWhenTheyDoTheirUsualWorkAgain) {
  StopSignals signals;
  StopSignalsBlock(signals);
  std::raise(SIGINT);
  std::raise(SIGTERM);
  StopSignalsRelease(signals); // the process would end here
  sigset_t mask;
  ASSERT_EQ(::sigprocmask(SIG_SETMASK, nullptr, &mask), 0);
  EXPECT_FALSE(::sigismember(&mask, SIGINT));
}

TEST(StopSignals, StayIgnoredWhereTheCallerIgnoresThem) {
  std::signal(SIGHUP, SIG_IGN);
  {
    Blocked blocked;
    std::raise(SIGHUP);
    EXPECT_FALSE(StopSignalsWait(blocked.signals, 0));
    std::raise(SIGINT);
    EXPECT_TRUE(StopSignalsWait(blocked.signals, kTooLong));
  }
  std::signal(SIGHUP, SIG_DFL);
}

} // namespace
} // namespace framereel
