// Menu items: making them, changing them, putting them into menus.
//
// A menu of which no item can be chosen is greyed, and is itself again as soon as one can.
#pragma once

#include "platform/menus/menu_records.h"

namespace framereel {

// The text is copied. Enabled, unless it is "-".
MenuItem* NewMenuItem(const char* text);
MenuItem* NewSeparator();
// Takes it out of its menu first.
void FreeMenuItem(MenuItem* item);

// The letter is marked where it first stands in the text, in capitals or not; one that isn't there is not marked. 0:
// none.
void SetItemMnemonic(MenuItem* item, uint8_t letter);
// With the menu key (key_events.h); 0: none.
void SetItemShortcut(MenuItem* item, uint8_t letter);
void SetItemEnabled(MenuItem* item, bool enabled);
void SetItemFunction(MenuItem* item, MenuFunction function, void* argument);

// An item that is in a menu already leaves that first.
void AddMenuItem(Menu* menu, MenuItem* item);
// Behind an item of that menu; null: at the front.
void InsertMenuItemAfter(Menu* menu, const MenuItem* after, MenuItem* item);
// Out of its menu, if it is in one.
void RemoveMenuItem(MenuItem* item);

bool HasEnabledItem(const Menu* menu);

} // namespace framereel
