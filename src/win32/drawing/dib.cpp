// Reading rows of a bitmap out into a known layout: the road of every recorded frame.
#include <cstring>

#include "win32/drawing/gdi.h"
#include "win32/pixels/pixels.h"
#include "win32/win32_drawing.h"

using namespace framereel;

namespace {

// What a run of rows is turned by.
struct RowReader {
  PixelLayout layout;
  size_t width;
  WORD bitCount;
  const uint8_t* sixteen; // of the bitmap
};

void ReadRow(const RowReader& reader, const uint8_t* row, uint8_t* out) {
  if (reader.bitCount == 24) {
    RowToBgr(row, reader.layout, reader.width, out);
  } else if (reader.bitCount != 8) {
    PackRow(row, reader.width, reader.bitCount, out);
  } else if (reader.layout.depth == 4) {
    for (size_t x = 0; x < reader.width; ++x) out[x] = reader.sixteen[row[x] & 15];
  } else {
    ::memcpy(out, row, reader.width);
  }
}

// Which layouts each bit count can be read from.
bool CanRead(const PixelLayout& layout, WORD bitCount, UINT usage) {
  switch (bitCount) {
  case 24:
    return !IsPalette(layout);
  case 8:
    return IsPalette(layout) && usage == DIB_PAL_COLORS;
  case 2:
    return IsPalette(layout) && layout.depth == 2 && usage == DIB_PAL_COLORS;
  case 1:
    return IsPalette(layout) && layout.depth == 1;
  default:
    return false;
  }
}

} // namespace

int GetDIBits(HDC context, HBITMAP bitmap, UINT start, UINT rows, void* bits, BITMAPINFO* info, UINT usage) {
  if (!context || !bitmap || bitmap->holder || !bits || !info) return 0;
  const Surface& surface = bitmap->surface;
  const BITMAPINFOHEADER& header = info->bmiHeader;
  if (header.biWidth != surface.width || header.biHeight != surface.height) return 0;
  if (!CanRead(surface.layout, header.biBitCount, usage)) return 0;
  const auto height = UINT(surface.height);
  if (start >= height) return 0;
  if (rows > height - start) rows = height - start;

  const RowReader reader = {surface.layout, size_t(surface.width), header.biBitCount, bitmap->sixteen};
  const size_t rowBytes = (size_t(surface.width) * header.biBitCount + 31) / 32 * 4;
  auto* out = static_cast<uint8_t*>(bits);
  for (UINT line = start; line < start + rows; ++line) {
    ReadRow(reader, RowOf(surface, int32_t(height - 1 - line)), out);
    out += rowBytes;
  }
  return int(rows);
}
