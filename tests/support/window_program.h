// The platform floor with its main window on a desktop in memory, and what a test needs to run it.
//
// The user and the other programs act through win32/memory/memory_windows.h.
#pragma once

#include <cstdint>

#include "platform/windows/child_window.h"
#include "platform/windows/window_geometry.h"
#include "platform/windows/window_list.h"

namespace framereel {

// There is one at a time. It starts with the program as the desktop's active one and the queue empty.
class WindowProgram {
public:
  WindowProgram(int32_t width = 640, int32_t height = 480, int32_t depth = 24, int32_t dotsPerInch = 0);
  ~WindowProgram();
  WindowProgram(const WindowProgram&) = delete;
};

// Passes of the event loop without waiting, until nothing is left in the queue.
void Settle();
// Passes of the event loop until the clock has gone on by so much at least.
void RunFor(uint32_t milliseconds);

// A shown window of 200 by 100 client pixels at 100, 100 in toolkit coordinates.
ChildWindow* OpenTestWindow(uint32_t flags);

// Where a place in the window, or in the main window's client area, is on the screen.
Point OnScreen(const ChildWindow* window, int16_t x, int16_t y);
Point OnScreenInMain(int16_t x, int16_t y);
// The user acts there, and the program takes it.
void MoveOver(const ChildWindow* window, int16_t x, int16_t y);
void Press(const ChildWindow* window, int16_t x, int16_t y, uint8_t button = 1);
void Release(uint8_t button = 1);
void Type(uint8_t virtualKey);
// Another program takes the keyboard, or ours gets it back.
void LeaveProgram();
void ReturnToProgram();

} // namespace framereel
