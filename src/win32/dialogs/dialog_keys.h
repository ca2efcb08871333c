// What the keyboard does in a dialog. Internal to the layer.
#pragma once

#include "win32/windows/window.h"

namespace framereel {

// The first control that the Tab key goes to; null for none.
HWND FirstTabStop(HWND dialog);
// Gives a control the keyboard, as Tab does.
void FocusControl(HWND control);
// The button with the focus is the one that Return presses, and looks it; without one it is the dialog's own. What has
// the focus is remembered. To be called whenever it may have changed.
void FollowFocus(HWND dialog);

} // namespace framereel
