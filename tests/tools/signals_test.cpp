// What the signals that end a recording do, and what they leave behind. That they end a recording stands in programs_test.sh.
#include "record/signals.h"

#include <gtest/gtest.h>

namespace framereel {
namespace {

constexpr uint32_t kTooLong = 3600 * 1000; // ms; a test that waits for it has failed

TEST(StopSignals, EndOneWaitEachAndAreForgottenWhenTheyDoTheirUsualWorkAgain) {
  std::signal(SIGHUP, SIG_IGN); // by the caller, and so it stays
  StopSignals signals;
  StopSignalsBlock(signals);
  std::raise(SIGHUP);
  EXPECT_FALSE(StopSignalsWait(signals, 0));
  std::raise(SIGTERM); // it comes ahead of the wait, and counts all the same
  EXPECT_TRUE(StopSignalsWait(signals, kTooLong));
  EXPECT_FALSE(StopSignalsWait(signals, 0));
  std::raise(SIGINT);
  StopSignalsRelease(signals); // the process would end here
  sigset_t mask;
  ASSERT_EQ(::sigprocmask(SIG_SETMASK, nullptr, &mask), 0);
  EXPECT_FALSE(::sigismember(&mask, SIGINT));
  std::signal(SIGHUP, SIG_DFL);
}

} // namespace
} // namespace framereel
