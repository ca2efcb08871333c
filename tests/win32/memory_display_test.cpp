// The desktop in memory, on which all other tests stand: its clock and script, its windows.
#include "win32/memory/memory_display.h"

#include <gtest/gtest.h>

#include <string>

#include "win32/win32.h"

namespace framereel {
namespace {

class MemoryScript : public ::testing::Test {
protected:
  MemoryScript() { MemoryDisplayReset(8, 8, 24); }
  // Writes an event that notes its name and the time at which it ran.
  void Note(uint32_t tick, const std::string& name) {
    MemoryAt(tick, [this, name] { notes += name + std::to_string(::GetTickCount()) + " "; });
  }
  std::string Slept(uint32_t ms) {
    ::Sleep(ms);
    return notes;
  }

  std::string notes;
};

TEST_F(MemoryScript, RunsInOrderOfTimeWhileSomebodySleepsAndNotBefore) {
  Note(20, "c");
  Note(10, "a");
  Note(10, "b");
  Note(31, "late");
  EXPECT_EQ(Slept(9), "");
  EXPECT_EQ(Slept(21), "a10 b10 c20 ");
  Note(5, "past");
  EXPECT_EQ(Slept(0), "a10 b10 c20 past30 ");
  MemoryAt(40, [this] {
    Note(42, "new");
    ::Sleep(50);
  });
  EXPECT_EQ(Slept(20), "a10 b10 c20 past30 late31 new42 ");
  EXPECT_EQ(::GetTickCount(), 90U); // whoever sleeps wakes late, never back in time
}

TEST_F(MemoryScript, KeepsItsOrderAcrossTheWrapOfTheClock) {
  for (const uint32_t sleep : {0x100U, 0x80000000U, 0xFFFFFFFFU}) {
    MemoryDisplayReset(8, 8, 24);
    TheMemoryDisplay().tick = 0xFFFFFF80;
    notes.clear();
    Note(0x10, "behind");
    Note(0xFFFFFFF0, "ahead");
    EXPECT_EQ(Slept(0x7F), "ahead4294967280 ");
    EXPECT_EQ(Slept(sleep), "ahead4294967280 behind16 ");
    EXPECT_EQ(::GetTickCount(), 0xFFFFFFFF + sleep);
  }
}

// ---- Windows -----------------------------------------------------------------------------------------------------

std::string Row() {
  std::string text;
  for (int32_t x = 0; x < TheMemoryDisplay().width; ++x) text += std::to_string(MemoryPixel(x, 0));
  return text;
}

TEST(MemoryWindows, StandAboveTheDesktopInTheirOrderAndLeaveItAsItWas) {
  MemoryDisplayReset(10, 1, 24);
  MemoryFill({0, 0, 10, 1}, 5);
  DisplayWindow* low = MemoryOpenWindow("low", {1, 0, 6, 1}, 1);
  DisplayWindow* high = MemoryOpenWindow("high", {4, 0, 9, 1}, 2);
  EXPECT_EQ(Row(), "5111222225");
  MemoryGiveKeyboard(low);
  EXPECT_EQ(Row(), "5111112225");
  MemoryMoveWindow(low, {0, 0, 2, 1});
  EXPECT_EQ(Row(), "1155222225");
  MemoryPaintWindow(*high, {0, 0, 2, 1}, 7);
  MemoryPaintDesktop({0, 0, 10, 1}, 6);
  EXPECT_EQ(Row(), "1166772226");
  MemoryMinimiseWindow(high, true);
  EXPECT_EQ(Row(), "1166666666");
  MemoryMinimiseWindow(high, false);
  MemoryCloseWindow(low);
  EXPECT_EQ(Row(), "6666222226");
  EXPECT_EQ(MemoryWindowAt(4, 0), high);
  EXPECT_EQ(MemoryWindowAt(3, 0), nullptr);
  MemorySetTaskBar({0, 0, 3, 1});
  EXPECT_NE(MemoryPixel(0, 0), 6U);
  MemorySetTaskBar({});
  EXPECT_EQ(Row(), "6666222226");
}

TEST(MemoryWindows, KeepWhatIsDrawnOnTheScreenUntilTheyPaint) {
  MemoryDisplayReset(6, 1, 24);
  DisplayWindow* window = MemoryOpenWindow("w", {1, 0, 5, 1}, 1);
  int painted = 0;
  window->paint = [window, &painted] {
    MemoryPaintWindow(*window, {0, 0, 2, 1}, 3);
    MemoryPaintWindow(*window, {2, 0, 4, 1}, 4);
    ++painted;
  };
  MemoryFill({0, 0, 6, 1}, 9);
  EXPECT_EQ(Row(), "999999");
  DisplayRefresh({0, 0, 6, 1});
  EXPECT_EQ(Row(), "033440");
  TheMemoryDisplay().pointerX = 3;
  MemoryDisplaySetMode(6, 2, 8);
  EXPECT_EQ(Row(), "033440");
  EXPECT_EQ(painted, 2);
  EXPECT_EQ(TheMemoryDisplay().pointerX, 3);
}

} // namespace
} // namespace framereel
