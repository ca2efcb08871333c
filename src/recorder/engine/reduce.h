// Recording at a reduced size: the changed rectangle is shrunk in place, in workFrame, behind the comparison.
//
// The result is an average, so it is always in cube indices with 216 as the transparent one, even on a palette screen.
#pragma once

#include <cstdint>

#include "recorder/engine/recorder_state.h"

namespace framereel {

// Shrinks the dirty rectangle, widened to whole blocks, and turns it into output coordinates: frameLeft and frameTop
// plus the place in the reduced image. Transparent pixels of a block take part with their colour from previousFrame,
// unless all of the output pixel's are transparent. frameWidth and frameHeight are multiples of the denominator. At
// 100 %, or with an empty rectangle, it does nothing.
void ReduceFrame(RecorderState& recorder);

} // namespace framereel
