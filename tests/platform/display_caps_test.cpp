// What the program knows of the display, and when it is told of a change.
#include "platform/display_caps.h"

#include <gtest/gtest.h>

#include "platform/start_up.h"
#include "support/desktop.h"
#include "toolkit/core/notices.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

// Counts the notices of a changed display.
struct Listener {
  int heard = 0;

  Listener() { NotifyAdd(Hear, this); }
  ~Listener() { NotifyRemove(Hear, this); }
  static void Hear(intptr_t subject, void* listener) {
    if (subject == kChangeDisplay) ++static_cast<Listener*>(listener)->heard;
  }
};

TEST(DisplayCaps, TellDepthColourAndSizeOfEveryDisplay) {
  for (const int depth : {1, 2, 4, 8, 12, 16, 24, 32}) {
    SCOPED_TRACE(depth);
    const Desktop desktop(300 + depth, 200, depth);
    const DisplayCaps& caps = TheDisplayCaps();
    EXPECT_EQ(caps.screenDepth, depth);
    EXPECT_EQ(caps.screenPlanes * caps.screenPlaneBits, depth);
    EXPECT_EQ(caps.screenHasColour, depth > 1);
    EXPECT_EQ(caps.screenHasGrey, depth > 1);
    EXPECT_EQ(caps.screenWidth, 300 + depth);
    EXPECT_EQ(caps.screenHeight, 200);
  }
}

TEST(DisplayCaps, SendANoticeOnceForAChangeOfDepthAndNoneForOneOfSize) {
  Desktop desktop(64, 48, 8);
  Listener listener;
  desktop.SetDepth(24);
  EXPECT_EQ(listener.heard, 1);
  ReadDisplayCaps();
  EXPECT_EQ(listener.heard, 1);
  desktop.SetMode(800, 600, 24);
  EXPECT_EQ(listener.heard, 1);
  EXPECT_EQ(TheDisplayCaps().screenWidth, 800);
  desktop.SetDepth(32);
  EXPECT_EQ(listener.heard, 2);
  desktop.SetDepth(1);
  EXPECT_EQ(listener.heard, 3);
}

TEST(StartUp, AnswersFalseWithoutADisplay) {
  MemoryDisplayReset(64, 48, 24);
  TheMemoryDisplay().present = false;
  EXPECT_FALSE(EngineStartUp());
  TheMemoryDisplay().present = true;
  ASSERT_TRUE(EngineStartUp());
  TheMemoryDisplay().lost = true;
  EXPECT_TRUE(ScreenIsLost());
  EngineShutDown();
}

} // namespace
} // namespace framereel
