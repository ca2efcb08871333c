// The allocator, its path of exhaustion, temporary scopes, and the scratch buffers.
#include "core/memory.h"

#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>

#include "core/app_strings.h"
#include "core/list.h"
#include "core/numbers.h"
#include "core/scratch_buffer.h"
#include "core/strings.h"
#include "core/text_format.h"
#include "core/timers.h"
#include "core/toolkit_init.h"
#include "win32/system/heap_faults.h"

namespace framereel {
namespace {

TEST(Memory, ResizedBlocksKeepTheirContents) {
  auto* block = static_cast<char*>(MemRealloc(nullptr, 4));
  std::memcpy(block, "abc", 4);
  block = static_cast<char*>(MemRealloc(block, 1 << 20));
  EXPECT_STREQ(block, "abc");
  block = static_cast<char*>(MemRealloc(block, 2));
  EXPECT_EQ(block[1], 'b');
  MemFree(block);
  MemFree(nullptr);
}

// What a hook saw is told on stderr, where a death test can read it.
void TellHook(void* argument, uint32_t count) {
  std::fprintf(stderr, "%s %u timers=%d", static_cast<const char*>(argument), count, TimerPending());
}

TEST(MemoryDeathTest, ExhaustionTellsTheHookOnceTimersAreGoneAndEndsWithCodeZero) {
  static char name[] = "hook";
  auto exhaust = [](bool resizes) {
    void* block = MemAlloc(1);
    TimerSchedule([](void*) {}, nullptr, 1);
    SetMemFailureHook(TellHook, name);
    FailAllocationsAfter(1);
    MemAlloc(1);
    std::fprintf(stderr, "[one stood] ");
    resizes ? MemRealloc(block, 2) : MemAlloc(1);
    std::fprintf(stderr, "came back");
  };
  for (const bool resizes : {false, true}) {
    EXPECT_EXIT(exhaust(resizes), ::testing::ExitedWithCode(0), "^\\[one stood\\] hook 1 timers=0$");
  }
  EXPECT_EXIT(FatalExit(), ::testing::ExitedWithCode(0), "^$") << "it needs no hook";
}

TEST(MemoryDeathTest, TheHookGetsNullAndTheToolkitGoesOnWithWhatItHas) {
  auto exhaust = [] {
    ToolkitInit();
    SetMemFailureHook(
        [](void*, uint32_t) {
          static char block[1];
          const bool allNull = !MemAlloc(1) && !MemRealloc(block, 1) && !FormatNew("%d%", 1) && !StrDup("a") &&
                               !TempAlloc(1) && !ListNew() && !TimerSchedule(nullptr, nullptr, 0);
          char text[20];
          std::fprintf(stderr, "null=%d %s %s", allNull, FormatInto(text, "%d%", 7), AppAlertString(1));
        },
        nullptr);
    FailAllocationsAfter(0);
    MemAlloc(1);
  };
  EXPECT_EXIT(exhaust(), ::testing::ExitedWithCode(0), "^null=1 7 Quit$");
}

TEST(MemoryDeathTest, AHookThatComesBackToFatalExitIsToldSo) {
  auto exhaust = [] {
    SetMemFailureHook(
        [](void*, uint32_t count) {
          std::fprintf(stderr, "%u ", count);
          if (count < 3) FatalExit();
        },
        nullptr);
    FatalExit();
  };
  EXPECT_EXIT(exhaust(), ::testing::ExitedWithCode(0), "^1 2 3 $");
}

// ---- Temporary scopes ---------------------------------------------------------------------------------------------

// Under the sanitizers a block that is freed too early or never shows here by itself.
TEST(TemporaryBlocks, InnerScopesLeaveThoseOfOuterOnesAlone) {
  ToolkitInit();
  TempScopeBegin();
  char* outer = FormatTemp("%s%-%d%", "outer", 1);
  TempScopeBegin();
  EXPECT_STREQ(StrTempN("inner and more", 5), "inner");
  EXPECT_EQ(TempAdopt(nullptr), nullptr);
  std::memset(TempAlloc(100), 1, 100);
  TempScopeEnd();
  std::memcpy(TempAdopt(MemAlloc(3)), "ab", 3);
  EXPECT_STREQ(outer, "outer-1");
  TempScopeEnd();
}

TEST(TemporaryBlocks, ThoseOfStartUpAreNeverFreed) {
  ToolkitInit();
  char* early = FormatTemp("early");
  TempScopeEnd();
  TempScopeBegin();
  FormatTemp("late");
  TempScopeEnd();
  EXPECT_STREQ(early, "early");
}

// ---- Scratch buffers ----------------------------------------------------------------------------------------------

TEST(ScratchBuffers, KeepTheirBlockForSmallerRequestsAndResizeToTheSizeAskedFor) {
  void* block = ScratchBuffer(kScratchGeneral, 100);
  EXPECT_EQ(ScratchBuffer(kScratchGeneral, 99), block);
  EXPECT_EQ(ScratchCapacity(kScratchGeneral), 100u);
  std::memset(ScratchBuffer(kScratchGeneral, 5000), 1, 5000);
  EXPECT_EQ(ScratchCapacity(kScratchGeneral), 5000u);
}

// ---- Numbers ------------------------------------------------------------------------------------------------------

TEST(Numbers, LimitsIncludeTheirBoundsAndLowWinsWhereTheyCross) {
  EXPECT_EQ(PinValue(1, 0, 5), 1);
  EXPECT_EQ(PinValue(1, 3, 5), 3);
  EXPECT_EQ(PinValue(1, 9, 5), 5);
  EXPECT_EQ(PinValue(5, 3, 1), 5);
  EXPECT_TRUE(InRange(1, 1, 2) && InRange(1, 2, 2));
  EXPECT_FALSE(InRange(1, 0, 2) || InRange(1, 3, 2) || InRange(0.5, 0.4999, 1.0));
}

} // namespace
} // namespace framereel
