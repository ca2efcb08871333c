// Start-up and teardown of the platform floor for the program with its windows, in their order. A process that does
// without windows uses EngineStartUp (engine_start.h) in its place.
#pragma once

#include "win32/win32_types.h"

namespace framereel {

// From the toolkit's core to the main window on the screen and the View classes. The toolkit has handed down its
// ViewCalls (view_record.h) before. The arguments are those of the process's entry; the program reads no command line.
// Only the first call does anything, until PlatformShutdown; it answers false when there is no display or no window to
// be had, and then nothing is left behind.
bool PlatformInit(HINSTANCE instance, HINSTANCE previousInstance, const char* commandLine, int showCommand);
// Takes down all that PlatformInit and the windows since then have made. No method of a window is called, but Views are
// destroyed as always.
void PlatformShutdown();

} // namespace framereel
