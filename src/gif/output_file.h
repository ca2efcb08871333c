// Where the animation goes. A file appears whole or not at all: it is written into the same folder and then put in its
// place in one step. Meanwhile it has no name there, or a temporary one where the file system has no files without
// names. What cannot be replaced so, a pipe or a device, is written to directly.
//
// The order is OutputFind, OutputOpen, OutputSave; OutputDiscard instead of a save, or after one that failed.
// SaveAnimationAs is all of it at once, for what the user names as a file.
#pragma once

#include <climits>
#include <sys/types.h>

#include "core/file_refs.h"
#include "core/refusal.h"
#include "gif/gif_records.h"

namespace framereel {

struct OutputFile {
  char path[PATH_MAX];      // the file itself, behind all symbolic links; as given when it is written directly
  char temporary[PATH_MAX]; // the file that is being written; "" while there is none
  File file;                // without a handle until there is something to write to
  bool unnamed;             // `temporary` names it for this process only
  bool keepsOlder;          // for the caller to set: a file that stands at the place by then is not replaced
  bool direct;              // no temporary file
  bool flush;               // the bytes can be brought to a disk
  bool replaces;            // there is an older file, and it has these rights:
  mode_t mode;
  uid_t owner;
  gid_t group;
};

// Looks at what stands under the name, "-" being standard output, and opens what is written directly: a FIFO waits here
// for its reader. Nothing is made on the disk yet. False with the reason: it is a directory, a terminal, a file that
// the user may not write, or a place that cannot be reached.
bool OutputFind(OutputFile& output, const char* name, Refusal& refusal);

// Makes the temporary file, so that a place where nothing can be written is known ahead of the recording. It has the
// rights and the owner of the file that it will replace, or a new file's usual ones. Nobody is let in who was not:
// where the owner or the group cannot be given, the group may do what all others may.
bool OutputOpen(OutputFile& output, Refusal& refusal);

// Writes the animation and puts it in its place. False with the reason, and then nothing has changed there.
bool OutputSave(OutputFile& output, GifWriter& gif, Refusal& refusal);

// Closes and removes what was begun. Does nothing after a save that worked.
void OutputDiscard(OutputFile& output);

// Saves under a path, where a file may stand but nothing else. False with the reason, and then nothing has changed.
bool SaveAnimationAs(GifWriter& gif, const char* path, Refusal& refusal);

} // namespace framereel
