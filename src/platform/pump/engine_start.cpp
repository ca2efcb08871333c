// The order of starting up.
#include "platform/pump/engine_start.h"

#include "core/toolkit_init.h"
#include "platform/bitmaps/bitmaps.h"
#include "platform/display/display_caps.h"
#include "platform/drawing/ports.h"
#include "win32/pixels/display.h"

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
