// The allocator's path of exhaustion, and temporary scopes. What blocks hold is seen wherever they are used.
#include "core/memory.h"
#include "core/temporary_blocks.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "core/app_strings.h"
#include "core/list.h"
#include "core/strings.h"
#include "core/text_format.h"
#include "core/timers.h"
#include "core/toolkit_init.h"
#include "support/allocations.h"

namespace framereel {
namespace {

// ---- Exhaustion ---------------------------------------------------------------------------------------------------

void* volatile lastBlock; // so that no allocation is left out as without a use

// What a hook saw is told on stderr, where a death test can read it.
void TellHook(void* name, uint32_t count) {
  static char block[1];
  const bool allNull = !MemAlloc(1) && !MemRealloc(block, 1) && !FormatNew("%d%", 1) && !StrDup("a") && !ListNew() &&
                       !TimerSchedule(nullptr, nullptr, 0);
  char text[40];
  std::fprintf(stderr, "%s timers=%d null=%d %s, ", FormatInto(text, "%s%%d%", name, count), TimerPending(), allNull,
               AppAlertString(1));
  if (count < 3) FatalExit(); // as a hook may that runs out of memory, too
}

TEST(MemoryDeathTest, ExhaustionTellsTheHookWhileTheToolkitGoesOnWithWhatItHasAndEndsWithCodeZero) {
  static char name[] = "hook";
  auto exhaust = [](int way) {
    ToolkitInit();
    lastBlock = MemAlloc(1);
    TimerSchedule([](void*) {}, nullptr, 1);
    SetMemFailureHook(TellHook, name);
    FormatTemp("the format's buffer is there");
    FailAllocations(1);
    MemAlloc(1);
    std::fprintf(stderr, "[one stood] ");
    lastBlock = way == 0 ? MemAlloc(1) : way == 1 ? MemRealloc(lastBlock, 2) : ::operator new(1);
    std::fprintf(stderr, "came back");
  };
  for (const int way : {0, 1, 2}) {
    EXPECT_EXIT(
        exhaust(way), testing::ExitedWithCode(0),
        "^\\[one stood\\] hook1 timers=0 null=1 Quit, hook2 timers=0 null=1 Quit, hook3 timers=0 null=1 Quit, $");
  }
  EXPECT_EXIT(FatalExit(), testing::ExitedWithCode(0), "^$") << "it needs no hook";
}

// ---- Temporary scopes ---------------------------------------------------------------------------------------------

// Under the sanitizers a block that is freed too early or never shows here by itself.
void UseScopes(const std::string& text) {
  const char* const here = FormatTemp("%s%", text.c_str());
  const char* const more = StrTempN("early and late", 5);
  TempScopeBegin(); // one in which nothing is made
  TempScopeEnd();
  TempScopeBegin();
  for (int i = 0; i < 100; ++i) FormatTemp("and another one");
  if (text.size() < 5) UseScopes(text + 'x');
  TempScopeEnd();
  EXPECT_EQ(here, text);
  EXPECT_STREQ(more, "early");
}

TEST(TemporaryBlocks, LiveAsLongAsTheirScope) {
  ToolkitInit();
  UseScopes("");
  TempScopeEnd(); // that of start-up is never freed
  UseScopes("");
  EXPECT_EQ(TempAdopt(nullptr), nullptr);
}

} // namespace
} // namespace framereel
