// Bars and their menus: making them, changing them, giving them back. A bar is inert until SetMenuBar
// (platform_menus.h).
#pragma once

#include "platform/menus/menu_records.h"

namespace framereel {

MenuBar* NewMenuBar();
// Takes it off the main window first, and frees its menus.
void FreeMenuBar(MenuBar* bar);

// The title is copied. One named "Apple" goes into the system menu (platform_menus.h).
Menu* NewMenu(const char* title);
// Takes it off its bar first, and frees its items.
void FreeMenu(Menu* menu);

// As SetItemMnemonic.
void SetMenuMnemonic(Menu* menu, uint8_t letter);
// Enabling waits while none of its items is enabled.
void SetMenuEnabled(Menu* menu, bool enabled);

// A menu that is on a bar already leaves that first.
void AddMenu(MenuBar* bar, Menu* menu);
// Behind a menu of that bar; null: at the front.
void InsertMenuAfter(MenuBar* bar, const Menu* after, Menu* menu);

// The bar's first menu of that title, or null.
Menu* MenuTitled(const MenuBar* bar, const char* title);

void MenusStartUp();
// Frees all there is.
void MenusShutDown();

} // namespace framereel
