// The class "edit". Internal to the layer; win32_controls.h tells what it does.
#pragma once

#include "win32/win32_types.h"

namespace framereel {

LRESULT EditProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

} // namespace framereel
