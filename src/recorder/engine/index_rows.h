// A grabbed row of any format as colour indices: the one place that knows what a pixel looks like.
#pragma once

#include <cstdint>

#include "recorder/engine/recorder_state.h"

namespace framereel {

// Row y of the grabbed image, counted from the top, as frameWidth indices.
void IndexRow(RecorderState& recorder, int32_t y, uint8_t* indices);

} // namespace framereel
