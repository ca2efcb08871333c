// Window classes: what windows of one name have in common. Internal to the layer.
#pragma once

#include "win32/windows/window.h"

namespace framereel {

WindowClass* ClassNamed(const char* name); // null when there is none

} // namespace framereel
