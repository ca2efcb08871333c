// Bitmaps, pens and brushes: what is common to all drawing objects. Internal to the layer.
#pragma once

#include "win32/drawing/gdi.h"

namespace framereel {

GdiKind KindOf(HGDIOBJ object); // of any object, not null

HBRUSH WhiteBrush(); // what a new context holds

} // namespace framereel
