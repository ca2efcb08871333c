// The only door to the screen: the area's pixels as rows in the layout of a PixelFormat.
//
// A frame is one copy of the screen into an Offscreen in the display's own format, the pointer drawn into it, and a
// read of the Offscreen into a DibBuffer. The read goes in bands just ahead of the conversion, so that the rows are
// still in the processor's cache when they are turned into indices.
#pragma once

#include <cstdint>

#include "recorder/recorder_state.h"

namespace framereel {

// Makes the Offscreen and the buffer for frameWidth x frameHeight in screenFormat, releasing those of an earlier
// animation.
void PrepareGrabBuffers(RecorderState& recorder);
void FreeGrabBuffers(RecorderState& recorder);

// Copies the area from the screen and draws the pointer into it, if it is wanted. Rows are there after ReadGrabRows.
void GrabScreen(RecorderState& recorder);

// Makes the image's rows first to first + count - 1 readable; they lie on the frame.
void ReadGrabRows(RecorderState& recorder, int32_t first, int32_t count);

// The buffer's row that holds row y of the image, counted from the top. In format 6 its first `lead` pixels lie ahead
// of the frame.
inline const uint8_t* GrabRow(const GrabPipeline& grab, int32_t y) {
  return grab.topRow - static_cast<int64_t>(y) * grab.rowBytes;
}

} // namespace framereel
