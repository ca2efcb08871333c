// What the signals that end a recording do once it has ended. That they end it is seen with the program itself.
#include "record/signals.h"

#include <gtest/gtest.h>

namespace framereel {
namespace {

TEST(StopSignals, EndOneWaitEachAndDoTheirUsualWorkDuringTheSave) {
  StopSignals signals;
  StopSignalsBlock(signals);
  std::raise(SIGTERM); // it comes ahead of the wait, and counts all the same
  EXPECT_TRUE(StopSignalsWait(signals, 0));
  EXPECT_FALSE(StopSignalsWait(signals, 0));
  std::raise(SIGINT);
  StopSignalsRelease(signals); // the process would end here
  sigset_t mask;
  ASSERT_EQ(::sigprocmask(SIG_SETMASK, nullptr, &mask), 0);
  EXPECT_FALSE(::sigismember(&mask, SIGINT));
}

} // namespace
} // namespace framereel
