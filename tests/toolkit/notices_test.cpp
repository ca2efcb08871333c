// The two channels of notices.
#include "toolkit/core/notices.h"

#include <gtest/gtest.h>
#include <string>

#include "toolkit/core/toolkit_init.h"

namespace framereel {
namespace {

std::string calls;

void HearChange(intptr_t code, void* argument) {
  calls += *static_cast<const char*>(argument);
  calls += std::to_string(code);
}

void HearChangeOnce(intptr_t code, void* argument) {
  HearChange(code, argument);
  NotifyRemove(HearChangeOnce, argument);
}

void HearActive(void* argument, bool active) {
  EXPECT_EQ(ActiveGet(), active); // the flag stands ahead of the calls
  calls += *static_cast<const char*>(argument);
  calls += active ? '+' : '-';
}

void HearActiveOnce(void* argument, bool active) {
  HearActive(argument, active);
  ActiveRemove(HearActiveOnce, argument);
}

char a = 'a', b = 'b', c = 'c';

class NoticesTest : public ::testing::Test {
protected:
  NoticesTest() {
    ToolkitInit();
    calls.clear();
  }
};

TEST_F(NoticesTest, ChangesReachTheLastListenerFirst) {
  NotifySend(nullptr, kChangeDisplay);
  NotifyAdd(HearChange, &a);
  NotifyAdd(HearChangeOnce, &b);
  NotifyAdd(HearChange, &c);
  NotifySend(nullptr, kChangeDisplay);
  ToolkitInit(); // a second call changes nothing
  NotifySend(&calls, kChangeMainMoved);
  EXPECT_EQ(calls, "c2b2a2c5a5");
  NotifyRemove(HearChange, &c);
  NotifyRemove(HearChange, &a);
  NotifyRemove(HearChange, &a);
  NotifySend(nullptr, kChangeMainSize);
  EXPECT_EQ(calls, "c2b2a2c5a5");
}

TEST_F(NoticesTest, ActiveStateReachesTheFirstListenerFirst) {
  EXPECT_TRUE(ActiveGet());
  ActiveAdd(HearActive, &a);
  ActiveAdd(HearActive, &b);
  ActiveAdd(HearActive, &a);
  ActiveSet(false);
  ActiveRemove(HearActive, &a); // the last of the two
  ActiveRemove(HearActive, &c);
  ActiveAdd(HearActiveOnce, &c);
  ActiveSet(true);
  ActiveSet(false);
  EXPECT_EQ(calls, "a-b-a-a+b+c+a-b-");
  ActiveRemove(HearActive, &a);
  ActiveRemove(HearActive, &b);
  ActiveSet(true);
  EXPECT_EQ(calls, "a-b-a-a+b+c+a-b-");
}

} // namespace
} // namespace framereel
