// How pixels come out of the server: packed, padded and in its own byte order. Here they become a layout's.
#include <cstring>

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

// The `bytes` bytes at `from` as a number in the given order.
uint32_t NumberAt(const uint8_t* from, int32_t bytes, int32_t byteOrder) {
  uint32_t number = 0;
  for (int32_t i = 0; i < bytes; i++) {
    int32_t place = byteOrder == MSBFirst ? i : bytes - 1 - i;
    number = number << 8 | from[place];
  }
  return number;
}

uint32_t BitAt(const X11Format& format, const uint8_t* row, int32_t x) {
  int32_t byte = x / 8;
  if (format.byteOrder != format.bitOrder) byte ^= format.bitUnit / 8 - 1;
  int32_t bit = format.bitOrder == MSBFirst ? 7 - x % 8 : x % 8;
  return (row[byte] >> bit) & 1;
}

uint32_t NibbleAt(const X11Format& format, const uint8_t* row, int32_t x) {
  bool high = (x % 2 == 0) == (format.byteOrder == MSBFirst);
  return high ? row[x / 2] >> 4 : row[x / 2] & 15;
}

uint32_t PixelAt(const X11Format& format, const uint8_t* row, int32_t x) {
  switch (format.bitsPerPixel) {
  case 1:
    return BitAt(format, row, x);
  case 4:
    return NibbleAt(format, row, x);
  default: {
    int32_t bytes = format.bitsPerPixel / 8;
    return NumberAt(row + int64_t{x} * bytes, bytes, format.byteOrder);
  }
  }
}

} // namespace

int64_t X11RowBytes(const X11Format& format, int32_t width) {
  int64_t bits = int64_t(width) * format.bitsPerPixel;
  return (bits + format.rowPad - 1) / format.rowPad * (format.rowPad / 8);
}

// Palette pixels of fewer bits than their byte go pixel by pixel, so that nothing but the index arrives.
bool X11IsDirect(const X11Format& format, const PixelLayout& layout) {
  if (format.bitsPerPixel != 8 * layout.bytesPerPixel || format.depth < 8) return false;
  return layout.bytesPerPixel == 1 || format.byteOrder == kOwnByteOrder;
}

// Pixel by pixel is slow, and right for every packing; servers of today are direct.
void X11UnpackRow(const X11Format& format, const uint8_t* row, int32_t width, const PixelLayout& layout, uint8_t* out) {
  if (X11IsDirect(format, layout)) {
    std::memcpy(out, row, size_t(width) * layout.bytesPerPixel);
    return;
  }
  uint32_t kept = format.depth >= 32 ? ~0u : (1u << format.depth) - 1;
  uint32_t turned = format.turned ? 1 : 0;
  for (int32_t x = 0; x < width; x++, out += layout.bytesPerPixel) {
    uint32_t pixel = (PixelAt(format, row, x) & kept) ^ turned;
    if (layout.bytesPerPixel == 1) {
      *out = uint8_t(pixel);
    } else if (layout.bytesPerPixel == 2) {
      uint16_t half = uint16_t(pixel);
      std::memcpy(out, &half, sizeof half);
    } else {
      std::memcpy(out, &pixel, sizeof pixel);
    }
  }
}

} // namespace framereel
