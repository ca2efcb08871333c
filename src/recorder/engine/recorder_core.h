// The spine of the engine: one frame, from the moment that it is asked for to bytes in the stream.
//
//   RecorderCaptureFrame     guards, and begins the animation at its first frame
//     ProcessFrame           the road of a frame
//       GrabScreen                            the screen's pixels
//       FirstFrameConvert, NextFrameConvert   to colour indices, and the changed rectangle
//       ReduceFrame, OverlayBorder            on that rectangle
//       WriteFrame                            into the stream
//
// An animation exists from its first frame until RecorderReset. It has one colour table, one pixel layout, one area and
// one recording size, all fixed at the first frame.
#pragma once

#include "recorder/engine/recorder_state.h"

namespace framereel {

// Makes the record ready: nothing recorded, the screen's format detected and the panel told if it cannot be recorded.
// The objects handed over stay the caller's and live as long as the record. Fill captureArea, and
// ownerName if wanted, before the first frame.
void RecorderSetUp(RecorderState& recorder, AnimationStream* stream, GifWriter* gif, const RecordingOptions* options,
                   const RecorderPanel& panel = {});
// Releases what the record holds. The stream stays.
void RecorderTearDown(RecorderState& recorder);

// Takes one frame; `grab` is a single frame at the user's request. Does nothing while there can be no frames
// (RecorderCheckScreen), or inside another capture. A frame in which nothing changed changes neither frameCount nor the
// stream.
void RecorderCaptureFrame(RecorderState& recorder, bool grab);

// The next frames show the screen from there on, in screen pixels; their size stays. All of the area lies on the
// screen, or the user is told as when the screen becomes smaller.
void RecorderMoveArea(RecorderState& recorder, int16_t left, int16_t top);

// Ends the animation, if there is one: the next frame begins another. The stream is the caller's to clear.
void RecorderReset(RecorderState& recorder);

} // namespace framereel
