// Making fonts: from what a caller asks for to a face at a size whose letters fit the cell. Internal to the layer.
#pragma once

#include "win32/win32_types.h"

namespace framereel {

void FreeFont(HFONT font);
// What a new context holds: it is there for the letters of frames too.
HFONT SystemFont();

} // namespace framereel
