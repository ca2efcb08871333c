// Bringing what was drawn in our windows to the screen. Internal to the layer.
#pragma once

namespace framereel {

// Shows everything that has been drawn in windows and not yet shown. For whoever reads or draws the screen itself, or
// lets time pass. Does nothing and costs nothing when nothing was drawn.
void PresentWindows();

// Says how. The windows do so when the first one is made: a program without windows carries nothing of them.
void PresentWindowsBy(void (*present)());

} // namespace framereel
