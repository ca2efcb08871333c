// The platform calls for menus.
#pragma once

#include "win32/win32_types.h"

inline constexpr UINT MF_GRAYED = 1;
inline constexpr UINT MF_CHECKED = 8;
inline constexpr UINT MF_SEPARATOR = 0x800;

// The window's system menu, or null when it has none; TRUE puts it back as it was made, and answers null.
HMENU GetSystemMenu(HWND window, BOOL revert);
// Another id, text ("&" before the letter that picks it, a tab before the name of its keys) and flags for the item with
// the id `item`. FALSE when there is no such item.
BOOL ModifyMenuA(HMENU menu, UINT item, UINT flags, UINT id, const char* text);
BOOL AppendMenuA(HMENU menu, UINT flags, UINT id, const char* text);
// Paints the window's frame again.
BOOL DrawMenuBar(HWND window);
