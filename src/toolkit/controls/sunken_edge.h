// The edge, two thin lines wide, that makes a box look pressed in.
#pragma once

#include "core/geometry.h"

namespace framereel {

// Along the inside of the rectangle, in DrawStateFill.
void DrawSunkenEdge(const Rect& r);

} // namespace framereel
