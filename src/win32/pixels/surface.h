// Pixels in memory: the record on which the platform calls draw and which a display reads into and shows.
#pragma once

#include <cstdint>

#include "resources/standard_colours.h"

namespace framereel {

// How a pixel lies in memory. Palette depths (1, 2, 4, 8) take one byte a pixel, the colour index; true colour takes
// 2 or 4 bytes in the machine's byte order, with a mask for each channel.
struct PixelLayout {
  int32_t depth;                         // as the screen counts: 1, 2, 4, 8, 16, 24 or 32
  int32_t bytesPerPixel;                 // 1, 2 or 4
  uint32_t redMask, greenMask, blueMask; // contiguous bits; 0 at palette depths
};

inline constexpr PixelLayout kLayoutMono = {1, 1, 0, 0, 0};
inline constexpr PixelLayout kLayoutRgb565 = {16, 2, 0xF800, 0x07E0, 0x001F};
inline constexpr PixelLayout kLayoutXrgb8888 = {24, 4, 0xFF0000, 0x00FF00, 0x0000FF};

inline bool IsPalette(const PixelLayout& layout) {
  return layout.redMask == 0;
}

// Rows from the top down. Whoever made the pixels owns them; `memory` is the maker's note of where they came from.
struct Surface {
  PixelLayout layout;
  int32_t width, height; // pixels
  int32_t stride;        // bytes from a row to the next
  uint8_t* pixels;
  void* memory;
};

// A surface of the layout in plain memory, all zero; the caller frees it with FreePlainSurface. False for a size
// without pixels or a row of 2 GiB.
bool NewPlainSurface(const PixelLayout& layout, int32_t width, int32_t height, Surface* out);
void FreePlainSurface(Surface* surface);

inline uint8_t* RowOf(const Surface& surface, int32_t y) {
  return surface.pixels + int64_t(y) * surface.stride;
}

// Left and top inclusive, right and bottom one past the last pixel.
struct PixelRect {
  int32_t left, top, right, bottom;
};

inline bool IsEmpty(const PixelRect& r) {
  return r.left >= r.right || r.top >= r.bottom;
}

inline bool Same(const PixelRect& a, const PixelRect& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

inline PixelRect Intersect(const PixelRect& a, const PixelRect& b) {
  return {a.left > b.left ? a.left : b.left, a.top > b.top ? a.top : b.top, a.right < b.right ? a.right : b.right,
          a.bottom < b.bottom ? a.bottom : b.bottom};
}

inline PixelRect Moved(const PixelRect& r, int32_t dx, int32_t dy) {
  return {r.left + dx, r.top + dy, r.right + dx, r.bottom + dy};
}

inline bool Holds(const PixelRect& r, int32_t x, int32_t y) {
  return x >= r.left && x < r.right && y >= r.top && y < r.bottom;
}

// In pixels; of a rectangle that is not turned over.
inline int64_t AreaOf(const PixelRect& r) {
  return int64_t{r.right - r.left} * (r.bottom - r.top);
}

} // namespace framereel
