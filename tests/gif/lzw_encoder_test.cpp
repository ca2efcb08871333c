// The encoder against the plain one, byte for byte, and against a foreign decoder, pixel for pixel.
#include "gif/lzw_encoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <string>

#include "gif/own_writer.h"
#include "gif/plain_lzw.h"
#include "support/gif_reader.h"

namespace framereel {
namespace {

using Bytes = std::vector<uint8_t>;

Bytes Plain(const Bytes& pixels, int initBits) {
  Bytes out;
  PlainLzwEncode(pixels, initBits, out);
  return out;
}

// Random numbers of any range from one seed.
struct Dice {
  uint32_t seed;
  uint32_t Below(uint32_t limit) {
    seed = seed * 1664525u + 1013904223u;
    return static_cast<uint32_t>((static_cast<uint64_t>(seed) * limit) >> 32);
  }
};

class LzwCompression : public testing::Test {
protected:
  LzwCompression() { LzwInit(lzw); }
  ~LzwCompression() override { LzwFree(lzw); }

  // Pixels as one row, or as rows of `rowWidth` with other bytes between them.
  Bytes Encoded(const Bytes& pixels, int initBits, size_t rowWidth = 0, size_t rowSkip = 0) {
    Bytes frame = pixels;
    if (rowWidth > 0) {
      frame.clear();
      for (size_t at = 0; at < pixels.size(); at += rowWidth) {
        if (at > 0) frame.insert(frame.end(), rowSkip, pixels[at - 1]);
        const size_t part = std::min(rowWidth, pixels.size() - at);
        frame.insert(frame.end(), pixels.begin() + static_cast<ptrdiff_t>(at),
                     pixels.begin() + static_cast<ptrdiff_t>(at + part));
      }
    }
    StreamClear(stream);
    const PixelCursor cursor = {frame.data(), static_cast<int16_t>(rowWidth > 0 ? rowWidth : 1),
                                static_cast<int16_t>(rowSkip)};
    LzwEncodeImage(lzw, stream, cursor, static_cast<uint16_t>(initBits), static_cast<uint32_t>(pixels.size()));
    return StreamBytes(stream);
  }

  void ExpectPlainBytes(const Bytes& pixels, int initBits, size_t rowWidth = 0, size_t rowSkip = 0) {
    ASSERT_EQ(Encoded(pixels, initBits, rowWidth, rowSkip), Plain(pixels, initBits))
        << pixels.size() << " pixels, " << initBits << " bits, rows of " << rowWidth << " and " << rowSkip;
  }

  LzwEncoder lzw;
  OwnStream stream;
};

// The codes of the sub-blocks, read back with the widths that a decoder uses.
std::vector<uint32_t> Codes(const Bytes& blocks, uint32_t initBits) {
  Bytes bytes;
  for (size_t at = 0; at < blocks.size(); at += 1u + blocks[at]) {
    bytes.insert(bytes.end(), blocks.begin() + static_cast<ptrdiff_t>(at + 1),
                 blocks.begin() + static_cast<ptrdiff_t>(at + 1 + blocks[at]));
  }
  const uint32_t clear = 1u << (initBits - 1);
  std::vector<uint32_t> codes;
  uint32_t width = initBits, known = clear + 1;
  for (size_t bit = 0; codes.empty() || codes.back() != clear + 1; bit += width) {
    if (codes.size() > 1 && codes.back() != clear && known < 4096) ++known;
    if (!codes.empty() && codes.back() == clear) known = clear + 1;
    width = known < clear + 2 ? initBits : std::min(12u, static_cast<uint32_t>(std::bit_width(known)));
    uint32_t code = 0;
    for (uint32_t i = 0; i < width; ++i) {
      const size_t at = bit + i;
      if (at / 8 >= bytes.size()) return {};
      code |= static_cast<uint32_t>(bytes[at / 8] >> (at % 8) & 1) << i;
    }
    codes.push_back(code);
  }
  return codes;
}

TEST_F(LzwCompression, PutsOutClearPixelAndEndForOnePixel) {
  EXPECT_EQ(Encoded({5}, 9), (Bytes{4, 0x00, 0x0B, 0x04, 0x04}));
  EXPECT_EQ(Encoded({3}, 3), (Bytes{2, 0x5C, 0x01}));
}

TEST_F(LzwCompression, WidensCodesRightBehindTheOneThatFillsTheWidth) {
  // Pairs that do not repeat: each code learns an entry.
  Bytes pixels = {0};
  for (int i = 0; i < 599; ++i) pixels.push_back(static_cast<uint8_t>((pixels.back() + 1 + i / 251) % 251));
  const std::vector<uint32_t> codes = Codes(Encoded(pixels, 9), 9);
  ASSERT_EQ(codes.size(), 602u);
  EXPECT_EQ(Bytes(codes.begin() + 1, codes.end() - 1), pixels);
  ExpectPlainBytes(pixels, 9);
}

TEST_F(LzwCompression, ClearsWhenTheDictionaryIsFullAndOnlyThen) {
  const Bytes pixels = SomeBytes(20000);
  const std::vector<uint32_t> codes = Codes(Encoded(pixels, 9), 9);
  // A clear code, a code for each entry from 258 to 4095, and one more for which there was no room.
  constexpr size_t kLife = 1 + (4096 - 258) + 1;
  ASSERT_GT(codes.size(), 4 * kLife);
  for (size_t i = 0; i < codes.size(); ++i) ASSERT_EQ(codes[i] == 256, i % kLife == 0) << i;
  ExpectPlainBytes(pixels, 9);
}

TEST_F(LzwCompression, FillsSubBlocksToTheirLastByte) {
  // From one image to the next a few bits more: every length around one and two full sub-blocks.
  bool exactlyOne = false, exactlyTwo = false;
  const Bytes noise = SomeBytes(520);
  for (uint32_t count = 200; count <= 520; ++count) {
    const Bytes pixels(noise.begin(), noise.begin() + count), blocks = Encoded(pixels, 9);
    ASSERT_EQ(blocks, Plain(pixels, 9)) << count;
    exactlyOne |= blocks.size() == 256 && blocks[0] == 255;
    exactlyTwo |= blocks.size() == 512 && blocks[256] == 255;
  }
  EXPECT_TRUE(exactlyOne);
  EXPECT_TRUE(exactlyTwo);
}

TEST_F(LzwCompression, KeepsNothingFromOneImageToTheNext) {
  const Bytes noise = SomeBytes(9000), few = Bytes(500, 2);
  const Bytes first = Encoded(noise, 9);
  for (int initBits = 3; initBits <= 9; ++initBits) {
    ExpectPlainBytes(few, initBits);
    Bytes pixels = noise;
    for (uint8_t& pixel : pixels) pixel %= 1 << (initBits - 1);
    ExpectPlainBytes(pixels, initBits);
  }
  EXPECT_EQ(Encoded(noise, 9), first);
}

TEST_F(LzwCompression, ReadsItsOwnColumnsOnly) {
  Dice dice{7};
  for (size_t rowWidth = 1; rowWidth < 80; ++rowWidth) {
    Bytes pixels(rowWidth * 9 + rowWidth / 2 + 1);
    uint8_t colour = 0;
    for (uint8_t& pixel : pixels) {
      if (dice.Below(30) == 0) colour = static_cast<uint8_t>(dice.Below(4));
      pixel = colour;
    }
    ExpectPlainBytes(pixels, 3, rowWidth, dice.Below(100));
    ExpectPlainBytes(pixels, 3, rowWidth, 0);
  }
}

TEST_F(LzwCompression, MatchesRunsOfEveryLength) {
  // Runs alone, between others, over row ends, and so long that a dictionary fills within one.
  for (uint32_t run = 1; run < 400; ++run) {
    Bytes pixels(run, 216);
    ExpectPlainBytes(pixels, 9);
    pixels.insert(pixels.begin(), 3);
    for (int i = 0; i < 5; ++i) {
      pixels.push_back(static_cast<uint8_t>(i));
      pixels.insert(pixels.end(), run + static_cast<uint32_t>(i) % 3, 216);
    }
    ExpectPlainBytes(pixels, 9);
    ExpectPlainBytes(pixels, 9, 37, 5);
  }
  ExpectPlainBytes(Bytes(9000000, 1), 3, 3000, 7);
}

TEST_F(LzwCompression, GivesThePlainBytesForAnyPixels) {
  Dice dice{2024};
  for (int round = 0; round < 1500; ++round) {
    const int initBits = 3 + static_cast<int>(dice.Below(7));
    const uint32_t colours = 1 + dice.Below(1u << (initBits - 1)), change = 1 + dice.Below(30);
    Bytes pixels(1 + dice.Below(round % 50 == 0 ? 150000 : 6000));
    uint8_t colour = 0;
    for (uint8_t& pixel : pixels) {
      if (dice.Below(change) == 0) colour = static_cast<uint8_t>(dice.Below(colours));
      pixel = colour;
    }
    const size_t rowWidth = 1 + dice.Below(700);
    ExpectPlainBytes(pixels, initBits, rowWidth, dice.Below(3) * 11);
    if (HasFatalFailure()) return;
  }
}

// True if the pixels make the plain hash lose the string 0 0 that it had learned: with a decoder's eyes, if a code is
// put out for 0 although an entry for 0 0 stands and 0 follows.
bool LearnsZeroZeroAgain(const std::vector<uint32_t>& codes, uint32_t clear) {
  int learned = 0;
  for (size_t i = 0; i + 1 < codes.size(); ++i) {
    if (codes[i] == clear) learned = 0;
    if (codes[i] == 0 && codes[i + 1] == 0) ++learned;
    if (learned > 1) return true;
  }
  return false;
}

TEST_F(LzwCompression, ForgetsTheStringOfTwoZerosWhereTheHashDoes) {
  // Colours whose pairs share slot 0 with 0 0, and their neighbours.
  const uint8_t palette[] = {0, 1, 16, 2, 32, 17, 3, 48, 15, 240};
  Dice dice{99};
  int lost = 0;
  for (int round = 0; round < 400; ++round) {
    const int initBits = 6 + static_cast<int>(dice.Below(4));
    const uint32_t colours = 3 + dice.Below(8), other = 1 + dice.Below(8);
    Bytes pixels(500 + dice.Below(40000)); // several dictionaries
    for (uint8_t& pixel : pixels) {
      pixel = dice.Below(other) == 0 ? static_cast<uint8_t>(dice.Below(256)) : palette[dice.Below(colours)];
      pixel &= static_cast<uint8_t>((1 << (initBits - 1)) - 1);
    }
    // Make sure that a pair with first slot 0 comes ahead of the first 0 0.
    pixels[0] = 16;
    pixels[1] = 1;
    ExpectPlainBytes(pixels, initBits, 1 + dice.Below(300), 3);
    if (HasFatalFailure()) return;
    lost += LearnsZeroZeroAgain(Codes(Plain(pixels, initBits), static_cast<uint32_t>(initBits)), 1u << (initBits - 1));
  }
  EXPECT_GT(lost, 20);
}

TEST_F(LzwCompression, ReadsBackInAForeignDecoderAtEveryCodeSize) {
  const Bytes noise = SomeBytes(64 * 200), table = SomeBytes(768);
  for (int bits = 1; bits <= 8; ++bits) {
    Bytes pixels = noise;
    for (uint8_t& pixel : pixels) pixel = static_cast<uint8_t>(pixel >> (8 - bits));
    std::fill(pixels.begin() + 500, pixels.begin() + 9000, pixels[0]);
    OwnWriter gif;
    GifWriteHeader(gif, 64, 200, 0, 0, static_cast<uint8_t>(bits), table.data());
    GifWriteImage(gif, 0, 0, 64, 200, {pixels.data(), 64, 0});
    GifWriteTrailer(gif);
    const GifPicture read = ReadGif(gif.Bytes());
    ASSERT_EQ(read.error, "") << bits;
    EXPECT_EQ(read.frames[0].indices, pixels) << bits;
  }
}

TEST_F(LzwCompression, PutsOutNothingForWhatNoCallerMaySay) {
  const uint8_t pixel = 0;
  const PixelCursor cursor = {&pixel, 1, 0};
  LzwEncodeImage(lzw, stream, cursor, 9, 0);
  LzwEncodeImage(lzw, stream, cursor, 2, 1);
  LzwEncodeImage(lzw, stream, cursor, 10, 1);
  LzwEncodeImage(lzw, stream, {&pixel, 0, 0}, 9, 1);
  EXPECT_EQ(stream.streamSize, 0u);
}

} // namespace
} // namespace framereel
