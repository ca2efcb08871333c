// The only door to the screen: the area's pixels as rows in the layout of a PixelFormat.
//
// A frame is one copy of the screen into an Offscreen in the display's own format, the pointer drawn into it, and a
// read of the Offscreen into a DibBuffer. The read goes in bands just ahead of whoever turns the rows into indices: a
// band stays in the processor's first cache, where a buffer of the whole frame would travel to memory and back.
//
// Only rows that may have changed are copied: those of which the display says so, and those in which the pointer stood
// or stands, unless it is the same at the same place. The Offscreen has all others from the frames before.
#pragma once

#include <cstdint>

#include "recorder/engine/recorder_state.h"

namespace framereel {

// Makes the Offscreen and the buffer for frameWidth x frameHeight in screenFormat, releasing those of an earlier
// animation. When memory ends for either, the program ends in FatalExit.
void PrepareGrabBuffers(RecorderState& recorder);
void FreeGrabBuffers(RecorderState& recorder);

// Copies the area from the screen and draws the pointer into it, if it is wanted. What lies off the screen is black.
// False when the display is lost: there are no rows then. Each grab is to be compared with the one before it.
bool GrabScreen(RecorderState& recorder);

// The rows that may differ from the grab before: none outside of the span, nor those of it that are not new.
struct RowSpan {
  int32_t top, bottom;
};
RowSpan NewRows(const RecorderState& recorder);
bool RowIsNew(const RecorderState& recorder, int32_t y);

// Row y of the grabbed image, counted from the top, in the format's layout; good until the next call. In format 6 its
// first `lead` pixels lie ahead of the frame. Rows are best asked for from the top down.
const uint8_t* GrabRow(RecorderState& recorder, int32_t y);

} // namespace framereel
