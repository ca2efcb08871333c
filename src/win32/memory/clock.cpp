// The clock of the desktop in memory: it stands still until somebody sleeps, and the script runs as it passes.
#include "win32/memory/memory_display.h"

namespace framereel {

uint32_t DisplayTick() {
  return TheMemoryDisplay().tick;
}

void DisplaySleep(uint32_t milliseconds) {
  MemoryDisplay& display = TheMemoryDisplay();
  const uint32_t wake = display.tick + milliseconds;
  // Differences, not order: the clock may wrap during a sleep.
  while (!display.script.empty() && int32_t(wake - display.script.front().tick) >= 0) {
    const MemoryEvent event = std::move(display.script.front());
    display.script.erase(display.script.begin());
    if (int32_t(event.tick - display.tick) > 0) display.tick = event.tick;
    event.run();
  }
  display.tick = wake;
}

} // namespace framereel
