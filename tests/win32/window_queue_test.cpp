// What the queue gives, in which order and through which filter.
#include <gtest/gtest.h>

#include "win32/window_scene.h"

namespace framereel {
namespace {

std::vector<UINT> PeekedKinds(HWND window, UINT first, UINT last) {
  std::vector<UINT> kinds;
  MSG message;
  while (::PeekMessageA(&message, window, first, last, PM_REMOVE)) {
    kinds.push_back(message.message);
    if (message.message == WM_PAINT) ::DispatchMessageA(&message);
  }
  return kinds;
}

TEST(MessageQueue, GivesInputInItsOrderThenTheEndThenPaints) {
  WindowScene scene;
  HWND window = ShowFrame("main", {0, 0, 206, 225});
  ::InvalidateRect(window, nullptr, TRUE);
  ::PostQuitMessage(7);
  MemoryTypeKey('A');
  MemoryClick(50, 60);
  EXPECT_EQ(PeekedKinds(nullptr, 0, 0),
            (std::vector<UINT>{WM_KEYDOWN, WM_KEYUP, WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_QUIT, WM_PAINT}));
}

TEST(MessageQueue, LooksWithoutTakingAndLeavesAPaintUntilItIsPainted) {
  WindowScene scene;
  HWND window = ShowFrame("main", {0, 0, 206, 225});
  MemoryTypeKey('A');
  MSG message;
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE));
    EXPECT_EQ(message.message, WM_KEYDOWN);
    EXPECT_EQ(::GetKeyState('A'), 0);
  }
  EXPECT_TRUE(::GetMessageA(&message, nullptr, 0, 0));
  EXPECT_EQ(message.message, WM_KEYDOWN);
  EXPECT_LT(::GetKeyState('A'), 0);
  Drain();
  ::InvalidateRect(window, nullptr, TRUE);
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, WM_PAINT);
  }
  ::DispatchMessageA(&message);
  EXPECT_FALSE(::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
}

TEST(MessageQueue, KeepsWhatAFilterLeaves) {
  WindowScene scene;
  HWND main = ShowFrame("main", {0, 0, 206, 225});
  HWND dialog = ShowFrame("dialog", {300, 0, 506, 225}, main);
  HWND child = ShowChild("child", {0, 0, 50, 50}, dialog);
  MemoryTypeKey('A');
  MemoryMovePointerTo(50, 60);
  MemoryMovePointerTo(310, 30);
  ::InvalidateRect(main, nullptr, TRUE);
  ::InvalidateRect(child, nullptr, TRUE);
  EXPECT_EQ(PeekedKinds(nullptr, WM_MOUSEMOVE, WM_MBUTTONDBLCLK), (std::vector<UINT>{WM_MOUSEMOVE, WM_MOUSEMOVE}));
  // The move over the child of the dialog is one of the dialog's.
  MemoryMovePointerTo(50, 60);
  MemoryMovePointerTo(310, 30);
  EXPECT_EQ(PeekedKinds(dialog, 0, 0), (std::vector<UINT>{WM_KEYDOWN, WM_KEYUP, WM_MOUSEMOVE, WM_PAINT}));
  EXPECT_EQ(PeekedKinds(nullptr, WM_PAINT, WM_PAINT), (std::vector<UINT>{WM_PAINT}));
  EXPECT_EQ(PeekedKinds(nullptr, 0, 0), (std::vector<UINT>{WM_MOUSEMOVE}));
}

TEST(MessageQueue, GivesTheEndThroughAnyFilterAndOnce) {
  WindowScene scene;
  HWND window = ShowFrame("main", {0, 0, 206, 225});
  ::PostQuitMessage(7);
  MSG message;
  EXPECT_TRUE(::PeekMessageA(&message, window, WM_PAINT, WM_PAINT, PM_NOREMOVE));
  EXPECT_FALSE(::GetMessageA(&message, window, WM_PAINT, WM_PAINT));
  EXPECT_EQ(message.message, WM_QUIT);
  EXPECT_EQ(message.wParam, 7U);
  EXPECT_FALSE(::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
}

TEST(MessageQueue, HoldsOneMoveUntilItIsTaken) {
  WindowScene scene;
  HWND window = ShowFrame("main", {0, 0, 206, 225});
  MemoryMovePointerTo(50, 60);
  MemoryMovePointerTo(51, 61);
  MemoryPressButton();
  MemoryMovePointerTo(52, 62);
  MemoryMovePointerTo(53, 63);
  MemoryReleaseButton();
  Drain();
  EXPECT_EQ(Joined(TakeLog({"MOUSEMOVE", "LBUTTONDOWN", "LBUTTONUP"})),
            "main MOUSEMOVE 0 at 48,39; main LBUTTONDOWN 1 at 48,39; main MOUSEMOVE 1 at 50,41; "
            "main LBUTTONUP 0 at 50,41");
  EXPECT_TRUE(Lives(window));
}

TEST(MessageQueue, WaitsForAMessageThatIsYetToCome) {
  WindowScene scene;
  ShowFrame("main", {0, 0, 206, 225});
  MemoryAt(1000, [] { MemoryPressKey('A'); });
  MSG message;
  EXPECT_TRUE(::GetMessageA(&message, nullptr, 0, 0));
  EXPECT_EQ(message.message, WM_KEYDOWN);
  EXPECT_GE(::GetTickCount(), 1000U);
  EXPECT_EQ(message.time, 1000U);
}

TEST(MessageQueue, PutsTheCharacterOfAKeyBeforeWhatWaits) {
  WindowScene scene;
  ShowFrame("main", {0, 0, 206, 225});
  MemoryPressKey(VK_SHIFT);
  MemoryTypeKey('A');
  MemoryReleaseKey(VK_SHIFT);
  MemoryPressKey(VK_CONTROL);
  MemoryTypeKey('C');
  MemoryReleaseKey(VK_CONTROL);
  MemoryTypeKey(VK_F6);
  Drain();
  EXPECT_EQ(Joined(TakeLog({"KEYDOWN", "CHAR", "KEYUP"})),
            "main KEYDOWN 16; main KEYDOWN 65; main CHAR 65; main KEYUP 65; main KEYUP 16; main KEYDOWN 17; "
            "main KEYDOWN 67; main CHAR 3; main KEYUP 67; main KEYUP 17; main KEYDOWN 117; main KEYUP 117");
}

TEST(MessageQueue, DropsWhatWasForAWindowThatIsGone) {
  WindowScene scene;
  HWND main = ShowFrame("main", {0, 0, 206, 225});
  HWND dialog = ShowFrame("dialog", {300, 0, 506, 225}, main);
  MemoryMovePointerTo(350, 60);
  MSG message;
  EXPECT_TRUE(::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE));
  EXPECT_EQ(message.hwnd, dialog);
  ::DestroyWindow(dialog);
  EXPECT_EQ(PeekedKinds(nullptr, WM_MOUSEMOVE, WM_MOUSEMOVE), (std::vector<UINT>{}));
  EXPECT_EQ(::SendMessageA(dialog, WM_CLOSE, 0, 0), 0);
  EXPECT_FALSE(::PeekMessageA(&message, dialog, 0, 0, PM_REMOVE));
}

TEST(MessageQueue, AnIdlePassPresentsAndReadsNothing) {
  WindowScene scene;
  ShowFrame("main", {0, 0, 206, 225});
  const uint32_t presents = TheMemoryDisplay().desktop.presents;
  MSG message;
  for (int i = 0; i < 5; ++i) {
    EXPECT_FALSE(::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE));
    ::Sleep(50);
  }
  EXPECT_EQ(TheMemoryDisplay().desktop.presents, presents);
}

} // namespace
} // namespace framereel
