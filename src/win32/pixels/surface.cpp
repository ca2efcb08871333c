// Surfaces in plain memory.
#include "win32/pixels/surface.h"

#include <cstdlib>

#include "win32/pixels/exhaustion.h"

namespace framereel {

bool NewPlainSurface(const PixelLayout& layout, int32_t width, int32_t height, Surface* out) {
  const int64_t stride = (int64_t(width) * layout.bytesPerPixel + 3) & ~int64_t{3};
  if (width <= 0 || height <= 0 || stride > INT32_MAX) return false;
  auto* pixels = static_cast<uint8_t*>(::calloc(size_t(height), size_t(stride)));
  if (!pixels) EndWithoutMemory();
  *out = {layout, width, height, int32_t(stride), pixels, nullptr};
  return true;
}

void FreePlainSurface(Surface* surface) {
  ::free(surface->pixels);
  *surface = {};
}

} // namespace framereel
