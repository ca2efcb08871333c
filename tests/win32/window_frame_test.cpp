// The frame: its thickness and look, its boxes, dragging by the caption, the system menu.
#include "win32/win32_input.h"
#include "win32/win32_menus.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"
#include "win32/window_scene.h"

namespace framereel {
namespace {

using WindowFrame = OneWindow;
using SystemMenu = OneWindow;

TEST(FrameOnAnyDesktop, TakesItsThicknessAndLightsTheCaptionOfTheActiveWindowWithItsTitle) {
  constexpr PixelRect kTitle = {125, 103, 262, 121}, kBoxes = {265, 103, 303, 121};
  constexpr int kAll = 137 * 18;
  for (const int32_t depth : {1, 4, 8, 16, 24}) {
    SCOPED_TRACE(depth);
    WindowScene scene(640, 480, depth);
    HWND main = ShowMain();
    const COLORREF lit = RGB(0, 0, 128), dim = RGB(128, 128, 128);
    const auto expectLettered = [&](COLORREF colour) {
      EXPECT_GT(Count(kTitle, colour), kAll * 3 / 4);
      EXPECT_LT(Count(kTitle, colour), kAll);
    };
    expectLettered(lit);
    Act("keyboard other then");
    expectLettered(dim);
    const int64_t boxes = Count(kBoxes, dim);
    ::SetWindowTextA(main, std::string(300, 'W').c_str()); // short of the boxes
    Drain();
    EXPECT_EQ(Count(kBoxes, dim), boxes);
    ::SetWindowTextA(main, "");
    Drain();
    EXPECT_EQ(Count(kTitle, dim), kAll);
    ::MoveWindow(main, 100, 100, 4, 4, TRUE);
    Drain();
  }
}

TEST_F(WindowFrame, IsRaisedOrALineAndActsWhereABoxIsReleasedOnWhichItWasPressed) {
  Answer(WM_CLOSE, [](HWND, WPARAM, LPARAM) { return 0; });
  Walk("command",
       {{"rgb? 100 100 rgb? 101 101 rgb? 102 102 rgb? 103 121 rgb? 303 290 rgb? 304 290 rgb? 305 290", "l w s s s d k"},
        {"new line border main 400 100 99 99 then rgb? 400 100 rgb? 401 101 rgb? 498 198", "k w k"},
        {"m 293 111 lb", "| main.command:f060"},
        {"+lb m 50 50 -lb", ""},
        {"m 275 111 lb", "| main.command:f020"},
        {"back main then m 293 111 +lb later rgb? 290 105 , m 50 50 , rgb? 290 105 , m 293 111 , "
         "rgb? 290 105 , esc . then rgb? 290 105 -lb",
         "k w k w"},
        {"+lb later takemouse . then -lb", ""}, // the release never comes
        {"m 50 50 rgb? 290 105", "w"}});
  TheMemoryDisplay().desktop.keys[VK_LBUTTON] = false;
}

TEST_F(WindowFrame, TheCaptionDragsWithTheDesktopOrWithoutItAndEscapeTakesItBack) {
  const char* drag = "place main 100 100 206 225 then m 200 111 +lb later m 230 91 , m 240 161 , -lb . then wait 100 "
                     "then place? main rgb? main 0 0";
  for (const bool byDesktop : {true, false}) {
    TheMemoryDisplay().desktop.leavesDragging = !byDesktop;
    Walk("none", {{drag, "140,150+206x225 w"}});
    EXPECT_EQ(::GetKeyState(VK_LBUTTON), 0);
  }
  Walk("none", {{"new box framed main 20 20 100 70 m box 20 -10 +lb later m box 35 15 , -lb . then place? box",
                 "178,217+100x70"},
                {"m box 20 -10 +lb later m box 0 0 , esc . then place? box", "178,217+100x70"}});
}

TEST_F(WindowFrame, IsGivenToTheDesktopToDragOnlyWhenItMovesWithTheButtonDown) {
  for (const bool released : {false, true}) {
    MemoryAt(::GetTickCount() + 20, [released] {
      EXPECT_EQ(TheMemoryDisplay().desktop.dragged, nullptr);
      if (released) TheMemoryDisplay().desktop.keys[VK_LBUTTON] = false; // the release has gone to somebody else
      Act("m 230 91");
    });
    Act("place main 100 100 206 225 then m 200 111 +lb then");
    EXPECT_EQ(TheMemoryDisplay().desktop.dragged != nullptr, !released);
    Act("-lb then place? main");
    EXPECT_EQ(Heard("none"), "130,80+206x225");
  }
}

// ---- The system menu ---------------------------------------------------------------------------------------------

TEST_F(SystemMenu, OpensWithTheKeyboardAndChoosesByArrowsOrLetter) {
  Answer(WM_CLOSE, [](HWND, WPARAM, LPARAM) { return 0; });
  Walk("command", {{"later down , down , enter . alt+space then back main", "main.command:f100 main.command:f020"},
                   {"later up , up , enter . alt+space then back main", "main.command:f100 main.command:f020"},
                   {"later C . alt+space", "| main.command:f100 main.command:f060"},
                   {"later enter , R , esc . alt+space", "| main.command:f100"}, // what is grey is not chosen
                   {"later M , right , down , down , enter . alt+space then place? main",
                    "main.command:f100 main.command:f010 108,116+206x225"},
                   {"later M , left , up , esc . alt+space then place? main",
                    "main.command:f100 main.command:f010 108,116+206x225"},
                   {"later M , left , keyboard other . alt+space then place? main",
                    "main.command:f100 main.command:f010 100,116+206x225"}});
  EXPECT_EQ(TheMemoryDisplay().desktop.captured, nullptr);
}

TEST_F(SystemMenu, OpensWithTheMouseByDraggingOrByClicking) {
  Answer(WM_CLOSE, [](HWND, WPARAM, LPARAM) { return 0; });
  for (const char* words : {"m 113 111 +lb later wait 0 , -lb .", "m 113 111 lb later wait 0 , lb ."}) {
    MemoryAt(::GetTickCount() + 15, [] { // to the last item
      const PixelRect menu = TheMemoryDisplay().desktop.windows.front()->place;
      MemoryMovePointerTo(menu.left + 10, menu.bottom - 8);
    });
    Walk("command", {{words, "| main.command:f093 main.command:f060"}});
  }
  Walk("command", {{"m 113 111 lb later m 600 400 , lb .", "| main.command:f093"}});
}

TEST_F(SystemMenu, TakesChangedAndAddedItemsAndTellsTheOwnerThatItWaits) {
  HMENU menu = ::GetSystemMenu(main, FALSE);
  EXPECT_FALSE(::ModifyMenuA(menu, SC_TASKLIST, 0, 32, "Nex&t\tCtrl+F6"));
  EXPECT_TRUE(::ModifyMenuA(menu, SC_CLOSE, 0, SC_CLOSE, "&Shut\tCtrl+F4"));
  EXPECT_TRUE(::AppendMenuA(menu, MF_SEPARATOR, 0, nullptr));
  EXPECT_TRUE(::AppendMenuA(menu, MF_CHECKED, 300, "&About..."));
  Walk("command", {{"later up , enter . alt+space", "| main.command:f100 main.command:12c"},
                   {"later A . alt+space", "| main.command:f100 main.command:12c"}});
  Act("later A . alt+space then");
  EXPECT_EQ(Heard("idle").rfind("main.idle:2 main.idle:2", 0), 0U);
  EXPECT_EQ(::GetSystemMenu(main, TRUE), nullptr);
  Walk("command", {{"later A , S , esc . alt+space", "| main.command:f100"}});
  Act("new bare bare main 0 0 100 100");
  EXPECT_EQ(::GetSystemMenu(Named("bare"), FALSE), nullptr);
}

} // namespace
} // namespace framereel
