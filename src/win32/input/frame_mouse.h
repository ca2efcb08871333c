// What the mouse does on a frame. Internal to the layer.
#pragma once

#include "win32/win32_types.h"

namespace framereel {

void PressFrame(HWND window, int hit, int32_t x, int32_t y); // the mouse goes down on it
void DragWindow(HWND window, bool byKeyboard, int32_t x, int32_t y);

} // namespace framereel
