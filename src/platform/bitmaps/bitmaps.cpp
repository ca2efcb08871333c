// Offscreens, DibBuffers and what lies between them.
#include "platform/bitmaps/bitmaps.h"

#include <cstring>

#include "core/list.h"
#include "core/memory.h"
#include "platform/display/display_caps.h"

namespace framereel {
namespace {

List* offscreens; // all that exist

// What the two colours of a monochrome bitmap are.
bool IsBlackAndWhite(const ColourList& list) {
  if (list.count != 2) return false;
  const auto full = [](const Colour& c, uint16_t v) { return c.red == v && c.green == v && c.blue == v; };
  const Colour *a = &list.colours[0], *b = &list.colours[1];
  return (full(*a, 0) && full(*b, 0xFFFF)) || (full(*a, 0xFFFF) && full(*b, 0));
}

// A record for the bitmap, or null when there is no bitmap.
Offscreen* AddOffscreen(int16_t width, int16_t height, uint16_t depth, uint16_t colourCount, HBITMAP bitmap) {
  if (!bitmap) return nullptr;
  auto* offscreen = static_cast<Offscreen*>(MemAlloc(sizeof(Offscreen)));
  const uint32_t rowBytes = (uint32_t(width) + 31) / 32 * 4;
  const auto capacity = uint16_t(depth < 16 ? 1U << depth : 0);
  *offscreen = {{kPortOffscreen, 1}, width,   height, depth, depth * uint32_t(height) * rowBytes + 24, bitmap,
                colourCount,         capacity};
  ListAppend(offscreens, ToListValue(offscreen));
  return offscreen;
}

// A bitmap in the display's format.
HBITMAP ScreenBitmap(int16_t width, int16_t height, uint32_t colourCount) {
  const DisplayCaps& caps = TheDisplayCaps();
  const BITMAPINFOHEADER header = {
      sizeof header, width, height, caps.screenPlanes, caps.screenPlaneBits, BI_RGB, 0, 2500, 2500, colourCount, 0};
  const HBITMAP bitmap = ::CreateDIBitmap(ScreenContext(), &header, 0, nullptr, nullptr, DIB_RGB_COLORS);
  return bitmap ? bitmap : ::CreateCompatibleBitmap(ScreenContext(), width, height);
}

Offscreen* NewIndexedOffscreen(int16_t width, int16_t height, const ColourList& colours) {
  const auto count = uint16_t(colours.count);
  if (IsBlackAndWhite(colours)) {
    return AddOffscreen(width, height, 1, count, ::CreateBitmap(width, height, 1, 1, nullptr));
  }
  return AddOffscreen(width, height, TheDisplayCaps().screenDepth, count, ScreenBitmap(width, height, colours.count));
}

Offscreen* NewDirectOffscreen(int16_t width, int16_t height, uint16_t depth) {
  return AddOffscreen(width, height, depth, uint16_t(depth < 16 ? 1U << depth : 0), ScreenBitmap(width, height, 0));
}

} // namespace

void BitmapsStartUp() {
  offscreens = ListNew();
}

void BitmapsShutDown() {
  while (ListFirst(offscreens)) FreeOffscreen(FromListValue<Offscreen>(ListFirst(offscreens)));
  ListDelete(offscreens);
  offscreens = nullptr;
}

Offscreen* NewOffscreen(int16_t width, int16_t height, bool compatible) {
  if (!compatible) {
    Colour blackWhite[2] = {{0, 0, 0}, {0xFFFF, 0xFFFF, 0xFFFF}};
    return NewIndexedOffscreen(width, height, {2, blackWhite});
  }
  const PixelSpec spec = ScreenPixelSpec();
  if (spec.kind == 2) return NewDirectOffscreen(width, height, spec.depth);
  Offscreen* offscreen = NewIndexedOffscreen(width, height, spec.colours);
  MemFree(spec.colours.colours);
  return offscreen;
}

Offscreen* NewMaskOffscreen(int16_t width, int16_t height) {
  Offscreen* mask = AddOffscreen(width, height, 1, 2, ::CreateBitmap(width, height, 1, 1, nullptr));
  if (mask) mask->port.colour = 0;
  return mask;
}

void FreeOffscreen(Offscreen* offscreen) {
  if (CurrentPort() == &offscreen->port) SetPortMain(nullptr);
  ::DeleteObject(offscreen->bitmap);
  ListFindRemove(offscreens, ToListValue(offscreen), ListSameValue);
  MemFree(offscreen);
}

Rect OffscreenBounds(const Offscreen* offscreen) {
  return {0, 0, offscreen->height, offscreen->width};
}

namespace {

// All kinds have rows of whole 32-bit words; only the 1-bit kind counts rowSize in words.
DibBuffer* NewDibBuffer(int16_t width, int16_t height, uint32_t bitsPerPixel, uint32_t rowUnit) {
  const uint32_t rowBytes = (uint32_t(width) * bitsPerPixel + 31) / 32 * 4;
  auto* buffer = static_cast<DibBuffer*>(MemAlloc(sizeof(DibBuffer)));
  const size_t bytes = size_t{rowBytes} * size_t(height);
  *buffer = {width, height, rowBytes / rowUnit, static_cast<uint8_t*>(MemAlloc(bytes))};
  ::memset(buffer->bits, 0, bytes);
  return buffer;
}

void ReadDibBuffer(DibBuffer* buffer, int16_t bufferRow, Offscreen* offscreen, int16_t offscreenRow, int16_t rows,
                   WORD bitsPerPixel, uint32_t rowUnit) {
  if (bufferRow < 0 || offscreenRow < 0 || rows < 0) return;
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
