// The mouse, also on the frame, the keyboard and the queue: who gets what, in which order, and what the messages and
// the key state say.
#include "win32/window_scene.h"

namespace framereel {
namespace {

using MouseInput = OneWindow;
using WindowFrame = OneWindow;
using PointerShapes = OneWindow;
using KeyInput = OneWindow;
using MessageQueue = OneWindow;
constexpr const char* kMouse = "m d u rd ru md mu dd ncm ncd wheel enable";
constexpr const char* kKeys = "key keyup char syskey syskeyup syschar command";

// The wheel goes on to the parents of what lies under the pointer.
TEST_F(MouseInput, GoesToTheDeepestShownAndEnabledChildAndTellsWhatIsDown) {
  Walk(kMouse,
       {{"new child child main 10 10 50 50 m main 15 16 ctrl+lb shift+rb mb",
         "| child.m:0@5,6 child.d:9@5,6 child.u:8@5,6 child.rd:6@5,6 child.ru:4@5,6 child.md:16@5,6 child.mu:0@5,6"},
        {"new deep child child 20 20 20 20 at? deep 0 0 at? deep -1 0 at? 100 100 at? 99 100", "deep child main -"},
        {"disable deep at? deep 0 0 hide child at? deep 0 0 showna child", "deep.enable:0 child main"},
        {"+lb m main 32 32 m main 33 33 -lb",
         "| child.d:1@5,6 child.m:1@23,23 child.u:0@23,23"}, // of moves it holds one
        {"+ctrl wheel 1 -ctrl", "| child.wheel:7864328@136,155 main.wheel:7864328@136,155"},
        {"disable child m main 16 16 wheel -2", "child.enable:0 | main.m:0@16,16 main.wheel:4279238656@119,138"},
        {"m 100 200 then m 150 110", "main.ncm:18@100,200 | main.ncm:2@150,110"},
        {"disable main m main 99 99 lb", "main.enable:0"}});
}

TEST_F(PointerShapes, IsTheClassesOverTheClientAreaAndAnArrowOnTheFrame) {
  const auto cross = reinterpret_cast<LONG_PTR>(::LoadCursorA(nullptr, IDC_CROSS));
  TheScript().Add("class", [=, this] { ::SetClassLongPtrA(main, GCL_HCURSOR, cross); });
  TheScript().Add("hourglass", [] { ::SetCursor(::LoadCursorA(nullptr, IDC_WAIT)); });
  TheScript().Add("shape?", [this] {
    const char* names[] = {"arrow", "beam", "hourglass", "cross", "own"};
    Tell(names[size_t(shown->shape)]);
  });
  Walk("none", {{"m 150 200 then shape? class shape?", "arrow cross"},
                {"m 150 110 then shape?", "arrow"},
                {"hourglass capture main m 150 200 then shape?", "hourglass"},
                {"loose m 151 200 then shape?", "cross"}});
  EXPECT_EQ(::SetClassLongPtrA(main, GCL_HCURSOR, cross), cross);
  EXPECT_EQ(::LoadCursorA(nullptr, MAKEINTRESOURCEA(1)), nullptr);
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

TEST_F(KeyInput, GoesToTheFocusAndIsOfTheSystemWithAltButNotWithCtrl) {
  Walk(
      kKeys,
      {{"new child child main 10 10 50 50 focus child alt+X",
        "| child.syskey:18 child.syskey:X child.syschar:120 main.command:f100 child.syskeyup:X* child.keyup:18*"},
       {"alt", "| child.syskey:18 child.syskeyup:18* main.command:f100"},
       {"+alt m main 15 16 lb -alt", "| child.syskey:18 child.keyup:18*"}, // a click between makes it no longer alone
       {"+alt m main 16 16 -alt", "| child.syskey:18 child.syskeyup:18* main.command:f100"},
       {"ctrl+alt+X", "| child.key:17 child.key:18 child.key:X child.keyup:X* child.keyup:18* child.keyup:17*"},
       {"+A A ctrl+C", "| child.key:A child.char:97 child.key:A* child.char:97 child.keyup:A* child.key:17 child.key:C "
                       "child.char:3 child.keyup:C* child.keyup:17*"},
       {"focus - A", "| main.syskey:A main.syschar:97 main.syskeyup:A*"},
       {"disable main A then enable main focus child", ""},
       {"alt+f4", "| child.syskey:18 child.syskey:115 main.command:f060"}});
}

TEST_F(KeyInput, HasAStateThatFollowsTheMessagesTakenAndAnotherThatIsNow) {
  TheScript().Add("keys?", [] { // that are down by the messages taken, "!" for those that are now; C for the lock
    BYTE states[256];
    ::GetKeyboardState(states);
    std::string text = states[VK_CAPITAL] == 1 ? "C" : "";
    for (const auto& [name, key] : {std::pair{"s", VK_SHIFT}, {"c", VK_CONTROL}, {"a", VK_MENU}}) {
      EXPECT_EQ(::GetKeyState(key) & 0x8001, states[key] == 0x80 ? 0x8000 : 0);
      text += Text(states[key] ? name : "", ::GetAsyncKeyState(key) < 0 ? Text('!', name) : "");
    }
    Tell(text);
  });
  TheScript().Add("hold", [](bool grabs) { MemoryGrabKeys(grabs); });
  Walk("none", {{"+shift caps keys?", "!s"},
                {"keys?", "Cs!s"},
                // It knows on return what changed while another program had the keyboard, or held the keys.
                {"-shift +ctrl then keyboard other -ctrl +alt then keyboard main then keys?", "Ca!a"},
                {"hold 1 -alt +shift hold 0 then keys?", "Cs!s"}});
  Walk(kKeys, {{"-shift caps space", "| main.keyup:16* main.key:20 main.keyup:20* main.key:32 main.char:32 "
                                     "main.keyup:32*"}}); // which opens no menu
}

// Takes what the filter lets through, and paints.
std::string Taken(const std::string& window, UINT first, UINT last) {
  std::string kinds;
  MSG message;
  while (::PeekMessageA(&message, Named(window), first, last, PM_REMOVE)) {
    kinds += std::to_string(message.message) + " ";
    if (message.message == WM_PAINT) ::DispatchMessageA(&message);
  }
  return kinds;
}

TEST_F(MessageQueue, GivesInputInItsOrderThenTheEndThenPaintsAndKeepsWhatAFilterLeaves) {
  Act("erase main quit 7 A m 150 160 lb");
  EXPECT_EQ(Taken("-", 0, 0), "256 257 512 513 514 18 15 ");
  Act("new dlg dialog main 300 0 206 225 new child child dlg 0 0 50 50 keyboard dlg then");
  Act("A m 150 160 m 310 30 erase main erase child");
  EXPECT_EQ(Taken("-", WM_MOUSEMOVE, WM_MBUTTONDBLCLK), "512 512 ");
  EXPECT_EQ(Taken("dlg", 0, 0), "256 257 15 "); // a child of the dialog is one of the dialog's
  Act("quit 7 m 450 60 destroy dlg");
  EXPECT_EQ(Taken("main", WM_PAINT, WM_PAINT), "18 15 "); // the end, through any filter
  EXPECT_EQ(Taken("-", 0, 0), "");
}

} // namespace
} // namespace framereel
