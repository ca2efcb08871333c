// What the user of framereel-record asks for, read from its arguments.
//
// The options stand in one table in options.cpp: names, values, ranges, help. recording.h says what the lengths mean.
#pragma once

#include <cstdint>
#include <cstdio>

#include "core/refusal.h"
#include "recorder/engine/recorder_state.h"

namespace framereel {

// A rectangle as the user gave it, in screen pixels; it may lie off the screen.
struct WantedArea {
  int32_t left, top;     // -32768 to 32767
  int32_t width, height; // 1 to 32767; 0 when the whole screen is wanted
};

struct RecordOptions {
  RecordingOptions recording = {.trueTime = true};
  WantedArea area = {0, 0, 0, 0};
  uint32_t milliseconds = 0;   // how long to record; 0: no such end
  uint32_t ticks = 0;          // how many ticks to take; 0: no such end
  uint32_t frames = 0;         // how many frames; 0: no such end
  const char* owner = nullptr; // the name in the comment; null: the user's. Points into the arguments
  const char* file = nullptr;  // "-" is standard output. Points into the arguments
  bool quiet = false;
  bool stats = false;
};

enum class Request : uint8_t { kRecord, kHelp, kVersion, kRefused };

// Reads the arguments behind the program's name, up to a null. The same option twice: the last one holds. kRecord only
// when all that is asked for makes sense together; kRefused leaves the reason. `options` comes in with its defaults.
Request ReadOptions(const char* const* arguments, RecordOptions* options, Refusal& refusal);

void WriteHelp(FILE* to);
void WriteVersion(FILE* to);

} // namespace framereel
