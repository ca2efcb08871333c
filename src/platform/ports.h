// Ports: what can be drawn into or copied from, and which one is current.
//
// The rest of the program never sees a device context but through the current Port. After a change of the Port nothing
// of the last one is left selected. Offscreens, one kind of Port, stand in bitmaps.h.
#pragma once

#include <cstdint>

#include "win32/win32.h"

namespace framereel {

struct Offscreen;

enum PortKind : uint16_t { kPortOffscreen = 2, kPortScreen = 6 };

// The head of everything that can be the current Port.
struct Port {
  uint16_t kind;
  uint8_t colour; // 0 for a plain 1-bit mask, else 1
};

// Makes the screen context, the memory contexts and the ScreenPort; false when there is no display. PortsShutDown
// gives all of it back.
bool PortsStartUp();
void PortsShutDown();

const Port* ScreenPort(); // the whole screen; coordinates are screen coordinates

void SetPortScreen();
void SetPortOffscreen(Offscreen* offscreen);
void ReleasePort(); // nothing is current
const Port* CurrentPort();
// The context of the current Port, for those who call the platform's drawing themselves; null when there is none.
HDC CurrentContext();

// The contexts that bitmaps.cpp works with, made at start-up.
HDC ScreenContext();
HDC SourceContext(); // holds an Offscreen while pixels are copied out of it

} // namespace framereel
