// The numbered strings that the program reads as resources: every text that the user sees, and a few settings.
#pragma once

#include <cstdint>

namespace framereel {

// The string with this number, for the whole run; null when there is none.
const char* FindStringResource(uint16_t id);

} // namespace framereel
