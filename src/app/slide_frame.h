// The main window's way in: from beyond the right edge of the screen to its resting place.
#pragma once

#include "core/geometry.h"

namespace framereel {

// Moves the main window, from where it stands, until its outer corner is at the place on the screen. A slide under way
// gets the new target.
void SlideFrameStart(Point target);
// The window stays where it has got to.
void SlideFrameCancel();
bool SlideFrameIsRunning();

} // namespace framereel
