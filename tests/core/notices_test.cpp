// Who hears that the program becomes active. The other channel is a Notifier: arrays_test.cpp.
#include "core/notices.h"

#include <gtest/gtest.h>
#include <string>

#include "core/toolkit_init.h"

namespace framereel {
namespace {

std::string calls;

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

TEST(Notices, ActiveStateReachesTheFirstListenerFirst) {
  ToolkitInit();
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
  ActiveRemove(HearActive, &a);
  ActiveRemove(HearActive, &b);
  ActiveSet(true);
  EXPECT_EQ(calls, "a-b-a-a+b+c+a-b-");
}

} // namespace
} // namespace framereel
