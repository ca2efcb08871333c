// The clip of the current Port: what its drawing is held to, besides the target itself.
#pragma once

#include "platform/records/port.h"
#include "win32/win32_types.h"

namespace framereel {

// A Port and its clip as they were.
struct SavedClip {
  const Port* port;
  HRGN region; // owned
};

// The clip of a Port that has just become current: none, or one that lets nothing through for a blind Port.
void ResetClip();

// Restored or dropped by the caller, once.
SavedClip SaveClip();
// The clip is this rectangle, right and bottom one past the last pixel.
void SetClip(int left, int top, int right, int bottom);
// The clip and the rectangle together; answers the old clip, saved.
SavedClip NarrowClip(int left, int top, int right, int bottom);
// Puts it back if its Port is the current one, else only drops it.
void RestoreClip(const SavedClip& saved);
void DropSavedClip(const SavedClip& saved);

} // namespace framereel
