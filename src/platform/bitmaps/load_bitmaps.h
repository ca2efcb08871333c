// Offscreens from the program's bitmap resources.
#pragma once

#include <cstdint>

#include "platform/records/offscreen_record.h"

namespace framereel {

// A bitmap resource as it stands; null when there is none.
Offscreen* LoadOffscreen(uint16_t id);
Offscreen* LoadPicture(uint16_t id); // of the pictures, which the toolkit counts from 0

} // namespace framereel
