// The order of starting up.
#include "platform/start_up.h"

#include "platform/bitmaps.h"
#include "platform/display_caps.h"
#include "platform/ports.h"
#include "toolkit/core/toolkit_init.h"
#include "win32/display.h"

namespace framereel {

bool EngineStartUp() {
  ToolkitInit();
  if (!PortsStartUp()) return false;
  BitmapsStartUp();
  ReadDisplayCaps();
  return true;
}

void EngineShutDown() {
  BitmapsShutDown();
  PortsShutDown();
  DisplayClose();
}

} // namespace framereel
