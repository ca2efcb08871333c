// What the display is, as last read: its size and depth, and whether it has colour. What the task bar leaves free of it
// stands in usable_area.h.
#pragma once

#include <cstdint>

namespace framereel {

// There is no palette of the application's own: NUMRESERVED is SIZEPALETTE (GetDeviceCaps), no entry is free for it.
struct DisplayCaps {
  uint16_t screenPlanes, screenPlaneBits; // as the device tells them
  uint16_t screenDepth;                   // bits per pixel: 1 on a monochrome display, 4 on one of 16 colours
  bool screenHasColour;
  int16_t screenWidth, screenHeight; // pixels
};

// Reads the display; sends change code 2 when depth or colour are not what they were, and at the first call. The main
// window is the current Port then, and afterwards.
void ReadDisplayCaps();
const DisplayCaps& TheDisplayCaps();
// The next reading counts as the first.
void ForgetDisplayCaps();

// True once the connection to the display has broken; nothing can be read or shown from then on.
bool ScreenIsLost();

} // namespace framereel
