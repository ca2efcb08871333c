// Records and compressed pixels, byte for byte, where the random animations of the recorder's tests do not reach:
// fields that the engine never sets, full dictionaries, and what the hash loses.
#include "gif/gif_records.h"

#include <gtest/gtest.h>

#include "gif/stream_bytes.h"
#include "support/dice.h"
#include "support/plain_gif.h"

namespace framereel {
namespace {

// One writer for all images of a test: nothing may stay from one to the next.
class GifRecords : public testing::Test {
protected:
  // Answers what the plain encoder does.
  bool ExpectPlainPixels(const Bytes& pixels, int initBits) {
    Bytes plain;
    StreamClear(gif.ownStream);
    LzwEncodeImage(gif.lzw, gif.ownStream, {pixels.data(), 1, 0}, uint16_t(initBits), uint32_t(pixels.size()));
    const bool lostKeyZero = PlainLzwEncode(pixels, initBits, plain);
    EXPECT_TRUE(StreamBytes(gif.ownStream) == plain) << pixels.size() << " pixels, " << initBits << " bits";
    return lostKeyZero;
  }

  OwnWriter gif;
  Dice dice{1};
};

TEST_F(GifRecords, HaveTheFieldsThatTheyAreGiven) {
  const uint8_t table[] = {1, 2, 3, 4, 5, 6};
  GifWriteHeader(gif, 0x7FFE, 0x0102, 1, 7, 1, table);
  GifWriteLoop(gif, 0xFEDC);
  GifWriteDescriptor(gif, 0x0304, -2, 0x7FFF, 1, 1, table);
  const Bytes expected = {'G',  'I',  'F',  '8', '9', 'a',  0xFE, 0x7F, 2,    1,   0x80, 7,   0x31, 1,
                          2,    3,    4,    5,   6,   0x21, 0xFF, 11,   'N',  'E', 'T',  'S', 'C',  'A',
                          'P',  'E',  '2',  '.', '0', 3,    1,    0xDC, 0xFE, 0,   0x2C, 4,   3,    0xFE,
                          0xFF, 0xFF, 0x7F, 1,   0,   0xC0, 1,    2,    3,    4,   5,    6};
  EXPECT_EQ(StreamBytes(gif.ownStream), expected);
}

// Sub-blocks that are just full are among them, and images that end as the dictionary is full.
TEST_F(GifRecords, AreThePlainBytesForNoiseAndRunsOfTheLengthsThatMatter) {
  Bytes noise;
  for (int count = 1; count <= 4200 && !HasFailure(); ++count) {
    noise.push_back(uint8_t(dice.random()));
    if (count < 520 || count > 3838) ExpectPlainPixels(noise, 9);
  }
  constexpr size_t kFull = 4090 * 4091 / 2; // pixels of one colour, in strings of 1, 2, 3 and so on
  for (const size_t count : {kFull - 1, kFull, kFull + 1, kFull + 2}) ExpectPlainPixels(Bytes(count, 1), 3);
}

TEST_F(GifRecords, ForgetTheStringOfTwoZerosWhereTheHashDoes) {
  // Colours whose pairs share slot 0 with 0 0, and their neighbours.
  const uint8_t palette[] = {0, 1, 16, 2, 32, 17, 3, 48, 15, 240};
  int lost = 0;
  for (int round = 0; round < 150 && !HasFailure(); ++round) {
    const int initBits = 3 + dice.Below(7), colours = 3 + dice.Below(8), other = 1 + dice.Below(8);
    Bytes pixels = {16, 1}; // a pair with first slot 0, ahead of the first 0 0
    for (int strings = 500 + dice.Below(20'000); strings > 0; --strings) {
      const int run = round % 2 && dice.OneIn(20) ? dice.Below(600) : 1;
      pixels.insert(pixels.end(), size_t(run),
                    run > 1             ? 0
                    : dice.OneIn(other) ? uint8_t(dice.Below(256))
                                        : palette[dice.Below(colours)]);
    }
    for (uint8_t& one : pixels) one &= uint8_t((1 << (initBits - 1)) - 1);
    lost += ExpectPlainPixels(pixels, initBits);
  }
  EXPECT_GT(lost, 20);
}

} // namespace
} // namespace framereel
