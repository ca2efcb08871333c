// What a program on a terminal has to see to before its own work: the streams that the caller handed it, and its exit
// status.
#pragma once

namespace framereel {

// What the process answers its caller with.
enum ExitStatus : int { kExitDone = 0, kExitFailed = 1, kExitUsage = 2 };

// A descriptor from 0 to 2 that the caller has closed would be given to the display or a file, and messages would go
// there. One that nothing can be written to takes its place.
void FillStandardDescriptors();

// What was printed is on standard output only if all of it could be written.
bool StandardOutputIsWritten();

} // namespace framereel
