// The read-outs: size and place of the capture area, as the panel shows them.
#pragma once

#include "area/area_record.h"

namespace framereel {

// Shows size and place of the area, and the size of the animation that it would give: through setReadouts, and during a
// selection on the backdrop over the labels.
void ShowAreaReadouts(AreaState& area);

} // namespace framereel
