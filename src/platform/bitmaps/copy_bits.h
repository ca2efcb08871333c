// Copying pixels between Ports.
#pragma once

#include "core/geometry.h"
#include "platform/records/port.h"

namespace framereel {

// Copies a rectangle of `source` into a rectangle of the current Port, stretching where the sizes differ. Modes: 0
// blackness, 1 and 3 copy, 2 and, 4 or, 5 or with the source inverted; any other does nothing. Between one bit and
// colours, 0 is the foreground and 1 the background of the DrawState in use. What lies off either side is cut, but a
// stretch from over the source's edge does nothing. The main window as a source is read from the screen, with all that
// lies over it.
void CopyBits(const Port* source, const Rect& from, const Rect& to, int mode);

} // namespace framereel
