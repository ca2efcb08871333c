// Bits to bytes to sub-blocks; see code_packer.h.
#include "gif/code_packer.h"

#include <bit>
#include <cstring>

namespace framereel {
namespace {

void StoreLittleEndian(uint8_t* at, uint64_t value) {
  if constexpr (std::endian::native == std::endian::big) value = __builtin_bswap64(value);
  std::memcpy(at, &value, sizeof value);
}

// The packer's position, kept in registers while many codes pass.
struct BitWriter {
  uint8_t* at;
  uint64_t accumulator;
  uint32_t bitCount;
};

// `count` bits behind those that are there; with them at most 64. Eight bytes are stored whatever the number of whole
// ones, which saves a branch; the next store overwrites the surplus.
inline void PutBits(BitWriter& writer, uint64_t bits, uint32_t count) {
  writer.accumulator |= bits << writer.bitCount;
  writer.bitCount += count;
  StoreLittleEndian(writer.at, writer.accumulator);
  writer.at += writer.bitCount / 8;
  writer.accumulator >>= writer.bitCount & ~7u;
  writer.bitCount &= 7;
}

// Four codes end to end: neighbours are joined within 32 bits first, then the halves.
inline uint64_t JoinFour(const uint16_t* codes, uint32_t width) {
  uint64_t lanes;
  if constexpr (std::endian::native == std::endian::little) {
    std::memcpy(&lanes, codes, sizeof lanes);
  } else {
    lanes = codes[0] | uint64_t(codes[1]) << 16 | uint64_t(codes[2]) << 32 | uint64_t(codes[3]) << 48;
  }
  constexpr uint64_t kEven = 0x0000FFFF0000FFFFull;
  const uint64_t pairs = (lanes & kEven) | (lanes & ~kEven) >> (16 - width);
  return (pairs & 0xFFFFFFFF) | pairs >> 32 << (2 * width);
}

// Eight codes are `width` bytes: what is left over stays as many bits as before, so that no shift depends on the last.
inline void PutEight(BitWriter& writer, const uint16_t* codes, uint32_t width) {
  const uint32_t half = 4 * width + writer.bitCount, halfBytes = half / 8;
  const uint64_t first = writer.accumulator | JoinFour(codes, width) << writer.bitCount;
  const uint64_t second = first >> (half & ~7u) | JoinFour(codes + 4, width) << half % 8;
  StoreLittleEndian(writer.at, first);
  StoreLittleEndian(writer.at + halfBytes, second);
  writer.at += width;
  writer.accumulator = second >> 8 * (width - halfBytes);
}

} // namespace

void PackerBegin(CodePacker& packer, AnimationStream* stream) {
  packer.stream = stream;
  packer.accumulator = 0;
  packer.bitCount = 0;
  packer.byteCount = 0;
}

void PackCodes(CodePacker& packer, const uint16_t* codes, uint32_t count, uint32_t width) {
  BitWriter writer = {packer.bytes + packer.byteCount, packer.accumulator, packer.bitCount};
  const uint16_t* const end = codes + count;
  for (; end - codes >= 8; codes += 8) PutEight(writer, codes, width);
  for (; codes != end; ++codes) PutBits(writer, *codes, width);
  packer.byteCount = uint32_t(writer.at - packer.bytes);
  packer.accumulator = writer.accumulator;
  packer.bitCount = writer.bitCount;
}

void PackerAppendFullBlocks(CodePacker& packer) {
  const uint8_t* from = packer.bytes;
  uint8_t* to = packer.blocks;
  for (; packer.byteCount >= kSubBlockBytes; packer.byteCount -= kSubBlockBytes) {
    *to = kSubBlockBytes;
    std::memcpy(to + 1, from, kSubBlockBytes);
    to += 1 + kSubBlockBytes;
    from += kSubBlockBytes;
  }
  if (to == packer.blocks) return;
  StreamAppend(*packer.stream, uint32_t(to - packer.blocks), packer.blocks);
  std::memmove(packer.bytes, from, packer.byteCount);
}

void PackerEnd(CodePacker& packer) {
  StoreLittleEndian(packer.bytes + packer.byteCount, packer.accumulator);
  packer.byteCount += (packer.bitCount + 7) / 8;
  PackerAppendFullBlocks(packer);
  if (packer.byteCount == 0) return;
  const auto length = uint8_t(packer.byteCount);
  StreamAppend(*packer.stream, 1, &length);
  StreamAppend(*packer.stream, length, packer.bytes);
  packer.byteCount = 0;
}

} // namespace framereel
