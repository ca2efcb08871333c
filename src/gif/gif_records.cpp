// The records of a GIF89a file: each is built on the stack, a field or a sub-block a line, and appended once.
#include "gif/gif_records.h"

#include <cstring>

namespace framereel {
namespace {

constexpr uint8_t kExtensionIntroducer = 0x21;
constexpr uint8_t kImageSeparator = 0x2C;
constexpr uint8_t kTrailer = 0x3B;
constexpr uint8_t kBlockTerminator = 0x00;
constexpr uint8_t kApplicationLabel = 0xFF;
constexpr uint8_t kCommentLabel = 0xFE;
constexpr uint8_t kGraphicControlLabel = 0xF9;
constexpr size_t kSubBlockMax = 255;

constexpr uint8_t Low(uint16_t value) {
  return uint8_t(value & 0xFF);
}
constexpr uint8_t High(uint16_t value) {
  return uint8_t(value >> 8);
}

void GifWriteByte(GifWriter& gif, uint8_t byte) {
  StreamAppend(*gif.stream, 1, &byte);
}

// `entries` triples of red, green, blue.
void GifWriteColourTable(GifWriter& gif, uint16_t entries, const uint8_t* table) {
  StreamAppend(*gif.stream, 3u * entries, table);
}

} // namespace

void GifWriterInit(GifWriter& gif, AnimationStream* stream) {
  gif = {};
  gif.stream = stream;
  LzwInit(gif.lzw);
}

void GifWriterFree(GifWriter& gif) {
  LzwFree(gif.lzw);
}

void GifWriteHeader(GifWriter& gif, int16_t width, int16_t height, uint8_t interlace, uint8_t background, uint8_t bits,
                    const uint8_t* table) {
  constexpr uint8_t kGlobalTable = 0x80;
  constexpr uint8_t kSquarePixels = 0x31; // (49 + 15) / 64 = 1
  gif.gifInterlace = interlace;
  gif.gifCodeSize = bits < 2 ? 2 : bits;
  const uint8_t tableSize = (bits - 1) & 7;
  const uint8_t packed = kGlobalTable | uint8_t(tableSize << 4) | tableSize;
  // clang-format off
  const uint8_t record[] = {
      'G', 'I', 'F', '8', '9', 'a',
      Low(width), High(width),
      Low(height), High(height),
      packed,  // global table, colour resolution, not sorted, size of the table
      background,
      kSquarePixels,
  };
  // clang-format on
  StreamAppend(*gif.stream, sizeof record, record);
  GifWriteColourTable(gif, uint16_t(1u << bits), table);
}

void GifWriteLoop(GifWriter& gif, uint16_t count) {
  constexpr uint8_t kLoopSubBlock = 0x01;
  // clang-format off
  const uint8_t record[] = {
      kExtensionIntroducer, kApplicationLabel,
      11, 'N', 'E', 'T', 'S', 'C', 'A', 'P', 'E', '2', '.', '0',
      3, kLoopSubBlock, Low(count), High(count),
      kBlockTerminator,
  };
  // clang-format on
  StreamAppend(*gif.stream, sizeof record, record);
}

void GifWriteComment(GifWriter& gif, const char* text) {
  const uint8_t head[] = {kExtensionIntroducer, kCommentLabel};
  StreamAppend(*gif.stream, sizeof head, head);
  for (size_t left = std::strlen(text); left > 0;) {
    const size_t part = left < kSubBlockMax ? left : kSubBlockMax;
    GifWriteByte(gif, uint8_t(part));
    StreamAppend(*gif.stream, uint32_t(part), text);
    text += part;
    left -= part;
  }
  GifWriteByte(gif, kBlockTerminator);
}

void GifWriteControl(GifWriter& gif, bool transparent, uint16_t delayHundredths, uint8_t index) {
  constexpr uint8_t kLeaveInPlace = 1 << 2; // disposal: the next image is laid over this one
  const uint8_t packed = kLeaveInPlace | (transparent ? 1 : 0);
  // clang-format off
  const uint8_t record[] = {
      kExtensionIntroducer, kGraphicControlLabel,
      4, packed, Low(delayHundredths), High(delayHundredths), index,
      kBlockTerminator,
  };
  // clang-format on
  StreamAppend(*gif.stream, sizeof record, record);
}

void GifWriteImage(GifWriter& gif, int16_t left, int16_t top, int16_t width, int16_t height,
                   const PixelCursor& cursor) {
  if (width <= 0 || height <= 0) return;
  GifWriteDescriptor(gif, left, top, width, height, 0, nullptr);
  GifBeginImageData(gif, gif.gifCodeSize);
  const uint32_t count = uint32_t(width) * uint32_t(height);
  LzwEncodeImage(gif.lzw, *gif.stream, cursor, gif.gifCodeSize + 1, count);
  GifEndImageData(gif);
}

void GifWriteDescriptor(GifWriter& gif, int16_t left, int16_t top, int16_t width, int16_t height, uint8_t tableBits,
                        const uint8_t* table) {
  constexpr uint8_t kOwnTable = 0x80;
  const auto tableSize = uint8_t(tableBits == 0 ? 0 : kOwnTable | (tableBits - 1));
  const uint8_t packed = uint8_t((gif.gifInterlace & 1) << 6) | tableSize;
  // clang-format off
  const uint8_t record[] = {
      kImageSeparator,
      Low(left), High(left),
      Low(top), High(top),
      Low(width), High(width),
      Low(height), High(height),
      packed,  // own table, interlace, not sorted, size of the table
  };
  // clang-format on
  StreamAppend(*gif.stream, sizeof record, record);
  if (tableBits != 0) GifWriteColourTable(gif, uint16_t(1u << tableBits), table);
}

void GifBeginImageData(GifWriter& gif, uint8_t codeSize) {
  GifWriteByte(gif, codeSize);
}

void GifEndImageData(GifWriter& gif) {
  GifWriteByte(gif, kBlockTerminator);
}

void GifWriteTrailer(GifWriter& gif) {
  GifWriteByte(gif, kTrailer);
}

} // namespace framereel
