// Colour, the toolkit's 48-bit colour.
#pragma once

#include <cstdint>

namespace framereel {

// Three 16-bit channels, 0xFFFF full. From 8 bits: times 257.
struct Colour {
  uint16_t red, green, blue;
};

inline bool SameColour(const Colour& a, const Colour& b) {
  return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

} // namespace framereel
