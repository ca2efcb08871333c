// The screen's colours, and what a bitmap in its format is like.
#pragma once

#include <cstdint>

#include "platform/records/colour.h"

namespace framereel {

struct ColourList {
  uint32_t count;
  Colour* colours; // from MemAlloc
};

// What a new Offscreen must be like to be in the screen's format.
struct PixelSpec {
  uint16_t kind;      // 1 indexed: `colours` holds; 2 direct: `depth` holds
  ColourList colours; // owned
  uint16_t depth;
};

uint16_t ScreenDepth();
// The caller frees the list with MemFree.
PixelSpec ScreenPixelSpec();
void ScreenColours(ColourList* out);

} // namespace framereel
