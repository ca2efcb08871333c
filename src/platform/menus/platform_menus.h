// The platform's menus, made anew from the toolkit's whenever these change; and the bar that the main window has.
//
// A menu titled "Apple" is not on the bar: its items stand at the end of the main window's system menu, behind a
// separator.
#pragma once

#include "platform/menus/menu_records.h"

namespace framereel {

// Makes it the main window's bar; null for none.
void SetMenuBar(MenuBar* bar);
MenuBar* CurrentMenuBar();

// An item of the menu has changed, or its own title or state.
void RefreshMenu(Menu* menu);
// The menu has come onto its bar.
void ShowOnBar(Menu* menu);
// The menu, which is on the bar no more, goes from what the platform shows.
void TakeFromBar(MenuBar* bar, Menu* menu);

// Draws the bar if something on it has changed; the event loop calls it at the start of each pass.
void RedrawMenuBar();

void PlatformMenusStartUp();

} // namespace framereel
