// The order of starting up.
#include "platform/start_up.h"

#include "core/toolkit_init.h"
#include "platform/bitmaps.h"
#include "platform/display_caps.h"
#include "platform/ports.h"
#include "win32/pixels/display.h"

namespace framereel {

bool EngineStartUp() {
  ToolkitInit();
  if (!PortsStartUp()) {
    DisplayClose(); // it may have been lost just after it was opened
    return false;
  }
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
