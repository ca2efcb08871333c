// GifWriter: one function for each record of a GIF89a file, in the order of the file.
//
//   header, screen descriptor, colour table   GifWriteHeader    once
//   loop (NETSCAPE2.0)                        GifWriteLoop      once, or not at all
//   comment                                   GifWriteComment   once
//   graphic control                           GifWriteControl   each frame
//   image descriptor and data                 GifWriteImage     each frame
//   trailer                                   GifWriteTrailer   only while saving, see save_animation.h
//
// Nothing here fails by itself: every record goes to the AnimationStream, whose memory does not run out to its callers.
// Source of all layouts: "Graphics Interchange Format, Version 89a".
#pragma once

#include <cstdint>

#include "gif/animation_stream.h"
#include "gif/lzw_encoder.h"

namespace framereel {

inline constexpr int kColourTableBytes = 768; // 256 entries of red, green, blue

struct GifWriter {
  AnimationStream* stream; // not owned
  LzwEncoder lzw;
  uint8_t gifInterlace; // of every image descriptor; set by GifWriteHeader
  uint8_t gifCodeSize;  // LZW minimum code size of every image, 2 to 8; set by GifWriteHeader
};

// Makes a writer into `stream`, with the compressor's tables, which GifWriterFree releases.
void GifWriterInit(GifWriter& gif, AnimationStream* stream);
void GifWriterFree(GifWriter& gif);

// Begins the file. Width and height are the logical screen's; `interlace` is 0 or 1 and marks every image that
// follows; `background` is a colour index. `bits` is the size of the colour table, 1 to 8; `table` holds 2^bits
// triples of red, green, blue.
void GifWriteHeader(GifWriter& gif, int16_t width, int16_t height, uint8_t interlace, uint8_t background, uint8_t bits,
                    const uint8_t* table);

// How often the animation is shown again; 0 means forever.
void GifWriteLoop(GifWriter& gif, uint16_t count);

// `text` is zero-ended and of any length; the zero is not written.
void GifWriteComment(GifWriter& gif, const char* text);

// What holds for the image that follows: it stays in place when the next one comes, with a delay in hundredths of a
// second and, if `transparent`, with `index` as the colour that shows what was there before. `index` is written even
// when `transparent` is false.
void GifWriteControl(GifWriter& gif, bool transparent, uint16_t delayHundredths, uint8_t index);

// Gives another delay to the image whose control record was written at that place of the stream.
void GifRewriteDelay(GifWriter& gif, uint32_t control, uint16_t delayHundredths);

// An image at (left, top) of the logical screen, with the pixels that the cursor tells of: cursor.rowWidth is `width`.
// An image without pixels is the caller's bug: nothing is written.
void GifWriteImage(GifWriter& gif, int16_t left, int16_t top, int16_t width, int16_t height, const PixelCursor& cursor);

// The parts of GifWriteImage, for who packs pixels by other means. The descriptor brings its own table of 2^tableBits
// colours, 1 to 8, or with 0 none. The data's sub-blocks go between beginning and end.
void GifWriteDescriptor(GifWriter& gif, int16_t left, int16_t top, int16_t width, int16_t height, uint8_t tableBits,
                        const uint8_t* table);
void GifBeginImageData(GifWriter& gif, uint8_t codeSize);
void GifEndImageData(GifWriter& gif);

void GifWriteTrailer(GifWriter& gif);

} // namespace framereel
