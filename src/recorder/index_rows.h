// A grabbed row of any format as colour indices: the one place that knows what a pixel looks like.
#pragma once

#include <cstdint>

#include "recorder/recorder_state.h"

namespace framereel {

// How many rows ReadGrabRows brings at a time, so that they fit into the processor's first cache.
int32_t RowsPerBand(const GrabPipeline& grab);

// Row y of the grabbed image, counted from the top, as frameWidth indices. ReadGrabRows has brought it.
void IndexRow(const RecorderState& recorder, int32_t y, uint8_t* indices);

} // namespace framereel
