// The clock of the desktop in memory: it stands still until somebody sleeps, and the script runs as it passes.
#include "win32/memory/memory_display.h"

namespace framereel {

uint32_t DisplayTick() {
  return TheMemoryDisplay().tick;
}

void DisplaySleep(uint32_t milliseconds) {
  MemoryDisplay& display = TheMemoryDisplay();
  const uint32_t start = display.tick;
  // Differences, not order: the clock may wrap during a sleep. An event that is past is due as well.
  const auto isDue = [&display, start, milliseconds](uint32_t tick) {
    return int32_t(tick - display.tick) <= 0 || tick - start <= milliseconds;
  };
  while (!display.script.empty() && isDue(display.script.front().tick)) {
    const MemoryEvent event = std::move(display.script.front());
    display.script.erase(display.script.begin());
    if (int32_t(event.tick - display.tick) > 0) display.tick = event.tick;
    event.run();
  }
  // An event may have slept beyond it.
  if (display.tick - start < milliseconds) display.tick = start + milliseconds;
}

} // namespace framereel
