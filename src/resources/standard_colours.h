// The sixteen colours of a standard screen of 4 bits, in their order there.
#pragma once

#include <cstdint>

namespace framereel {

struct PaletteColour {
  uint8_t red, green, blue;
};

inline constexpr int kStandardColourCount = 16;
inline constexpr PaletteColour kStandardColours[kStandardColourCount] = {
    {0, 0, 0},     {128, 0, 0},     {0, 128, 0},     {128, 128, 0},   {0, 0, 128}, {128, 0, 128},
    {0, 128, 128}, {192, 192, 192}, {128, 128, 128}, {255, 0, 0},     {0, 255, 0}, {255, 255, 0},
    {0, 0, 255},   {255, 0, 255},   {0, 255, 255},   {255, 255, 255},
};

} // namespace framereel
