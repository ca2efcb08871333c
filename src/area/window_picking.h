// Picking a window of any program: a line of rushing stripes jumps from window to window under the pointer. The click
// that takes the window's rectangle is the selection's (selection.h).
#pragma once

#include "area/area_record.h"
#include "win32/win32_types.h"

namespace framereel {

// The deepest window that is seen at a point of the screen, children before parents, as far as its parents show it:
// its rectangle on the screen, with numbers beyond 16 bits cut. False, and nothing written, where there is none.
// `window` gets which one it is, if it is not null.
bool FindWindowAt(int32_t x, int32_t y, Rect* picked, HWND* window = nullptr);

// The outline follows the pointer from now on.
void WindowPickBegin(AreaState& area);
// Takes the outline off the screen; while it follows the pointer it comes back within 17 ms. It needs no memory.
void WindowPickHide(AreaState& area);
// The outline follows no more, and goes. Does nothing if none does.
void WindowPickEnd(AreaState& area);

} // namespace framereel
