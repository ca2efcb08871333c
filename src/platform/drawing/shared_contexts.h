// The device contexts that are made at start-up: the screen's, and those of memory that bitmaps are selected into.
//
// What is drawn goes through the current Port (ports.h), which takes one of these or a window's own.
#pragma once

#include "win32/win32_types.h"

namespace framereel {

// False when there is no display. SharedContextsShutDown gives all of them back.
bool SharedContextsStartUp();
void SharedContextsShutDown();

HDC ScreenContext(); // the whole screen, and what is asked about the device
HDC MemoryContext(); // holds the Offscreen that is the current Port
HDC SourceContext(); // holds an Offscreen while pixels are copied out of it

} // namespace framereel
