// Filling rectangles of pixels: what lines, fills and single pixels come down to. Internal to the layer.
#pragma once

#include <cstddef>

#include "win32/drawing/gdi.h"

namespace framereel {

// What a pixel becomes. With `keep` 0 the pixel is replaced; with all bits set the value is exclusive-or'ed to it.
struct Paint {
  uint32_t keep;
  uint32_t value[2];  // for the pattern's 0 and 1 bits
  uint8_t pattern[8]; // rows from the context's 0, 0 on, the leftmost pixel in the top bit
};

// `rop` is R2_COPYPEN or R2_NOTXORPEN.
Paint SolidPaint(const Win32DeviceContext& context, COLORREF colour, int rop);
Paint BrushPaint(const Win32DeviceContext& context, const Win32Brush& brush, int rop);

// The value for the pixel at a place in the context's coordinates.
inline uint32_t PaintValueAt(const Paint& paint, int32_t x, int32_t y) {
  return paint.value[paint.pattern[y & 7] >> (7 - (x & 7)) & 1];
}

// Paints rectangles, given in the context's coordinates, one after the other.
void PaintRects(HDC context, const PixelRect* rects, size_t count, const Paint& paint);

} // namespace framereel
