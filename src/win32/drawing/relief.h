// What frames, menus and controls are made of: flat fills, edges, colours that can be told apart. Internal to the
// layer.
#pragma once

#include <string_view>

#include "win32/pixels/surface.h"
#include "win32/win32_types.h"

namespace framereel {

// All in the context's coordinates.
void FillPixels(HDC context, const PixelRect& r, COLORREF colour);
// A line round the inside of the rectangle, in one system colour at the left and top and another at the right and
// bottom.
void DrawEdge(HDC context, const PixelRect& r, int leftTop, int rightBottom);
// The face and the edges of a button or a box on a frame, to be told from each other and from what lies around them on
// every screen.
void DrawRaised(HDC context, const PixelRect& r, bool pressed);
// Dots along the inside of the rectangle, in a colour that can be told from the ground.
void DrawDottedRect(HDC context, const PixelRect& r, COLORREF ground);
// In the font of the context.
int32_t TextWidth(HDC context, std::string_view text);
int32_t LineHeight(HDC context);
// Text with its cell's top left corner at x, y, in the ink; or greyed, on screens without a grey of their own by
// leaving out every other pixel.
void DrawLabel(HDC context, int32_t x, int32_t y, std::string_view text, bool greyed, COLORREF ground,
               COLORREF ink = RGB(0, 0, 0));
// The colour or, where the screen has too few to tell it from the ground, black or white.
COLORREF Legible(HDC context, COLORREF colour, COLORREF ground);

} // namespace framereel
