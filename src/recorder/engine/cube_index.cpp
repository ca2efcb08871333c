// The plain form looks levels up. AVX2 works them out: (643 v + 2^14) >> 15 equals CubeLevel8[v] for every byte v, and
// a rounding multiply of 16-bit lanes does just that. AVX-512 with byte permutations looks them up again, 64 at a time.
#include "recorder/engine/cube_index.h"

#include "recorder/engine/colour_tables.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace framereel {
namespace {

size_t BgrToCubePlain(const uint8_t* bgr, size_t count, uint8_t* indices) {
  for (size_t i = 0; i < count; ++i, bgr += 3) {
    indices[i] = CubeIndex(CubeLevel8[bgr[2]], CubeLevel8[bgr[1]], CubeLevel8[bgr[0]]);
  }
  return count;
}

#if defined(__x86_64__)

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

#define FRAMEREEL_VBMI __attribute__((target("avx512f,avx512bw,avx512vbmi")))

// The shares of the three channels in a cube index, a level times 1, 6 or 36, and where a channel's 64 bytes lie in 192
// bytes of pixels; blue, green, red.
struct alignas(64) ChannelTables {
  uint8_t shares[3][256];
  uint8_t places[3][64];
};

constexpr ChannelTables kChannelTables = [] {
  ChannelTables tables{};
  constexpr int kFactors[3] = {1, 6, 36};
  for (int channel = 0; channel < 3; ++channel) {
    for (int i = 0; i < 256; ++i) tables.shares[channel][i] = uint8_t(kFactors[channel] * CubeLevel8[i]);
    for (int i = 0; i < 64; ++i) tables.places[channel][i] = uint8_t(3 * i + channel);
  }
  return tables;
}();

// A table of 256 bytes in registers.
struct Lookup {
  __m512i part[4];
};

FRAMEREEL_VBMI inline Lookup LoadLookup(const uint8_t shares[256]) {
  return {{_mm512_load_si512(shares), _mm512_load_si512(shares + 64), _mm512_load_si512(shares + 128),
           _mm512_load_si512(shares + 192)}};
}

FRAMEREEL_VBMI __attribute__((always_inline)) inline __m512i Find(const Lookup& lookup, __m512i bytes) {
  const __m512i low = _mm512_permutex2var_epi8(lookup.part[0], bytes, lookup.part[1]);
  const __m512i high = _mm512_permutex2var_epi8(lookup.part[2], bytes, lookup.part[3]);
  return _mm512_mask_blend_epi8(_mm512_movepi8_mask(bytes), low, high);
}

// A channel's places, of which the `last` lie in the third part of the pixels.
struct PlaneIndex {
  __m512i places;
  __mmask64 last;
};

FRAMEREEL_VBMI inline PlaneIndex LoadPlaneIndex(int channel) {
  const int inFirstTwo = (128 - channel + 2) / 3;
  return {_mm512_load_si512(kChannelTables.places[channel]), ~uint64_t{0} << inFirstTwo};
}

FRAMEREEL_VBMI __attribute__((always_inline)) inline __m512i Plane(const PlaneIndex& index, const __m512i parts[3]) {
  const __m512i first = _mm512_permutex2var_epi8(parts[0], index.places, parts[1]);
  return _mm512_mask_permutexvar_epi8(first, index.last, index.places, parts[2]);
}

// 64 pixels a step. The tables live in registers.
FRAMEREEL_VBMI size_t BgrToCubeVbmi(const uint8_t* bgr, size_t count, uint8_t* indices) {
  const PlaneIndex blueAt = LoadPlaneIndex(0), greenAt = LoadPlaneIndex(1), redAt = LoadPlaneIndex(2);
  const Lookup blues = LoadLookup(kChannelTables.shares[0]);
  const Lookup greens = LoadLookup(kChannelTables.shares[1]), reds = LoadLookup(kChannelTables.shares[2]);
  size_t i = 0;
  for (; i + 64 <= count; i += 64, bgr += 192) {
    const __m512i parts[3] = {_mm512_loadu_si512(bgr), _mm512_loadu_si512(bgr + 64), _mm512_loadu_si512(bgr + 128)};
    const __m512i high = _mm512_add_epi8(Find(reds, Plane(redAt, parts)), Find(greens, Plane(greenAt, parts)));
    _mm512_storeu_si512(indices + i, _mm512_add_epi8(high, Find(blues, Plane(blueAt, parts))));
  }
  return i;
}

#undef FRAMEREEL_VBMI

#endif

struct MachineForms {
  CubeForm forms[3];
  size_t count;
};

MachineForms FindForms() {
  MachineForms found = {};
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx512vbmi") && __builtin_cpu_supports("avx512bw")) {
    found.forms[found.count++] = BgrToCubeVbmi;
  }
  if (__builtin_cpu_supports("avx2")) found.forms[found.count++] = BgrToCubeAvx2;
#endif
  found.forms[found.count++] = BgrToCubePlain;
  return found;
}

} // namespace

std::span<const CubeForm> CubeForms() {
  static const MachineForms found = FindForms();
  return {found.forms, found.count};
}

void BgrToCube(const uint8_t* bgr, size_t count, uint8_t* indices) {
  const size_t done = CubeForms()[0](bgr, count, indices);
  BgrToCubePlain(bgr + 3 * done, count - done, indices + done);
}

} // namespace framereel
