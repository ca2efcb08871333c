// Arithmetic on pixel rectangles, and between them and the RECTs of the calls. Internal to the layer.
#pragma once

#include "win32/pixels/surface.h"
#include "win32/win32_types.h"

namespace framereel {

inline int32_t WidthOf(const PixelRect& r) {
  return r.right - r.left;
}
inline int32_t HeightOf(const PixelRect& r) {
  return r.bottom - r.top;
}
inline PixelRect Shrunk(const PixelRect& r, int32_t by) {
  return {r.left + by, r.top + by, r.right - by, r.bottom - by};
}
inline bool SameSize(const PixelRect& a, const PixelRect& b) {
  return WidthOf(a) == WidthOf(b) && HeightOf(a) == HeightOf(b);
}
inline PixelRect BoundsOf(const Surface& surface) {
  return {0, 0, surface.width, surface.height};
}
inline RECT RectOf(const PixelRect& r) {
  return {r.left, r.top, r.right, r.bottom};
}
inline PixelRect PixelsOf(const RECT& r) {
  return {r.left, r.top, r.right, r.bottom};
}

} // namespace framereel
