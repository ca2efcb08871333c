// Menus as records: the system menu of each window, and changing items. Internal to the layer.
#pragma once

#include "win32/win32_menus.h"

namespace framereel {

// Runs the window's system menu, in which what cannot be done with it now is grey, and posts the choice.
void RunSystemMenu(HWND window, bool byKeyboard);

} // namespace framereel
