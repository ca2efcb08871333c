// Pixel arithmetic. The one hot loop is RowToBgr on 32-bit pixels, which every recorded frame passes.
#include "win32/pixels/pixels.h"

#include <bit>
#include <cstring>

#include "win32/pixels/display.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace framereel {

uint32_t PixelBits(const PixelLayout& layout) {
  return IsPalette(layout) ? (1U << layout.depth) - 1 : layout.redMask | layout.greenMask | layout.blueMask;
}

uint8_t ChannelOf(uint32_t pixel, uint32_t mask) {
  const int shift = std::countr_zero(mask);
  const uint32_t full = mask >> shift;
  const uint32_t value = (pixel & mask) >> shift;
  return uint8_t((value * 255 + full / 2) / full);
}

uint32_t ChannelBits(uint8_t value, uint32_t mask) {
  const int shift = std::countr_zero(mask);
  const uint32_t full = mask >> shift;
  return ((value * full + 127) / 255) << shift;
}

uint32_t PixelAt(const Surface& surface, int32_t x, int32_t y) {
  const uint8_t* place = RowOf(surface, y) + int64_t(x) * surface.layout.bytesPerPixel;
  if (surface.layout.bytesPerPixel == 1) return *place;
  if (surface.layout.bytesPerPixel == 2) {
    uint16_t pixel;
    ::memcpy(&pixel, place, sizeof pixel);
    return pixel;
  }
  uint32_t pixel;
  ::memcpy(&pixel, place, sizeof pixel);
  return pixel;
}

void SetPixelAt(const Surface& surface, int32_t x, int32_t y, uint32_t pixel) {
  uint8_t* place = RowOf(surface, y) + int64_t(x) * surface.layout.bytesPerPixel;
  if (surface.layout.bytesPerPixel == 1) {
    *place = uint8_t(pixel);
  } else if (surface.layout.bytesPerPixel == 2) {
    const auto narrow = uint16_t(pixel);
    ::memcpy(place, &narrow, sizeof narrow);
  } else {
    ::memcpy(place, &pixel, sizeof pixel);
  }
}

int32_t NearestColour(PaletteColour colour, const PaletteColour* colours, int32_t count) {
  int32_t nearest = 0, least = INT32_MAX;
  for (int32_t i = 0; i < count; ++i) {
    const int32_t red = colour.red - colours[i].red;
    const int32_t green = colour.green - colours[i].green;
    const int32_t blue = colour.blue - colours[i].blue;
    const int32_t distance = red * red + green * green + blue * blue;
    if (distance < least) {
      least = distance;
      nearest = i;
    }
  }
  return nearest;
}

ColourMap MapOf(const PixelLayout& layout, bool ofScreen) {
  ColourMap map = {layout, {}};
  if (!IsPalette(layout)) return map;
  if (ofScreen) {
    DisplayPalette(map.palette);
  } else {
    map.palette[1] = {255, 255, 255};
  }
  return map;
}

PaletteColour ColourOfPixel(const ColourMap& map, uint32_t pixel) {
  const PixelLayout& layout = map.layout;
  if (IsPalette(layout)) return map.palette[pixel & 0xFF];
  return {ChannelOf(pixel, layout.redMask), ChannelOf(pixel, layout.greenMask), ChannelOf(pixel, layout.blueMask)};
}

uint32_t PixelOfColour(const ColourMap& map, PaletteColour colour) {
  const PixelLayout& layout = map.layout;
  if (IsPalette(layout)) return uint32_t(NearestColour(colour, map.palette, 1 << layout.depth));
  return ChannelBits(colour.red, layout.redMask) | ChannelBits(colour.green, layout.greenMask) |
         ChannelBits(colour.blue, layout.blueMask);
}

namespace {

bool IsXrgb8888(const PixelLayout& layout) {
  return layout.bytesPerPixel == 4 && layout.redMask == 0xFF0000 && layout.greenMask == 0xFF00 &&
         layout.blueMask == 0xFF;
}

bool IsRgb565(const PixelLayout& layout) {
  return layout.bytesPerPixel == 2 && layout.redMask == 0xF800 && layout.greenMask == 0x07E0 &&
         layout.blueMask == 0x001F;
}

void Xrgb8888ToBgrPlain(const uint8_t* pixels, size_t count, uint8_t* bgr) {
  for (size_t i = 0; i < count; ++i) {
    bgr[0] = pixels[0];
    bgr[1] = pixels[1];
    bgr[2] = pixels[2];
    bgr += 3;
    pixels += 4;
  }
}

#if defined(__x86_64__)
// Eight pixels a step. Each store writes 32 bytes of which 24 count, so the last pixels go the plain way.
__attribute__((target("avx2"))) void Xrgb8888ToBgrAvx2(const uint8_t* pixels, size_t count, uint8_t* bgr) {
  const __m256i dropFourth = _mm256_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1, //
                                              0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
  const __m256i joinHalves = _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7);
  size_t i = 0;
  for (; i + 11 <= count; i += 8) {
    const __m256i eight = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pixels + 4 * i));
    const __m256i packed = _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(eight, dropFourth), joinHalves);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(bgr + 3 * i), packed);
  }
  Xrgb8888ToBgrPlain(pixels + 4 * i, count - i, bgr + 3 * i);
}
#endif

void Xrgb8888ToBgr(const uint8_t* pixels, size_t count, uint8_t* bgr) {
#if defined(__x86_64__)
  static const bool wide = __builtin_cpu_supports("avx2");
  if (wide) return Xrgb8888ToBgrAvx2(pixels, count, bgr);
#endif
  Xrgb8888ToBgrPlain(pixels, count, bgr);
}

// The closed forms of ChannelOf for 5 and 6 bits.
void Rgb565ToBgr(const uint8_t* pixels, size_t count, uint8_t* bgr) {
  for (size_t i = 0; i < count; ++i) {
    uint16_t pixel;
    ::memcpy(&pixel, pixels + 2 * i, sizeof pixel);
    bgr[3 * i] = uint8_t(((pixel & 31) * 527 + 23) >> 6);
    bgr[3 * i + 1] = uint8_t(((pixel >> 5 & 63) * 259 + 33) >> 6);
    bgr[3 * i + 2] = uint8_t(((pixel >> 11) * 527 + 23) >> 6);
  }
}

} // namespace

void RowToBgr(const uint8_t* pixels, const PixelLayout& layout, size_t count, uint8_t* bgr) {
  if (IsXrgb8888(layout)) return Xrgb8888ToBgr(pixels, count, bgr);
  if (IsRgb565(layout)) return Rgb565ToBgr(pixels, count, bgr);
  for (size_t i = 0; i < count; ++i) {
    uint32_t pixel = 0;
    ::memcpy(&pixel, pixels + i * layout.bytesPerPixel, layout.bytesPerPixel);
    bgr[3 * i] = ChannelOf(pixel, layout.blueMask);
    bgr[3 * i + 1] = ChannelOf(pixel, layout.greenMask);
    bgr[3 * i + 2] = ChannelOf(pixel, layout.redMask);
  }
}

void PackRow(const uint8_t* indices, size_t count, int bits, uint8_t* packed) {
  const size_t perByte = 8 / bits;
  for (size_t i = 0; i < count; i += perByte) {
    uint32_t byte = 0;
    for (size_t k = 0; k < perByte; ++k) {
      byte = byte << bits | (i + k < count ? indices[i + k] & ((1U << bits) - 1) : 0);
    }
    *packed++ = uint8_t(byte);
  }
}

} // namespace framereel
