// What the display tells. Internal to the layer.
#pragma once

namespace framereel {

// Takes all of it: input into the queue; the rest takes effect at once.
void PumpDisplay();

} // namespace framereel
