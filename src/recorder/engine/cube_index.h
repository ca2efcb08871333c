// True colour to indices of the colour cube, the hot loop of every frame.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace framereel {

// `count` pixels of blue, green, red bytes to cube indices: each channel to its nearest level, as CubeLevel8 has it.
// Takes the widest instructions that the machine has.
void BgrToCube(const uint8_t* bgr, size_t count, uint8_t* indices);

// A way to do it: answers how many of the pixels, from the first on, it has done. It leaves a rest that it is too wide
// for.
using CubeForm = size_t (*)(const uint8_t* bgr, size_t count, uint8_t* indices);

// All that this machine has, the widest first. The last one goes by the table, a pixel at a time, and leaves none.
std::span<const CubeForm> CubeForms();

} // namespace framereel
