// The titles from which menus open: those of a window's bar, by number from 0, and the system menu's button as
// kSystemMenuTitle. Internal to the layer.
#pragma once

#include "win32/windows/window.h"

namespace framereel {

int32_t CountTitles(const Win32Window& owner); // of the bar
bool HasTitle(HWND owner, int32_t title);
// The menu that a title opens now; null for none.
HMENU MenuOfTitle(HWND owner, int32_t title);
// On the screen; the title must be there.
PixelRect PlaceOfTitle(HWND owner, int32_t title);

// Each of these answers kNoTitle when there is none.
int32_t TitleAt(HWND owner, int32_t x, int32_t y);
int32_t TitleOfLetter(HWND owner, uint8_t letter);

// The next one to the left or right of one that is there, going round at the ends.
int32_t TitleBeside(HWND owner, int32_t title, int32_t by);

// The one that is marked in the window whose menu is open.
int32_t MarkedTitle();
void MarkTitle(HWND owner, int32_t title);

} // namespace framereel
