// Where the animation goes. A file appears whole or not at all: it is written beside its place under a temporary name
// and then put there in one step. What cannot be replaced so, a pipe or a device, is written to directly.
//
// The order is OutputFind, OutputOpen, OutputSave; OutputDiscard instead of a save, or after one that failed.
#pragma once

#include <climits>

#include "core/file_refs.h"
#include "gif/gif_records.h"
#include "record/refusal.h"

namespace framereel {

struct OutputFile {
  char path[PATH_MAX];      // the file itself, behind all symbolic links; as given when it is written directly
  char temporary[PATH_MAX]; // the file that is being written; "" while there is none
  File file;                // without a handle until there is something to write to
  bool direct;              // no temporary file
  bool flush;               // the bytes can be brought to a disk
};

// Looks at what stands under the name, "-" being standard output, and opens what is written directly: a FIFO waits here
// for its reader. Nothing is made on the disk yet. False with the reason: it is a directory, a terminal, a file that
// the user may not write, or a place that cannot be reached.
bool OutputFind(OutputFile& output, const char* name, Refusal& refusal);

// Makes the temporary file, so that a place where nothing can be written is known ahead of the recording. A new file's
// usual permissions hold, also where an older file is replaced.
bool OutputOpen(OutputFile& output, Refusal& refusal);

// Writes the animation and puts it in its place. False with the reason, and then nothing has changed there.
bool OutputSave(OutputFile& output, GifWriter& gif, Refusal& refusal);

// Closes and removes what was begun. Does nothing after a save that worked.
void OutputDiscard(OutputFile& output);

} // namespace framereel
