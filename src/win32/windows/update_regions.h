// What of windows is to be painted anew. Internal to the layer.
#pragma once

#include "win32/windows/window.h"

namespace framereel {

PixelRect ClientBounds(const Win32Window& window); // in client coordinates
// A rectangle of the client area, or all of it for null, cut to it.
PixelRect ClientPart(const Win32Window& window, const RECT* rect);
// In client coordinates, already cut to what can be seen; the window alone, not its children.
void InvalidateOwn(HWND window, const Region& region, bool erase);
void InvalidateFrame(HWND window);
// The window and its children are to paint anew what can be seen of them in the region.
void Expose(HWND window, const Region& region);

} // namespace framereel
