// The mouse and the keyboard: who gets what, and what the messages and the key state say.
#include <gtest/gtest.h>

#include "win32/window_scene.h"

namespace framereel {
namespace {

std::string Mouse() {
  Drain();
  return Joined(TakeLog({"MOUSEMOVE", "LBUTTONDOWN", "LBUTTONUP", "RBUTTONDOWN", "RBUTTONUP", "MBUTTONDOWN",
                         "MBUTTONUP", "NCMOUSEMOVE", "NCLBUTTONDOWN", "NCLBUTTONUP"}));
}

std::string Keys() {
  Drain();
  return Joined(TakeLog({"KEYDOWN", "KEYUP", "CHAR", "SYSKEYDOWN", "SYSKEYUP", "SYSCHAR", "SYSCOMMAND"}));
}

TEST(MouseInput, GoesToTheDeepestChildAndTellsWhatIsDown) {
  WindowScene scene;
  HWND main = ShowFrame("main", {100, 100, 306, 325});
  ShowChild("child", {10, 10, 60, 60}, main);
  const POINT inside = OnScreen(main, 15, 16);
  MemoryPressKey(VK_CONTROL);
  MemoryClick(inside.x, inside.y);
  MemoryReleaseKey(VK_CONTROL);
  MemoryPressKey(VK_SHIFT);
  MemoryClick(inside.x, inside.y, 3);
  MemoryReleaseKey(VK_SHIFT);
  MemoryClick(inside.x, inside.y, 2);
  EXPECT_EQ(Mouse(), "child MOUSEMOVE 8 at 5,6; child LBUTTONDOWN 9 at 5,6; child LBUTTONUP 8 at 5,6; "
                     "child MOUSEMOVE 4 at 5,6; child RBUTTONDOWN 6 at 5,6; child RBUTTONUP 4 at 5,6; "
                     "child MOUSEMOVE 0 at 5,6; child MBUTTONDOWN 16 at 5,6; child MBUTTONUP 0 at 5,6");
}

TEST(MouseInput, PassesADisabledChildToItsParentAndStopsAtADisabledFrame) {
  WindowScene scene;
  HWND main = ShowFrame("main", {100, 100, 306, 325});
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  const POINT inside = OnScreen(main, 15, 16);
  EXPECT_FALSE(::EnableWindow(child, FALSE));
  EXPECT_EQ(Joined(TakeLog()), "child ENABLE 0");
  MemoryMovePointerTo(inside.x, inside.y);
  EXPECT_EQ(Mouse(), "main MOUSEMOVE 0 at 15,16");
  EXPECT_TRUE(::EnableWindow(child, TRUE));
  ::EnableWindow(main, FALSE);
  MemoryClick(inside.x + 1, inside.y);
  EXPECT_EQ(Mouse(), "");
}

TEST(MouseInput, OnAFrameTellsThePartAndTheScreenPoint) {
  WindowScene scene;
  ShowFrame("main", {100, 100, 306, 325});
  MemoryMovePointerTo(150, 110);
  MemoryMovePointerTo(100, 200);
  EXPECT_EQ(Mouse(), "main NCMOUSEMOVE 18 at 100,200");
  MemoryMovePointerTo(150, 110);
  EXPECT_EQ(Mouse(), "main NCMOUSEMOVE 2 at 150,110");
}

TEST(MouseInput, IsOneWindowsWhileItIsCapturedAndCountsFromItsClientArea) {
  WindowScene scene;
  HWND main = ShowFrame("main", {100, 100, 306, 325});
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  MemoryOpenWindow("other", {400, 100, 500, 200}, 0);
  EXPECT_EQ(::SetCapture(child), nullptr);
  const POINT origin = OnScreen(child, 0, 0);
  MemoryMovePointerTo(origin.x - 20, origin.y - 30);
  EXPECT_EQ(Mouse(), "child MOUSEMOVE 0 at -20,-30");
  MemoryMovePointerTo(450, 150);
  EXPECT_EQ(Mouse(), "child MOUSEMOVE 0 at " + std::to_string(450 - origin.x) + "," + std::to_string(150 - origin.y));
  EXPECT_EQ(::SetCapture(main), child);
  EXPECT_TRUE(::ReleaseCapture());
  MemoryMovePointerTo(451, 150);
  EXPECT_EQ(Mouse(), "");
}

TEST(MouseInput, EndsACaptureWithItsWindowWithDisablingAndWhenTheDisplayTakesIt) {
  WindowScene scene;
  HWND main = ShowFrame("main", {100, 100, 306, 325});
  for (int how = 0; how < 3; ++how) {
    HWND child = ShowChild("child", {10, 10, 60, 60}, main);
    ::SetCapture(child);
    if (how == 0) ::DestroyWindow(child);
    if (how == 1) ::EnableWindow(main, FALSE);
    if (how == 2) MemoryTakeCapture();
    ::EnableWindow(main, TRUE);
    EXPECT_EQ(TheMemoryDisplay().desktop.captured, nullptr) << how;
    const POINT outside = OnScreen(main, 100, 100 + how);
    MemoryMovePointerTo(outside.x, outside.y);
    EXPECT_EQ(Mouse(), "main MOUSEMOVE 0 at 100," + std::to_string(100 + how)) << how;
    ::DestroyWindow(child);
  }
}

TEST(MouseInput, OverACoverReachesTheCoverWhateverLiesUnderIt) {
  WindowScene scene;
  HWND main = ShowFrame("main", {100, 100, 306, 325});
  MemoryOpenWindow("other", {400, 100, 500, 200}, 0);
  HWND cover = MakeWindow("cover", WS_POPUP | WS_BORDER, {-2000, -2000, 2000, 2000}, main, "LogBare", WS_EX_TOPMOST);
  ::ShowWindow(cover, SW_SHOWNORMAL);
  Drain();
  TakeLog();
  MemoryMovePointerTo(450, 150);
  EXPECT_EQ(Mouse(), "cover MOUSEMOVE 0 at 2449,2149");
  MemoryTypeKey('A');
  EXPECT_EQ(Keys(), "cover KEYDOWN 65; cover CHAR 97; cover KEYUP 65");
}

TEST(MouseInput, MovingThePointerByProgramIsAMoveLikeAnyOther) {
  WindowScene scene;
  ShowFrame("main", {100, 100, 306, 325});
  ::SetCursorPos(110, 130);
  EXPECT_EQ(Mouse(), "main MOUSEMOVE 0 at 7,8");
  POINT place = {0, 0};
  ::GetCursorPos(&place);
  EXPECT_EQ(place.x, 110);
  EXPECT_EQ(place.y, 130);
}

TEST(PointerShape, IsTheClassesOverTheClientAreaAndAnArrowOnTheFrame) {
  WindowScene scene;
  HWND main = ShowFrame("main", {100, 100, 306, 325});
  DisplayWindow* shown = MemoryWindowTitled("main");
  MemoryMovePointerTo(150, 200);
  Drain();
  EXPECT_EQ(shown->shape, PointerShape::kArrow);
  const auto cross = reinterpret_cast<LONG_PTR>(::LoadCursorA(nullptr, IDC_CROSS));
  ::SetClassLongPtrA(main, GCL_HCURSOR, cross);
  EXPECT_EQ(shown->shape, PointerShape::kCross);
  EXPECT_EQ(::SetClassLongPtrA(main, GCL_HCURSOR, cross), cross);
  MemoryMovePointerTo(150, 110);
  Drain();
  EXPECT_EQ(shown->shape, PointerShape::kArrow);
  ::SetCapture(main);
  ::SetCursor(::LoadCursorA(nullptr, IDC_WAIT));
  MemoryMovePointerTo(150, 200);
  Drain();
  EXPECT_EQ(shown->shape, PointerShape::kWait);
  ::ReleaseCapture();
  MemoryMovePointerTo(151, 200);
  Drain();
  EXPECT_EQ(shown->shape, PointerShape::kCross);
  EXPECT_EQ(::LoadCursorA(nullptr, MAKEINTRESOURCEA(1)), nullptr);
}

TEST(KeyInput, GoesToTheFocusAndIsOfTheSystemWithAltButNotWithCtrl) {
  WindowScene scene;
  HWND main = ShowFrame("main", {100, 100, 306, 325});
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  ::SetFocus(child);
  TakeLog();
  MemoryPressKey(VK_MENU);
  MemoryTypeKey('X');
  MemoryReleaseKey(VK_MENU);
  EXPECT_EQ(Keys(), "child SYSKEYDOWN 18; child SYSKEYDOWN 88; child SYSCHAR 120; child SYSKEYUP 88; child KEYUP 18");
  MemoryTypeKey(VK_MENU);
  EXPECT_EQ(Keys(), "child SYSKEYDOWN 18; child SYSKEYUP 18");
  MemoryPressKey(VK_CONTROL);
  MemoryPressKey(VK_MENU);
  MemoryTypeKey('X');
  MemoryReleaseKey(VK_MENU);
  MemoryReleaseKey(VK_CONTROL);
  EXPECT_EQ(Keys(), "child KEYDOWN 17; child KEYDOWN 18; child KEYDOWN 88; child CHAR 120; child KEYUP 88; "
                    "child KEYUP 18; child KEYUP 17");
}

TEST(KeyInput, SaysInLParamWhichKeyItIsAndWhetherItWasDown) {
  WindowScene scene;
  ShowFrame("main", {100, 100, 306, 325});
  std::vector<DWORD> words;
  for (const UINT message : {WM_KEYDOWN, WM_KEYUP}) {
    Answer(message, [&words](HWND, WPARAM, LPARAM lParam) {
      words.push_back(DWORD(lParam));
      return 0;
    });
  }
  MemoryPressKey('A');
  MemoryTypeKey('A');
  Drain();
  const DWORD scan = DWORD{'A'} << 16 | 1;
  EXPECT_EQ(words, (std::vector<DWORD>{scan, scan | 1U << 30, scan | 3U << 30}));
}

TEST(KeyInput, IsLostWithoutAFocusThatIsEnabled) {
  WindowScene scene;
  HWND main = ShowFrame("main", {100, 100, 306, 325});
  ::SetFocus(nullptr);
  MemoryTypeKey('A');
  EXPECT_EQ(Keys(), "main SYSKEYDOWN 65; main SYSCHAR 97; main SYSKEYUP 65");
  ::EnableWindow(main, FALSE);
  MemoryTypeKey('A');
  EXPECT_EQ(Keys(), "");
}

TEST(KeyState, FollowsTheMessagesTakenWhileThePolledStateIsNow) {
  WindowScene scene;
  ShowFrame("main", {100, 100, 306, 325});
  MemoryPressKey(VK_SHIFT);
  MemoryTypeKey(VK_CAPITAL);
  EXPECT_LT(::GetAsyncKeyState(VK_SHIFT), 0);
  EXPECT_EQ(::GetKeyState(VK_SHIFT), 0);
  Drain();
  EXPECT_LT(::GetKeyState(VK_SHIFT), 0);
  EXPECT_EQ(::GetKeyState(VK_CAPITAL), 1);
  BYTE keys[256];
  ::GetKeyboardState(keys);
  EXPECT_EQ(keys[VK_SHIFT], 0x80);
  EXPECT_EQ(keys[VK_CAPITAL], 1);
}

TEST(KeyState, KnowsOnReturnWhatChangedWhileAnotherProgramHadTheKeyboard) {
  WindowScene scene;
  HWND main = ShowFrame("main", {100, 100, 306, 325});
  DisplayWindow* ours = MemoryWindowTitled("main");
  MemoryPressKey(VK_CONTROL);
  Drain();
  MemoryGiveKeyboard(MemoryOpenWindow("other", {400, 100, 500, 200}, 0));
  MemoryReleaseKey(VK_CONTROL);
  MemoryPressKey(VK_MENU);
  EXPECT_LT(::GetAsyncKeyState(VK_MENU), 0);
  MemoryGiveKeyboard(ours);
  Drain();
  EXPECT_EQ(::GetFocus(), main);
  EXPECT_EQ(::GetKeyState(VK_CONTROL), 0);
  EXPECT_LT(::GetKeyState(VK_MENU), 0);
}

// Types keys on the layout with dead keys and writes what ToAscii answers when it is asked twice about each, as it is
// pressed and without Shift: "answer:characters" for both.
std::string Characters(std::initializer_list<std::pair<uint8_t, bool>> keys) {
  WindowScene scene;
  ShowFrame("main", {100, 100, 306, 325});
  TheMemoryDisplay().desktop.deadKeys = true;
  std::string text;
  const auto ask = [&text](LPARAM lParam, const BYTE* state) {
    WORD characters = 0;
    const int count = ::ToAscii(0, UINT(lParam >> 16), state, &characters, 0);
    text += std::to_string(count) + ":";
    if (count >= 1) text += char(characters & 255);
    if (count >= 2) text += char(characters >> 8);
    text += " ";
  };
  Answer(WM_KEYDOWN, [&ask](HWND, WPARAM wParam, LPARAM lParam) {
    if (wParam == VK_SHIFT) return 0;
    BYTE state[256];
    ::GetKeyboardState(state);
    ask(lParam, state);
    state[VK_SHIFT] = 0;
    ask(lParam, state);
    return 0;
  });
  for (const auto& [key, shift] : keys) {
    if (shift) MemoryPressKey(VK_SHIFT);
    MemoryTypeKey(key);
    if (shift) MemoryReleaseKey(VK_SHIFT);
  }
  Drain();
  return text + Joined(TakeLog({"CHAR"}));
}

constexpr uint8_t kApostrophe = 0xDE, kBackquote = 0xC0;

TEST(KeyCharacters, AnswerTheKeyWithAndWithoutShift) {
  EXPECT_EQ(Characters({{'A', true}}), "1:A 1:a main CHAR 65");
  EXPECT_EQ(Characters({{'1', true}, {VK_F6, false}}), "1:! 1:1 0: 0: main CHAR 33");
}

TEST(KeyCharacters, JoinAnAccentWithTheNextLetterOrStandBesideIt) {
  EXPECT_EQ(Characters({{kApostrophe, false}, {'E', true}}), "-1: -1: 1:\xC9 1:e main CHAR 201");
  EXPECT_EQ(Characters({{kBackquote, true}, {'N', false}}), "-1: -1: 1:\xF1 1:n main CHAR 241");
  EXPECT_EQ(Characters({{kApostrophe, false}, {'X', false}}), "-1: -1: 2:'x 1:x main CHAR 39; main CHAR 120");
  EXPECT_EQ(Characters({{kApostrophe, false}, {VK_SPACE, false}, {'E', false}}),
            "-1: -1: 1:' 1:  1:e 1:e main CHAR 39; main CHAR 101");
  EXPECT_EQ(Characters({{kApostrophe, false}, {kApostrophe, false}, {'E', false}}),
            "-1: -1: 2:'' -1: 1:e 1:e main CHAR 39; main CHAR 39; main CHAR 101");
}

} // namespace
} // namespace framereel
