// What is drawn into a frame besides the screen's own pixels: the mouse pointer and the border line.
#pragma once

#include <cstdint>

#include "recorder/engine/recorder_state.h"

namespace framereel {

// Draws the mouse pointer into the current Port, whose top left pixel stands at left, top on the screen. A pointer that
// cannot be had is left out.
void OverlayCursor(int32_t left, int32_t top);

// Draws a line of one pixel around the output image into workFrame: transparent on a later frame with transparency, so
// that the first frame's black line shows through, else black. The dirty rectangle stays.
void OverlayBorder(RecorderState& recorder, bool transparent, bool later);

} // namespace framereel
