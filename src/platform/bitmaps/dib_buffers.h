// DibBuffers: plain rows in a known layout, and how the pixels of an Offscreen get into them.
#pragma once

#include <cstdint>

#include "platform/records/offscreen_record.h"

namespace framereel {

// Rows in a known layout, stored bottom-up: the image's top row is the last one. A row is a multiple of 4 bytes long.
struct DibBuffer {
  int16_t width, height; // pixels
  uint32_t rowSize;      // bytes from a row to the next; in a DibBuffer1 32-bit words
  uint8_t* bits;         // owned
};

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

} // namespace framereel
