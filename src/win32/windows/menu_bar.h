// The bar of menus in a frame: where its titles stand, and its look. Internal to the layer; what the user does with it
// stands in menus/menu_tracking.h.
#pragma once

#include <vector>

#include "win32/windows/window.h"

namespace framereel {

// Whether the frame has a bar now: a window with a caption that is not minimised, and a menu that is not empty.
bool HasMenuBar(const Win32Window& window);
// How high the bar is in a frame with so much room for it: titles without room go on in a further row. 0 without a bar.
int32_t MenuBarHeight(const Win32Window& window, int32_t width);
// Where each title stands in a bar at that place.
std::vector<PixelRect> MenuTitlePlaces(const Win32Window& window, const PixelRect& bar);
void DrawMenuTitles(HDC context, const Win32Window& window, const PixelRect& bar);

} // namespace framereel
