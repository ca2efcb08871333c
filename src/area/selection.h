// Choosing the area: a window that shows nothing but takes every mouse and key event of the whole screen, a crosshair,
// and a rubber band that follows the mouse or the arrow keys while the read-outs count along.
#pragma once

#include "area/area.h"

namespace framereel {

// Puts the backdrop up: the next press on the screen begins the area.
void SelectionBegin(AreaState& area);
// Takes it down; the area is what the last step left. Without a selection it does nothing.
void SelectionEnd(AreaState& area);

} // namespace framereel
