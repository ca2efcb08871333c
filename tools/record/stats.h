// The line of figures for programs to read, and what the process has used.
#pragma once

#include <cstdint>
#include <cstdio>

#include "record/recording.h"

namespace framereel {

// What the process has used so far.
struct Usage {
  int64_t cpuMicroseconds; // user and system together
  int64_t peakKilobytes;   // the most memory that it had at any moment
};

Usage ReadUsage();

// The line that --stats asks for, an object of JSON with plain numbers. `before` and `after` enclose the recording;
// `bytes` is what the file holds.
void WriteStats(FILE* to, const Recording& recording, uint64_t bytes, const Usage& before, const Usage& after);

} // namespace framereel
