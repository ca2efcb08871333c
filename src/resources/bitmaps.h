// The numbered bitmaps that the program reads as resources: small ones drawn as text so that a reader sees them, larger
// ones in the folder pictures/.
#pragma once

#include <cstdint>
#include <span>

namespace framereel {

// One bit per pixel: `height` rows from the top down, each of `width` characters, "#" black and anything else white.
struct BitmapResource {
  uint16_t id;
  int32_t width, height; // pixels
  const char* const* rows;
};

// The bitmap with this number, for the whole run; null when there is none.
const BitmapResource* FindBitmapResource(uint16_t id);

// Those of the folder: the splash, About, and the signs of alerts. The build writes them (pictures/embed.cmake).
std::span<const BitmapResource> PictureResources();

} // namespace framereel
