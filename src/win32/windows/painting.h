// Who paints next, and with what. Internal to the layer.
#pragma once

#include "win32/windows/window.h"

namespace framereel {

// The next window, parents first, that has an update region; paints frames on the way. Null for none.
HWND WindowToPaint(HWND filter);
bool EraseBackground(HWND window, HDC context); // DefWindowProc's part of it

} // namespace framereel
