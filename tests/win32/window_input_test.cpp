// The mouse and the keyboard: who gets what, and what the messages and the key state say.
#include "win32/window_scene.h"

#include <set>

#include "win32/pixels/cursor.h"

namespace framereel {
namespace {

using MouseInput = OneWindow;
using PointerShapes = OneWindow;
using KeyInput = OneWindow;
using KeyStates = OneWindow;

std::string Mouse() {
  Drain();
  return TakeLog({"MOUSEMOVE", "LBUTTONDOWN", "LBUTTONUP", "RBUTTONDOWN", "RBUTTONUP", "MBUTTONDOWN", "MBUTTONUP",
                  "NCMOUSEMOVE", "NCLBUTTONDOWN", "NCLBUTTONUP"});
}

std::string Keys() {
  Drain();
  return TakeLog({"KEYDOWN", "KEYUP", "CHAR", "SYSKEYDOWN", "SYSKEYUP", "SYSCHAR", "SYSCOMMAND"});
}

TEST_F(MouseInput, GoesToTheDeepestChildAndTellsWhatIsDown) {
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

TEST_F(MouseInput, PassesADisabledChildToItsParentAndStopsAtADisabledFrame) {
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  EXPECT_FALSE(::EnableWindow(child, FALSE));
  EXPECT_EQ(TakeLog(), "child ENABLE 0");
  MemoryMovePointerTo(118, 138);
  EXPECT_EQ(Mouse(), "main MOUSEMOVE 0 at 15,16");
  EXPECT_TRUE(::EnableWindow(child, TRUE));
  ::EnableWindow(main, FALSE);
  MemoryClick(119, 138);
  EXPECT_EQ(Mouse(), "");
}

TEST_F(MouseInput, OnAFrameTellsThePartAndTheScreenPoint) {
  MemoryMovePointerTo(100, 200);
  EXPECT_EQ(Mouse(), "main NCMOUSEMOVE 18 at 100,200");
  MemoryMovePointerTo(150, 110);
  EXPECT_EQ(Mouse(), "main NCMOUSEMOVE 2 at 150,110");
}

TEST_F(MouseInput, IsOneWindowsWhileItIsCapturedAndCountsFromItsClientArea) {
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  MemoryOpenWindow("other", {400, 100, 500, 200}, 0);
  EXPECT_EQ(::SetCapture(child), nullptr);
  MemoryMovePointerTo(93, 102);
  EXPECT_EQ(Mouse(), "child MOUSEMOVE 0 at -20,-30");
  MemoryMovePointerTo(450, 150);
  EXPECT_EQ(Mouse(), "child MOUSEMOVE 0 at 337,18");
  EXPECT_EQ(::SetCapture(main), child);
  EXPECT_TRUE(::ReleaseCapture());
  MemoryMovePointerTo(451, 150);
  EXPECT_EQ(Mouse(), "");
}

TEST_F(MouseInput, EndsACaptureWithItsWindowWithDisablingAndWhenTheDisplayTakesIt) {
  for (int how = 0; how < 3; ++how) {
    HWND child = ShowChild("child", {10, 10, 60, 60}, main);
    ::SetCapture(child);
    if (how == 0) ::DestroyWindow(child);
    if (how == 1) ::EnableWindow(main, FALSE);
    if (how == 2) MemoryTakeCapture();
    ::EnableWindow(main, TRUE);
    EXPECT_EQ(TheMemoryDisplay().desktop.captured, nullptr) << how;
    MemoryMovePointerTo(200 + how, 222);
    EXPECT_EQ(Mouse().substr(0, 21), "main MOUSEMOVE 0 at 9") << how;
    ::DestroyWindow(child);
  }
}

TEST_F(MouseInput, TellsTheWindowThatLosesACaptureBeforeItIsGone) {
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  const std::initializer_list<const char*> kept = {"CAPTURECHANGED", "KILLFOCUS", "DESTROY", "NCDESTROY"};
  ::SetCapture(child);
  ::SetCapture(child);
  EXPECT_EQ(TakeLog(kept), "");
  ::SetCapture(main);
  EXPECT_EQ(TakeLog(kept), "child CAPTURECHANGED");
  MemoryTakeCapture();
  Drain();
  EXPECT_EQ(TakeLog(kept), "main CAPTURECHANGED");
  ::SetCapture(child);
  ::SetFocus(child);
  TakeLog();
  // Neither comes back to a window that is on its way out.
  Answer(WM_DESTROY, [child](HWND, WPARAM, LPARAM) {
    ::SetFocus(child);
    ::SetCapture(child);
    return 0;
  });
  ::DestroyWindow(child);
  EXPECT_EQ(TakeLog(kept), "child CAPTURECHANGED; child KILLFOCUS; child DESTROY; child NCDESTROY");
  EXPECT_EQ(::GetFocus(), nullptr);
}

TEST_F(MouseInput, MakesTwoPressesADoubleClickWhereTheClassAsksForIt) {
  struct Case {
    const char* className;
    uint32_t delay;
    int32_t distance;
    uint8_t secondButton;
    const char* behindTheFirst;
  };
  const Case cases[] = {
      {"LogTwice", 500, 4, 1, "LBUTTONDBLCLK 1 at 21,14; child LBUTTONDOWN 1 at 17,18"}, // a third press begins anew
      {"LogTwice", 501, 0, 1, "LBUTTONDOWN 1 at 17,18; child LBUTTONDBLCLK 1 at 17,18"},
      {"LogTwice", 0, 5, 1, "LBUTTONDOWN 1 at 22,13; child LBUTTONDOWN 1 at 17,18"},
      {"LogTwice", 0, 0, 3, "RBUTTONDOWN 2 at 17,18; child LBUTTONDOWN 1 at 17,18"},
      {"Log", 0, 0, 1, "LBUTTONDOWN 1 at 17,18; child LBUTTONDOWN 1 at 17,18"},
  };
  for (const Case& one : cases) {
    HWND child = MakeWindow("child", kChildStyle | WS_VISIBLE, {10, 10, 60, 60}, main, one.className);
    MemoryClick(130, 150);
    TheMemoryDisplay().tick += one.delay;
    MemoryClick(130 + one.distance, 150 - one.distance, one.secondButton);
    MemoryClick(130, 150);
    Drain();
    EXPECT_EQ(TakeLog({"LBUTTONDOWN", "LBUTTONDBLCLK", "RBUTTONDOWN"}),
              std::string("child LBUTTONDOWN 1 at 17,18; child ") + one.behindTheFirst);
    ::DestroyWindow(child);
    TheMemoryDisplay().tick += 1000;
  }
}

TEST_F(MouseInput, OfTheWheelGoesToWhatLiesUnderThePointerAndOnToItsParents) {
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  MemoryMovePointerTo(120, 140);
  Mouse();
  MemoryPressKey(VK_CONTROL);
  MemoryTurnWheel(1);
  MemoryReleaseKey(VK_CONTROL);
  Drain();
  EXPECT_EQ(TakeLog({"MOUSEWHEEL"}), "child MOUSEWHEEL 7864328 at 120,140; main MOUSEWHEEL 7864328 at 120,140");
  ::EnableWindow(child, FALSE);
  MemoryTurnWheel(-2);
  Drain();
  EXPECT_EQ(TakeLog({"MOUSEWHEEL"}), "main MOUSEWHEEL 4279238656 at 120,140");
}

TEST_F(PointerShapes, IsTheClassesOverTheClientAreaAndAnArrowOnTheFrame) {
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

TEST_F(PointerShapes, TheProgramsOwnAreBlackAndWhiteAndLetTheScreenThrough) {
  const auto program = reinterpret_cast<HINSTANCE>(this);
  std::set<std::vector<uint32_t>> pictures;
  for (const WORD id : {1, 2, 3}) {
    const HCURSOR cursor = ::LoadCursorA(program, MAKEINTRESOURCEA(id));
    ASSERT_NE(cursor, nullptr);
    const PointerPicture& picture = *cursor->picture;
    const std::vector<uint32_t> pixels(picture.pixels, picture.pixels + picture.width * picture.height);
    EXPECT_EQ(std::set<uint32_t>(pixels.begin(), pixels.end()), (std::set<uint32_t>{0, 0xFF000000, 0xFFFFFFFF}));
    EXPECT_EQ(pixels.at(size_t(picture.hotY * picture.width + picture.hotX)), 0xFF000000);
    EXPECT_EQ(::LoadCursorA(program, MAKEINTRESOURCEA(id)), cursor);
    pictures.insert(pixels);
  }
  EXPECT_EQ(pictures.size(), 3U);
  EXPECT_EQ(::LoadCursorA(program, MAKEINTRESOURCEA(4)), nullptr);
}

TEST_F(KeyInput, GoesToTheFocusAndIsOfTheSystemWithAltButNotWithCtrl) {
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  ::SetFocus(child);
  TakeLog();
  TypeWith({VK_MENU}, 'X');
  EXPECT_EQ(Keys(), "child SYSKEYDOWN 18; child SYSKEYDOWN 88; child SYSCHAR 120; main SYSCOMMAND 61696; "
                    "child SYSKEYUP 88; child KEYUP 18");
  MemoryTypeKey(VK_MENU);
  EXPECT_EQ(Keys(), "child SYSKEYDOWN 18; child SYSKEYUP 18; main SYSCOMMAND 61696");
  TypeWith({VK_CONTROL, VK_MENU}, 'X');
  EXPECT_EQ(Keys(), "child KEYDOWN 17; child KEYDOWN 18; child KEYDOWN 88; child KEYUP 88; child KEYUP 18; "
                    "child KEYUP 17");
}

TEST_F(KeyInput, SaysInLParamWhichKeyItIsAndWhetherItWasDown) {
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

TEST_F(KeyInput, IsLostWithoutAFocusThatIsEnabled) {
  ::SetFocus(nullptr);
  MemoryTypeKey('A');
  EXPECT_EQ(Keys(), "main SYSKEYDOWN 65; main SYSCHAR 97; main SYSKEYUP 65");
  ::EnableWindow(main, FALSE);
  MemoryTypeKey('A');
  EXPECT_EQ(Keys(), "");
}

TEST_F(KeyStates, FollowsTheMessagesTakenWhileThePolledStateIsNow) {
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

TEST_F(KeyStates, KnowsOnReturnWhatChangedWhileAnotherProgramHadTheKeyboard) {
  MemoryPressKey(VK_CONTROL);
  Drain();
  MemoryGiveKeyboard(MemoryOpenWindow("other", {400, 100, 500, 200}, 0));
  MemoryReleaseKey(VK_CONTROL);
  MemoryPressKey(VK_MENU);
  EXPECT_LT(::GetAsyncKeyState(VK_MENU), 0);
  MemoryGiveKeyboard(shown);
  Drain();
  EXPECT_EQ(::GetFocus(), main);
  EXPECT_EQ(::GetKeyState(VK_CONTROL), 0);
  EXPECT_LT(::GetKeyState(VK_MENU), 0);
}

TEST_F(KeyStates, KnowsWhatChangedWhileAnotherProgramHeldTheKeys) {
  MemoryPressKey(VK_MENU);
  Drain();
  MemoryGrabKeys(true);
  MemoryReleaseKey(VK_MENU);
  MemoryPressKey(VK_SHIFT);
  MemoryGrabKeys(false);
  Keys();
  ASSERT_EQ(::GetKeyState(VK_MENU), 0); // else Space opens the system menu
  EXPECT_LT(::GetKeyState(VK_SHIFT), 0);
  MemoryTypeKey(VK_SPACE);
  EXPECT_EQ(Keys(), "main KEYDOWN 32; main CHAR 32; main KEYUP 32");
}

// Types keys on the layout with dead keys and writes what ToAscii answers when it is asked twice about each, as it is
// pressed and without Shift: "answer:characters" for both.
std::string Characters(std::initializer_list<std::pair<uint8_t, bool>> keys) {
  WindowScene scene;
  ShowFrame("main", kMainPlace);
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
  for (const auto& [key, shift] : keys) shift ? TypeWith({VK_SHIFT}, key) : MemoryTypeKey(key);
  Drain();
  return text + TakeLog({"CHAR"});
}

constexpr uint8_t kApostrophe = 0xDE, kBackquote = 0xC0;

TEST(KeyCharacters, JoinAnAccentWithTheNextLetterOrStandBesideIt) {
  EXPECT_EQ(Characters({{kApostrophe, false}, {'E', true}}), "0: 0: 0: 1:e main CHAR 195; main CHAR 137");
  EXPECT_EQ(Characters({{kBackquote, true}, {'N', false}}), "0: 0: 0: 0: main CHAR 195; main CHAR 177");
  EXPECT_EQ(Characters({{kApostrophe, false}, {'X', false}}), "0: 0: 2:'x 2:'x main CHAR 39; main CHAR 120");
  EXPECT_EQ(Characters({{kApostrophe, false}, {VK_SPACE, false}, {'E', false}}),
            "0: 0: 1:' 1:' 1:e 1:e main CHAR 39; main CHAR 101");
  EXPECT_EQ(Characters({{kApostrophe, false}, {kApostrophe, false}, {'E', false}}),
            "0: 0: 2:'' 2:'' 1:e 1:e main CHAR 39; main CHAR 39; main CHAR 101");
}

} // namespace
} // namespace framereel
