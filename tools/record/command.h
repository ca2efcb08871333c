// The command from checked arguments to exit status: screen, area, file, recording, save, and what the user is told.
//
// Everything that it needs of its surroundings is handed in, so that tests run it on the display in memory.
#pragma once

#include <cstdio>

#include "core/standard_streams.h"
#include "gif/output_file.h"
#include "record/aimed_window.h"
#include "record/options.h"
#include "record/progress.h"
#include "record/recording.h"
#include "record/signals.h"

namespace framereel {

struct RecordCommand {
  // Set for each run. `output` comes from OutputFind.
  RecordOptions options;
  OutputFile output;
  RecordingClock clock;
  StopSignals* signals = nullptr; // what `clock` waits for, to be let go of while a pipe is written; may be null
  FILE* messages = nullptr;       // errors, notes and progress; not owned
  FILE* figures = nullptr;        // what --stats and --list-windows print; not owned
  bool terminal = false;          // `messages` is one

  // The command's own.
  RecorderState recorder;
  AnimationStream stream;
  GifWriter gif;
  Recording recording;
  AimedWindow aimed;
  Progress progress;
  Refusal refusal; // why nothing could be recorded
};

// Writes one line for the user, behind the command's name.
void Complain(FILE* messages, const char* text);

// Makes the record's stream and compressor and takes the process's hooks for exhausted memory and for aborts: from
// here on these save what has been recorded ahead of the end, which is kExitFailed or SIGABRT. Once for a record, which
// lives as long as the process.
void RecordCommandInit(RecordCommand& command);

// Writes the list of windows to `figures`, and answers the exit status.
int ListWindowsRun(RecordCommand& command);

// Records and saves, and answers the exit status. The display is opened and closed inside. Any number of runs.
int RecordCommandRun(RecordCommand& command);

} // namespace framereel
