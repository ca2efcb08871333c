// The one way in which an animation reaches a file.
#pragma once

#include "gif/gif_records.h"

namespace framereel {

// Writes the whole stream, with a trailer that leaves the stream again, so that recording can go on and the next save
// writes everything from the start. True when every byte went out. The caller opens and closes the file and sets
// savedSize. The trailer may begin a chunk; nothing else asks for memory.
bool SaveAnimationTo(GifWriter& gif, File* file);

} // namespace framereel
