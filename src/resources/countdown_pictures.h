// What the screen shows ahead of a recording and behind it: the digits of the countdown and the pause sign, black on
// white inside a striped border. "#" is black.
#pragma once

#include <cstdint>

namespace framereel {

inline constexpr int32_t kCountdownWidth = 64, kCountdownHeight = 63; // pixels

extern const char* const kDigitOne[kCountdownHeight];
extern const char* const kDigitTwo[kCountdownHeight];
extern const char* const kDigitThree[kCountdownHeight];
extern const char* const kPauseSign[kCountdownHeight];

} // namespace framereel
