// Windows of the platform calls on a desktop in memory, and a log of the messages that they get.
//
// The user and the other programs act through win32/memory/memory_windows.h.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <string>

#include "win32/memory/memory_display.h"
#include "win32/win32.h"

namespace framereel {

// A desktop with nothing on it and the window classes "Log" (a background), "LogAnew" (painted anew on every new size),
// "LogOwn" (a context of its own), "LogBare" (no background) and "LogTwice" (asks for double clicks). There is one
// scene at a time.
class WindowScene {
public:
  WindowScene(int32_t width = 640, int32_t height = 480, int32_t depth = 24);
  ~WindowScene();
  WindowScene(const WindowScene&) = delete;
};

inline constexpr DWORD kFrameStyle = WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
inline constexpr DWORD kChildStyle = WS_CHILD | WS_CLIPSIBLINGS;

// Made and, but for the first form, shown without being activated. They are named in the log by their title.
HWND MakeWindow(const char* title, DWORD style, const PixelRect& place, HWND parent = nullptr,
                const char* className = "Log", DWORD extendedStyle = 0);
HWND ShowFrame(const char* title, const PixelRect& place, HWND owner = nullptr); // active, and the queue is empty
HWND ShowChild(const char* title, const PixelRect& place, HWND parent, DWORD style = kChildStyle);
// A control of the system's; its messages are not in the log.
HWND ShowControl(const char* className, const char* text, DWORD style, const PixelRect& place, HWND parent, int id);

// A window called "main", active and alone; its client area lies from 103, 122 to 303, 322.
inline constexpr PixelRect kMainPlace = {100, 100, 306, 325};
class OneWindow : public ::testing::Test {
protected:
  WindowScene scene;
  HWND main = ShowFrame("main", kMainPlace);
  DisplayWindow* shown = MemoryWindowTitled("main");
};

// Shown over the whole screen and all that is on it; its client area begins at -1999, -1999.
HWND ShowCover(HWND owner);

// What the messages of a kind told, as "title message; title message", in their order; the log is empty then. Messages
// are named as Win32 names them without WM_, followed by what matters of them: "main SIZE 0 94x75". Nothing but the
// messages in `names` if there are any.
std::string TakeLog(std::initializer_list<const char*> names = {});

// Runs instead of the default for a message of any window; an answer of its own ends it there.
using Handler = std::function<LRESULT(HWND window, WPARAM wParam, LPARAM lParam)>;
void Answer(UINT message, Handler handler);

// Takes and dispatches all messages that there are.
void Drain();
// The user types a key while others are held down. Nothing is taken.
void TypeWith(std::initializer_list<uint8_t> held, uint8_t key);
// The client area filled with the colour when it is painted.
void PaintIn(HWND window, COLORREF colour);

bool Lives(HWND window); // has not been destroyed
SIZE ClientSize(HWND window);

// The place of a client point on the screen; the colour that stands there.
POINT OnScreen(HWND window, int x, int y);
COLORREF ColourAt(int32_t x, int32_t y);

} // namespace framereel
