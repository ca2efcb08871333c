// A desktop in memory with the floors below the engine standing on it, and what a test does to it.
//
// Pixels, the pointer's picture, the clock and the script are the display's own: win32/memory/memory_display.h.
#pragma once

#include <cstdint>

namespace framereel {

// There is one at a time.
class Desktop {
public:
  Desktop(int32_t width, int32_t height, int32_t depth);
  ~Desktop();
  Desktop(const Desktop&) = delete;

  // The user changes the mode, and the program hears of it. The screen is black then.
  void SetMode(int32_t width, int32_t height, int32_t depth);
};

} // namespace framereel
