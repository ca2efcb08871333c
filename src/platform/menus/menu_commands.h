// From a choice in a menu, or from the keys of an item, to the item's function.
#pragma once

#include "platform/menus/menu_records.h"
#include "platform/records/input_events.h"

namespace framereel {

// The menu or the item with the id: for an item both, for a menu itself alone, null for what is not found. The last
// menu is looked at first.
void FindMenuItem(const MenuBar* bar, uint32_t id, Menu** menu, MenuItem** item);

// A choice in the bar or the system menu. It ends an edit session, unless it is Cut, Copy or Paste by its letter.
void MenuCommand(uint32_t id);
// The menu key with a letter: whether an item has taken it. The first one that has the letter does; greyed, it beeps.
bool MenuShortcut(const KeyEvent& event);

void MenuCommandsStartUp();

} // namespace framereel
