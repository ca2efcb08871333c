// A desktop in memory with the floors below the engine standing on it, and what a test does to it.
//
// Pixels, the pointer's picture, the clock and the script are the display's own: win32/memory/memory_display.h.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>

#include "platform/display/display_caps.h"
#include "platform/pump/engine_start.h"
#include "win32/memory/memory_display.h"

namespace framereel {

// There is one at a time.
struct Desktop {
  Desktop(int32_t width, int32_t height, int32_t depth) {
    MemoryDisplayReset(width, height, depth);
    EXPECT_TRUE(EngineStartUp());
  }
  ~Desktop() { EngineShutDown(); }
  Desktop(const Desktop&) = delete;

  // The user changes the mode, and the program hears of it. The screen is black then.
  void SetMode(int32_t width, int32_t height, int32_t depth) {
    MemoryDisplaySetMode(width, height, depth);
    ReadDisplayCaps();
  }
};

} // namespace framereel
