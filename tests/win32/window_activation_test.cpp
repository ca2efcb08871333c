// Which window is active and has the focus: among our own windows, and across other programs.
#include <gtest/gtest.h>

#include "win32/window_scene.h"

namespace framereel {
namespace {

std::string Activations() {
  return Joined(TakeLog({"ACTIVATEAPP", "NCACTIVATE", "ACTIVATE", "SETFOCUS", "KILLFOCUS", "ENABLE"}));
}

struct TwoWindows {
  WindowScene scene;
  HWND main = ShowFrame("main", {0, 0, 206, 225});
  HWND dialog = MakeWindow("dialog", WS_POPUP | WS_CAPTION | WS_SYSMENU, {300, 0, 506, 225}, main);
};

TEST(WindowActivation, ShowingADialogActivatesItAtOnce) {
  TwoWindows windows;
  TakeLog();
  ::ShowWindow(windows.dialog, SW_SHOWNORMAL);
  EXPECT_EQ(Activations(), "main NCACTIVATE 0; main ACTIVATE 0; dialog NCACTIVATE 1; dialog ACTIVATE 1; "
                           "main KILLFOCUS; dialog SETFOCUS");
  Drain();
  EXPECT_EQ(Activations(), "");
  EXPECT_EQ(TheMemoryDisplay().desktop.keyboard, MemoryWindowTitled("dialog"));
}

TEST(WindowActivation, ShowingWithoutActivatingLeavesTheActiveWindow) {
  TwoWindows windows;
  TakeLog();
  ::ShowWindow(windows.dialog, SW_SHOWNA);
  Drain();
  EXPECT_EQ(Activations(), "");
  EXPECT_EQ(::GetFocus(), windows.main);
}

TEST(WindowActivation, SettingTheFocusInAnotherFrameActivatesItFirst) {
  TwoWindows windows;
  ::ShowWindow(windows.dialog, SW_SHOWNA);
  HWND child = ShowChild("child", {0, 0, 50, 50}, windows.dialog);
  EXPECT_EQ(::SetFocus(child), windows.main);
  EXPECT_EQ(Activations(), "main NCACTIVATE 0; main ACTIVATE 0; dialog NCACTIVATE 1; dialog ACTIVATE 1; "
                           "main KILLFOCUS; dialog SETFOCUS; dialog KILLFOCUS; child SETFOCUS");
  EXPECT_EQ(::GetFocus(), child);
}

TEST(WindowActivation, AClickActivatesAndThenArrives) {
  TwoWindows windows;
  ::ShowWindow(windows.dialog, SW_SHOWNORMAL);
  Drain();
  TakeLog();
  MemoryClick(50, 60);
  Drain();
  EXPECT_EQ(Joined(TakeLog({"NCACTIVATE", "LBUTTONDOWN"})),
            "dialog NCACTIVATE 0; main NCACTIVATE 1; main LBUTTONDOWN 1 at 47,38");
}

TEST(WindowActivation, LeavingTheProgramTellsAllFramesAndTheWayBackToo) {
  TwoWindows windows;
  ::ShowWindow(windows.dialog, SW_SHOWNA);
  DisplayWindow* ours = MemoryWindowTitled("main");
  Drain();
  TakeLog();
  MemoryGiveKeyboard(MemoryOpenWindow("other", {0, 300, 100, 400}, 0));
  Drain();
  EXPECT_EQ(Activations(), "main NCACTIVATE 0; main ACTIVATE 0; dialog ACTIVATEAPP 0; main ACTIVATEAPP 0; "
                           "main KILLFOCUS");
  EXPECT_EQ(::SetFocus(windows.dialog), nullptr); // not ours to set
  MemoryTypeKey('A');
  Drain();
  EXPECT_EQ(Joined(TakeLog()), "");
  MemoryGiveKeyboard(ours);
  Drain();
  EXPECT_EQ(Activations(), "dialog ACTIVATEAPP 1; main ACTIVATEAPP 1; main NCACTIVATE 1; main ACTIVATE 1; "
                           "main SETFOCUS");
}

TEST(WindowActivation, GoingFromOneOfOurWindowsToAnotherIsNoLeaving) {
  TwoWindows windows;
  ::ShowWindow(windows.dialog, SW_SHOWNORMAL);
  Drain();
  TakeLog();
  MemoryGiveKeyboard(MemoryWindowTitled("main"));
  Drain();
  MemoryGiveKeyboard(MemoryWindowTitled("dialog"));
  Drain();
  EXPECT_EQ(Joined(TakeLog({"ACTIVATEAPP", "NCACTIVATE"})),
            "dialog NCACTIVATE 0; main NCACTIVATE 1; main NCACTIVATE 0; dialog NCACTIVATE 1");
}

TEST(WindowActivation, AFrameThatItsDialogDisablesHandsTheKeyboardOn) {
  TwoWindows windows;
  ::ShowWindow(windows.dialog, SW_SHOWNORMAL);
  ::EnableWindow(windows.main, FALSE);
  DisplayWindow* main = MemoryWindowTitled("main");
  MemoryGiveKeyboard(MemoryOpenWindow("other", {0, 300, 100, 400}, 0));
  Drain();
  TakeLog();
  MemoryClick(50, 60);
  Drain();
  EXPECT_EQ(Joined(TakeLog({"ACTIVATEAPP", "NCACTIVATE", "ACTIVATE", "LBUTTONDOWN"})),
            "dialog ACTIVATEAPP 1; main ACTIVATEAPP 1; dialog NCACTIVATE 1; dialog ACTIVATE 1");
  EXPECT_EQ(::GetFocus(), windows.dialog);
  EXPECT_NE(TheMemoryDisplay().desktop.keyboard, main);
  MemoryTypeKey('A');
  Drain();
  EXPECT_EQ(Joined(TakeLog({"KEYDOWN"})), "dialog KEYDOWN 65");
}

TEST(WindowActivation, ClosingOrHidingTheActiveWindowActivatesItsOwner) {
  for (const bool closes : {true, false}) {
    TwoWindows windows;
    ::ShowWindow(windows.dialog, SW_SHOWNORMAL);
    Drain();
    TakeLog();
    if (closes) {
      ::DestroyWindow(windows.dialog);
    } else {
      ::ShowWindow(windows.dialog, SW_HIDE);
    }
    Drain();
    EXPECT_EQ(Joined(TakeLog({"ACTIVATEAPP", "NCACTIVATE", "SETFOCUS"})),
              "dialog NCACTIVATE 0; main NCACTIVATE 1; main SETFOCUS");
    EXPECT_EQ(TheMemoryDisplay().desktop.keyboard, MemoryWindowTitled("main"));
  }
}

TEST(WindowActivation, MinimisingByTheUserLosesTheKeyboardAndRestoringBringsItBack) {
  WindowScene scene;
  HWND main = ShowFrame("main", {0, 0, 206, 225});
  DisplayWindow* shown = MemoryWindowTitled("main");
  MemoryMinimiseWindow(shown, true);
  Drain();
  EXPECT_EQ(Activations(), "main NCACTIVATE 0; main ACTIVATE 0; main ACTIVATEAPP 0; main KILLFOCUS");
  EXPECT_EQ(::GetFocus(), nullptr);
  MemoryMinimiseWindow(shown, false);
  Drain();
  EXPECT_EQ(Activations(), "main ACTIVATEAPP 1; main NCACTIVATE 1; main ACTIVATE 1; main SETFOCUS");
  EXPECT_EQ(::GetFocus(), main);
}

TEST(WindowActivation, TheUserMovesAndClosesThroughTheDesktop) {
  WindowScene scene;
  HWND main = ShowFrame("main", {0, 0, 206, 225});
  MemoryMoveWindow(MemoryWindowTitled("main"), {40, 50, 246, 275});
  Drain();
  EXPECT_EQ(Joined(TakeLog({"WINDOWPOSCHANGED", "NCCALCSIZE"})), "main WINDOWPOSCHANGED 40,50");
  MemoryAskToClose(MemoryWindowTitled("main"));
  ::EnableWindow(main, FALSE);
  Drain();
  EXPECT_EQ(Joined(TakeLog({"SYSCOMMAND"})), "");
  ::EnableWindow(main, TRUE);
  MemoryAskToClose(MemoryWindowTitled("main"));
  Drain();
  EXPECT_EQ(Joined(TakeLog({"SYSCOMMAND", "CLOSE", "DESTROY"})), "main SYSCOMMAND 61536; main CLOSE; main DESTROY");
}

} // namespace
} // namespace framereel
