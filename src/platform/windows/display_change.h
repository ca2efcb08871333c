// How the main window keeps up with the display.
#pragma once

namespace framereel {

// Reads the display and the usable area again, and keeps the main window's record up to date. A main window that filled
// the usable area goes on filling it.
void DisplayChanged();
// Stores the usable area in the main window's record; false when it is the same as before.
bool TakeUsableArea();

} // namespace framereel
