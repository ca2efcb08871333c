// The window procedure of all ChildWindows.
#pragma once

#include "win32/win32_types.h"

namespace framereel {

LRESULT ChildWindowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

} // namespace framereel
