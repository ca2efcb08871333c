// Rect and Point, the toolkit's 16-bit geometry.
#pragma once

#include <cstdint>

namespace framereel {

// Right and bottom lie one past the last pixel.
struct Rect {
  int16_t top, left, bottom, right;
};

struct Point {
  int16_t v, h; // vertical, then horizontal
};

} // namespace framereel
