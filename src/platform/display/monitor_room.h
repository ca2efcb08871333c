// The monitors on which windows of the program come up.
#pragma once

#include "core/geometry.h"
#include "win32/win32_types.h"

namespace framereel {

// A monitor, and what the task bar leaves free of it, in screen coordinates.
struct MonitorRoom {
  Rect monitor, free; // the whole monitor where nothing is free
  bool isOnly;        // it shows the whole screen
};

// The one that the window is on or nearest to; for null the primary one.
MonitorRoom RoomOfMonitor(HWND window);

} // namespace framereel
