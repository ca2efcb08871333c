// The pixels of top-level windows and menus, and what of them is yet to be shown. Internal to the layer.
#pragma once

#include "win32/windows/window.h"

namespace framereel {

// Gives it pixels of that size, the old ones kept from the top left on. False when the display is lost, and then it has
// none.
bool ResizeSurface(ShownSurface* shown, int32_t width, int32_t height);
bool FitSurface(HWND topLevel);      // as large as the window; a cover has none, which is as it should be
void FreeShown(ShownSurface* shown); // its display window too
void NoteDamage(ShownSurface* shown, const PixelRect& part); // in the surface's coordinates
// Moves pixels within a window's surface: those of `to` come from dx, dy further left and up.
void CopyPixels(HWND window, const Region& to, int32_t dx, int32_t dy);
// What the pointer looks like over it; null leaves it as it is.
void ShowPointerOn(ShownSurface* shown, HCURSOR cursor);

} // namespace framereel
