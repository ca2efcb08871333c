// The way of mouse and keys to windows. What Views get of it is in tests/views.
#include <gtest/gtest.h>
#include <sstream>
#include <string>

#include "platform/drawing/current_port.h"
#include "platform/input/keys.h"
#include "platform/input/mouse.h"
#include "platform/records/later_modules.h"
#include "platform/windows/active_window.h"
#include "platform/windows/cursor_shape.h"
#include "platform/windows/mouse_targets.h"
#include "support/window_program.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

std::string calls;

template <typename... Parts> void Say(const ChildWindow* window, const Parts&... parts) {
  std::ostringstream text;
  text << window->title;
  (text << ... << parts) << ' ';
  calls += text.str();
}

void OnDown(ChildWindow* window, uint16_t flags, int16_t x, int16_t y) {
  EXPECT_EQ(CurrentPort(), &window->port);
  Say(window, 'v', flags, '@', x, ',', y);
}

void OnUp(ChildWindow* window, uint16_t flags, int16_t x, int16_t y) {
  Say(window, '^', flags, '@', x, ',', y);
}

void OnMove(ChildWindow* window, int16_t x, int16_t y) {
  Say(window, '~', x, ',', y);
}

std::string CharacterOf(uint8_t c) {
  return c > 32 && c < 127 ? std::string(1, char(c)) : std::to_string(c);
}

void OnKeyDown(ChildWindow* window, const KeyEvent& event, int16_t, int16_t) {
  Say(window, ':', CharacterOf(event.character), '/', CharacterOf(event.unshifted), '/', event.modifiers);
}

void OnKeyUp(ChildWindow* window, const KeyEvent& event, int16_t, int16_t) {
  EXPECT_EQ(event.character, 0);
  Say(window, '\'', int(event.unshifted), '/', event.modifiers);
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

  // The window called `title` with its presses and keys noted.
  ChildWindow* Open(const char* title, uint32_t flags = 0) {
    ChildWindow* window = OpenTestWindow(flags | kWindowUnclamped);
    SetChildWindowTitle(window, title);
    SetWindowMethod(window, &WindowMethods::mouseDown, OnDown);
    SetWindowMethod(window, &WindowMethods::mouseUp, OnUp);
    SetWindowMethod(window, &WindowMethods::keyDown, OnKeyDown);
    SetWindowMethod(window, &WindowMethods::keyUp, OnKeyUp);
    return window;
  }

  // What has been noted since the last time; what an act of the user brings.
  std::string Heard() { return std::exchange(calls, ""); }
  std::string Click(const ChildWindow* window, int16_t x, int16_t y, uint8_t button = 1) {
    Press(window, x, y, button);
    Release(button);
    return Heard();
  }
  std::string Key(int virtualKey) {
    Type(uint8_t(virtualKey));
    return Heard();
  }
  std::string Hold(uint8_t virtualKey) {
    MemoryPressKey(virtualKey);
    Settle();
    return Heard();
  }
  std::string LetGo(uint8_t virtualKey) {
    MemoryReleaseKey(virtualKey);
    Settle();
    return Heard();
  }

  WindowProgram program;
};

// ---- The mouse ---------------------------------------------------------------------------------------------------

TEST_F(InputTest, APressFollowsTheMouseOutOfTheWindowUntilItsRelease) {
  ChildWindow* a = Open("a");
  SetWindowMethod(a, &WindowMethods::mouseMoved, OnMove);
  Press(a, 10, 20);
  EXPECT_EQ(Heard(), "a~10,20 av16@10,20 ");
  MoveOver(a, -50, 130);
  Release();
  EXPECT_EQ(Heard(), "a~-50,130 a^16@-50,130 ");
  Release(3);
  EXPECT_EQ(Heard(), "");
}

TEST_F(InputTest, FlagsTellTheButtonAndTheModifiers) {
  ChildWindow* a = Open("a");
  EXPECT_EQ(Click(a, 1, 1, 3), "av64@1,1 a^64@1,1 ");
  Hold(VK_CONTROL);
  EXPECT_EQ(Click(a, 1, 2), "av28@1,2 a^28@1,2 "); // left, Ctrl, and with it the menu key
  LetGo(VK_CONTROL);
  Hold(VK_SHIFT);
  EXPECT_EQ(Click(a, 1, 2), "av18@1,2 a^18@1,2 ");
  LetGo(VK_SHIFT);
}

TEST_F(InputTest, AClickOnAnInactiveWindowOnlyBringsItForwardAndAModalPopupsIsIts) {
  ChildWindow* a = Open("a");
  PlaceChildWindow(Open("b"), 320, 250);
  Settle();
  EXPECT_EQ(Click(a, 5, 5), "");
  EXPECT_EQ(ActiveWindow(), a);
  EXPECT_EQ(Click(a, 5, 5), "av16@5,5 a^16@5,5 ");
  ChildWindow* palette = Open("p", kWindowPalette);
  PlaceChildWindow(palette, 320, 40);
  Settle();
  EXPECT_EQ(Click(palette, 7, 8), "pv16@7,8 p^16@7,8 ");
  PlaceChildWindow(Open("m", kWindowPopup), 320, 250);
  Settle();
  EXPECT_EQ(Click(a, 5, 5), "mv16@-215,-145 m^16@-215,-145 ");
}

TEST_F(InputTest, ARestingMouseIsToldEvery100MillisecondsButNotDuringAPress) {
  ChildWindow* a = Open("a");
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
}

TEST_F(InputTest, EnteredAndLeftComeInPairsWhereverTheMouseGoes) {
  const auto open = [this](const char* title, uint32_t flags) {
    ChildWindow* window = Open(title, flags);
    SetWindowMethod(
        window, &WindowMethods::mouseEntered, +[](ChildWindow* entered) { Say(entered, "<"); });
    SetWindowMethod(
        window, &WindowMethods::mouseLeft, +[](ChildWindow* left) { Say(left, ">"); });
    return window;
  };
  MoveOver(open("a", 0), 30, 30);
  EXPECT_EQ(Heard(), "a< ");
  // The active window has the mouse wherever it is.
  MemoryMovePointerTo(5, 5);
  RunFor(200);
  EXPECT_EQ(Heard(), "");
  ChildWindow* m = open("m", kWindowModal);
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
  ChildWindow* a = Open("a");
  ChildWindow* cover = Open("c", kWindowPopup);
  SizeChildWindow(cover, 20, 20);
  HoldCapture(cover);
  SetWindowMethod(cover, &WindowMethods::mouseMoved, OnMove);
  Press(a, 50, 60);
  MoveOver(a, 55, 60);
  Release();
  EXPECT_EQ(Heard(), "c~50,60 cv16@50,60 c~55,60 c^16@55,60 ");
  EXPECT_NE(TheMemoryDisplay().desktop.captured, nullptr); // the release has not let the mouse go
  EXPECT_EQ(Click(a, 50, 60), "c~50,60 cv16@50,60 c^16@50,60 ");
  ReleaseHeldCapture();
  CloseChildWindow(cover);
  EXPECT_EQ(TheMemoryDisplay().desktop.captured, nullptr);
}

ChildWindow* takesOver;

TEST_F(InputTest, AReroutedPressEndsForTheOneAndBeginsForTheOther) {
  ChildWindow* a = Open("a");
  takesOver = Open("b");
  PlaceChildWindow(takesOver, 110, 150);
  Settle();
  BringChildWindowForward(a);
  SetWindowMethod(
      a, &WindowMethods::mouseDown, +[](ChildWindow* window, uint16_t flags, int16_t x, int16_t y) {
        OnDown(window, flags, x, y);
        const Point point = ToToolkitPoint(window, {y, x});
        ReroutePress(takesOver, flags, point.h, point.v);
      });
  SetWindowMethod(takesOver, &WindowMethods::mouseMoved, OnMove);
  Press(a, 5, 6);
  EXPECT_EQ(Heard(), "av16@5,6 a^16@5,6 bv16@-5,-44 ");
  RunFor(300);
  EXPECT_EQ(Heard(), "b~-5,-44 "); // once, where the mouse rests
  Release();
  EXPECT_EQ(Heard(), "b^16@-5,-44 ");
  ReroutePress(a, kFlagLeftButton, 0, 0);
  EXPECT_EQ(Heard(), "");
}

TEST_F(InputTest, AWindowThatClosesUnderThePressEndsIt) {
  ChildWindow* a = Open("a");
  SetWindowMethod(
      a, &WindowMethods::mouseDown, +[](ChildWindow* window, uint16_t, int16_t, int16_t) { CloseChildWindow(window); });
  SendChildWindowBack(Open("b"));
  EXPECT_EQ(Click(a, 5, 5), "");
  EXPECT_FALSE(IsOpenChildWindow(a));
}

TEST_F(InputTest, TheMousePositionIsInToolkitCoordinates) {
  MoveMainWindow(nullptr, 103, 222);
  SetMousePosition(20, 30);
  EXPECT_EQ(TheMemoryDisplay().pointerX, TheMainWindow()->originX + 20);
  EXPECT_EQ(TheMemoryDisplay().pointerY, TheMainWindow()->originY + 30);
  int16_t x, y;
  GetMousePosition(&x, &y);
  EXPECT_EQ(x, 20);
  EXPECT_EQ(y, 30);
}

// ---- The keys ----------------------------------------------------------------------------------------------------

TEST_F(InputTest, KeysGiveTheirCharactersWithAndWithoutShift) {
  Open("a");
  EXPECT_EQ(Key('Q'), "a:q/q/0 a'81/0 ");
  EXPECT_EQ(Hold(VK_SHIFT), ""); // a modifier gives no character
  EXPECT_EQ(Key('Q'), "a:Q/q/2 a'81/2 ");
  EXPECT_EQ(Key('7'), "a:&/7/2 a'55/2 ");
  EXPECT_EQ(LetGo(VK_SHIFT), "a'16/0 ");
}

TEST_F(InputTest, SpecialKeysHaveFixedCharactersAndFunctionKeysNone) {
  Open("a");
  const std::pair<uint8_t, const char*> keys[] = {
      {VK_BACK, "a:8/8/0 "},    {VK_TAB, "a:9/9/0 "},       {VK_RETURN, "a:13/13/0 "}, {VK_ESCAPE, "a:27/27/0 "},
      {VK_LEFT, "a:28/28/0 "},  {VK_UP, "a:29/29/0 "},      {VK_RIGHT, "a:30/30/0 "},  {VK_DOWN, "a:31/31/0 "},
      {VK_SPACE, "a:32/32/0 "}, {VK_DELETE, "a:127/127/0 "}};
  for (const auto& [key, heard] : keys) {
    EXPECT_EQ(Hold(key), heard);
    LetGo(key);
  }
  EXPECT_EQ(Hold(VK_F6), "");
}

TEST_F(InputTest, AnAccentComesWithItsLetterAsTwoEventsOrAsNone) {
  Open("a");
  TheMemoryDisplay().desktop.deadKeys = true;
  constexpr uint8_t kAcute = 0xDE;
  EXPECT_EQ(Key(kAcute), "a'222/0 ");
  EXPECT_EQ(Key('E'), "a'69/0 "); // they join to what is no ASCII
  Key(kAcute);
  EXPECT_EQ(Key('X'), "a:'/'/0 a:x/x/0 a'88/0 ");
}

TEST_F(InputTest, AMenuShortcutKeepsItsKeyFromTheWindowUnlessAModalOneHasTheKeys) {
  Open("a");
  TheLaterModules().menuShortcut = [](const KeyEvent& event) {
    calls += std::string("shortcut ") + char(event.unshifted) + " ";
    return true;
  };
  Hold(VK_CONTROL);
  EXPECT_EQ(Key('S'), "shortcut s ");
  EXPECT_EQ(LetGo(VK_CONTROL), "a'17/0 ");
  // Alt with it is another key, and so is a key that is no letter or digit.
  Hold(VK_CONTROL);
  EXPECT_EQ(Key(VK_LEFT), "a:28/28/12 a'37/12 ");
  Hold(VK_MENU);
  EXPECT_EQ(Key('S').find("shortcut"), std::string::npos);
  LetGo(VK_MENU);
  Open("m", kWindowModal);
  EXPECT_EQ(Key('S'), "m:s/s/12 m'83/12 ");
}

TEST_F(InputTest, SentKeysReachTheActiveWindowWithTheMenuKeyInItsForm) {
  Open("a");
  SendKeyDown(true, {'+', '+', kFlagMenuKey | kFlagAlt}, 3, 4);
  SendKeyUp(false, {0, 65, kFlagAlt}, 3, 4);
  EXPECT_EQ(Heard(), "a:+/+/12 a'65/16 ");
}

TEST_F(InputTest, CtrlF4ClosesAndCtrlF6SendsBackUnlessAModalWindowBlocks) {
  ChildWindow *a = Open("a"), *b = Open("b");
  Hold(VK_CONTROL);
  Type(VK_F6);
  EXPECT_EQ(ActiveWindow(), a);
  ChildWindow* m = Open("m", kWindowModal);
  Type(VK_F4);
  EXPECT_TRUE(IsOpenChildWindow(a) && IsOpenChildWindow(m));
  CloseChildWindow(m);
  Settle();
  Type(VK_F4);
  EXPECT_FALSE(IsOpenChildWindow(a));
  EXPECT_TRUE(IsOpenChildWindow(b));
}

TEST_F(InputTest, AKeyAndAPressEndTheEditSession) {
  ChildWindow* a = Open("a");
  TheLaterModules().endEditSession = [](const KeyEvent*) { calls += "end "; };
  EXPECT_EQ(Click(a, 1, 1), "end av16@1,1 a^16@1,1 ");
  EXPECT_EQ(Key('Q'), "end a:q/q/0 a'81/0 ");
}

// ---- The pointer's shape -----------------------------------------------------------------------------------------

TEST_F(InputTest, TheShapeIsThatOfAllWindowsAndOfThoseThatCome) {
  ChildWindow* a = OpenTestWindow(kWindowUnclamped);
  MoveOver(a, 5, 5);
  DisplayWindow* frame = MemoryWindowTitled("Framereel");
  SetCursorShape(2);
  EXPECT_EQ(frame->shape, PointerShape::kCross);
  SetCursorShape(8);
  SetCursorShape(0);
  EXPECT_EQ(GetCursorShape(), 2);
  for (const uint16_t own : {5, 6, 7}) {
    SetCursorShape(own);
    EXPECT_EQ(GetCursorShape(), own);
    EXPECT_EQ(frame->shape, PointerShape::kOwn);
  }
  SetCursorShape(2);
  MoveOver(a, -80, -50); // over the main window itself
  EXPECT_EQ(frame->shape, PointerShape::kCross);
  MoveOver(OpenTestWindow(kWindowModal | kWindowUnclamped), 5, 5);
  EXPECT_EQ(MemoryWindowTitled("Test")->shape, PointerShape::kCross);
  SetCursorShape(1);
  EXPECT_EQ(MemoryWindowTitled("Test")->shape, PointerShape::kArrow);
}

} // namespace
} // namespace framereel
