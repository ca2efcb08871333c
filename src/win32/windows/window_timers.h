// What the message loop does for windows again and again: a caret blinks, a text scrolls while the mouse is held below
// it. Internal to the layer; no message comes of it.
#pragma once

#include "win32/windows/window.h"

namespace framereel {

// Has `run` called each `periodMs` from now on, whenever messages are asked for, until it is stopped or the window
// goes. A window has one timer of a function: starting it again lets its time begin anew.
void StartTimer(HWND window, void (*run)(HWND window), uint32_t periodMs);
void StopTimer(HWND window, void (*run)(HWND window));

// Runs what is due.
void RunTimers();

} // namespace framereel
