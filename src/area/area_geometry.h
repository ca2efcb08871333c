// The capture area's arithmetic: fitting it to whole blocks of a reduced recording.
//
// Plain rectangles, no windows: the selection on the screen and the command line use the same operations. The scales,
// and the size of what comes out, stand in recorder/engine/recording_scale.h.
#pragma once

#include <cstdint>

#include "core/geometry.h"

namespace framereel {

// Makes the span from low to high a multiple of `denominator`: grows it, low side first and then in turn, where there
// is room within lowest and highest; shrinks it, in the same order, where there is none. low is at most high, and
// denominator at least 1. A span that can't grow and is shorter than the denominator becomes empty: high equals low.
void AlignSpan(int16_t* low, int16_t* high, int16_t lowest, int16_t highest, int16_t denominator);

// The area in whole blocks of the recording size. It grows up to one pixel off the screen's edges, since its outline
// lies around it. At 100 % it stays as it is. A side that became empty holds no block: the area can't be recorded.
Rect AlignArea(const Rect& area, uint16_t recordingSize, int16_t screenWidth, int16_t screenHeight);

} // namespace framereel
