// The event loop: what a pass does, when timers fire, and how loops nest.
#include "platform/pump/pump.h"

#include <gtest/gtest.h>

#include "platform/windows/modal.h"
#include "support/allocations.h"
#include "support/window_script.h"
#include "win32/memory/memory_display.h"
#include "win32/windows/window.h"

namespace framereel {
namespace {

struct PumpTest : testing::Test {
  WindowScript script;

  PumpTest() { script.Act("together"); }
};

TEST_F(PumpTest, APassDealsWithAMessageAndATimerOrSleepsUntilTheNextButNotFor50Milliseconds) {
  script.Walk({
      {"pass idle", "50ms"},
      {"after 70 say a . idle idle", "50ms 20ms"},
      {"idle", "a 1ms"}, // it was due at that tick, and fires beyond it
      {"after 5 say a . after 6 say b . tick 100 pass", "a"},
      {"pass", "b"},
  });
  for (int i = 0; i < 100; ++i) MemoryTypeKey('X'); // a stream of messages
  script.Act("after 0 say a . tick 1");
  int passes = 0;
  for (; script.log.empty() && passes < 200; ++passes) PumpOneEvent(nullptr, false);
  EXPECT_EQ(passes, 64);
}

TEST_F(PumpTest, ARestrictedLoopSeesTheMessagesOfItsWindowAlone) {
  script.Act("open a d settle paints a");
  script.Walk({{"open m m settle paints m paint a paint m when m# close m . restricted m",
                "a+ block a- m+ m#0,0+200x100 m.gone free m- a+ active=a"},
               {"settle", "a#0,0+200x100"}});
}

TEST_F(PumpTest, FlushedPaintsLeaveKeysWhereTheyAreAndComeToAnEnd) {
  script.Act("open a d settle");
  script.Window("a")->methods.paint = InvalidateChildWindow; // for ever
  script.Walk({{"K paint a flush", "a+ active=a"}, {"paints a flush", "a#0,0+200x100"}, {"settle", "a:k/k/0 a'75/0"}});
}

TEST_F(PumpTest, AnIdlePassAllocatesNothingAndShowsNothing) {
  script.Act("wait 500");
  const size_t before = Allocations();
  const uint32_t presents = TheMemoryDisplay().desktop.presents;
  RunFor(5000);
  EXPECT_EQ(Allocations(), before);
  EXPECT_EQ(TheMemoryDisplay().desktop.presents, presents);
}

// ---- Loops -------------------------------------------------------------------------------------------------------

TEST_F(PumpTest, TimersRunOnWhileTheSystemMenuIsOpen) {
  script.words["open?"] = [this](std::istream&) { script.Say(TheWindows().menuOwner ? "open" : "shut"); };
  script.Walk({{"+alt space -alt after 200 open? esc . settle open?", "open shut"}});
}

TEST_F(PumpTest, TheEndOfTheLoopWaitsForTheLoopsInsideIt) {
  script.Walk({{"open m m after 20 close m . after 0 end say in loop m say out . run say over",
                "block m+ in m.gone free m- out over"}});
}

} // namespace
} // namespace framereel
