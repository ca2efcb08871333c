// The last stretch of a frame: how long it is to stand, and the hand-over to the GIF side. There are two rules for
// delays.
//
// Measured: a frame has the time since the frame written before it, cut to hundredths of a second. The clock is read
// behind all other work on the frame, and only written frames move it. A grabbed frame has the nominal delay instead.
//
// True time: a frame has the time until the next one, or until the recording ends, so that the file plays as long as
// the recording took. Delays are written behind the frame, into its control record. What a delay is off the time is
// made good by the next one, so that no frame is shown half a hundredth off its time, and the sum is not off either.
#pragma once

#include <cstdint>

#include "gif/smallest_frames.h"
#include "recorder/engine/recorder_state.h"

namespace framereel {

// Writes the dirty rectangle of workFrame, which is not empty, as a frame.
void WriteFrame(RecorderState& recorder, bool transparent, bool grab);

// The dirty rectangle of workFrame, which is not empty, on the logical screen.
FramePixels PixelsOfFrame(const RecorderState& recorder, bool transparent);

// Appends the frame's records with a delay in ms, which the file holds in hundredths of a second, cut, in 16 bits.
void EmitFrame(RecorderState& recorder, bool transparent, int32_t delay);

// Tells the time for the rule of true time, in ms of ::GetTickCount: the frame last written stands until `now` at
// least, and one that is taken next begins then. Past the 655.35 s that a delay can hold, frames of one transparent
// pixel go on for it. To be called ahead of each tick and as the recording ends, with a stream that ends with a whole
// frame.
void TellFrameTime(RecorderState& recorder, uint32_t now);

} // namespace framereel
