// How the records follow where the platform puts the windows: the messages that tell of places, frames and minimising.
#pragma once

#include "platform/records/window_records.h"
#include "win32/win32_windows.h"

namespace framereel {

// WM_NCCALCSIZE: lets the platform work out the client rectangle and learns the frame from it. `handle` is the
// platform's window, which a record may not have yet. Answers the platform's answer.
LRESULT ChildFrameChanged(ChildWindow* window, HWND handle, WPARAM wParam, LPARAM lParam);
LRESULT MainFrameChanged(MainWindow* main, HWND handle, WPARAM wParam, LPARAM lParam);
// WM_WINDOWPOSCHANGED: brings the record up to date. Resized and Moved run when it was not the program's own doing,
// with the record already right.
void ChildPlaceChanged(ChildWindow* window, const WINDOWPOS& place);
void MainPlaceChanged(MainWindow* main, const WINDOWPOS& place);

} // namespace framereel
