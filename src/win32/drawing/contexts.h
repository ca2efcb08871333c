// Device contexts: making, selecting into, deleting. Internal to the layer.
#pragma once

#include "win32/drawing/gdi.h"

namespace framereel {

// A context with the state of a new one and no target yet. The window code fills in the target of those that it gives
// out and may keep them up to date while windows move. ResetContext puts the state back as it was and takes the clip
// away, so that a context can be handed out again without an allocation.
HDC NewContext();
void ResetContext(HDC context);
void FreeContext(HDC context);

// The pixels that the context's target has, in the context's coordinates; empty when a window's surface is gone.
PixelRect BoundsOf(const Win32DeviceContext& context);
PixelLayout LayoutOf(const Win32DeviceContext& context);
// Whether the target's pixels have the screen's colours, which all but plain 1-bit bitmaps do.
bool HasScreenColours(const Win32DeviceContext& context);

} // namespace framereel
