// Arithmetic on pixels: single values between layouts, and whole rows into the layouts that are read out.
#pragma once

#include <cstddef>

#include "win32/pixels/surface.h"

namespace framereel {

// All bits that a pixel value of the layout can have.
uint32_t PixelBits(const PixelLayout& layout);

// A channel of a true-colour pixel, widened or cut to 8 bits so that full stays full.
uint8_t ChannelOf(uint32_t pixel, uint32_t mask);
// The bits of a channel value of 8 bits under a mask.
uint32_t ChannelBits(uint8_t value, uint32_t mask);

uint32_t PixelAt(const Surface& surface, int32_t x, int32_t y);
void SetPixelAt(const Surface& surface, int32_t x, int32_t y, uint32_t pixel);

// Index of the nearest colour by squared distance; the lowest of equals. `count` is at least 1.
int32_t NearestColour(PaletteColour colour, const PaletteColour* colours, int32_t count);

// Turns between pixels and colours on one layout. `palette` holds 2^depth entries at palette depths.
struct ColourMap {
  PixelLayout layout;
  PaletteColour palette[256];
};
// The colours of the layout: black and white for a plain 1-bit bitmap, else the screen's.
ColourMap MapOf(const PixelLayout& layout, bool ofScreen);
PaletteColour ColourOfPixel(const ColourMap& map, uint32_t pixel);
uint32_t PixelOfColour(const ColourMap& map, PaletteColour colour);

// A row of true colour to bytes of blue, green, red.
void RowToBgr(const uint8_t* pixels, const PixelLayout& layout, size_t count, uint8_t* bgr);
// A row of colour indices packed to `bits` (1 or 2) bits a pixel, leftmost in the top bits; the last byte is filled
// with zeros.
void PackRow(const uint8_t* indices, size_t count, int bits, uint8_t* packed);

} // namespace framereel
