// The messages of a window's life, in their order: making, showing, moving, minimising, closing.
#include <sstream>

#include "win32/window_scene.h"

namespace framereel {
namespace {

using WindowLife = OneWindow;
using WindowOrder = OneWindow;

std::string PlaceOf(HWND window) {
  RECT r;
  ::GetWindowRect(window, &r);
  std::ostringstream text;
  text << r.left << ',' << r.top << ' ' << r.right - r.left << 'x' << r.bottom - r.top;
  return text.str();
}

TEST_F(WindowLife, BeginsWithLimitsRecordFrameAndCreation) {
  MakeWindow("other", kFrameStyle, {10, 20, 110, 120});
  EXPECT_EQ(TakeLog(), "other GETMINMAXINFO; other NCCREATE; other NCCALCSIZE 100x100; other CREATE");
  MakeWindow("dialog", WS_POPUP | WS_CAPTION, {0, 0, 50, 50}, main);
  EXPECT_EQ(TakeLog(), "dialog NCCREATE; dialog NCCALCSIZE 50x50; dialog CREATE");
  MakeWindow("child", kChildStyle, {0, 0, 50, 50}, main);
  EXPECT_EQ(TakeLog(), "child NCCREATE; child NCCALCSIZE 50x50; child CREATE");
}

TEST_F(WindowLife, NeedsAClassAParentForAChildAndAProcedureThatTakesTheWindow) {
  ::DestroyWindow(main);
  EXPECT_EQ(MakeWindow("x", kFrameStyle, {0, 0, 50, 50}, nullptr, "Unknown"), nullptr);
  EXPECT_EQ(MakeWindow("x", kChildStyle, {0, 0, 50, 50}), nullptr);
  EXPECT_EQ(MakeWindow("x", kChildStyle, {0, 0, 50, 50}, main), nullptr);
  WNDCLASSA taken = {};
  taken.lpfnWndProc = ::DefWindowProcA;
  taken.lpszClassName = "Log";
  EXPECT_EQ(::RegisterClassA(&taken), 0);
  Answer(WM_NCCREATE, [](HWND, WPARAM, LPARAM) { return 0; });
  EXPECT_EQ(MakeWindow("refused", kFrameStyle, {0, 0, 50, 50}), nullptr);
  Answer(WM_NCCREATE, [](HWND, WPARAM, LPARAM) { return 1; });
  Answer(WM_CREATE, [](HWND, WPARAM, LPARAM) { return -1; });
  EXPECT_EQ(MakeWindow("refused", kFrameStyle, {0, 0, 50, 50}), nullptr);
  Answer(WM_CREATE, [](HWND window, WPARAM, LPARAM) { return ::DestroyWindow(window) - 1; });
  EXPECT_EQ(MakeWindow("suicide", kFrameStyle, {0, 0, 50, 50}), nullptr);
  EXPECT_EQ(::GetTopWindow(nullptr), nullptr);
  EXPECT_EQ(TheMemoryDisplay().desktop.windows.size(), 0U);
}

TEST(WindowLifeAlone, ShowingTellsTheWindowAndThenActivatesIt) {
  WindowScene scene;
  HWND window = MakeWindow("main", kFrameStyle, {10, 20, 110, 120});
  TakeLog();
  EXPECT_FALSE(::ShowWindow(window, SW_RESTORE));
  EXPECT_EQ(TakeLog(), "main SHOWWINDOW 1; main WINDOWPOSCHANGED");
  Drain();
  EXPECT_EQ(TakeLog(),
            "main ACTIVATEAPP 1; main NCACTIVATE 1; main ACTIVATE 1; main SETFOCUS; main PAINT; main ERASEBKGND");
  EXPECT_TRUE(::ShowWindow(window, SW_RESTORE));
  EXPECT_EQ(TakeLog(), "");
}

TEST_F(WindowLife, MovingSendsTheNewPlaceAndSizingTheNewFrameToo) {
  ::MoveWindow(main, 30, 40, 206, 225, TRUE);
  EXPECT_EQ(TakeLog(), "main WINDOWPOSCHANGED 30,40; main MOVE 33,62");
  ::MoveWindow(main, 30, 40, 120, 100, TRUE);
  EXPECT_EQ(TakeLog(), "main GETMINMAXINFO; main NCCALCSIZE 120x100; main WINDOWPOSCHANGED 120x100; "
                       "main SIZE 0 114x75");
  ::MoveWindow(main, 30, 40, 120, 100, TRUE);
  EXPECT_EQ(TakeLog(), "");
  HWND child = ShowChild("child", {5, 5, 25, 25}, main);
  ::SetWindowPos(child, nullptr, 7, 8, 30, 31, SWP_NOZORDER | SWP_NOACTIVATE);
  EXPECT_EQ(TakeLog(), "child NCCALCSIZE 30x31; child WINDOWPOSCHANGED 7,8 30x31; child MOVE 7,8; "
                       "child SIZE 0 30x31");
  EXPECT_EQ(PlaceOf(child), "40,70 30x31");
}

TEST_F(WindowLife, AFrameStaysWithinTheLimitsThatItAnswers) {
  Answer(WM_GETMINMAXINFO, [](HWND, WPARAM, LPARAM lParam) {
    auto* limits = reinterpret_cast<MINMAXINFO*>(lParam);
    limits->ptMinTrackSize = {80, 90};
    limits->ptMaxTrackSize = {200, 210};
    return 0;
  });
  HWND frame = MakeWindow("frame", kFrameStyle, {0, 0, 1000, 10});
  EXPECT_EQ(PlaceOf(frame), "0,0 200x90");
  ::MoveWindow(frame, 0, 0, 10, 1000, TRUE);
  EXPECT_EQ(PlaceOf(frame), "0,0 80x210");
  EXPECT_EQ(PlaceOf(ShowCover(frame)), "-2000,-2000 4000x4000");
}

TEST_F(WindowLife, MinimisingKeepsThePlaceAndTellsBothWays) {
  ::ShowWindow(MakeWindow("dialog", WS_POPUP | WS_CAPTION, {0, 0, 50, 50}, main), SW_SHOWNA);
  Drain();
  TakeLog();
  ::ShowWindow(main, SW_MINIMIZE);
  EXPECT_EQ(TakeLog(), ""); // before the desktop has done it
  Drain();
  EXPECT_EQ(TakeLog({"NCCALCSIZE", "WINDOWPOSCHANGED"}), "main NCCALCSIZE 206x225; main WINDOWPOSCHANGED");
  EXPECT_FALSE(MemoryWindowTitled("dialog"));
  WINDOWPLACEMENT placement = {};
  placement.length = sizeof placement;
  ::GetWindowPlacement(main, &placement);
  EXPECT_EQ(placement.showCmd, UINT(SW_SHOWMINIMIZED));
  EXPECT_EQ(placement.rcNormalPosition.left, 100);
  placement.rcNormalPosition = {40, 50, 240, 250};
  placement.showCmd = SW_SHOWNA;
  ::SetWindowPlacement(main, &placement);
  EXPECT_EQ(TakeLog({"WINDOWPOSCHANGED"}), "");
  ::ShowWindow(main, SW_RESTORE);
  Drain();
  EXPECT_EQ(TakeLog({"NCCALCSIZE", "WINDOWPOSCHANGED", "SETFOCUS"}),
            "main NCCALCSIZE 200x200; main WINDOWPOSCHANGED 40,50 200x200; main SETFOCUS");
  EXPECT_TRUE(MemoryWindowTitled("dialog"));
  ::GetWindowPlacement(main, &placement);
  EXPECT_EQ(placement.showCmd, UINT(SW_SHOWNORMAL));
}

TEST_F(WindowLife, WhereTheDesktopMinimisesNothingACaptionStaysFromWhichItComesBack) {
  TheMemoryDisplay().desktop.leavesMinimising = true;
  MemorySetTaskBar({0, 460, 640, 480});
  for (const bool byBox : {true, false}) {
    ::ShowWindow(main, SW_MINIMIZE);
    Drain();
    EXPECT_EQ(shown->place.bottom, 460);
    EXPECT_EQ(shown->place.right, 160);
    EXPECT_EQ(ColourAt(100, 450), ::GetSysColor(COLOR_ACTIVECAPTION));
    MemoryMoveWindow(shown, {200, 435, 360, 460}); // which does not move where it goes back to
    Drain();
    if (byBox) {
      MemoryClick(329, 446);
    } else {
      TypeWith({VK_MENU}, VK_SPACE);
      MemoryTypeKey('R');
    }
    Drain();
    EXPECT_EQ(PlaceOf(main), "100,100 206x225");
    EXPECT_EQ(::GetFocus(), main);
  }
}

TEST_F(WindowLife, AMoveOfOurOwnIsNewerThanTheDesktopsThatWasNotHeardOf) {
  MemoryMoveWindow(shown, {0, 0, 640, 480});
  ::MoveWindow(main, 40, 50, 210, 220, TRUE);
  Drain();
  EXPECT_EQ(PlaceOf(main), "40,50 210x220");
}

TEST_F(WindowLife, WhatAnotherProgramDestroysGoesAsIfWeHad) {
  MakeWindow("dialog", WS_POPUP | WS_CAPTION, {0, 0, 50, 50}, main);
  MemoryDestroyWindow(shown);
  Drain();
  EXPECT_EQ(TakeLog({"NCDESTROY"}), "dialog NCDESTROY; main NCDESTROY");
}

TEST_F(WindowLife, TheWindowsOfAMinimisedOneAreNotShownAndPaintWhenTheyComeBack) {
  HWND dialog = ShowFrame("dialog", {400, 100, 500, 200}, main);
  HWND child = ShowChild("child", {0, 0, 20, 20}, dialog);
  const auto expectShown = [=](bool are) {
    EXPECT_EQ(::IsWindowVisible(dialog), are);
    EXPECT_EQ(::IsWindowVisible(child), are);
    EXPECT_EQ(::WindowFromPoint(OnScreen(child, 1, 1)), are ? child : nullptr);
  };
  MemoryMinimiseWindow(shown, true);
  Drain();
  expectShown(false);
  TakeLog();
  ::InvalidateRect(dialog, nullptr, FALSE);
  ::BringWindowToTop(dialog);
  Drain();
  EXPECT_EQ(TakeLog({"PAINT", "ACTIVATE"}), "");
  MemoryMinimiseWindow(shown, false);
  Drain();
  expectShown(true);
  EXPECT_EQ(TakeLog({"PAINT"}), "dialog PAINT; child PAINT; main PAINT");
}

TEST_F(WindowLife, AMinimisedChildIsACaptionInTheCornerOfItsParent) {
  HWND child = ShowChild("child", {5, 5, 105, 105}, main, kChildStyle | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX);
  ::ShowWindow(child, SW_MINIMIZE);
  EXPECT_EQ(TakeLog({"WINDOWPOSCHANGED"}), "child WINDOWPOSCHANGED 0,175 160x25");
  ::ShowWindow(child, SW_RESTORE);
  EXPECT_EQ(TakeLog({"WINDOWPOSCHANGED"}), "child WINDOWPOSCHANGED 5,5 100x100");
}

TEST_F(WindowLife, DestroyingTellsOwnedWindowsFirstParentsBeforeChildrenAndNonClientTheOtherWay) {
  HWND child = ShowChild("child", {0, 0, 100, 100}, main);
  HWND grandchild = ShowChild("grandchild", {0, 0, 50, 50}, child);
  MakeWindow("dialog", WS_POPUP | WS_CAPTION, {0, 0, 50, 50}, main);
  ::SetFocus(grandchild);
  Answer(WM_DESTROY, [grandchild](HWND, WPARAM, LPARAM) {
    ::SetFocus(grandchild); // which comes too late
    return 0;
  });
  TakeLog();
  ::DestroyWindow(child);
  EXPECT_EQ(TakeLog(), "child SHOWWINDOW 0; child WINDOWPOSCHANGED; grandchild KILLFOCUS; child DESTROY; "
                       "grandchild DESTROY; grandchild NCDESTROY; child NCDESTROY");
  ::DestroyWindow(main);
  EXPECT_EQ(TakeLog({"DESTROY", "NCDESTROY", "SHOWWINDOW"}),
            "dialog DESTROY; dialog NCDESTROY; main SHOWWINDOW 0; main DESTROY; main NCDESTROY");
  EXPECT_FALSE(Lives(main));
  EXPECT_FALSE(Lives(child));
  EXPECT_FALSE(::DestroyWindow(main));
  EXPECT_EQ(TheMemoryDisplay().desktop.windows.size(), 0U);
}

TEST(WindowLifeAlone, AWindowMayDestroyItselfInAnyOfItsMessages) {
  for (const UINT message : {WM_DESTROY, WM_PAINT, WM_ERASEBKGND, WM_ACTIVATE, WM_NCACTIVATE, WM_WINDOWPOSCHANGED,
                             WM_SHOWWINDOW, WM_NCCALCSIZE, WM_SETFOCUS, WM_ACTIVATEAPP, WM_MOUSEMOVE, WM_KEYDOWN}) {
    WindowScene scene;
    HWND window = MakeWindow("main", kFrameStyle, {10, 20, 110, 120});
    Answer(message, [](HWND self, WPARAM, LPARAM) {
      ::DestroyWindow(self);
      return 0;
    });
    ::ShowWindow(window, SW_SHOWNORMAL);
    Drain();
    MemoryMovePointerTo(50, 60);
    MemoryTypeKey('A');
    Drain();
    ::MoveWindow(window, 0, 0, 70, 70, TRUE);
    ::DestroyWindow(window);
    Drain();
    EXPECT_FALSE(Lives(window)) << message;
    EXPECT_EQ(TakeLog({"NCDESTROY"}), "main NCDESTROY") << message;
  }
}

TEST_F(WindowOrder, TopmostWindowsStayAboveOthersAndOwnedOnesAboveTheirOwners) {
  HWND dialog = ShowFrame("dialog", {0, 0, 100, 100}, main);
  HWND popup = MakeWindow("popup", WS_POPUP, {0, 0, 10, 10}, main, "Log", WS_EX_TOPMOST);
  HWND other = ShowFrame("other", {0, 0, 100, 100});
  const auto order = [] {
    std::vector<HWND> windows;
    for (HWND each = ::GetTopWindow(nullptr); each; each = ::GetWindow(each, GW_HWNDNEXT)) windows.push_back(each);
    return windows;
  };
  EXPECT_EQ(order(), (std::vector<HWND>{popup, other, dialog, main}));
  ::BringWindowToTop(main);
  EXPECT_EQ(order(), (std::vector<HWND>{popup, dialog, main, other}));
  ::SetWindowPos(main, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  EXPECT_EQ(order(), (std::vector<HWND>{popup, other, dialog, main}));
}

TEST_F(WindowOrder, OnlyTopmostWindowsStayAboveOtherPrograms) {
  const struct {
    DWORD style, extendedStyle;
    bool stays;
  } windows[] = {{WS_POPUP | WS_BORDER, 0, false},
                 {WS_POPUP | WS_CAPTION, 0, false},
                 {WS_POPUP | WS_BORDER, WS_EX_TOPMOST, true},
                 {WS_POPUP | WS_CAPTION, WS_EX_TOPMOST, true}};
  for (const auto& each : windows) {
    HWND window = MakeWindow("ours", each.style, {350, 100, 450, 200}, main, "Log", each.extendedStyle);
    ::ShowWindow(window, SW_SHOWNORMAL);
    DisplayWindow* other = MemoryOpenWindow("other", {340, 90, 460, 210}, 0);
    MemoryGiveKeyboard(other);
    EXPECT_EQ(MemoryWindowAt(400, 150) != other, each.stays) << each.style;
    ::DestroyWindow(window);
    MemoryCloseWindow(other);
  }
}

TEST_F(WindowOrder, APointBelongsToTheDeepestShownAndEnabledWindow) {
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  HWND deep = ShowChild("deep", {10, 10, 30, 30}, child);
  EXPECT_EQ(::WindowFromPoint(OnScreen(deep, 0, 0)), deep);
  EXPECT_EQ(::WindowFromPoint(OnScreen(deep, -1, 0)), child);
  EXPECT_EQ(::WindowFromPoint({100, 100}), main);
  EXPECT_EQ(::WindowFromPoint({99, 100}), nullptr);
  ::EnableWindow(deep, FALSE);
  EXPECT_EQ(::WindowFromPoint(OnScreen(deep, 0, 0)), child);
  ::ShowWindow(child, SW_HIDE);
  EXPECT_FALSE(::IsWindowVisible(deep));
  EXPECT_EQ(::WindowFromPoint(OnScreen(deep, 0, 0)), main);
}

} // namespace
} // namespace framereel
