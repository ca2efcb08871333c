// The reference encoder; written to be checked by eye, not to be fast.
#include "gif/plain_lzw.h"

#include <algorithm>
#include <cstddef>

namespace framereel {
namespace {

constexpr int kHashSize = 5003;
constexpr int kCodeLimit = 4096;

struct PlainLzw {
  std::vector<uint8_t>* out;
  int32_t hash[kHashSize];
  uint16_t codes[kHashSize];
  int32_t initBits, codeBits, maxCode, clearCode, nextCode;
  bool clearPending = false;
  uint32_t accumulator = 0;
  int32_t accumulatedBits = 0;
  uint8_t block[256];
  int32_t blockFill = 1;
};

void FlushBlock(PlainLzw& lzw) {
  if (lzw.blockFill <= 1) return;
  lzw.block[0] = static_cast<uint8_t>(lzw.blockFill - 1);
  lzw.out->insert(lzw.out->end(), lzw.block, lzw.block + lzw.blockFill);
  lzw.blockFill = 1;
}

void PutLowByte(PlainLzw& lzw) {
  lzw.block[lzw.blockFill++] = static_cast<uint8_t>(lzw.accumulator);
  if (lzw.blockFill == 256) FlushBlock(lzw);
  lzw.accumulator >>= 8;
  lzw.accumulatedBits -= 8;
}

void PutCode(PlainLzw& lzw, int32_t code) {
  const auto bits = static_cast<uint32_t>(code);
  lzw.accumulator = lzw.accumulatedBits > 0 ? lzw.accumulator | (bits << lzw.accumulatedBits) : bits;
  lzw.accumulatedBits += lzw.codeBits;
  while (lzw.accumulatedBits >= 8) PutLowByte(lzw);
  if (lzw.nextCode <= lzw.maxCode && !lzw.clearPending) return;
  lzw.codeBits = lzw.clearPending ? lzw.initBits : lzw.codeBits + 1;
  lzw.maxCode = lzw.codeBits == 12 ? kCodeLimit : (1 << lzw.codeBits) - 1;
  lzw.clearPending = false;
}

void FlushBits(PlainLzw& lzw) {
  while (lzw.accumulatedBits > 0) PutLowByte(lzw);
  lzw.accumulatedBits = 0;
  FlushBlock(lzw);
}

void ClearTable(PlainLzw& lzw) {
  std::fill(std::begin(lzw.hash), std::end(lzw.hash), -1);
  lzw.nextCode = lzw.clearCode + 2;
  lzw.clearPending = true;
  PutCode(lzw, lzw.clearCode);
}

// True when the pair is in the dictionary; `slot` is its place, or the place where it belongs.
bool FindPair(const PlainLzw& lzw, int32_t prefix, int32_t pixel, int32_t& slot) {
  const int32_t key = pixel * 4096 + prefix;
  slot = (pixel << 4) ^ prefix;
  if (lzw.hash[slot] == key) return true;
  if (lzw.hash[slot] < 0) return false;
  const int32_t step = slot == 0 ? 1 : kHashSize - slot;
  do {
    slot -= step;
    if (slot < 0) slot += kHashSize;
    if (lzw.hash[slot] == key) return true;
  } while (lzw.hash[slot] > 0);
  return false;
}

} // namespace

bool PlainLzwEncode(const std::vector<uint8_t>& pixels, int initBits, std::vector<uint8_t>& out) {
  PlainLzw lzw;
  lzw.out = &out;
  lzw.initBits = lzw.codeBits = initBits;
  lzw.maxCode = (1 << initBits) - 1;
  lzw.clearCode = 1 << (initBits - 1);
  lzw.nextCode = lzw.clearCode + 2;
  std::fill(std::begin(lzw.hash), std::end(lzw.hash), -1);

  bool lostKeyZero = false;
  int32_t prefix = pixels[0];
  PutCode(lzw, lzw.clearCode);
  for (size_t i = 1; i < pixels.size(); ++i) {
    int32_t slot;
    if (FindPair(lzw, prefix, pixels[i], slot)) {
      prefix = lzw.codes[slot];
      continue;
    }
    PutCode(lzw, prefix);
    if (lzw.nextCode < kCodeLimit) {
      lostKeyZero = lostKeyZero || lzw.hash[slot] == 0;
      lzw.codes[slot] = static_cast<uint16_t>(lzw.nextCode++);
      lzw.hash[slot] = pixels[i] * 4096 + prefix;
    } else {
      ClearTable(lzw);
    }
    prefix = pixels[i];
  }
  PutCode(lzw, prefix);
  PutCode(lzw, lzw.clearCode + 1);
  FlushBits(lzw);
  return lostKeyZero;
}

} // namespace framereel
