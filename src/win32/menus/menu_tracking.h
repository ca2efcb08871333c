// The time in which a menu is open: the user's way through titles, popups and items. Internal to the layer.
//
// The mouse and all keys are the menu's own meanwhile; whatever else happens is told in win32_menus.h. There is one
// open menu at a time.
#pragma once

#include "win32/win32_types.h"

namespace framereel {

// A press on the system menu's button (HTSYSMENU) or at a point of the bar (HTMENU).
void RunMenuByMouse(HWND window, int hit, int32_t x, int32_t y);
// SC_KEYMENU: a letter opens the title that has it, VK_SPACE the system menu; 0 only marks the bar's first title.
void RunMenuByKey(HWND window, uint8_t letter);
// Closes the open menu, if there is one; nothing is chosen.
void EndMenu();

} // namespace framereel
