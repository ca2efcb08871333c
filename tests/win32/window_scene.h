// Windows of the platform calls on a desktop in memory, and a script of words: what the program, the user and other
// programs do. A test is a table of such steps and of the messages that each one brings.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "support/script.h"
#include "win32/drawing/relief.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_controls.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_drawing.h"
#include "win32/win32_input.h"
#include "win32/win32_menus.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"
#include "win32/windows/frame.h"
#include "win32/windows/menu_bar.h"
#include "win32/windows/window.h"
#include "win32/windows/window_tree.h"

namespace framereel {

// A desktop with nothing on it. There is one scene at a time.
class WindowScene {
public:
  explicit WindowScene(int32_t width = 640, int32_t height = 480, int32_t depth = 24);
  ~WindowScene();
  WindowScene(const WindowScene&) = delete;
};

// The words of script.h, and these. Windows are named by their titles, "-" is none. A PLACE is "X Y WIDTH HEIGHT"; a
// POINT is "X Y" on the screen, or "NAME X Y" in a client area.
//
//   the program  make NAME KIND PARENT PLACE, new (made, shown and not heard of), show, showna, hide, iconify, back,
//                destroy, focus, capture, loose, enable, disable, top, bottom, update, place NAME PLACE; erase NAME,
//                invalidate NAME PLACE; paints NAME COLOUR (from now on), fill NAME COLOUR PLACE
//   the user     m POINT
//   the desktop  keyboard NAME (also "other", a program's window in the corner), minimise, restore,
//                kill, shift NAME PLACE
//   what stands  focus?, order? (of the top-level windows), place? NAME,
//                update? NAME (the box round what it is to paint), rgb? POINT, at? POINT
//
// "then" lets the program take all messages that there are.
//
// The log has an entry for each message to a window of the scene, like "main.size:0,94x75". Tables in window_scene.cpp
// have the names of messages and the kinds of windows. Colours are letters: r g b k w, s (silver), d (dark grey), n
// (navy), l (light grey).
void Act(const std::string& words);
Script& TheScript(); // for words of the test's own, until its scene ends
struct Ink {
  COLORREF colour;
};
template <> Ink Told<Ink>(std::istream& in);
template <> HWND Told<HWND>(std::istream& in);
template <> DisplayWindow* Told<DisplayWindow*>(std::istream& in);
template <> PixelRect Told<PixelRect>(std::istream& in);
template <> POINT Told<POINT>(std::istream& in);
void Tell(const std::string& answer);
// The entries of those events, or all for "", and all answers to questions. The log is empty then.
std::string Heard(const std::string& events = "");

struct Step {
  const char *words, *brings; // what the calls send at once, and behind a bar what taking all messages brings
};
void Walk(const std::string& events, std::initializer_list<Step> steps);

HWND Named(const std::string& title);
// A frame called "main", active and alone; its client area lies from 103, 122 to 303, 322.
HWND ShowMain();
// Shown. Its messages are not in the log.
HWND ShowControl(const char* className, const char* title, DWORD style, const PixelRect& place, HWND parent, int id);

// Runs instead of the default for a message of any window; an answer of its own ends it there.
using Handler = std::function<LRESULT(HWND window, WPARAM wParam, LPARAM lParam)>;
void Answer(UINT message, Handler handler);

void Drain(); // takes and dispatches all messages that there are

// The place of a client point on the screen; the colour that stands there.
POINT OnScreen(HWND window, int x, int y);
COLORREF ColourAt(const POINT& point);
// How many pixels of the rectangle of the screen have the colour that it shows for this one.
int64_t Count(const PixelRect& where, COLORREF colour);

class OneWindow : public ::testing::Test {
protected:
  WindowScene scene;
  HWND main = ShowMain();
  DisplayWindow* shown = MemoryWindowTitled("main");
};

} // namespace framereel
