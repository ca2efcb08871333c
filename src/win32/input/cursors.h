// Cursors and icons that can be loaded, and which one the pointer shows over our windows. Internal to the layer.
#pragma once

#include "win32/win32_types.h"

namespace framereel {

void ShowPointerFor(HWND window, int hit); // the pointer is over this window, at HT... of it

} // namespace framereel
