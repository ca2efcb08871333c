// Rows are taken 64 pixels at a time with a mask of those that changed; a mask of all or none, by far the most, needs
// no look at single pixels.
#include "recorder/work_rows.h"

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

int32_t MergeRow(const uint8_t* indices, const uint8_t* previous, int32_t count, int32_t before, uint8_t transparent,
                 uint8_t* work) {
  int32_t x = 0;
  while (x < count) {
    const int32_t most = count - x < kStep ? count - x : kStep;
    const uint64_t changed = DifferenceMask(indices + x, previous + x, count - x);
    for (int32_t i = 0; i < most;) {
      const uint64_t rest = changed >> i;
      const bool isChanged = rest & 1;
      const int32_t run = std::countr_zero(isChanged ? ~rest : rest);
      const int32_t part = run < most - i ? run : most - i;
      if (isChanged) {
        ::memcpy(work + x + i, indices + x + i, size_t(part));
        before = indices[x + i + part - 1];
      } else {
        before = FillUnchanged(indices + x + i, part, before, transparent, work + x + i);
      }
      i += part;
    }
    x += most;
  }
  return before;
}

} // namespace framereel
