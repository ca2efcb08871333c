// Pixels at hand: what every drawing call asks for before it touches a pixel. Internal to the layer.
//
// A DrawingTarget is a surface and the region of it that may be drawn on. On a bitmap or in a window it is its own
// pixels; on the screen a copy of the piece that the call can reach, put back when the target is closed.
#pragma once

#include "win32/drawing/contexts.h"
#include "win32/pixels/pixels.h"
#include "win32/pixels/rectangles.h"

namespace framereel {

struct DrawingTarget {
  HDC context;
  Surface surface;
  int32_t originX, originY; // where the context's 0, 0 lies on the surface
  Region where;             // may be drawn on, in the surface's coordinates; not empty, within the surface
  bool copied;              // of the screen
};

// Whether the pixels are those that stand there. Without them the caller must draw all of `where`.
enum class TargetPixels : uint8_t { kKept, kReplaced };

// What can be drawn on of the rectangle: within the target, its visible part and the clip. `rect` is in the context's
// coordinates, the answer in the target's.
Region DrawableRegion(const Win32DeviceContext& context, const PixelRect& rect);

// False, and nothing to close, when nothing of the rectangle can be drawn on.
bool OpenTarget(HDC context, const PixelRect& rect, TargetPixels pixels, DrawingTarget* target);
// Lets the pixels take effect. False when the display refused them.
bool CloseTarget(DrawingTarget* target);

inline uint32_t PixelOf(const ColourMap& map, COLORREF colour) {
  return PixelOfColour(map, {GetRValue(colour), GetGValue(colour), GetBValue(colour)});
}

} // namespace framereel
