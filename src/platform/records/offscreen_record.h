// The Offscreen, as a record. What is done with it stands in the room bitmaps.
#pragma once

#include <cstdint>

#include "platform/records/port.h"
#include "win32/win32_types.h"

namespace framereel {

// A bitmap in the display's format that can be drawn into and copied from. A Port of kind kPortOffscreen.
struct Offscreen {
  Port port;
  int16_t width, height; // pixels
  HBITMAP bitmap;        // owned
};

} // namespace framereel
