// Making DibBuffers, and reading into them.
#include "platform/bitmaps/dib_buffers.h"

#include <cstring>

#include "core/memory.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/shared_contexts.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

// All kinds have rows of whole 32-bit words; only the 1-bit kind counts rowSize in words.
DibBuffer* NewDibBuffer(int16_t width, int16_t height, uint32_t bitsPerPixel, uint32_t rowUnit) {
  const uint32_t rowBytes = (uint32_t(width) * bitsPerPixel + 31) / 32 * 4;
  const size_t bytes = size_t{rowBytes} * size_t(height);
  auto* buffer = static_cast<DibBuffer*>(MemAlloc(sizeof(DibBuffer)));
  auto* bits = static_cast<uint8_t*>(MemAlloc(bytes));
  if (!buffer || !bits) {
    MemFree(buffer);
    MemFree(bits);
    return nullptr;
  }
  ::memset(bits, 0, bytes);
  *buffer = {width, height, rowBytes / rowUnit, bits};
  return buffer;
}

void ReadDibBuffer(DibBuffer* buffer, int16_t bufferRow, Offscreen* offscreen, int16_t offscreenRow, int16_t rows,
                   WORD bitsPerPixel, uint32_t rowUnit) {
  if (!buffer || bufferRow < 0 || offscreenRow < 0 || rows < 0) return;
  if (buffer->width != offscreen->width || offscreenRow + rows > offscreen->height) return;
  if (bufferRow + rows > buffer->height) return;
  if (CurrentPort() == &offscreen->port) SetPortMain(nullptr);
  const DWORD colours = bitsPerPixel == 8 ? 256 : 0;
  BITMAPINFO info = {{sizeof(BITMAPINFOHEADER), offscreen->width, offscreen->height, 1, bitsPerPixel, BI_RGB, 0, 2834,
                      2834, colours, colours}};
  const UINT usage = bitsPerPixel == 8 || bitsPerPixel == 2 ? DIB_PAL_COLORS : DIB_RGB_COLORS;
  const auto start = UINT(offscreen->height - offscreenRow - rows);
  ::GetDIBits(ScreenContext(), offscreen->bitmap, start, UINT(rows),
              buffer->bits + size_t(bufferRow) * buffer->rowSize * rowUnit, &info, usage);
}

} // namespace

DibBuffer* NewDibBuffer24(int16_t width, int16_t height) {
  return NewDibBuffer(width, height, 24, 1);
}
DibBuffer* NewDibBuffer8(int16_t width, int16_t height) {
  return NewDibBuffer(width, height, 8, 1);
}
DibBuffer* NewDibBuffer2(int16_t width, int16_t height) {
  return NewDibBuffer(width, height, 2, 1);
}
DibBuffer* NewDibBuffer1(int16_t width, int16_t height) {
  return NewDibBuffer(width, height, 1, 4);
}

void FreeDibBuffer(DibBuffer* buffer) {
  if (!buffer) return;
  MemFree(buffer->bits);
  MemFree(buffer);
}

void ReadDibBuffer24(DibBuffer* buffer, int16_t bufferRow, Offscreen* offscreen, int16_t offscreenRow, int16_t rows) {
  ReadDibBuffer(buffer, bufferRow, offscreen, offscreenRow, rows, 24, 1);
}

void ReadDibBuffer8(DibBuffer* buffer, int16_t bufferRow, Offscreen* offscreen, int16_t offscreenRow, int16_t rows) {
  ReadDibBuffer(buffer, bufferRow, offscreen, offscreenRow, rows, 8, 1);
}

void ReadDibBuffer2(DibBuffer* buffer, int16_t bufferRow, Offscreen* offscreen, int16_t offscreenRow, int16_t rows) {
  ReadDibBuffer(buffer, bufferRow, offscreen, offscreenRow, rows, 2, 1);
}

void ReadDibBuffer1(DibBuffer* buffer, int16_t bufferRow, Offscreen* offscreen, int16_t offscreenRow, int16_t rows) {
  ReadDibBuffer(buffer, bufferRow, offscreen, offscreenRow, rows, 1, 4);
}

} // namespace framereel
