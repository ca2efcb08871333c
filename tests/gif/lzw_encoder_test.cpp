// The encoder against the plain one, byte for byte. A foreign decoder reads what it writes in the tests of the
// recorder.
#include "gif/lzw_encoder.h"

#include <gtest/gtest.h>

#include <random>

#include "gif/plain_lzw.h"
#include "gif/stream_bytes.h"

namespace framereel {
namespace {

using Bytes = std::vector<uint8_t>;

// One encoder for all images of a test: nothing may stay from one to the next.
class LzwCompression : public testing::Test {
protected:
  LzwCompression() { LzwInit(lzw); }
  ~LzwCompression() override { LzwFree(lzw); }

  uint32_t Below(uint32_t limit) { return uint32_t(random() % limit); }

  // The pixels as rows of that width with other bytes between them. Answers what the plain encoder does.
  bool ExpectPlainBytes(const Bytes& pixels, int initBits, size_t rowWidth, size_t rowSkip) {
    Bytes frame, expected;
    for (size_t at = 0; at < pixels.size(); ++at) {
      if (at > 0 && at % rowWidth == 0) frame.insert(frame.end(), rowSkip, pixels[at - 1]);
      frame.push_back(pixels[at]);
    }
    StreamClear(stream);
    const PixelCursor cursor = {frame.data(), int16_t(rowWidth), int16_t(rowSkip)};
    LzwEncodeImage(lzw, stream, cursor, uint16_t(initBits), uint32_t(pixels.size()));
    const bool lostKeyZero = PlainLzwEncode(pixels, initBits, expected);
    EXPECT_TRUE(StreamBytes(stream) == expected)
        << pixels.size() << " pixels, " << initBits << " bits, rows of " << rowWidth << " and " << rowSkip;
    return lostKeyZero;
  }

  LzwEncoder lzw;
  OwnStream stream;
  std::mt19937 random{2024};
};

TEST_F(LzwCompression, GivesThePlainBytesForAnyPixels) {
  for (int round = 0; round < 1500 && !HasFailure(); ++round) {
    const int initBits = 3 + int(Below(7));
    const uint32_t colours = 1 + Below(1u << (initBits - 1)), change = 1 + Below(30);
    Bytes pixels(1 + Below(round % 50 == 0 ? 150000 : 6000));
    uint8_t colour = 0;
    for (uint8_t& pixel : pixels) {
      if (Below(change) == 0) colour = uint8_t(Below(colours));
      pixel = colour;
    }
    ExpectPlainBytes(pixels, initBits, 1 + Below(700), Below(3) * 11);
  }
}

// Sub-blocks that are just full among them.
TEST_F(LzwCompression, GivesThePlainBytesForNoiseOfEveryLength) {
  const Bytes noise = SomeBytes(520);
  for (uint32_t count = 1; count <= 520; ++count)
    ExpectPlainBytes(Bytes(noise.begin(), noise.begin() + count), 9, 99, 0);
}

// Alone, between others, over row ends, and so long that a dictionary fills within one.
TEST_F(LzwCompression, MatchesRunsOfEveryLength) {
  for (uint32_t run = 1; run < 400 && !HasFailure(); ++run) {
    Bytes pixels(run, 216);
    for (uint8_t i = 0; i < 5; ++i) {
      pixels.push_back(i);
      pixels.insert(pixels.end(), run + i % 3, 216);
    }
    ExpectPlainBytes(Bytes(run, 216), 9, run, 0);
    ExpectPlainBytes(pixels, 9, pixels.size(), 0);
    ExpectPlainBytes(pixels, 9, 37, 5);
  }
  ExpectPlainBytes(Bytes(9000000, 1), 3, 3000, 7);
}

TEST_F(LzwCompression, ForgetsTheStringOfTwoZerosWhereTheHashDoes) {
  // Colours whose pairs share slot 0 with 0 0, and their neighbours.
  const uint8_t palette[] = {0, 1, 16, 2, 32, 17, 3, 48, 15, 240};
  int lost = 0;
  for (int round = 0; round < 400 && !HasFailure(); ++round) {
    const int initBits = 6 + int(Below(4));
    const uint32_t colours = 3 + Below(8), other = 1 + Below(8);
    Bytes pixels(500 + Below(40000)); // several dictionaries
    for (uint8_t& pixel : pixels) {
      pixel = Below(other) == 0 ? uint8_t(Below(256)) : palette[Below(colours)];
      pixel &= uint8_t((1 << (initBits - 1)) - 1);
    }
    // Make sure that a pair with first slot 0 comes ahead of the first 0 0.
    pixels[0] = 16;
    pixels[1] = 1;
    lost += ExpectPlainBytes(pixels, initBits, 1 + Below(300), 3);
  }
  EXPECT_GT(lost, 20);
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
