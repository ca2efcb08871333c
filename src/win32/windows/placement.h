// Where windows stand: moving, sizing, showing, stacking, minimising. Internal to the layer.
#pragma once

#include "win32/windows/window.h"

namespace framereel {

// Sends WM_NCCALCSIZE and answers the client area for a place.
PixelRect ClientFor(HWND window, const PixelRect& place);
// The place with its size limited as WM_GETMINMAXINFO answers.
PixelRect LimitedPlace(HWND window, const PixelRect& place);
// Moves and sizes it with all that is sent and painted. `byDesktop`: the display has done so already.
void Place(HWND window, const PixelRect& place, bool byDesktop);
// After its frame has become thicker or thinner: works the client area out anew, with all that is sent and painted.
void RenewFrame(HWND window);
void SetVisible(HWND window, bool visible);
// Of a top-level window only asks the desktop for it, where there is one that does it, unless it has done so already.
void Minimise(HWND window, bool byDesktop);
void Restore(HWND window, bool byDesktop);

} // namespace framereel
