// The event loop: what a pass does, when timers fire, and how loops nest.
#include "platform/pump/pump.h"

#include <gtest/gtest.h>
#include <string>

#include "core/timers.h"
#include "platform/drawing/current_port.h"
#include "platform/pump/platform_start.h"
#include "platform/windows/modal.h"
#include "support/allocations.h"
#include "support/window_program.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

std::string calls;

void Note(void* what) {
  calls += static_cast<const char*>(what);
}

void NotePaint(ChildWindow* window) {
  calls += window->title;
}

char timerA[] = "a", timerB[] = "b";

class PumpTest : public ::testing::Test {
protected:
  PumpTest() { calls.clear(); }

  // The time that a pass takes on the display's clock.
  uint32_t TimeOfPass(bool mayWait) {
    const uint32_t before = ::GetTickCount();
    PumpOneEvent(nullptr, mayWait);
    return ::GetTickCount() - before;
  }

  WindowProgram program;
};

TEST_F(PumpTest, AnIdlePassSleepsUntilTheNextTimerButNotFor50Milliseconds) {
  EXPECT_EQ(TimeOfPass(false), 0u);
  EXPECT_EQ(TimeOfPass(true), 50u);
  TimerSchedule(Note, timerA, 70);
  EXPECT_EQ(TimeOfPass(true), 50u);
  EXPECT_EQ(TimeOfPass(true), 20u);
  EXPECT_EQ(calls, ""); // it is due at this tick, and fires beyond it
  EXPECT_LE(TimeOfPass(true), 1u);
  EXPECT_EQ(calls, "a");
}

TEST_F(PumpTest, FiresOneTimerAPass) {
  TimerSchedule(Note, timerA, 5);
  TimerSchedule(Note, timerB, 6);
  TheMemoryDisplay().tick += 100;
  PumpOneEvent(nullptr, false);
  EXPECT_EQ(calls, "a");
  PumpOneEvent(nullptr, false);
  EXPECT_EQ(calls, "ab");
}

TEST_F(PumpTest, AStreamOfMessagesLetsATimerInAtThe64th) {
  PumpOneEvent(nullptr, false);
  for (int i = 0; i < 100; ++i) MemoryTypeKey('X');
  TimerSchedule(Note, timerA, 0);
  ++TheMemoryDisplay().tick;
  int passes = 0;
  for (; calls.empty() && passes < 200; ++passes) PumpOneEvent(nullptr, false);
  EXPECT_EQ(passes, 64);
}

TEST_F(PumpTest, APassForOneWindowSeesItsMessagesAloneAndNoTimer) {
  const auto open = [](const char* title, int16_t y) {
    ChildWindow* window = OpenTestWindow(kWindowUnclamped);
    PlaceChildWindow(window, 100, y);
    SetChildWindowTitle(window, title);
    Settle();
    SetWindowMethod(window, &WindowMethods::paint, NotePaint);
    return window;
  };
  ChildWindow *one = open("1", 100), *two = open("2", 300);
  calls.clear();
  InvalidateChildWindow(one);
  InvalidateChildWindow(two);
  TimerSchedule(Note, timerA, 0);
  TheMemoryDisplay().tick += 10;
  for (int i = 0; i < 70; ++i) PumpOneEvent(two, false);
  EXPECT_EQ(calls, "2");
  Settle();
  EXPECT_EQ(calls, "21");
  PumpOneEvent(nullptr, false);
  EXPECT_EQ(calls, "21a");
}

TEST_F(PumpTest, FlushedPaintsLeaveKeysWhereTheyAreAndComeToAnEnd) {
  ChildWindow* window = OpenTestWindow(kWindowUnclamped);
  SetWindowMethod(
      window, &WindowMethods::keyDown,
      +[](ChildWindow*, const KeyEvent& event, int16_t, int16_t) { calls += char(event.character); });
  SetWindowMethod(window, &WindowMethods::paint, InvalidateChildWindow); // paints for ever
  MemoryTypeKey('K');
  InvalidateChildWindow(window);
  FlushPaints();
  SetWindowMethod(window, &WindowMethods::paint, NotePaint);
  FlushPaints();
  EXPECT_EQ(calls, "Test");
  Settle();
  EXPECT_EQ(calls, "Testk");
}

TEST_F(PumpTest, AnIdlePassAllocatesNothingAndShowsNothing) {
  TimerSchedule(Note, timerA, 10000);
  RunFor(500);
  const size_t before = Allocations();
  const uint32_t presents = TheMemoryDisplay().desktop.presents;
  RunFor(5000);
  EXPECT_EQ(Allocations(), before);
  EXPECT_EQ(TheMemoryDisplay().desktop.presents, presents);
  RunFor(6000);
  EXPECT_EQ(calls, "a");
}

// ---- Loops -------------------------------------------------------------------------------------------------------

TEST_F(PumpTest, TimersRunOnWhileTheSystemMenuIsOpen) {
  MemoryPressKey(VK_MENU);
  MemoryTypeKey(VK_SPACE);
  MemoryReleaseKey(VK_MENU);
  const size_t windows = TheMemoryDisplay().desktop.windows.size();
  MemoryAt(::GetTickCount() + 150, [=] { EXPECT_EQ(TheMemoryDisplay().desktop.windows.size(), windows + 1); });
  const auto leaveMenu = [](void*) {
    calls += CurrentPort() == &TheMainWindow()->port ? "on main " : "elsewhere ";
    MemoryTypeKey(VK_ESCAPE);
  };
  TimerSchedule(leaveMenu, nullptr, 200);
  Settle();
  EXPECT_EQ(calls, "on main ");
  EXPECT_EQ(TheMemoryDisplay().desktop.windows.size(), windows);
}

void Close(void* window) {
  calls += "close ";
  CloseChildWindow(static_cast<ChildWindow*>(window));
}

TEST_F(PumpTest, TheEndOfTheLoopWaitsForTheLoopsInsideIt) {
  const auto runNestedLoop = [](void* window) {
    TimerSchedule(Close, window, 20);
    EndEventLoop();
    calls += "in ";
    RunModalLoop(static_cast<ChildWindow*>(window), false);
    calls += "out ";
  };
  TimerSchedule(runNestedLoop, OpenTestWindow(kWindowModal), 0);
  RunEventLoop();
  EXPECT_EQ(calls, "in close out ");
  EXPECT_EQ(CurrentPort(), nullptr);
}

TEST_F(PumpTest, ALostDisplayAndASignalEndAllLoops) {
  ChildWindow* window = OpenTestWindow(kWindowModal);
  for (const bool lost : {true, false}) {
    PumpStartUp();
    MemoryAt(::GetTickCount() + 100, [=] { lost ? void(TheMemoryDisplay().lost = true) : EndAllLoops(); });
    RunModalLoop(window, true);
    RunEventLoop();
    EXPECT_TRUE(IsOpenChildWindow(window));
    TheMemoryDisplay().lost = false;
  }
}

TEST_F(PumpTest, AClosedWindowsRecordCanBeReadUntilThePassEndsEvenIfALoopInsideItClosesIt) {
  const auto closeBoth = [](void* window) {
    Close(GetModalWindow());
    Close(window);
  };
  ChildWindow* window = OpenTestWindow(kWindowUnclamped);
  TimerSchedule(closeBoth, window, 20);
  SetWindowMethod(
      window, &WindowMethods::keyDown, +[](ChildWindow* closed, const KeyEvent&, int16_t, int16_t) {
        RunModalLoop(OpenTestWindow(kWindowModal), false);
        OpenTestWindow(kWindowUnclamped); // takes the place of a record that is gone
        calls += closed->flags & kWindowClosed ? "closed " : "open ";
        calls += IsOpenChildWindow(closed) ? "listed" : "gone";
      });
  Type('X');
  EXPECT_EQ(calls, "close close closed gone");
}

TEST_F(PumpTest, StartsOnceAndAgainAfterItsShutdownAndNotWithoutADisplay) {
  const HWND first = TheMainWindow()->window;
  EXPECT_TRUE(PlatformInit(nullptr, nullptr, "", SW_SHOWNORMAL));
  EXPECT_EQ(TheMainWindow()->window, first);
  OpenTestWindow(kWindowModal);
  PlatformShutdown();
  EXPECT_EQ(TheMemoryDisplay().desktop.windows.size(), 0u);
  EXPECT_EQ(TheMainWindow()->window, nullptr);
  TheMemoryDisplay().present = false;
  EXPECT_FALSE(PlatformInit(nullptr, nullptr, "", SW_SHOWNORMAL));
  PlatformShutdown(); // there is nothing to shut down
  TheMemoryDisplay().present = true;
  EXPECT_TRUE(PlatformInit(nullptr, nullptr, "", SW_SHOWNORMAL));
  EXPECT_NE(MemoryWindowTitled("Framereel"), nullptr);
}

} // namespace
} // namespace framereel
