// Window classes: what windows of one name have in common. Internal to the layer.
#pragma once

#include "win32/win32_windows.h"
#include "win32/windows/window.h"

namespace framereel {

WindowClass* ClassNamed(const char* name); // null when there is none

// The class that the system brings under the name; null when it brings none. Which ones there are is known where the
// program is linked: dialogs/system_classes.cpp, in a room above this one, says it.
const WNDCLASSA* SystemClassNamed(const char* name);

} // namespace framereel
