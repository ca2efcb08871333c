// True colour to indices of the colour cube, the hot loop of every frame.
#pragma once

#include <cstddef>
#include <cstdint>

namespace framereel {

// `count` pixels of blue, green, red bytes to cube indices: each channel to its nearest level, as CubeLevel8 has it.
// Takes the widest instructions that the machine has.
void BgrToCube(const uint8_t* bgr, size_t count, uint8_t* indices);

// The same by the table, a pixel at a time: what the other must equal.
void BgrToCubePlain(const uint8_t* bgr, size_t count, uint8_t* indices);

} // namespace framereel
