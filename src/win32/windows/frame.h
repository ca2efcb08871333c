// The frame round windows: its parts and its look. Internal to the layer.
#pragma once

#include "win32/windows/window.h"

namespace framereel {

void PaintFrame(HWND window);
// The frame's thickness by style: the client area of a window of that place.
PixelRect ClientInside(const Win32Window& window, const PixelRect& place);
int HitTest(const Win32Window& window, int32_t x, int32_t y);
// The part of a frame that HT... names, on the screen; empty when the window has none.
PixelRect FramePart(const Win32Window& window, int hit);

} // namespace framereel
