// The frame: its thickness and look, its boxes, and dragging by the caption.
#include "win32/window_scene.h"

namespace framereel {
namespace {

using WindowFrame = OneWindow;

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
  TheMemoryDisplay().desktop.leavesDragging = false;
  // Where the release has gone to somebody else, a desktop that drags would wait for it.
  TheScript().Add("released", [] { TheMemoryDisplay().desktop.keys[VK_LBUTTON] = false; });
  Walk("none", {{"place main 100 100 206 225 then m 200 111 +lb later released m 230 91 . then place? main",
                 "130,80+206x225"}});
  EXPECT_EQ(TheMemoryDisplay().desktop.dragged, nullptr);
  Act("-lb then");
  TheMemoryDisplay().desktop.leavesDragging = true;
  Walk("none", {{"new box framed main 20 20 100 70 m box 20 -10 +lb later m box 35 15 , -lb . then place? box",
                 "168,147+100x70"},
                {"m box 20 -10 +lb later m box 0 0 , esc . then place? box", "168,147+100x70"}});
}

} // namespace
} // namespace framereel
