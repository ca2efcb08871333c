// Where the pixels of an image lie.
#pragma once

#include <cstdint>

namespace framereel {

// Rows of colour indices, a byte each, inside a larger frame or on their own.
struct PixelCursor {
  const uint8_t* readPointer; // the image's top left pixel
  int16_t rowWidth;           // pixels of a row, above 0
  int16_t rowSkip;            // bytes from the end of a row to the start of the next one; 0 when rows touch
};

} // namespace framereel
