// What can be seen of a window. Internal to the layer.
#pragma once

#include "win32/windows/window.h"

namespace framereel {

// The pixels of the whole window, its children's among them, that parents and windows above leave.
Region VisibleWindow(const Win32Window& window);
// The pixels of its client area that it may draw on; without its children when its style says so.
Region VisibleClient(const Win32Window& window);
Region VisibleFrame(const Win32Window& window);

} // namespace framereel
