// The order of starting up without windows.
#include "platform/pump/engine_start.h"

#include "core/toolkit_init.h"
#include "platform/bitmaps/offscreens.h"
#include "platform/display/display_caps.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/shared_contexts.h"
#include "win32/pixels/display.h"

namespace framereel {

bool EngineStartUp() {
  ToolkitInit();
  if (!SharedContextsStartUp()) {
    DisplayClose(); // it may have been lost just after it was opened
    return false;
  }
  DrawingStartUp();
  OffscreensStartUp();
  ReadDisplayCaps();
  return true;
}

void EngineShutDown() {
  OffscreensShutDown();
  ReleasePort();
  SharedContextsShutDown();
  DrawingShutDown();
  DisplayClose();
}

} // namespace framereel
