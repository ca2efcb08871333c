// The windows of the desktop in memory: what stands where, and what other programs hear.
#include <gtest/gtest.h>

#include "win32/memory/memory_display.h"
#include "win32/win32.h"

namespace framereel {
namespace {

std::string Row(int32_t y, int32_t from, int32_t to) {
  std::string text;
  for (int32_t x = from; x < to; ++x) text += std::to_string(MemoryPixel(x, y));
  return text;
}

TEST(MemoryWindows, StandAboveTheDesktopInTheirOrderAndLeaveItAsItWas) {
  MemoryDisplayReset(10, 1, 24);
  MemoryFill({0, 0, 10, 1}, 5);
  DisplayWindow* low = MemoryOpenWindow("low", {1, 0, 6, 1}, 1);
  DisplayWindow* high = MemoryOpenWindow("high", {4, 0, 9, 1}, 2);
  EXPECT_EQ(Row(0, 0, 10), "5111222225");
  MemoryGiveKeyboard(low);
  EXPECT_EQ(Row(0, 0, 10), "5111112225");
  MemoryMoveWindow(low, {0, 0, 2, 1});
  EXPECT_EQ(Row(0, 0, 10), "1155222225");
  MemoryPaintWindow(*high, {0, 0, 2, 1}, 7);
  MemoryPaintDesktop({0, 0, 10, 1}, 6);
  EXPECT_EQ(Row(0, 0, 10), "1166772226");
  MemoryMinimiseWindow(high, true);
  EXPECT_EQ(Row(0, 0, 10), "1166666666");
  MemoryMinimiseWindow(high, false);
  MemoryCloseWindow(low);
  EXPECT_EQ(Row(0, 0, 10), "6666222226");
  EXPECT_EQ(MemoryWindowAt(4, 0), high);
  EXPECT_EQ(MemoryWindowAt(3, 0), nullptr);
  MemorySetTaskBar({0, 0, 3, 1});
  EXPECT_NE(MemoryPixel(0, 0), 6U);
  MemorySetTaskBar({});
  EXPECT_EQ(Row(0, 0, 10), "6666222226");
}

TEST(MemoryWindows, KeepWhatIsDrawnOnTheScreenUntilTheyPaint) {
  MemoryDisplayReset(6, 1, 24);
  DisplayWindow* window = MemoryOpenWindow("w", {1, 0, 5, 1}, 1);
  int painted = 0;
  window->paint = [window, &painted] {
    ++painted;
    MemoryPaintWindow(*window, {0, 0, 2, 1}, 3);
    MemoryPaintWindow(*window, {2, 0, 4, 1}, 4);
  };
  MemoryFill({0, 0, 6, 1}, 9);
  EXPECT_EQ(Row(0, 0, 6), "999999");
  DisplayRefresh({0, 0, 6, 1});
  EXPECT_EQ(painted, 1);
  EXPECT_EQ(Row(0, 0, 6), "033440");
  MemoryDisplaySetMode(6, 2, 8);
  EXPECT_EQ(painted, 2);
  EXPECT_EQ(Row(0, 0, 6), "033440");
}

} // namespace
} // namespace framereel
