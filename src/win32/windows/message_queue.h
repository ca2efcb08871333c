// What waits to be taken: posted messages, and input that becomes a message then. Internal to the layer.
#pragma once

#include "win32/windows/window.h"

namespace framereel {

void Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool first);
// A move of the mouse takes the place of one that waits at the end.
void EnqueueInput(const DisplayEvent& event);
// The window is gone: nothing in the queue is for it any more.
void ForgetQueued(HWND window);

} // namespace framereel
