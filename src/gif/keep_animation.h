// Where an animation goes that could not be saved in its place: the program's folder among the user's data, or else the
// folder for temporary files.
//
// KeepAnimation asks for no memory but what SaveAnimationTo does, so it also serves when there is none left.
#pragma once

#include <climits>

#include "gif/gif_records.h"

namespace framereel {

// Writes the whole stream into a new file, which only its owner may read, and tells its path. `name` is the path that
// was wanted, of which the file's name is kept, with a number where it is taken. False when neither folder takes it,
// with errno of the last one.
//
// The user's data are where core/user_folders.h says, temporary files in $TMPDIR or /tmp.
bool KeepAnimation(GifWriter& gif, const char* name, char (&path)[PATH_MAX]);

// A file of the user's in either folder whose name begins so; false when there is none.
bool FindKept(const char* prefix, char (&path)[PATH_MAX]);
// Appends to the stream what a save wrote, without the trailer. False with errno when the file cannot be read.
bool ReadKept(AnimationStream& stream, const char* path);

} // namespace framereel
