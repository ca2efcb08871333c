// PixelFormat: what a display offers, reduced to one small code.
#pragma once

#include <cstdint>

namespace framereel {

using PixelFormat = uint16_t;

inline constexpr PixelFormat kFormat8Bit = 1;       // a byte a pixel, an index into 256 colours
inline constexpr PixelFormat kFormatTrueColour = 3; // blue, green, red bytes; from screens of 16, 24 and 32 bits
inline constexpr PixelFormat kFormat2Bit = 6;       // four pixels a byte, leftmost in the top bits
inline constexpr PixelFormat kFormat1Bit = 7;       // eight pixels a byte, leftmost in the top bit
inline constexpr PixelFormat kFormat4Bit = 8;       // a byte a pixel, the index in its low four bits
inline constexpr PixelFormat kFormatNone = 9;       // no animation, or a screen that cannot be recorded

// The screen's format by its depth. False at a depth that cannot be recorded, and `format` then keeps its value.
bool DetectPixelFormat(PixelFormat* format);

// The number of colours of a format in words for the user, good until the current event ends; of the screen as it is
// for kFormatNone.
const char* FormatColourCount(PixelFormat format);

} // namespace framereel
