// The first frame of an animation: the whole of it, as colour indices.
#pragma once

#include "recorder/engine/recorder_state.h"

namespace framereel {

// Fills previousFrame and workFrame from the grabbed screen; the dirty rectangle is the whole frame. Answers true if a
// pixel has captureTransparent, which only a screen of 256 colours can have: the frame must then not declare that index
// transparent.
bool FirstFrameConvert(RecorderState& recorder);

// Sets the dirty rectangle from edges in the frame's own coordinates, right and bottom one past the last pixel.
void SetDirtyRect(RecorderState& recorder, int32_t left, int32_t top, int32_t right, int32_t bottom);
bool NothingIsDirty(const RecorderState& recorder);

} // namespace framereel
