// The platform calls for menus.
//
// A menu is a list of items. It is the bar of a window, the popup of an item, or a window's system menu. In an item's
// text "&" stands before the letter that picks it ("&&" is the sign itself), and a tab before the name of its keys,
// which is shown at the right; to act on those keys is the program's business.
//
// Press, drag and release, clicks, and the keyboard (Alt, F10, Alt and a letter, Alt and Space for the system menu;
// then arrows, letters, Return, Escape) work in a loop of this layer's, begun by SC_MOUSEMENU and SC_KEYMENU. Whatever
// runs meanwhile may change or destroy menus, those that are open too: they are shown as they are now, and what is gone
// closes. The choice is posted once all is closed: WM_COMMAND, from the system menu WM_SYSCOMMAND.
//
// Failure: a menu that is null or has been destroyed, and an item that is not there, make a call do nothing and answer
// FALSE.
#pragma once

#include "win32/win32_types.h"

inline constexpr UINT MF_GRAYED = 1; // cannot be chosen
inline constexpr UINT MF_CHECKED = 8;
inline constexpr UINT MF_POPUP = 0x10; // it opens a menu, which takes the place of the id
inline constexpr UINT MF_SEPARATOR = 0x800;
inline constexpr UINT MF_BYPOSITION = 0x400; // an item is named by its position from 0, else by its id

HMENU CreateMenu();      // to be a bar
HMENU CreatePopupMenu(); // to be the popup of an item
// It goes from all windows and items that have it. The popups of its items stay, and so does a system menu.
BOOL DestroyMenu(HMENU menu);

// Makes it the bar of a top-level window that has a caption, null for none. An empty one takes no room. The menu stays
// the caller's, beyond the window's end.
BOOL SetMenu(HWND window, HMENU menu);
// Shows what has become of a window's bar, which other calls don't, and gives the client area the room that is left.
BOOL DrawMenuBar(HWND window);
// The window's system menu, or null when it has none; TRUE puts it back as it was made, and answers null.
HMENU GetSystemMenu(HWND window, BOOL revert);

int GetMenuItemCount(HMENU menu); // -1 for no menu
// `idOrPopup` is the item's id or, with MF_POPUP, its menu as a number. A null text is empty.
BOOL AppendMenuA(HMENU menu, UINT flags, uintptr_t idOrPopup, const char* text);
// The same ahead of an item.
BOOL InsertMenuA(HMENU menu, UINT item, UINT flags, uintptr_t idOrPopup, const char* text);
// The same in the place of an item.
BOOL ModifyMenuA(HMENU menu, UINT item, UINT flags, uintptr_t idOrPopup, const char* text);
// Takes an item out; `flags` is 0 or MF_BYPOSITION. DeleteMenu destroys its popup too.
BOOL RemoveMenu(HMENU menu, UINT item, UINT flags);
BOOL DeleteMenu(HMENU menu, UINT item, UINT flags);
