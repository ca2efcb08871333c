// Where on the screen there is room for something new. Internal to the layer.
#pragma once

#include "win32/pixels/surface.h"

namespace framereel {

// The monitor that shows the middle of the place, the smallest of several, or is the nearest to it.
PixelRect MonitorOf(const PixelRect& place);
// What task bars leave free of that monitor; all of it where they leave nothing.
PixelRect RoomAround(const PixelRect& place);
// `length` pixels from the wished place on, brought into the room; its beginning can be seen in any case.
int32_t Within(int32_t wished, int32_t length, int32_t from, int32_t to);

} // namespace framereel
