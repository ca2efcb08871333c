// The way of mouse and keys to windows. What Views get of it is in tests/views.
#include <gtest/gtest.h>
#include <string>

#include "platform/activation.h"
#include "platform/child_window.h"
#include "platform/cursor.h"
#include "platform/input_keys.h"
#include "platform/input_mouse.h"
#include "platform/later_modules.h"
#include "platform/main_window.h"
#include "support/window_program.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

std::string calls;

void Say(const ChildWindow* window, const char* what, int x, int y) {
  calls += std::string(window->title) + what + std::to_string(x) + "," + std::to_string(y) + " ";
}

std::string FlagsOf(uint16_t flags) {
  return std::to_string(flags) + "@";
}

void OnDown(ChildWindow* window, uint16_t flags, int16_t x, int16_t y) {
  EXPECT_EQ(CurrentPort(), &window->port);
  Say(window, ("v" + FlagsOf(flags)).c_str(), x, y);
}

void OnUp(ChildWindow* window, uint16_t flags, int16_t x, int16_t y) {
  Say(window, ("^" + FlagsOf(flags)).c_str(), x, y);
}

void OnMove(ChildWindow* window, int16_t x, int16_t y) {
  Say(window, "~", x, y);
}

std::string CharacterOf(uint8_t c) {
  return c > 32 && c < 127 ? std::string(1, char(c)) : std::to_string(c);
}

void OnKeyDown(ChildWindow* window, const KeyEvent& event, int16_t, int16_t) {
  calls += std::string(window->title) + ":" + CharacterOf(event.character) + "/" + CharacterOf(event.unshifted) + "/" +
           std::to_string(event.modifiers) + " ";
}

void OnKeyUp(ChildWindow* window, const KeyEvent& event, int16_t, int16_t) {
  calls += std::string(window->title) + "'" + std::to_string(event.character) + "/" + std::to_string(event.unshifted) +
           "/" + std::to_string(event.modifiers) + " ";
}

// The window called `title` with all of its input noted.
ChildWindow* OpenNoting(const char* title, uint32_t flags) {
  ChildWindow* window = OpenTestWindow(flags | kWindowUnclamped);
  SetChildWindowTitle(window, title);
  SetWindowMethod(window, &WindowMethods::mouseDown, OnDown);
  SetWindowMethod(window, &WindowMethods::mouseUp, OnUp);
  SetWindowMethod(window, &WindowMethods::keyDown, OnKeyDown);
  SetWindowMethod(window, &WindowMethods::keyUp, OnKeyUp);
  return window;
}

class InputTest : public ::testing::Test {
protected:
  InputTest() {
    SetMainClientSize(nullptr, 600, 440);
    Settle();
    calls.clear();
  }
  ~InputTest() override {
    TheLaterModules().menuShortcut = [](const KeyEvent&) { return false; };
    TheLaterModules().endEditSession = [](const KeyEvent*) {};
  }

  // What has been noted since the last time.
  std::string Heard() { return std::exchange(calls, ""); }

  WindowProgram program;
};

// ---- The mouse ---------------------------------------------------------------------------------------------------

TEST_F(InputTest, APressFollowsTheMouseOutOfTheWindowUntilItsRelease) {
  ChildWindow* a = OpenNoting("a", 0);
  SetWindowMethod(a, &WindowMethods::mouseMoved, OnMove);
  Press(a, 10, 20);
  EXPECT_EQ(Heard(), "a~10,20 av16@10,20 ");
  MoveOver(a, -50, 130);
  Release();
  EXPECT_EQ(Heard(), "a~-50,130 a^16@-50,130 ");
  MemoryReleaseButton(3);
  Settle();
  EXPECT_EQ(Heard(), "");
}

TEST_F(InputTest, FlagsTellTheButtonAndTheModifiers) {
  ChildWindow* a = OpenNoting("a", 0);
  Press(a, 1, 1, 3);
  Release(3);
  EXPECT_EQ(Heard(), "av64@1,1 a^64@1,1 ");
  MemoryPressKey(VK_SHIFT);
  MemoryPressKey(VK_CONTROL);
  Press(a, 1, 2);
  MemoryReleaseKey(VK_SHIFT);
  MemoryReleaseKey(VK_CONTROL);
  Release();
  Heard();
  MemoryPressKey(VK_CONTROL);
  Settle();
  Heard();
  Press(a, 1, 2);
  EXPECT_EQ(Heard(), "av28@1,2 "); // left, Ctrl, and with it the menu key
  Release();
  MemoryReleaseKey(VK_CONTROL);
}

TEST_F(InputTest, AClickOnAnInactiveWindowOnlyBringsItForward) {
  ChildWindow* a = OpenNoting("a", 0);
  ChildWindow* b = OpenNoting("b", 0);
  PlaceChildWindow(b, 320, 250);
  Settle();
  Press(a, 5, 5);
  Release();
  EXPECT_EQ(Heard(), "");
  EXPECT_EQ(ActiveWindow(), a);
  Press(a, 5, 5);
  Release();
  EXPECT_EQ(Heard(), "av16@5,5 a^16@5,5 ");
  ChildWindow* palette = OpenNoting("p", kWindowPalette);
  PlaceChildWindow(palette, 320, 40);
  Settle();
  Press(palette, 7, 8);
  Release();
  EXPECT_EQ(Heard(), "pv16@7,8 p^16@7,8 ");
}

TEST_F(InputTest, WithAModalPopupPressesElsewhereAreIts) {
  ChildWindow* a = OpenNoting("a", 0);
  ChildWindow* popup = OpenNoting("p", kWindowPopup);
  PlaceChildWindow(popup, 320, 250);
  Settle();
  Press(a, 5, 5);
  Release();
  EXPECT_EQ(Heard(), "pv16@-215,-145 p^16@-215,-145 ");
}

void NoteEntered(ChildWindow* window) {
  calls += std::string(window->title) + "< ";
}

void NoteLeft(ChildWindow* window) {
  calls += std::string(window->title) + "> ";
}

TEST_F(InputTest, ARestingMouseIsToldEvery100MillisecondsButNotDuringAPress) {
  ChildWindow* a = OpenNoting("a", 0);
  MoveOver(a, 30, 30);
  RunFor(100);
  SetWindowMethod(a, &WindowMethods::mouseMoved, OnMove);
  RunFor(500);
  EXPECT_EQ(Heard(), "a~30,30 a~30,30 a~30,30 a~30,30 a~30,30 ");
  Press(a, 30, 30);
  Heard();
  RunFor(500);
  EXPECT_EQ(Heard(), "");
  ResetMousePoint();
  RunFor(500);
  EXPECT_EQ(Heard(), "a~30,30 ");
  Release();
}

TEST_F(InputTest, EnteredAndLeftComeInPairsWhereverTheMouseGoes) {
  ChildWindow* a = OpenNoting("a", 0);
  SetWindowMethod(a, &WindowMethods::mouseEntered, NoteEntered);
  SetWindowMethod(a, &WindowMethods::mouseLeft, NoteLeft);
  MoveOver(a, 30, 30);
  EXPECT_EQ(Heard(), "a< ");
  // The active window has the mouse wherever it is.
  MoveOver(a, -80, -50);
  RunFor(200);
  EXPECT_EQ(Heard(), "");
  ChildWindow* m = OpenNoting("m", kWindowModal);
  SetWindowMethod(m, &WindowMethods::mouseEntered, NoteEntered);
  SetWindowMethod(m, &WindowMethods::mouseLeft, NoteLeft);
  RunFor(200);
  EXPECT_EQ(Heard(), "a> m< ");
  CloseChildWindow(m);
  RunFor(200);
  EXPECT_EQ(Heard(), "a< "); // a window that has gone is not told
  LeaveProgram();
  RunFor(200);
  EXPECT_EQ(Heard(), "a> ");
}

TEST_F(InputTest, HeldCaptureBringsEverythingToTheModalWindow) {
  ChildWindow* a = OpenNoting("a", 0);
  ChildWindow* cover = OpenNoting("c", kWindowPopup);
  SizeChildWindow(cover, 20, 20);
  HoldCapture(cover);
  SetWindowMethod(cover, &WindowMethods::mouseMoved, OnMove);
  Press(a, 50, 60);
  MoveOver(a, 55, 60);
  Release();
  EXPECT_EQ(Heard(), "c~50,60 cv16@50,60 c~55,60 c^16@55,60 ");
  Press(a, 50, 60);
  EXPECT_EQ(Heard(), "c~50,60 cv16@50,60 "); // the release before has not let the mouse go
  Release();
  ReleaseHeldCapture();
  CloseChildWindow(cover);
  Heard();
  MoveOver(a, 3, 3);
  EXPECT_EQ(Heard(), "");
}

ChildWindow* takesOver;

void GiveAway(ChildWindow* window, uint16_t flags, int16_t x, int16_t y) {
  OnDown(window, flags, x, y);
  ReroutePress(takesOver, flags, int16_t(x + window->geometry.clientLeft), int16_t(y + window->geometry.clientTop));
}

TEST_F(InputTest, AReroutedPressEndsForTheOneAndBeginsForTheOther) {
  ChildWindow* a = OpenNoting("a", 0);
  takesOver = OpenNoting("b", 0);
  PlaceChildWindow(takesOver, 110, 150);
  Settle();
  BringChildWindowForward(a);
  SetWindowMethod(a, &WindowMethods::mouseDown, GiveAway);
  Press(a, 5, 6);
  EXPECT_EQ(Heard(), "av16@5,6 a^16@5,6 bv16@-5,-44 ");
  Release();
  EXPECT_EQ(Heard(), "b^16@-5,-44 ");
  ReroutePress(a, kFlagLeftButton, 0, 0);
  EXPECT_EQ(Heard(), "");
}

TEST_F(InputTest, AWindowThatClosesUnderThePressEndsIt) {
  ChildWindow* a = OpenNoting("a", 0);
  SetWindowMethod(
      a, &WindowMethods::mouseDown, +[](ChildWindow* window, uint16_t, int16_t, int16_t) { CloseChildWindow(window); });
  ChildWindow* b = OpenNoting("b", 0);
  SendChildWindowBack(b);
  Press(a, 5, 5);
  Release();
  EXPECT_EQ(Heard(), "");
  EXPECT_FALSE(IsOpenChildWindow(a));
}

TEST_F(InputTest, TheMousePositionIsInToolkitCoordinates) {
  MoveMainWindow(nullptr, 103, 222);
  SetMousePosition(20, 30);
  Settle();
  EXPECT_EQ(TheMemoryDisplay().pointerX, TheMainWindow()->originX + 20);
  EXPECT_EQ(TheMemoryDisplay().pointerY, TheMainWindow()->originY + 30);
  int16_t x, y;
  GetMousePosition(&x, &y);
  EXPECT_EQ(x, 20);
  EXPECT_EQ(y, 30);
}

// ---- The keys ----------------------------------------------------------------------------------------------------

TEST_F(InputTest, KeysGiveTheirCharactersWithAndWithoutShift) {
  OpenNoting("a", 0);
  Type('Q');
  EXPECT_EQ(Heard(), "a:q/q/0 a'0/81/0 ");
  MemoryPressKey(VK_SHIFT);
  Settle();
  EXPECT_EQ(Heard(), ""); // a modifier gives no character
  Type('Q');
  Type('7');
  EXPECT_EQ(Heard(), "a:Q/q/2 a'0/81/2 a:&/7/2 a'0/55/2 ");
  MemoryReleaseKey(VK_SHIFT);
  Settle();
  EXPECT_EQ(Heard(), "a'0/16/0 ");
}

TEST_F(InputTest, SpecialKeysHaveFixedCharactersAndFunctionKeysNone) {
  OpenNoting("a", 0);
  const std::pair<int, int> keys[] = {{VK_BACK, 8}, {VK_TAB, 9},    {VK_RETURN, 13}, {VK_ESCAPE, 27},  {VK_LEFT, 28},
                                      {VK_UP, 29},  {VK_RIGHT, 30}, {VK_DOWN, 31},   {VK_DELETE, 127}, {VK_SPACE, 32}};
  for (const auto& [key, character] : keys) {
    MemoryPressKey(uint8_t(key));
    Settle();
    EXPECT_EQ(Heard(), "a:" + std::to_string(character) + "/" + std::to_string(character) + "/0 ") << key;
    MemoryReleaseKey(uint8_t(key));
    Settle();
    Heard();
  }
  MemoryPressKey(VK_F6);
  Settle();
  EXPECT_EQ(Heard(), "");
}

TEST_F(InputTest, AnAccentJoinsItsLetterOrComesAsTwoEvents) {
  OpenNoting("a", 0);
  TheMemoryDisplay().desktop.deadKeys = true;
  constexpr uint8_t kAcute = 0xDE;
  Type(kAcute);
  EXPECT_EQ(Heard(), "a'0/222/0 ");
  MemoryPressKey('E');
  Settle();
  EXPECT_EQ(Heard(), "a:233/e/0 ");
  MemoryReleaseKey('E');
  Type(kAcute);
  Heard();
  MemoryPressKey('X');
  Settle();
  EXPECT_EQ(Heard(), "a:'/'/0 a:x/x/0 ");
}

bool NoteShortcut(const KeyEvent& event) {
  calls += std::string("shortcut ") + char(event.unshifted) + " ";
  return true;
}

TEST_F(InputTest, AMenuShortcutKeepsItsKeyFromTheWindow) {
  OpenNoting("a", 0);
  TheLaterModules().menuShortcut = NoteShortcut;
  MemoryPressKey(VK_CONTROL);
  Type('S');
  EXPECT_EQ(Heard(), "shortcut s ");
  MemoryReleaseKey(VK_CONTROL);
  Settle();
  EXPECT_EQ(Heard(), "a'0/17/0 ");
  // Alt with it is another key, and so is a key that is no letter or digit.
  MemoryPressKey(VK_CONTROL);
  Type(VK_LEFT);
  EXPECT_EQ(Heard(), "a:28/28/12 a'0/37/12 ");
  MemoryPressKey(VK_MENU);
  Type('S');
  EXPECT_EQ(Heard().find("shortcut"), std::string::npos);
  MemoryReleaseKey(VK_MENU);
  MemoryReleaseKey(VK_CONTROL);
}

TEST_F(InputTest, AModalWindowHasTheKeysAndNoShortcutsWork) {
  OpenNoting("a", 0);
  OpenNoting("m", kWindowModal);
  TheLaterModules().menuShortcut = NoteShortcut;
  MemoryPressKey(VK_CONTROL);
  MemoryPressKey('S');
  Settle();
  EXPECT_EQ(Heard(), "m:s/s/12 ");
}

TEST_F(InputTest, SentKeysReachTheActiveWindowWithTheMenuKeyInItsForm) {
  OpenNoting("a", 0);
  SendKeyDown(true, {'+', '+', kFlagMenuKey | kFlagAlt}, 3, 4);
  SendKeyUp(false, {0, 65, kFlagAlt}, 3, 4);
  EXPECT_EQ(Heard(), "a:+/+/12 a'0/65/16 ");
}

TEST_F(InputTest, CtrlF4ClosesAndCtrlF6SendsBackUnlessAModalWindowBlocks) {
  ChildWindow* a = OpenNoting("a", 0);
  ChildWindow* b = OpenNoting("b", 0);
  MemoryPressKey(VK_CONTROL);
  Type(VK_F6);
  EXPECT_EQ(ActiveWindow(), a);
  ChildWindow* m = OpenNoting("m", kWindowModal);
  Type(VK_F4);
  EXPECT_TRUE(IsOpenChildWindow(a));
  EXPECT_TRUE(IsOpenChildWindow(m));
  CloseChildWindow(m);
  Settle();
  Type(VK_F4);
  EXPECT_FALSE(IsOpenChildWindow(a));
  EXPECT_TRUE(IsOpenChildWindow(b));
}

TEST_F(InputTest, AKeyAndAPressEndTheEditSession) {
  ChildWindow* a = OpenNoting("a", 0);
  TheLaterModules().endEditSession = [](const KeyEvent*) { calls += "end "; };
  Press(a, 1, 1);
  EXPECT_EQ(Heard(), "end av16@1,1 ");
  Release();
  Heard();
  MemoryPressKey('Q');
  Settle();
  EXPECT_EQ(Heard(), "end a:q/q/0 ");
}

// ---- The pointer's shape -----------------------------------------------------------------------------------------

TEST_F(InputTest, TheShapeIsThatOfAllWindowsAndOfThoseThatCome) {
  ChildWindow* a = OpenTestWindow(kWindowUnclamped);
  MoveOver(a, 5, 5);
  DisplayWindow* frame = MemoryWindowTitled("Framereel");
  SetCursorShape(2);
  EXPECT_EQ(frame->shape, PointerShape::kCross);
  SetCursorShape(9);
  SetCursorShape(0);
  EXPECT_EQ(GetCursorShape(), 2);
  MoveOver(a, -80, -50); // over the main window itself
  EXPECT_EQ(frame->shape, PointerShape::kCross);
  ChildWindow* later = OpenTestWindow(kWindowModal | kWindowUnclamped);
  MoveOver(later, 5, 5);
  EXPECT_EQ(MemoryWindowTitled("Test")->shape, PointerShape::kCross);
  SetCursorShape(1);
  EXPECT_EQ(MemoryWindowTitled("Test")->shape, PointerShape::kArrow);
}

} // namespace
} // namespace framereel
