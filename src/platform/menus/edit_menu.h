// The toolkit's own menu: Cut, Copy and Paste, for whoever is their target now.
//
// The application gives the texts, then has the menu made on the bar that it has set; the edit fields do the rest.
#pragma once

#include "platform/menus/menu_records.h"
#include "platform/records/edit_target.h"

namespace framereel {

// Texts are copied; letters are as in SetItemMnemonic and SetItemShortcut.
// Of titles: 0 of the menu behind which the Edit menu goes, 1 its own.
void SetEditTitle(uint16_t index, uint8_t mnemonic, const char* text);
// Of items: 0 Cut, 1 Copy, 2 Paste.
void SetEditItem(uint16_t index, uint8_t shortcut, uint8_t mnemonic, const char* text);
// The Edit menu's title, or null before it has one.
const char* EditMenuTitle();

// Makes the items of the mask, of EditCommand, in the Edit menu of the bar in force, at its front and disabled; those
// that were there before go. A bar without an Edit menu gets one. Without a bar there are none.
void BuildEditMenu(uint16_t mask);
bool IsEditItem(const MenuItem* item); // one of the three; null is none

// Another target, null for none; the one before is copied to `before` unless that is null. Each is told when it comes
// and goes.
void SetEditTarget(const EditTarget* target, EditTarget* before);
// Which items can be chosen, of EditCommand; kept also for items that are not there.
void SetEditEnabled(uint16_t mask);
uint16_t GetEditEnabled();

void EditMenuStartUp();
void EditMenuShutDown();

} // namespace framereel
