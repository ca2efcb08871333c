// The part of the screen that the task bar leaves free.
#pragma once

#include "core/geometry.h"

namespace framereel {

// The screen without the task bar. True when that is not what the main window's record holds; what it holds is changed
// in windows/display_change.h.
bool QueryUsableArea(Rect* usable);

} // namespace framereel
