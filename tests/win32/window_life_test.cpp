// The messages of a window's life, in their order: making, showing, moving, minimising, closing.
#include <gtest/gtest.h>

#include "win32/window_scene.h"

namespace framereel {
namespace {

TEST(WindowLife, BeginsWithLimitsRecordFrameAndCreation) {
  WindowScene scene;
  HWND owner = MakeWindow("main", kFrameStyle, {10, 20, 110, 120});
  EXPECT_EQ(Joined(TakeLog()), "main GETMINMAXINFO; main NCCREATE; main NCCALCSIZE 100x100; main CREATE");
  MakeWindow("dialog", WS_POPUP | WS_CAPTION, {0, 0, 50, 50}, owner);
  EXPECT_EQ(Joined(TakeLog()), "dialog NCCREATE; dialog NCCALCSIZE 50x50; dialog CREATE");
  MakeWindow("child", kChildStyle, {0, 0, 50, 50}, owner);
  EXPECT_EQ(Joined(TakeLog()), "child NCCREATE; child NCCALCSIZE 50x50; child CREATE");
}

TEST(WindowLife, EndsAtOnceWhenAProcedureRefusesTheWindow) {
  WindowScene scene;
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

TEST(WindowLife, NeedsAClassAndAChildItsParent) {
  WindowScene scene;
  HWND gone = MakeWindow("gone", kFrameStyle, {0, 0, 50, 50});
  ::DestroyWindow(gone);
  EXPECT_EQ(MakeWindow("x", kFrameStyle, {0, 0, 50, 50}, nullptr, "Unknown"), nullptr);
  EXPECT_EQ(MakeWindow("x", kChildStyle, {0, 0, 50, 50}), nullptr);
  EXPECT_EQ(MakeWindow("x", kChildStyle, {0, 0, 50, 50}, gone), nullptr);
  WNDCLASSA taken = {};
  taken.lpfnWndProc = ::DefWindowProcA;
  taken.lpszClassName = "Log";
  EXPECT_EQ(::RegisterClassA(&taken), 0);
}

TEST(WindowLife, ShowingTellsTheWindowAndThenActivatesIt) {
  WindowScene scene;
  HWND window = MakeWindow("main", kFrameStyle, {10, 20, 110, 120});
  TakeLog();
  EXPECT_FALSE(::ShowWindow(window, SW_RESTORE));
  EXPECT_EQ(Joined(TakeLog()), "main SHOWWINDOW 1; main WINDOWPOSCHANGED");
  Drain();
  EXPECT_EQ(Joined(TakeLog()),
            "main ACTIVATEAPP 1; main NCACTIVATE 1; main ACTIVATE 1; main SETFOCUS; main PAINT; main ERASEBKGND");
  EXPECT_TRUE(::ShowWindow(window, SW_RESTORE));
  EXPECT_EQ(Joined(TakeLog()), "");
}

TEST(WindowLife, MovingSendsTheNewPlaceAndSizingTheNewFrameToo) {
  WindowScene scene;
  HWND window = ShowFrame("main", {10, 20, 110, 120});
  ::MoveWindow(window, 30, 40, 100, 100, TRUE);
  EXPECT_EQ(Joined(TakeLog()), "main WINDOWPOSCHANGED 30,40; main MOVE 33,62");
  ::MoveWindow(window, 30, 40, 120, 100, TRUE);
  EXPECT_EQ(Joined(TakeLog()), "main GETMINMAXINFO; main NCCALCSIZE 120x100; main WINDOWPOSCHANGED 120x100; "
                               "main SIZE 0 114x75");
  ::MoveWindow(window, 30, 40, 120, 100, TRUE);
  EXPECT_EQ(Joined(TakeLog()), "");
  HWND child = ShowChild("child", {5, 5, 25, 25}, window);
  ::SetWindowPos(child, nullptr, 7, 8, 30, 31, SWP_NOZORDER | SWP_NOACTIVATE);
  EXPECT_EQ(Joined(TakeLog()), "child NCCALCSIZE 30x31; child WINDOWPOSCHANGED 7,8 30x31; child MOVE 7,8; "
                               "child SIZE 0 30x31");
  RECT rect;
  ::GetWindowRect(child, &rect);
  EXPECT_EQ(rect.left, 30 + 3 + 7);
  EXPECT_EQ(rect.top, 40 + 22 + 8);
}

TEST(WindowLife, AFrameStaysWithinTheLimitsThatItAnswers) {
  WindowScene scene;
  Answer(WM_GETMINMAXINFO, [](HWND, WPARAM, LPARAM lParam) {
    auto* limits = reinterpret_cast<MINMAXINFO*>(lParam);
    limits->ptMinTrackSize = {80, 90};
    limits->ptMaxTrackSize = {200, 210};
    return 0;
  });
  HWND window = MakeWindow("main", kFrameStyle, {0, 0, 1000, 10});
  RECT rect;
  ::GetWindowRect(window, &rect);
  EXPECT_EQ(rect.right, 200);
  EXPECT_EQ(rect.bottom, 90);
  ::MoveWindow(window, 0, 0, 10, 1000, TRUE);
  ::GetWindowRect(window, &rect);
  EXPECT_EQ(rect.right, 80);
  EXPECT_EQ(rect.bottom, 210);
  HWND cover = MakeWindow("cover", WS_POPUP | WS_BORDER, {-2000, -2000, 2000, 2000}, window, "LogBare");
  ::GetWindowRect(cover, &rect);
  EXPECT_EQ(rect.right - rect.left, 4000);
}

TEST(WindowLife, MinimisingKeepsThePlaceAndTellsBothWays) {
  WindowScene scene;
  HWND window = ShowFrame("main", {10, 20, 110, 120});
  HWND dialog = MakeWindow("dialog", WS_POPUP | WS_CAPTION, {0, 0, 50, 50}, window);
  ::ShowWindow(dialog, SW_SHOWNA);
  Drain();
  TakeLog();
  ::ShowWindow(window, SW_MINIMIZE);
  EXPECT_EQ(Joined(TakeLog({"NCCALCSIZE", "WINDOWPOSCHANGED"})), "main NCCALCSIZE 100x100; main WINDOWPOSCHANGED");
  EXPECT_FALSE(MemoryWindowTitled("dialog"));
  WINDOWPLACEMENT placement = {};
  placement.length = sizeof placement;
  ::GetWindowPlacement(window, &placement);
  EXPECT_EQ(placement.showCmd, UINT(SW_SHOWMINIMIZED));
  EXPECT_EQ(placement.rcNormalPosition.left, 10);
  placement.rcNormalPosition = {40, 50, 240, 250};
  placement.showCmd = SW_SHOWNA;
  ::SetWindowPlacement(window, &placement);
  EXPECT_EQ(Joined(TakeLog({"WINDOWPOSCHANGED"})), "");
  ::ShowWindow(window, SW_RESTORE);
  EXPECT_EQ(Joined(TakeLog({"NCCALCSIZE", "WINDOWPOSCHANGED"})),
            "main NCCALCSIZE 200x200; main WINDOWPOSCHANGED 40,50 200x200");
  EXPECT_TRUE(MemoryWindowTitled("dialog"));
  ::GetWindowPlacement(window, &placement);
  EXPECT_EQ(placement.showCmd, UINT(SW_SHOWNORMAL));
}

TEST(WindowLife, AMinimisedChildIsACaptionInTheCornerOfItsParent) {
  WindowScene scene;
  HWND window = ShowFrame("main", {0, 0, 306, 225});
  HWND child = ShowChild("child", {5, 5, 105, 105}, window, kChildStyle | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX);
  ::ShowWindow(child, SW_MINIMIZE);
  EXPECT_EQ(Joined(TakeLog({"WINDOWPOSCHANGED"})), "child WINDOWPOSCHANGED 0,175 160x25");
  ::ShowWindow(child, SW_RESTORE);
  EXPECT_EQ(Joined(TakeLog({"WINDOWPOSCHANGED"})), "child WINDOWPOSCHANGED 5,5 100x100");
}

TEST(WindowLife, DestroyingTellsOwnedWindowsFirstParentsBeforeChildrenAndNonClientTheOtherWay) {
  WindowScene scene;
  HWND window = ShowFrame("main", {10, 20, 310, 320});
  HWND child = ShowChild("child", {0, 0, 100, 100}, window);
  ShowChild("grandchild", {0, 0, 50, 50}, child);
  MakeWindow("dialog", WS_POPUP | WS_CAPTION, {0, 0, 50, 50}, window);
  TakeLog();
  ::DestroyWindow(window);
  EXPECT_EQ(Joined(TakeLog({"DESTROY", "NCDESTROY", "SHOWWINDOW"})),
            "dialog DESTROY; dialog NCDESTROY; main SHOWWINDOW 0; main DESTROY; child DESTROY; grandchild DESTROY; "
            "grandchild NCDESTROY; child NCDESTROY; main NCDESTROY");
  EXPECT_FALSE(Lives(window));
  EXPECT_FALSE(Lives(child));
  EXPECT_FALSE(::DestroyWindow(window));
  EXPECT_EQ(TheMemoryDisplay().desktop.windows.size(), 0U);
}

TEST(WindowLife, AWindowMayDestroyItselfInAnyOfItsMessages) {
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
    EXPECT_EQ(Joined(TakeLog({"NCDESTROY"})), "main NCDESTROY") << message;
  }
}

TEST(WindowLife, TextAndPointersAreKeptWithTheWindow) {
  WindowScene scene;
  HWND window = MakeWindow("main", kFrameStyle, {10, 20, 110, 120});
  int data = 0;
  EXPECT_EQ(::SetWindowLongPtrA(window, GWL_USERDATA, reinterpret_cast<LONG_PTR>(&data)), 0);
  EXPECT_EQ(::GetWindowLongPtrA(window, GWL_USERDATA), reinterpret_cast<LONG_PTR>(&data));
  ::SetWindowTextA(window, "another");
  EXPECT_EQ(MemoryWindowTitled("another"), nullptr);
  ::ShowWindow(window, SW_SHOWNA);
  EXPECT_NE(MemoryWindowTitled("another"), nullptr);
}

TEST(WindowOrder, TopmostWindowsStayAboveOthersAndOwnedOnesAboveTheirOwners) {
  WindowScene scene;
  HWND main = ShowFrame("main", {0, 0, 100, 100});
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

TEST(WindowOrder, AChildSentToTheBottomIsTheLastOfItsSiblings) {
  WindowScene scene;
  HWND main = ShowFrame("main", {0, 0, 200, 200});
  HWND first = ShowChild("first", {0, 0, 50, 50}, main);
  HWND second = ShowChild("second", {25, 25, 75, 75}, main);
  EXPECT_EQ(::GetTopWindow(main), second);
  ::SetWindowPos(second, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  EXPECT_EQ(Joined(TakeLog()), "second WINDOWPOSCHANGED order");
  EXPECT_EQ(::GetTopWindow(main), first);
  EXPECT_EQ(::GetWindow(first, GW_HWNDNEXT), second);
  EXPECT_EQ(::GetWindow(second, GW_HWNDNEXT), nullptr);
}

TEST(WindowOrder, APointBelongsToTheDeepestShownAndEnabledWindow) {
  WindowScene scene;
  HWND main = ShowFrame("main", {100, 100, 306, 325});
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
