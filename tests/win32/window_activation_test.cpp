// Which window is active and has the focus: among our own windows, and across other programs.
#include "win32/window_scene.h"

namespace framereel {
namespace {

std::string Activations() {
  return TakeLog({"ACTIVATEAPP", "NCACTIVATE", "ACTIVATE", "SETFOCUS", "KILLFOCUS", "ENABLE"});
}

using WindowActivation = OneWindow;

// The frame and a dialog of its own that is not shown yet.
class DialogActivation : public OneWindow {
protected:
  HWND dialog = MakeWindow("dialog", WS_POPUP | WS_CAPTION | WS_SYSMENU, {310, 0, 516, 225}, main);
};

TEST_F(DialogActivation, ShowingADialogActivatesItAtOnce) {
  TakeLog();
  ::ShowWindow(dialog, SW_SHOWNORMAL);
  EXPECT_EQ(Activations(), "main NCACTIVATE 0; main ACTIVATE 0; dialog NCACTIVATE 1; dialog ACTIVATE 1; "
                           "main KILLFOCUS; dialog SETFOCUS");
  Drain();
  EXPECT_EQ(Activations(), "");
  EXPECT_EQ(TheMemoryDisplay().desktop.keyboard, MemoryWindowTitled("dialog"));
}

TEST_F(DialogActivation, ShowingCanLeaveTheActiveWindowUntilTheFocusIsSetInIt) {
  ::ShowWindow(dialog, SW_SHOWNA);
  Drain();
  EXPECT_EQ(Activations(), "");
  HWND child = ShowChild("child", {0, 0, 50, 50}, dialog);
  EXPECT_EQ(::GetFocus(), main);
  EXPECT_EQ(::SetFocus(child), main);
  EXPECT_EQ(Activations(), "main NCACTIVATE 0; main ACTIVATE 0; dialog NCACTIVATE 1; dialog ACTIVATE 1; "
                           "main KILLFOCUS; dialog SETFOCUS; dialog KILLFOCUS; child SETFOCUS");
  EXPECT_EQ(::GetFocus(), child);
}

TEST_F(DialogActivation, AClickActivatesAndThenArrives) {
  ::ShowWindow(dialog, SW_SHOWNORMAL);
  Drain();
  TakeLog();
  MemoryClick(150, 160);
  Drain();
  EXPECT_EQ(TakeLog({"NCACTIVATE", "LBUTTONDOWN"}),
            "dialog NCACTIVATE 0; main NCACTIVATE 1; main LBUTTONDOWN 1 at 47,38");
}

TEST_F(WindowActivation, AClickIntoTheInactiveProgramActivatesItBeforeItArrives) {
  HWND popup = MakeWindow("popup", WS_POPUP | WS_BORDER, {310, 0, 410, 100}, main, "Log", WS_EX_TOPMOST);
  ::ShowWindow(popup, SW_SHOWNA); // the desktop gives it no keyboard by itself
  MemoryGiveKeyboard(MemoryOpenWindow("other", {0, 350, 90, 450}, 0));
  Drain();
  TakeLog();
  MemoryClick(350, 50);
  Drain();
  EXPECT_EQ(TakeLog({"ACTIVATEAPP", "ACTIVATE", "LBUTTONDOWN", "LBUTTONUP"}),
            "popup ACTIVATEAPP 1; main ACTIVATEAPP 1; popup ACTIVATE 1; popup LBUTTONDOWN 1 at 39,49; "
            "popup LBUTTONUP 0 at 39,49");
}

TEST_F(DialogActivation, LeavingTheProgramTellsAllFramesAndTheWayBackToo) {
  ::ShowWindow(dialog, SW_SHOWNA);
  Drain();
  TakeLog();
  MemoryGiveKeyboard(MemoryOpenWindow("other", {0, 350, 90, 450}, 0));
  Drain();
  EXPECT_EQ(Activations(), "main NCACTIVATE 0; main ACTIVATE 0; dialog ACTIVATEAPP 0; main ACTIVATEAPP 0; "
                           "main KILLFOCUS");
  EXPECT_EQ(::SetFocus(dialog), nullptr); // not ours to set
  MemoryTypeKey('A');
  Drain();
  EXPECT_EQ(TakeLog(), "");
  MemoryGiveKeyboard(shown);
  Drain();
  EXPECT_EQ(Activations(), "dialog ACTIVATEAPP 1; main ACTIVATEAPP 1; main NCACTIVATE 1; main ACTIVATE 1; "
                           "main SETFOCUS");
}

TEST_F(DialogActivation, GoingFromOneOfOurWindowsToAnotherIsNoLeaving) {
  ::ShowWindow(dialog, SW_SHOWNORMAL);
  Drain();
  TakeLog();
  MemoryGiveKeyboard(shown);
  Drain();
  MemoryGiveKeyboard(MemoryWindowTitled("dialog"));
  Drain();
  EXPECT_EQ(TakeLog({"ACTIVATEAPP", "NCACTIVATE"}),
            "dialog NCACTIVATE 0; main NCACTIVATE 1; main NCACTIVATE 0; dialog NCACTIVATE 1");
}

TEST_F(DialogActivation, AFrameThatItsDialogDisablesHandsTheKeyboardOn) {
  ::ShowWindow(dialog, SW_SHOWNORMAL);
  ::EnableWindow(main, FALSE);
  MemoryGiveKeyboard(MemoryOpenWindow("other", {0, 350, 90, 450}, 0));
  Drain();
  TakeLog();
  MemoryClick(150, 160);
  Drain();
  EXPECT_EQ(TakeLog({"ACTIVATEAPP", "NCACTIVATE", "ACTIVATE", "LBUTTONDOWN"}),
            "dialog ACTIVATEAPP 1; main ACTIVATEAPP 1; dialog NCACTIVATE 1; dialog ACTIVATE 1");
  EXPECT_EQ(::GetFocus(), dialog);
  EXPECT_NE(TheMemoryDisplay().desktop.keyboard, shown);
  MemoryTypeKey('A');
  Drain();
  EXPECT_EQ(TakeLog({"KEYDOWN"}), "dialog KEYDOWN 65");
}

TEST_F(DialogActivation, ADialogOverADialogHasTheKeyboardWhereverTheUserComesBack) {
  ::ShowWindow(dialog, SW_SHOWNORMAL);
  ::EnableWindow(main, FALSE);
  HWND upper = ShowFrame("upper", {320, 10, 500, 100}, dialog);
  ::EnableWindow(dialog, FALSE);
  DisplayWindow* other = MemoryOpenWindow("other", {0, 350, 90, 450}, 0);
  for (const bool byDesktop : {true, false}) {
    MemoryGiveKeyboard(other);
    Drain();
    byDesktop ? MemoryGiveKeyboard(shown) : MemoryClick(150, 160);
    Drain();
    EXPECT_EQ(::GetFocus(), upper);
  }
  // One that goes before it has enabled the one under it leaves nobody without the keyboard.
  ::EnableWindow(main, TRUE);
  ::DestroyWindow(upper);
  Drain();
  EXPECT_EQ(::GetFocus(), main);
}

TEST_F(DialogActivation, ClosingOrHidingTheActiveWindowActivatesItsOwner) {
  for (const bool closes : {false, true}) {
    ::ShowWindow(dialog, SW_SHOWNORMAL);
    Drain();
    TakeLog();
    if (closes) {
      ::DestroyWindow(dialog);
    } else {
      ::ShowWindow(dialog, SW_HIDE);
    }
    Drain();
    EXPECT_EQ(TakeLog({"ACTIVATEAPP", "NCACTIVATE", "SETFOCUS"}),
              "dialog NCACTIVATE 0; main NCACTIVATE 1; main SETFOCUS");
    EXPECT_EQ(TheMemoryDisplay().desktop.keyboard, shown);
  }
}

TEST_F(WindowActivation, MinimisingByTheUserLosesTheKeyboardAndRestoringBringsItBack) {
  MemoryMinimiseWindow(shown, true);
  Drain();
  EXPECT_EQ(Activations(), "main NCACTIVATE 0; main ACTIVATE 0; main ACTIVATEAPP 0; main KILLFOCUS");
  EXPECT_EQ(::GetFocus(), nullptr);
  MemoryMinimiseWindow(shown, false);
  Drain();
  EXPECT_EQ(Activations(), "main ACTIVATEAPP 1; main NCACTIVATE 1; main ACTIVATE 1; main SETFOCUS");
  EXPECT_EQ(::GetFocus(), main);
}

TEST_F(WindowActivation, TheUserMovesAndClosesThroughTheDesktop) {
  MemoryMoveWindow(shown, {40, 50, 246, 275});
  Drain();
  EXPECT_EQ(TakeLog({"WINDOWPOSCHANGED", "NCCALCSIZE"}), "main WINDOWPOSCHANGED 40,50");
  MemoryAskToClose(shown);
  ::EnableWindow(main, FALSE);
  Drain();
  EXPECT_EQ(TakeLog({"SYSCOMMAND"}), "");
  ::EnableWindow(main, TRUE);
  MemoryAskToClose(shown);
  Drain();
  EXPECT_EQ(TakeLog({"SYSCOMMAND", "CLOSE", "DESTROY"}), "main SYSCOMMAND 61536; main CLOSE; main DESTROY");
}

} // namespace
} // namespace framereel
