// The road of pixels: Offscreens in the display's own format, and DibBuffers, plain rows in a known layout.
#pragma once

#include <cstdint>

#include "core/geometry.h"
#include "platform/drawing/ports.h"
#include "platform/records/colour.h"
#include "win32/win32.h"

namespace framereel {

// A bitmap in the display's format that can be drawn into and copied from. A Port of kind kPortOffscreen.
struct Offscreen {
  Port port;
  int16_t width, height;   // pixels
  uint16_t depth;          // bits per pixel
  uint32_t byteSize;       // an estimate, for the program's own use
  HBITMAP bitmap;          // owned
  uint16_t colourCount;    // number of colours that it was made with
  uint16_t colourCapacity; // 1 << depth, cut to 16 bits: 0 from 16 bits up
};

struct ColourList {
  uint32_t count;
  Colour* colours; // from MemAlloc
};

// What a new Offscreen must be like to be in the screen's format.
struct PixelSpec {
  uint16_t kind;      // 1 indexed: `colours` holds; 2 direct: `depth` holds
  ColourList colours; // owned
  uint16_t depth;
};

// Rows in a known layout, stored bottom-up: the image's top row is the last one. A row is a multiple of 4 bytes long.
struct DibBuffer {
  int16_t width, height; // pixels
  uint32_t rowSize;      // bytes from a row to the next; in a DibBuffer1 32-bit words
  uint8_t* bits;         // owned
};

// Makes the list of Offscreens; its counterpart frees those that are left.
void BitmapsStartUp();
void BitmapsShutDown();

// compatible: the display's format; else black and white. Null when the platform has no such bitmap. The caller frees.
Offscreen* NewOffscreen(int16_t width, int16_t height, bool compatible);
// A plain 1-bit bitmap, whose Port has colour 0. Null when the platform has no such bitmap.
Offscreen* NewMaskOffscreen(int16_t width, int16_t height);
// A bitmap resource as it stands, and one turned into a mask, which then is the current Port. Null when there is none.
Offscreen* LoadOffscreen(uint16_t id);
Offscreen* LoadMaskOffscreen(uint16_t id);
Offscreen* LoadPicture(uint16_t id); // of the pictures, which the toolkit counts from 0
// Frees it; if it is the current Port, the main window is current afterwards.
void FreeOffscreen(Offscreen* offscreen);
Rect OffscreenBounds(const Offscreen* offscreen);

// Copies a rectangle of `source` into a rectangle of the current Port, stretching where the sizes differ. Modes: 0
// blackness, 1 and 3 copy, 2 and, 4 or, 5 or with the source inverted; any other does nothing. Mode 1 from a mask joins
// it by or with the brush in use. Between one bit and colours, 0 is the foreground and 1 the background of the
// DrawState in use. What lies off either side is cut, but a stretch from over the source's edge does nothing. The main
// window as a source is read from the screen, with all that lies over it.
void CopyBits(const Port* source, const Rect& from, const Rect& to, int mode);
// Whether the pixel is other than pure white; places outside are.
bool PixelIsSet(const Offscreen* offscreen, int x, int y);

// Buffers by their bits per pixel: 24 blue, green, red; 8 a colour index; 2 and 1 packed, leftmost in the top bits.
// Width and height are positive, all bits 0. The caller frees them.
DibBuffer* NewDibBuffer24(int16_t width, int16_t height);
DibBuffer* NewDibBuffer8(int16_t width, int16_t height);
DibBuffer* NewDibBuffer2(int16_t width, int16_t height);
DibBuffer* NewDibBuffer1(int16_t width, int16_t height);
void FreeDibBuffer(DibBuffer* buffer);

// Reads `rows` rows of the Offscreen, from offscreenRow (counted from the image's top), into the buffer. bufferRow
// counts the buffer's rows from its start, and the lowest of the rows read goes there. Does nothing when the widths
// differ or the rows do not fit. If the Offscreen is the current Port, the main window is current afterwards.
void ReadDibBuffer24(DibBuffer* buffer, int16_t bufferRow, Offscreen* offscreen, int16_t offscreenRow, int16_t rows);
void ReadDibBuffer8(DibBuffer* buffer, int16_t bufferRow, Offscreen* offscreen, int16_t offscreenRow, int16_t rows);
void ReadDibBuffer2(DibBuffer* buffer, int16_t bufferRow, Offscreen* offscreen, int16_t offscreenRow, int16_t rows);
void ReadDibBuffer1(DibBuffer* buffer, int16_t bufferRow, Offscreen* offscreen, int16_t offscreenRow, int16_t rows);

uint16_t ScreenDepth();
// The caller frees the list with MemFree.
PixelSpec ScreenPixelSpec();
void ScreenColours(ColourList* out);

} // namespace framereel
