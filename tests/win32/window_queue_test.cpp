// What the queue gives, in which order and through which filter.
#include "win32/window_scene.h"

namespace framereel {
namespace {

using MessageQueue = OneWindow;

std::vector<UINT> PeekedKinds(HWND window, UINT first, UINT last) {
  std::vector<UINT> kinds;
  MSG message;
  while (::PeekMessageA(&message, window, first, last, PM_REMOVE)) {
    kinds.push_back(message.message);
    if (message.message == WM_PAINT) ::DispatchMessageA(&message);
  }
  return kinds;
}

TEST_F(MessageQueue, GivesInputInItsOrderThenTheEndThenPaints) {
  ::InvalidateRect(main, nullptr, TRUE);
  ::PostQuitMessage(7);
  MemoryTypeKey('A');
  MemoryClick(150, 160);
  EXPECT_EQ(PeekedKinds(nullptr, 0, 0),
            (std::vector<UINT>{WM_KEYDOWN, WM_KEYUP, WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_QUIT, WM_PAINT}));
}

TEST_F(MessageQueue, LooksWithoutTakingAndLeavesAPaintUntilItIsPainted) {
  MemoryTypeKey('A');
  MSG message;
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE));
    EXPECT_EQ(message.message, WM_KEYDOWN);
    EXPECT_EQ(::GetKeyState('A'), 0);
  }
  EXPECT_TRUE(::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
  EXPECT_EQ(message.message, WM_KEYDOWN);
  EXPECT_LT(::GetKeyState('A'), 0);
  Drain();
  ::InvalidateRect(main, nullptr, TRUE);
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, WM_PAINT);
  }
  ::DispatchMessageA(&message);
  EXPECT_FALSE(::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
}

TEST_F(MessageQueue, KeepsWhatAFilterLeaves) {
  HWND dialog = ShowFrame("dialog", {300, 0, 506, 225}, main);
  HWND child = ShowChild("child", {0, 0, 50, 50}, dialog);
  MemoryTypeKey('A');
  MemoryMovePointerTo(150, 160);
  MemoryMovePointerTo(310, 30);
  ::InvalidateRect(main, nullptr, TRUE);
  ::InvalidateRect(child, nullptr, TRUE);
  EXPECT_EQ(PeekedKinds(nullptr, WM_MOUSEMOVE, WM_MBUTTONDBLCLK), (std::vector<UINT>{WM_MOUSEMOVE, WM_MOUSEMOVE}));
  // The move over the child of the dialog is one of the dialog's.
  MemoryMovePointerTo(150, 160);
  MemoryMovePointerTo(310, 30);
  EXPECT_EQ(PeekedKinds(dialog, 0, 0), (std::vector<UINT>{WM_KEYDOWN, WM_KEYUP, WM_MOUSEMOVE, WM_PAINT}));
  EXPECT_EQ(PeekedKinds(nullptr, WM_PAINT, WM_PAINT), (std::vector<UINT>{WM_PAINT}));
  EXPECT_EQ(PeekedKinds(nullptr, 0, 0), (std::vector<UINT>{WM_MOUSEMOVE}));
}

TEST_F(MessageQueue, GivesTheEndThroughAnyFilterAndOnce) {
  ::PostQuitMessage(7);
  MSG message;
  EXPECT_TRUE(::PeekMessageA(&message, main, WM_PAINT, WM_PAINT, PM_NOREMOVE));
  EXPECT_TRUE(::PeekMessageA(&message, main, WM_PAINT, WM_PAINT, PM_REMOVE));
  EXPECT_EQ(message.message, WM_QUIT);
  EXPECT_EQ(message.wParam, 7U);
  EXPECT_FALSE(::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
}

TEST_F(MessageQueue, HoldsOneMoveUntilItIsTaken) {
  MemoryMovePointerTo(150, 160);
  MemoryMovePointerTo(151, 161);
  MemoryPressButton();
  MemoryMovePointerTo(152, 162);
  MemoryMovePointerTo(153, 163);
  MemoryReleaseButton();
  Drain();
  EXPECT_EQ(TakeLog({"MOUSEMOVE", "LBUTTONDOWN", "LBUTTONUP"}),
            "main MOUSEMOVE 0 at 48,39; main LBUTTONDOWN 1 at 48,39; main MOUSEMOVE 1 at 50,41; "
            "main LBUTTONUP 0 at 50,41");
}

TEST_F(MessageQueue, PutsTheCharacterOfAKeyBeforeWhatWaits) {
  TypeWith({VK_SHIFT}, 'A');
  TypeWith({VK_CONTROL}, 'C');
  MemoryTypeKey(VK_F6);
  Drain();
  EXPECT_EQ(TakeLog({"KEYDOWN", "CHAR", "KEYUP"}),
            "main KEYDOWN 16; main KEYDOWN 65; main CHAR 65; main KEYUP 65; main KEYUP 16; main KEYDOWN 17; "
            "main KEYDOWN 67; main CHAR 3; main KEYUP 67; main KEYUP 17; main KEYDOWN 117; main KEYUP 117");
}

TEST_F(MessageQueue, DropsWhatWasForAWindowThatIsGone) {
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

} // namespace
} // namespace framereel
