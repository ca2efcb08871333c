// The scroll bar at the right of a control: where its parts are, and its look. It keeps nothing: how much there is, how
// much is seen and from where on, its control knows. Internal to the layer.
#pragma once

#include <cstdint>

#include "win32/pixels/scale.h"
#include "win32/pixels/surface.h"
#include "win32/win32_types.h"

namespace framereel {

inline constexpr Scaled kScrollBarWidth{16};

struct ScrollBar {
  PixelRect place;          // in the client area
  int32_t total, seen, top; // counted in rows; total is greater than seen
};

enum class ScrollPart : uint8_t { kNone, kUp, kPageUp, kThumb, kPageDown, kDown };

ScrollPart ScrollPartAt(const ScrollBar& bar, int32_t x, int32_t y);
PixelRect ThumbPlace(const ScrollBar& bar);
// The row that is the first one seen when the thumb's top is there.
int32_t TopForThumb(const ScrollBar& bar, int32_t thumbTop);
// `pressed`: the part that is held down.
void DrawScrollBar(HDC context, const ScrollBar& bar, ScrollPart pressed);

} // namespace framereel
