// Calling window procedures. Internal to the layer.
#pragma once

#include "win32/windows/window.h"

namespace framereel {

LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
void SendToTopLevels(UINT message, WPARAM wParam, LPARAM lParam);

} // namespace framereel
