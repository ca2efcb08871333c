// Rows are taken 64 pixels at a time, with a bit for each. A changed pixel keeps its index, and so does an unchanged
// one behind a pixel that was kept and has the same index; that is how a carry runs through an addition, so one
// addition settles 64 pixels.
#include "recorder/engine/work_rows.h"

#include <bit>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace framereel {
namespace {

inline constexpr int32_t kStep = 64;

// Bit i is set where a[i] and b[i] differ, for `count` up to 64.
uint64_t DifferenceMaskPlain(const uint8_t* a, const uint8_t* b, int32_t count) {
  uint64_t mask = 0;
  for (int32_t i = 0; i < count; ++i) mask |= uint64_t{a[i] != b[i]} << i;
  return mask;
}

uint64_t DifferenceMask64(const uint8_t* a, const uint8_t* b) {
#if defined(__SSE2__)
  uint64_t same = 0;
  for (int part = 0; part < 4; ++part) {
    const __m128i left = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a + 16 * part));
    const __m128i right = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b + 16 * part));
    same |= uint64_t{uint32_t(_mm_movemask_epi8(_mm_cmpeq_epi8(left, right)))} << (16 * part);
  }
  return ~same;
#else
  return DifferenceMaskPlain(a, b, kStep);
#endif
}

uint64_t DifferenceMask(const uint8_t* a, const uint8_t* b, int32_t count) {
  return count >= kStep ? DifferenceMask64(a, b) : DifferenceMaskPlain(a, b, count);
}

// How many of the first pixels equal `value`.
int32_t RunLength(const uint8_t* indices, int32_t count, int32_t value) {
  int32_t i = 0;
  while (i < count && indices[i] == value) ++i;
  return i;
}

} // namespace

int32_t FirstDifference(const uint8_t* a, const uint8_t* b, int32_t count) {
  for (int32_t x = 0; x < count; x += kStep) {
    const uint64_t mask = DifferenceMask(a + x, b + x, count - x);
    if (mask) return x + std::countr_zero(mask);
  }
  return count;
}

int32_t LastDifference(const uint8_t* a, const uint8_t* b, int32_t count) {
  int32_t x = count;
  while (x % kStep != 0 && x > 0) {
    --x;
    if (a[x] != b[x]) return x;
  }
  while (x > 0) {
    x -= kStep;
    const uint64_t mask = DifferenceMask64(a + x, b + x);
    if (mask) return x + 63 - std::countl_zero(mask);
  }
  return -1;
}

int32_t FirstChangedTo(uint8_t value, const uint8_t* indices, const uint8_t* previous, int32_t count) {
  const uint8_t* const end = indices + count;
  const uint8_t* place = indices;
  while (place < end && (place = static_cast<const uint8_t*>(::memchr(place, value, size_t(end - place))))) {
    if (previous[place - indices] != value) return int32_t(place - indices);
    ++place;
  }
  return count;
}

int32_t FillUnchanged(const uint8_t* indices, int32_t count, int32_t before, uint8_t transparent, uint8_t* work) {
  const int32_t run = RunLength(indices, count, before);
  ::memset(work, before, size_t(run));
  if (run == count) return before;
  ::memset(work + run, transparent, size_t(count - run));
  return transparent;
}

namespace {

// Bit i is set where an index equals the one ahead of it; for i = 0 that is `before`.
uint64_t SameAsBeforeMask(const uint8_t* indices, int32_t before) {
  uint8_t shifted[kStep];
  shifted[0] = uint8_t(before);
  ::memcpy(shifted + 1, indices, kStep - 1);
  const uint64_t same = ~DifferenceMask64(indices, shifted);
  return before == kNoPixel ? same & ~uint64_t{1} : same;
}

// Which of 64 pixels keep their index, given those that changed and those that are the same as the pixel ahead.
uint64_t KeptMask(uint64_t changed, uint64_t same) {
  const uint64_t mayFollow = same & ~changed;
  // A run of pixels that may follow is entered at its first bit or not at all: the bit ahead of it is no such pixel.
  const uint64_t entered = (changed << 1 | 1) & mayFollow;
  return changed | (mayFollow & ~(mayFollow + entered));
}

static_assert(std::endian::native == std::endian::little, "BlendBlock takes byte i of a word for pixel i");

// work[i] := the index where the bit is set, else `transparent`, for 64 pixels.
void BlendBlock(const uint8_t* indices, uint64_t kept, uint8_t transparent, uint8_t* work) {
  constexpr uint64_t kEachByte = 0x0101010101010101, kBitOfByte = 0x8040201008040201;
  for (int part = 0; part < kStep / 8; ++part) {
    // Byte i of `high` has its top bit set where bit i of the part is: that bit, added up to a carry into bit 7.
    const uint64_t bits = ((kept >> (8 * part) & 0xFF) * kEachByte) & kBitOfByte;
    const uint64_t high = (((bits & ~(kEachByte << 7)) + kEachByte * 0x7F) | bits) & kEachByte << 7;
    const uint64_t mask = (high >> 7) * 0xFF;
    uint64_t pixels;
    ::memcpy(&pixels, indices + 8 * part, sizeof pixels);
    pixels = (pixels & mask) | (kEachByte * transparent & ~mask);
    ::memcpy(work + 8 * part, &pixels, sizeof pixels);
  }
}

// Answers the last of the 64 pixels written.
uint8_t MergeBlock(const uint8_t* indices, const uint8_t* previous, int32_t before, uint8_t transparent,
                   uint8_t* work) {
  const uint64_t changed = DifferenceMask64(indices, previous);
  BlendBlock(indices, KeptMask(changed, SameAsBeforeMask(indices, before)), transparent, work);
  return work[kStep - 1];
}

} // namespace

int32_t MergeRow(const uint8_t* indices, const uint8_t* previous, int32_t count, int32_t before, uint8_t transparent,
                 uint8_t* work) {
  int32_t x = 0;
  for (; x + kStep <= count; x += kStep) {
    before = MergeBlock(indices + x, previous + x, before, transparent, work + x);
  }
  const auto rest = size_t(count - x);
  if (rest == 0) return before;
  uint8_t padded[3][kStep] = {};
  ::memcpy(padded[0], indices + x, rest);
  ::memcpy(padded[1], previous + x, rest);
  MergeBlock(padded[0], padded[1], before, transparent, padded[2]);
  ::memcpy(work + x, padded[2], rest);
  return work[count - 1];
}

} // namespace framereel
