// The last stretch of a frame: how long it is to stand, and the hand-over to the GIF side.
#pragma once

#include <cstdint>

#include "gif/smallest_frames.h"
#include "recorder/engine/recorder_state.h"

namespace framereel {

// Writes the dirty rectangle of workFrame, which is not empty, as a frame. Its delay is the time since the frame
// written before it; a grabbed frame has the nominal delay instead. The clock is read here, behind all other work on
// the frame, and only written frames move it.
void WriteFrame(RecorderState& recorder, bool transparent, bool grab);

// The dirty rectangle of workFrame, which is not empty, on the logical screen.
FramePixels PixelsOfFrame(const RecorderState& recorder, bool transparent);

// Appends the frame's records with a delay in ms, which the file holds in hundredths of a second, cut, in 16 bits.
void EmitFrame(RecorderState& recorder, bool transparent, int32_t delay);

} // namespace framereel
