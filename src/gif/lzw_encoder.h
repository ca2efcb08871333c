// LzwEncoder: the pixels of one image into GIF's variable-length LZW data.
//
// GifWriteImage calls it between the code size byte and the block terminator. Start reading lzw_encoder.cpp at
// LzwEncodeImage.
#pragma once

#include <cstdint>

#include "gif/animation_stream.h"
#include "gif/pixel_cursor.h"

namespace framereel {

struct LzwTables;

// What the encoder keeps from one image to the next: memory, nothing else. Each image starts afresh.
struct LzwEncoder {
  LzwTables* tables; // about 4.4 MiB; owned
};

// Makes the tables, which LzwFree releases. Running out of memory ends in FatalExit.
void LzwInit(LzwEncoder& lzw);
void LzwFree(LzwEncoder& lzw);

// Compresses `count` pixels from the cursor on, at least 1, and appends the data's sub-blocks to the stream, each up
// to 255 bytes behind its length. The caller writes the code size before them and the terminator behind.
//
// initBits is the code size plus one, 3 to 9; every pixel is below 2^(initBits - 1). Counts of 0 and other widths are
// the caller's bug: nothing is appended.
void LzwEncodeImage(LzwEncoder& lzw, AnimationStream& stream, PixelCursor cursor, uint16_t initBits, uint32_t count);

} // namespace framereel
