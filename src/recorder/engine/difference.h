// Every later frame: the smallest rectangle around the pixels that changed, filled so that the compressor gets long
// runs.
//
// A pixel has changed if its colour index has. In workFrame a changed pixel has its index. An unchanged one has
// captureTransparent, unless transparency is off or it continues the run of the pixel before it in workFrame, in
// reading order: then it keeps its index.
#pragma once

#include "recorder/engine/recorder_state.h"

namespace framereel {

// Brings previousFrame up to date with the grabbed screen and fills workFrame and the dirty rectangle; when nothing
// changed, that is empty. Of workFrame only the rectangle counts, and so much around it as a reduction reads.
//
// `transparent` asks for transparent pixels. Answers true if the frame had to do without them: on a screen of 256
// colours a changed pixel may have the transparent index itself, and then another index is taken that no pixel of the
// frame has; when all 256 are in use there is none.
bool NextFrameConvert(RecorderState& recorder, bool transparent);

} // namespace framereel
