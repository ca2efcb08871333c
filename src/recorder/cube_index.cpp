// The wide forms work out a level instead of looking it up: (643 v + 2^14) >> 15 equals CubeLevel8[v] for every byte v,
// and a rounding multiply of 16-bit lanes does just that.
#include "recorder/cube_index.h"

#include "recorder/colour_tables.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace framereel {

void BgrToCubePlain(const uint8_t* bgr, size_t count, uint8_t* indices) {
  for (size_t i = 0; i < count; ++i, bgr += 3) {
    indices[i] = CubeIndex(CubeLevel8[bgr[2]], CubeLevel8[bgr[1]], CubeLevel8[bgr[0]]);
  }
}

#if defined(__x86_64__)
namespace {

inline constexpr int16_t kLevelFactor = 643;

// Where a channel's 16 bytes lie in 48 bytes of pixels, as a shuffle of one of the three 16-byte parts; -1 gives 0.
struct PlaneShuffle {
  int8_t from[3][16];
};

constexpr PlaneShuffle ShuffleOf(int channel) {
  PlaneShuffle shuffle{};
  for (int part = 0; part < 3; ++part) {
    for (int i = 0; i < 16; ++i) {
      const int place = 3 * i + channel - 16 * part;
      shuffle.from[part][i] = int8_t(place >= 0 && place < 16 ? place : -1);
    }
  }
  return shuffle;
}

constexpr PlaneShuffle kPlaneShuffles[3] = {ShuffleOf(0), ShuffleOf(1), ShuffleOf(2)};

#define FRAMEREEL_AVX2 __attribute__((target("avx2"), always_inline)) static inline

FRAMEREEL_AVX2 __m256i LoadHalves(const uint8_t* low, const uint8_t* high) {
  const __m128i first = _mm_loadu_si128(reinterpret_cast<const __m128i*>(low));
  const __m128i second = _mm_loadu_si128(reinterpret_cast<const __m128i*>(high));
  return _mm256_inserti128_si256(_mm256_castsi128_si256(first), second, 1);
}

FRAMEREEL_AVX2 __m256i PlaneOf(const __m256i parts[3], const PlaneShuffle& shuffle) {
  __m256i plane = _mm256_setzero_si256();
  for (int part = 0; part < 3; ++part) {
    const __m128i half = _mm_loadu_si128(reinterpret_cast<const __m128i*>(shuffle.from[part]));
    plane = _mm256_or_si256(plane, _mm256_shuffle_epi8(parts[part], _mm256_broadcastsi128_si256(half)));
  }
  return plane;
}

FRAMEREEL_AVX2 __m256i IndexOfLanes(__m256i red, __m256i green, __m256i blue) {
  const __m256i factor = _mm256_set1_epi16(kLevelFactor);
  const __m256i six = _mm256_set1_epi16(6);
  const __m256i high = _mm256_mullo_epi16(_mm256_mulhrs_epi16(red, factor), six);
  const __m256i both = _mm256_mullo_epi16(_mm256_add_epi16(high, _mm256_mulhrs_epi16(green, factor)), six);
  return _mm256_add_epi16(both, _mm256_mulhrs_epi16(blue, factor));
}

// 32 pixels a step: their 96 bytes to a plane for each channel, the channels to 16-bit lanes, the lanes to indices.
__attribute__((target("avx2"))) size_t BgrToCubeAvx2(const uint8_t* bgr, size_t count, uint8_t* indices) {
  const __m256i zero = _mm256_setzero_si256();
  size_t i = 0;
  for (; i + 32 <= count; i += 32, bgr += 96) {
    const __m256i parts[3] = {LoadHalves(bgr, bgr + 48), LoadHalves(bgr + 16, bgr + 64),
                              LoadHalves(bgr + 32, bgr + 80)};
    const __m256i blue = PlaneOf(parts, kPlaneShuffles[0]);
    const __m256i green = PlaneOf(parts, kPlaneShuffles[1]);
    const __m256i red = PlaneOf(parts, kPlaneShuffles[2]);
    const __m256i low = IndexOfLanes(_mm256_unpacklo_epi8(red, zero), _mm256_unpacklo_epi8(green, zero),
                                     _mm256_unpacklo_epi8(blue, zero));
    const __m256i high = IndexOfLanes(_mm256_unpackhi_epi8(red, zero), _mm256_unpackhi_epi8(green, zero),
                                      _mm256_unpackhi_epi8(blue, zero));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(indices + i), _mm256_packus_epi16(low, high));
  }
  return i;
}

#undef FRAMEREEL_AVX2

} // namespace
#endif

void BgrToCube(const uint8_t* bgr, size_t count, uint8_t* indices) {
  size_t done = 0;
#if defined(__x86_64__)
  static const bool wide = __builtin_cpu_supports("avx2");
  if (wide) done = BgrToCubeAvx2(bgr, count, indices);
#endif
  BgrToCubePlain(bgr + 3 * done, count - done, indices + done);
}

} // namespace framereel
