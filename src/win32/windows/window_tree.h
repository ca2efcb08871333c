// Who is whose parent, owner and sibling, where windows stand, and which one is at a point. Internal to the layer.
#pragma once

#include <vector>

#include "win32/windows/window.h"

namespace framereel {

bool IsLive(HWND window);
bool Has(const Win32Window& window, DWORD style); // all bits of it
HWND TopLevelOf(HWND window);
HWND TopLevelOf(const DisplayWindow* display);
bool IsWithin(HWND window, HWND ancestor);                           // or the same
bool IsOwnedBy(const Win32Window* window, const Win32Window* owner); // by windows between them, or the same
std::vector<HWND>& SiblingsOf(HWND window);                          // itself among them
// Visible, like all its parents, and none of them minimised out of sight; and so are the owners, with which a window
// comes and goes.
bool IsShown(const Win32Window& window);
bool OwnersAreShown(const Win32Window& window); // of its top-level window
bool IsGoing(HWND window);                      // it or a parent is being destroyed
bool IsEnabled(HWND window);                    // like all its parents
// The deepest visible, enabled window under the point, `window` itself at least; the caller knows that it is there.
HWND DeepestAt(HWND window, int32_t x, int32_t y);
// Moves a window to the top or bottom of its siblings; topmost windows stay above others and owned ones above their
// owners. False when nothing changed.
bool Restack(HWND window, bool top);

PixelRect PlaceOnScreen(const Win32Window& window);
PixelRect ClientOnScreen(const Win32Window& window);
PixelRect DisplayPlace(const Win32Window& window); // as the display is told

} // namespace framereel
