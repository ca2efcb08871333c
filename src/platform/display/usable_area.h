// The part of the screen that the task bar leaves free.
#pragma once

#include "core/geometry.h"

namespace framereel {

// The screen without the task bar. True when that is not what the main window's record holds; what it holds is changed
// in windows/display_change.h.
bool QueryUsableArea(Rect* usable);

// newShell: there may be a task bar, and it can be asked for.
void UsableAreaStartUp(bool newShell);
bool HasNewShell();

} // namespace framereel
