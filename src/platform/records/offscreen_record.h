// The Offscreen, as a record. What is done with it stands in the room bitmaps.
#pragma once

#include <cstdint>

#include "platform/records/port.h"
#include "win32/win32.h"

namespace framereel {

// A bitmap in the display's format that can be drawn into and copied from. A Port of kind kPortOffscreen.
struct Offscreen {
  Port port;
  int16_t width, height;   // pixels
  uint16_t depth;          // bits per pixel
  uint32_t byteSize;       // an estimate, for the program's own use
  HBITMAP bitmap;          // owned
  uint16_t colourCount;    // number of colours that it was made with
  uint16_t colourCapacity; // 1 << depth, cut to 16 bits: 0 from 16 bits up
};

} // namespace framereel
