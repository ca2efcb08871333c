// The colour table of an animation, the special indices in it, and the lookups that turn screen colours into indices.
//
// A palette screen's pixels are indices already; a true-colour screen's are mapped to a cube of 6 levels a channel, and
// so is everything that is recorded at reduced size. Cube index = 36 red + 6 green + blue, with levels from 0 to 5.
#pragma once

#include <array>
#include <cstdint>

#include "recorder/engine/recorder_state.h"

namespace framereel {

inline constexpr int kCubeColours = 216;
inline constexpr uint8_t kCubeTransparent = 216;

// A channel value to the nearest cube level.
inline constexpr auto CubeLevel8 = [] {
  std::array<uint8_t, 256> table{};
  for (int i = 0; i < 256; ++i) table[i] = uint8_t((10 * i + 255) / 510);
  return table;
}();

// A sum of levels with weights of 9 in all, 0 to 45, to the nearest level.
inline constexpr auto CubeLevelSum9 = [] {
  std::array<uint8_t, 46> table{};
  for (int i = 0; i < 46; ++i) table[i] = uint8_t((10 * i + 45) / 90);
  return table;
}();

// The three levels of a cube index in three 8-bit lanes, red highest, so that one addition adds all channels. Entries
// from 216 on hold nothing of meaning.
inline constexpr auto CubeLanes = [] {
  std::array<uint32_t, 256> table{};
  for (uint32_t i = 0; i < 256; ++i) table[i] = (i / 36) << 16 | (i / 6 % 6) << 8 | i % 6;
  return table;
}();

inline constexpr uint8_t CubeIndex(uint32_t red, uint32_t green, uint32_t blue) {
  return uint8_t(36 * red + 6 * green + blue);
}

// Fills the first 216 entries of the table.
void BuildCubeTable(uint8_t table[kColourTableBytes]);

// Fills the table with the screen's colours, or the cube on a true-colour screen; entries beyond those are left alone.
// Answers the bits of a colour table that has room for them and a transparent index, and notes the darkest entry.
int ReadScreenPalette(RecorderState& recorder, uint8_t table[kColourTableBytes]);

// Fills the GIF's colour table for an animation that begins now, and answers its bits: 2, 3, 5 or 8. For a reduced
// recording it also keeps what the reduction needs of the screen's palette.
int BuildColourTable(RecorderState& recorder, uint8_t table[kColourTableBytes]);

// Sets the transparent indices and the black one; after BuildColourTable.
void ChooseSpecialIndices(RecorderState& recorder);

} // namespace framereel
