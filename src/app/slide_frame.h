// The main window's way in: from beyond the right edge of the screen to its resting place.
#pragma once

#include "core/geometry.h"
#include "core/timers.h"

namespace framereel {

// Moves the main window, from where it stands, until its outer corner is at the place on the screen that `target`
// answers, which is asked at each step, for the screen may change. Once it has come to rest, there or at
// SlideFrameCancel, `ended` is called, from a timer's function or from the one that cancels.
void SlideFrameStart(Point (*target)(void* argument), TimerFunction ended, void* argument);
// The window stays where it has got to.
void SlideFrameCancel();
bool SlideFrameIsRunning();

} // namespace framereel
