// The popup of a menu. Internal to the layer.
#pragma once

#include "win32/pixels/surface.h"
#include "win32/windows/menu_record.h"

namespace framereel {

// Shows the menu below the strip of the screen, or above it where there is no room below, and runs until one item is
// chosen or none will be. Answers the item's id, or 0. With `byKeyboard` the first item is marked. The owner gets
// WM_ENTERIDLE while nothing happens.
UINT ChooseFromMenu(HWND owner, const Win32Menu& menu, const PixelRect& strip, bool byKeyboard);

} // namespace framereel
