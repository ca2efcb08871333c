// The signals that end a recording, and the wait that they end.
//
// They are blocked and taken one by one, so no handler runs and nothing is interrupted halfway. A signal that comes
// while a frame is taken is seen by the next wait.
#pragma once

#include <csignal>
#include <cstdint>

namespace framereel {

struct StopSignals {
  sigset_t watched; // those of SIGINT, SIGTERM and SIGHUP that were not ignored when the program began
  sigset_t before;  // the mask to go back to
};

// Begins to hold the signals back. Writing to a closed pipe or beyond a file size limit is an error from here on, and
// no longer the end of the process.
void StopSignalsBlock(StopSignals& signals);

// Waits; true as soon as one of the signals is there, also one from before. A wait of 0 only looks. Never ends early
// otherwise.
bool StopSignalsWait(StopSignals& signals, uint32_t milliseconds);

// Forgets what is pending, and lets the signals do their usual work again.
void StopSignalsRelease(StopSignals& signals);

} // namespace framereel
