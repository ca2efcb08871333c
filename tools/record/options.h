// What the user of framereel-record asks for. arguments.h reads it; recording.h says what the lengths mean.
#pragma once

#include <cstdint>

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
  uint32_t window = 0;         // the number of the window to record; 0: none
  bool pick = false;           // the user clicks on it
  bool follow = false;         // the area goes with it
  uint32_t countdown = 0;      // seconds
  uint32_t milliseconds = 0;   // how long to record; 0: no such end
  uint32_t ticks = 0;          // how many ticks to take; 0: no such end
  uint32_t frames = 0;         // how many frames; 0: no such end
  const char* owner = nullptr; // the name in the comment; null: the user's. Points into the arguments
  const char* file = nullptr;  // "-" is standard output. Points into the arguments
  bool noClobber = false;
  bool quiet = false;
  bool stats = false;
};

// What the arguments come to.
enum class Request : uint8_t { kRecord, kListWindows, kHelp, kVersion, kRefused };

} // namespace framereel
