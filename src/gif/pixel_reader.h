// PixelReader: walks the rows of an image pixel by pixel and measures runs. Part of the LZW encoder.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "gif/pixel_cursor.h"

namespace framereel {

// A position in an image. Rows that touch are read as one long row.
struct PixelReader {
  const uint8_t* next; // the next pixel, if it is not at rowEnd
  const uint8_t* rowEnd;
  uint32_t pixelsBehind; // in the rows behind this one
  uint32_t rowWidth;
  ptrdiff_t rowSkip;
};

// A reader ahead of the image's first pixel.
inline PixelReader ReadPixels(const PixelCursor& cursor, uint32_t count) {
  const auto width = uint32_t(cursor.rowWidth);
  const uint32_t row = cursor.rowSkip == 0 || count < width ? count : width;
  return {cursor.readPointer, cursor.readPointer + row, count - row, row, cursor.rowSkip};
}

// Makes sure that a pixel stands at `next`; false at the end of the image.
inline bool HasPixel(PixelReader& reader) {
  if (reader.next != reader.rowEnd) return true;
  if (reader.pixelsBehind == 0) return false;
  const uint32_t row = reader.pixelsBehind < reader.rowWidth ? reader.pixelsBehind : reader.rowWidth;
  reader.next = reader.rowEnd + reader.rowSkip;
  reader.rowEnd = reader.next + row;
  reader.pixelsBehind -= row;
  return true;
}

// The number of bytes equal to `value` from `bytes` on, up to `end`.
inline size_t EqualBytes(const uint8_t* bytes, const uint8_t* end, uint8_t value) {
  constexpr ptrdiff_t kBlock = 64, kWord = 8;
  const uint64_t pattern = value * 0x0101010101010101ull;
  const uint8_t* at = bytes;
  while (end - at >= kWord) {
    uint64_t word;
    std::memcpy(&word, at, sizeof word);
    if (const uint64_t difference = word ^ pattern) {
      const int bit =
          std::endian::native == std::endian::little ? std::countr_zero(difference) : std::countl_zero(difference);
      return size_t(at - bytes + bit / 8);
    }
    at += kWord;
    // Eight in a row: mostly many more follow. The block with the end of the run is left to the loop around.
    while (end - at >= kBlock) {
      uint8_t differences = 0;
      for (ptrdiff_t i = 0; i < kBlock; ++i) differences |= at[i] ^ value;
      if (differences != 0) break;
      at += kBlock;
    }
  }
  while (at != end && *at == value) ++at;
  return size_t(at - bytes);
}

// Reads all pixels equal to `value` from here on, across the ends of rows, and answers how many there were.
inline uint32_t ReadRun(PixelReader& reader, uint8_t value) {
  uint32_t run = 0;
  while (HasPixel(reader)) {
    const size_t part = EqualBytes(reader.next, reader.rowEnd, value);
    run += uint32_t(part);
    reader.next += part;
    if (reader.next != reader.rowEnd) break;
  }
  return run;
}

} // namespace framereel
