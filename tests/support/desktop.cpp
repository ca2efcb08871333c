// See desktop.h.
#include "support/desktop.h"

#include <cstdlib>

#include "platform/display/display_caps.h"
#include "platform/pump/engine_start.h"
#include "win32/memory/memory_display.h"

namespace framereel {

Desktop::Desktop(int32_t width, int32_t height, int32_t depth) {
  MemoryDisplayReset(width, height, depth);
  if (!EngineStartUp()) std::abort();
}

Desktop::~Desktop() {
  EngineShutDown();
}

void Desktop::SetMode(int32_t width, int32_t height, int32_t depth) {
  MemoryDisplaySetMode(width, height, depth);
  ReadDisplayCaps();
}

} // namespace framereel
