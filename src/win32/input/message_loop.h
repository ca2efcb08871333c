// Taking messages, and the loops inside of the layer. Internal to the layer; the calls stand in win32_windows.h.
#pragma once

#include "win32/pixels/display_windows.h"

namespace framereel {

// For loops inside of the layer, while a button is held or a menu is open: the next input, with paints done meanwhile;
// false when there is none now, and then all that was drawn has been presented.
bool NextInput(DisplayEvent* event);

} // namespace framereel
