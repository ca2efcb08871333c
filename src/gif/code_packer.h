// CodePacker: codes of 3 to 12 bits into bytes, and bytes into GIF's sub-blocks. Part of the LZW encoder.
//
// Codes are handed over many at a time. The packer lays their bits end to end, lowest first, and cuts the bytes into
// sub-blocks of 255, so that the stream gets a few large pieces instead of many small ones.
#pragma once

#include <cstdint>

#include "gif/animation_stream.h"

namespace framereel {

// The most codes that a dictionary brings forth: an entry each, one more when it is full, and the clear code.
inline constexpr uint32_t kPackedCodesMax = 4096 + 2;
inline constexpr uint32_t kSubBlockBytes = 255;

struct CodePacker {
  AnimationStream* stream; // not owned
  uint64_t accumulator;    // bits that are not yet bytes, the oldest lowest; those above bitCount are 0
  uint32_t bitCount;       // below 8 between operations
  uint32_t byteCount;      // in `bytes`
  uint8_t bytes[kSubBlockBytes + kPackedCodesMax * 12 / 8 + 16];         // packed, not yet in a sub-block
  uint8_t blocks[sizeof(bytes) / kSubBlockBytes * (kSubBlockBytes + 1)]; // sub-blocks on their way to the stream
};

// Begins an image's data.
void PackerBegin(CodePacker& packer, AnimationStream* stream);

// Adds codes of `width` bits, 3 to 12. Between two calls of PackerAppendFullBlocks at most
// kPackedCodesMax codes.
void PackCodes(CodePacker& packer, const uint16_t* codes, uint32_t count, uint32_t width);

// Moves all sub-blocks that are full to the stream.
void PackerAppendFullBlocks(CodePacker& packer);

// Ends the data: pads the last byte with zeros and appends everything that is left.
void PackerEnd(CodePacker& packer);

} // namespace framereel
