// The one line that shows on a terminal how a recording goes.
#pragma once

#include <cstdint>
#include <cstdio>

#include "record/recording.h"

namespace framereel {

// The line is written over itself. `to` is a terminal and not owned.
struct Progress {
  FILE* to;
  bool shown;       // the line stands on the terminal, with the cursor behind it
  uint64_t shownAt; // ms of the recording
};

inline constexpr int kProgressTextSize = 160;

// Puts the line's text, without control characters, into `text`: time, frames and size, and where the recording has an
// end a bar, if it fits into that many columns. `text` holds kProgressTextSize bytes.
void FormatProgress(const Recording& recording, int columns, char* text);

// What a recording came to: "37 frames, 1.2M, 0:05", and the lost ticks if there are any.
void FormatOutcome(const Recording& recording, char* text);

// Draws the line, at most ten times a second.
void ProgressShow(Progress& progress, const Recording& recording);
// Shows "what left s" instead, for seconds that are counted down.
void ProgressSay(Progress& progress, const char* what, uint32_t left);
// Takes it away, so that something else can be written.
void ProgressClear(Progress& progress);

} // namespace framereel
