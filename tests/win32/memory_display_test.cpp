// The desktop in memory, on which all other tests stand: its clock and script, its modes, drawing on its screen.
#include "win32/memory/memory_display.h"

#include <gtest/gtest.h>

#include <string>

#include "win32/win32.h"

namespace framereel {
namespace {

// Writes an event that notes its name and the time at which it ran.
void Note(std::string* notes, uint32_t tick, const char* name) {
  MemoryAt(tick, [notes, name] { *notes += name + std::to_string(::GetTickCount()) + " "; });
}

TEST(MemoryScript, RunsInOrderOfTimeWhileSomebodySleepsAndNotBefore) {
  MemoryDisplayReset(8, 8, 24);
  std::string notes;
  Note(&notes, 20, "c");
  Note(&notes, 10, "a");
  Note(&notes, 10, "b");
  Note(&notes, 31, "late");
  ::Sleep(9);
  EXPECT_EQ(notes, "");
  ::Sleep(21);
  EXPECT_EQ(notes, "a10 b10 c20 ");
  EXPECT_EQ(::GetTickCount(), 30U);
  ::Sleep(0);
  EXPECT_EQ(notes, "a10 b10 c20 ");
  Note(&notes, 5, "past");
  ::Sleep(0);
  EXPECT_EQ(notes, "a10 b10 c20 past30 ");
}

TEST(MemoryScript, KeepsItsOrderAcrossTheWrapOfTheClock) {
  for (const uint32_t sleep : {0x100U, 0x80000000U, 0xFFFFFFFFU}) {
    MemoryDisplayReset(8, 8, 24);
    TheMemoryDisplay().tick = 0xFFFFFF80;
    std::string notes;
    Note(&notes, 0x10, "behind");
    Note(&notes, 0xFFFFFFF0, "ahead");
    ::Sleep(0x7F);
    EXPECT_EQ(notes, "ahead4294967280 ");
    ::Sleep(sleep);
    EXPECT_EQ(notes, "ahead4294967280 behind16 ");
    EXPECT_EQ(::GetTickCount(), 0xFFFFFFFF + sleep);
  }
}

TEST(MemoryScript, LetsAnEventWriteOthersAndSleepItself) {
  MemoryDisplayReset(8, 8, 24);
  std::string notes;
  MemoryAt(10, [&notes] {
    Note(&notes, 12, "new");
    ::Sleep(50);
    Note(&notes, 60, "slept");
  });
  ::Sleep(20);
  EXPECT_EQ(notes, "new12 slept60 ");
  EXPECT_EQ(::GetTickCount(), 60U); // whoever sleeps wakes late, never back in time
}

TEST(MemoryDisplay, ChangesItsModeAndKeepsTheRest) {
  MemoryDisplayReset(5, 4, 24);
  TheMemoryDisplay().pointerX = 3;
  ::Sleep(7);
  std::string notes;
  Note(&notes, 8, "kept");
  MemoryPixel(4, 3) = 1;
  for (const int32_t depth : {1, 2, 4, 8, 16, 32}) {
    MemoryDisplaySetMode(9, 2, depth);
    const ScreenFacts facts = DisplayScreen();
    EXPECT_EQ(facts.width, 9);
    EXPECT_EQ(facts.height, 2);
    EXPECT_EQ(facts.layout.depth, depth);
    EXPECT_EQ(TheMemoryDisplay().palette.size(), depth > 8 ? 0U : 1U << depth);
    EXPECT_EQ(MemoryColourOf(MemoryPixel(8, 1)).green, 0); // black
  }
  ::Sleep(1);
  EXPECT_EQ(notes, "kept8 ");
  int32_t x = 0, y = 0;
  EXPECT_TRUE(DisplayPointerPlace(&x, &y));
  EXPECT_EQ(x, 3);
}

} // namespace
} // namespace framereel
