// The paints of the two kinds of windows.
#pragma once

#include "core/geometry.h"
#include "win32/win32_types.h"

namespace framereel {

struct ChildWindow;

// WM_PAINT: the window's background, then for a ChildWindow its paint method and the Views that need it.
void PaintMainWindow(HWND handle);
void PaintChildWindow(ChildWindow* window);

// Whether a rectangle of the ChildWindow that is being painted needs it; false outside a paint.
bool RectNeedsPaint(const Rect& rect);

void PaintStartUp();
void PaintShutDown();

} // namespace framereel
