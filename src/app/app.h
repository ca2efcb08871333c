// The program as a whole: start here. main.cpp calls AppMain; AppRun sets the application up
// (application.h) and runs it.
#pragma once

#include "win32/win32_types.h"

namespace framereel {

// Runs the program on the display, until its user or a signal (end_signals.h) ends it; answers the exit code of the
// process. The arguments are those of the entry: the
// program's module, that of an instance before it (null), the command line, which it does not read, and how the main
// window is to be shown.
int AppMain(HINSTANCE instance, HINSTANCE previousInstance, const char* commandLine, int showCommand);

} // namespace framereel
