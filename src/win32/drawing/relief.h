// What frames, menus and controls are made of: flat fills, edges, colours that can be told apart. Internal to the
// layer.
#pragma once

#include "win32/pixels/surface.h"
#include "win32/win32.h"

namespace framereel {

// All in the context's coordinates.
void FillPixels(HDC context, const PixelRect& r, COLORREF colour);
// A line round the inside of the rectangle, in one system colour at the left and top and another at the right and
// bottom.
void DrawEdge(HDC context, const PixelRect& r, int leftTop, int rightBottom);
// The colour or, where the screen has too few to tell it from the ground, black or white.
COLORREF Legible(HDC context, COLORREF colour, COLORREF ground);

} // namespace framereel
