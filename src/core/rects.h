// Arithmetic on Rects. Right and bottom lie one past the last pixel.
#pragma once

#include <cstdint>

#include "core/geometry.h"

namespace framereel {

inline Rect RectOf(int16_t x, int16_t y, int16_t width, int16_t height) {
  return {y, x, int16_t(y + height), int16_t(x + width)};
}

bool RectInside(const Rect& a, const Rect& b); // a lies in b
bool RectEqual(const Rect& a, const Rect& b);
bool RectHas(const Rect& r, int16_t x, int16_t y);

// What the two have in common. Of two that do not overlap it comes out inverted.
Rect RectIntersect(const Rect& a, const Rect& b);
// Wider by dx and dy on each side; negative numbers shrink.
Rect RectGrow(const Rect& r, int16_t dx, int16_t dy);
Rect RectOffset(const Rect& r, int16_t dx, int16_t dy);

} // namespace framereel
