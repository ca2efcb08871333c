// The window procedure of the main window.
#pragma once

#include "win32/win32_types.h"

namespace framereel {

LRESULT MainWindowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

} // namespace framereel
