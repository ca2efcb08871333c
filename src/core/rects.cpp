// The longer ones of the operations on Rects.
#include "core/rects.h"

#include <algorithm>

namespace framereel {

bool RectInside(const Rect& a, const Rect& b) {
  return a.left >= b.left && a.top >= b.top && a.right <= b.right && a.bottom <= b.bottom;
}

bool RectEqual(const Rect& a, const Rect& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

bool RectHas(const Rect& r, int16_t x, int16_t y) {
  return x >= r.left && x < r.right && y >= r.top && y < r.bottom;
}

Rect RectIntersect(const Rect& a, const Rect& b) {
  return {std::max(a.top, b.top), std::max(a.left, b.left), std::min(a.bottom, b.bottom), std::min(a.right, b.right)};
}

Rect RectGrow(const Rect& r, int16_t dx, int16_t dy) {
  return {int16_t(r.top - dy), int16_t(r.left - dx), int16_t(r.bottom + dy), int16_t(r.right + dx)};
}

Rect RectOffset(const Rect& r, int16_t dx, int16_t dy) {
  return {int16_t(r.top + dy), int16_t(r.left + dx), int16_t(r.bottom + dy), int16_t(r.right + dx)};
}

} // namespace framereel
