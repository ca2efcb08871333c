// Which menus there are, and changing their items. Internal to the layer; the calls stand in win32_menus.h.
#pragma once

#include "win32/windows/menu_record.h"

namespace framereel {

bool IsMenu(HMENU menu); // has not been destroyed
void NoteChange(HMENU menu);
bool IsSeparator(const MenuEntry& item);
bool IsGreyed(const MenuEntry& item);

} // namespace framereel
