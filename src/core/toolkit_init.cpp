// What has to stand before anything else, in its order.
#include "core/toolkit_init.h"

#include "core/app_strings.h"
#include "core/memory.h"
#include "core/notices.h"
#include "core/temporary_blocks.h"
#include "core/timers.h"

namespace framereel {

// The scratch buffers, the conversion tables and the list of timers need no step: they are right as they are
// loaded.
void ToolkitInit() {
  static bool done = false;
  if (done) return;
  done = true;
  MemoryStartUp(TimerClearAll);
  TemporaryBlocksStartUp();
  NoticesStartUp();
  AppAlertString(0); // the texts for exhausted memory, loaded while there is some
}

} // namespace framereel
