// The system menu of each window. Internal to the layer.
#pragma once

#include "win32/win32_menus.h"

namespace framereel {

// Null for a window whose style has none. It stays the same menu as long as the window lives, whatever it is put back
// to.
HMENU SystemMenuOf(HWND window);
// Greys what cannot be done with the window as it is.
void GreySystemMenu(HWND window);

} // namespace framereel
