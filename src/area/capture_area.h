// The rectangle that is recorded: from two corners to whole blocks of the recording size.
#pragma once

#include "area/area_record.h"

namespace framereel {

// The rectangle grown by a pixel on every side, where 16 bits reach: a line runs just outside what is recorded.
Rect OutlineOf(const Rect& r);
// That of the capture area.
Rect AreaOutline(const AreaState& area);

// From the four corner fields, in any order, to the aligned capture area.
void AreaFromCorners(AreaState& area);
// The area of the default corners, which may reach beyond the screen. The line is not moved along.
void AreaSetDefault(AreaState& area);
// Aligns the area as it is to the recording size. The line is not moved along.
void AlignCaptureArea(AreaState& area);

} // namespace framereel
