// What is drawn into a frame besides the screen's own pixels: the mouse pointer and the border line.
#pragma once

#include <cstdint>

#include "recorder/engine/recorder_state.h"

namespace framereel {

// The mouse pointer as it stands on the screen, of which the Port to be drawn on has its top left pixel at left, top.
// Without a place where there is none.
FramePointer LookAtCursor(int32_t left, int32_t top);
// Draws it into the current Port; it must still be the last one that was looked at.
void OverlayCursor(const FramePointer& pointer);

// Draws a line of one pixel around the output image into workFrame: transparent on a later frame with transparency, so
// that the first frame's black line shows through, else black. The dirty rectangle stays.
void OverlayBorder(RecorderState& recorder, bool transparent, bool later);

} // namespace framereel
