// The recording itself: when the engine takes its frames, and what makes it end.
//
// Tick n is due at n times the delay behind the first one, which comes at once. Time comes from a clock that is handed
// in: the command waits for signals, tests let the display in memory stand still.
#pragma once

#include <cstdint>

#include "recorder/engine/recorder_state.h"

namespace framereel {

// Milliseconds that wrap at 2^32, of the same clock as ::GetTickCount; and a wait, which answers true as soon as the
// user wants the recording to end. A wait of 0 only asks.
struct RecordingClock {
  void* owner = nullptr; // passed to both
  uint32_t (*now)(void* owner) = nullptr;
  bool (*wait)(void* owner, uint32_t milliseconds) = nullptr;
};

enum class RecordingEnd : uint8_t {
  kComplete,      // the plan's end was reached
  kStopped,       // the user ended it
  kWindowGone,    // what the area followed is there no more
  kScreenLost,    // the connection to the display broke
  kScreenChanged, // the screen has another depth now, in which the animation cannot go on
  kFull,          // another frame might not fit into the stream's 4 GiB
};

struct Recording {
  RecorderState* recorder = nullptr; // ready for its first frame; not owned
  RecordingClock clock = {};

  uint32_t delay = 0; // ms from a tick to the next, above 0
  // Ends, of which the first holds; 0: no such end.
  uint32_t milliseconds = 0; // of time; ticks that would fall on it or later are not taken
  uint32_t tickLimit = 0;    // that many ticks, lost ones not counted; the last one has its delay, too
  uint32_t frameLimit = 0;   // the same with frames in the stream

  // Called ahead of each tick, to place the area; false ends the recording (kWindowGone). May be null.
  bool (*aim)(void* aimer) = nullptr;
  void* aimer = nullptr;
  // Called behind each tick and, while it waits, at least four times a second. May be null.
  void (*onProgress)(void* watcher, const Recording& recording) = nullptr;
  void* watcher = nullptr;

  uint32_t lastTime = 0;  // what the clock told last
  uint64_t elapsed = 0;   // ms from the first tick to lastTime
  uint32_t ticks = 0;     // how often the engine was asked for a frame
  uint32_t lostTicks = 0; // overdue when another one was due too, and left out
};

// Takes frames until one of the ends. Then the stream holds complete frames only, the last one up to the end.
RecordingEnd RunRecording(Recording& recording);

} // namespace framereel
