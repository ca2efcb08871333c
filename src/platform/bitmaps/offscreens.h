// Offscreens: bitmaps in the display's own format, or of one bit, that can be drawn into and copied from. Those of the
// program's resources come from load_bitmaps.h; what is copied is in copy_bits.h, and read as rows in dib_buffers.h.
#pragma once

#include <cstdint>

#include "core/geometry.h"
#include "platform/records/offscreen_record.h"

namespace framereel {

// Makes the list of Offscreens; its counterpart frees those that are left.
void OffscreensStartUp();
void OffscreensShutDown();

// compatible: the display's format; else black and white. Null when the platform has no such bitmap. The caller frees.
Offscreen* NewOffscreen(int16_t width, int16_t height, bool compatible);
// Frees it; if it is the current Port, the main window is current afterwards.
void FreeOffscreen(Offscreen* offscreen);
Rect OffscreenBounds(const Offscreen* offscreen);

} // namespace framereel
