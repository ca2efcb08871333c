// Bitmaps, pens and brushes: what is common to all drawing objects. Internal to the layer.
#pragma once

#include "win32/drawing/gdi.h"

namespace framereel {

GdiKind KindOf(HGDIOBJ object); // of any object, not null

// A surface of the layout in plain memory, all zero; the caller frees it with FreePlainSurface. False without memory.
bool NewPlainSurface(const PixelLayout& layout, int32_t width, int32_t height, Surface* out);
void FreePlainSurface(Surface* surface);

HBRUSH WhiteBrush(); // what a new context holds

} // namespace framereel
