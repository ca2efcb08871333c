// The class "listbox". Internal to the layer.
#pragma once

#include "win32/win32_types.h"

namespace framereel {

LRESULT ListBoxProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

} // namespace framereel
