// Records and compressed pixels against the plain writer, byte for byte. What the engine makes of them is judged in the
// tests of the recorder, by a foreign reader too.
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
  int AnySide() { return dice.OneIn(3) ? dice.Below(0x8000) : dice.Below(300); }

  PlainHead WriteHead() {
    PlainHead head = {AnySide(), AnySide(), dice.Below(2), dice.Below(256), 1 + dice.Below(8), {}, -1, ""};
    Bytes table;
    for (int i = 0; i < 1 << head.bits; ++i) {
      head.colours.push_back({uint8_t(dice.random()), uint8_t(i), uint8_t(dice.random())});
      table.insert(table.end(), {head.colours.back().red, uint8_t(i), head.colours.back().blue});
    }
    head.comment.assign(size_t(dice.OneIn(3) ? 255 * dice.Below(4) : dice.Below(600)), 'c');
    GifWriteHeader(gif, int16_t(head.width), int16_t(head.height), uint8_t(head.interlace), uint8_t(head.background),
                   uint8_t(head.bits), table.data());
    if (dice.OneIn(2)) GifWriteLoop(gif, uint16_t(head.loop = dice.Below(0x10000)));
    GifWriteComment(gif, head.comment.c_str());
    PlainWriteHead(expected, head);
    return head;
  }

  // Pixels in rows of that many, with others between the rows, at some place with some delay.
  void WriteFrame(const PlainHead& head, int width, const Bytes& pixels) {
    const int height = int(pixels.size()) / width, skip = dice.Below(3) * 11;
    const PlainFrame frame = {AnySide(), AnySide(),           width,         height,
                              pixels,    dice.Below(0x10000), dice.OneIn(2), dice.Below(256)};
    Bytes rows;
    for (int y = 0; y < height; ++y) {
      rows.insert(rows.end(), pixels.begin() + y * width, pixels.begin() + (y + 1) * width);
      if (y + 1 < height) rows.insert(rows.end(), size_t(skip), rows.back());
    }
    GifWriteControl(gif, frame.transparent, uint16_t(frame.delay), uint8_t(frame.transparentIndex));
    GifWriteImage(gif, int16_t(frame.left), int16_t(frame.top), int16_t(width), int16_t(height),
                  {rows.data(), int16_t(width), int16_t(skip)});
    PlainWriteFrame(expected, head, frame);
  }

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
  Bytes expected;
  Dice dice{1};
};

TEST_F(GifRecords, AreThePlainBytesForAnyHeadAndPixels) {
  for (int round = 0; round < 400 && !HasFailure(); ++round) {
    StreamClear(gif.ownStream);
    expected.clear();
    const PlainHead head = WriteHead();
    for (int frame = 0; frame < 4; ++frame) {
      const int width = 1 + dice.Below(400), height = 1 + dice.Below(frame == 3 && round % 20 == 0 ? 400 : 20);
      const int change = 1 + dice.Below(dice.OneIn(4) ? 3000 : 30), colours = 1 + dice.Below(1 << head.bits);
      Bytes pixels(size_t(width * height));
      int colour = 0;
      for (uint8_t& pixel : pixels) pixel = uint8_t(colour = dice.OneIn(change) ? dice.Below(colours) : colour);
      WriteFrame(head, width, pixels);
    }
    EXPECT_EQ(StreamBytes(gif.ownStream), expected) << "round " << round;
  }
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
    const int initBits = 6 + dice.Below(4), colours = 3 + dice.Below(8), other = 1 + dice.Below(8);
    Bytes pixels = {16, 1}; // a pair with first slot 0, ahead of the first 0 0
    for (int strings = 500 + dice.Below(20'000); strings > 0; --strings) {
      const int colour = dice.OneIn(other) ? dice.Below(256) : palette[dice.Below(colours)];
      const int run = round % 2 && dice.OneIn(20) ? dice.Below(600) : 1;
      pixels.insert(pixels.end(), size_t(run), uint8_t(run > 1 ? 0 : colour & ((1 << (initBits - 1)) - 1)));
    }
    lost += ExpectPlainPixels(pixels, initBits);
  }
  EXPECT_GT(lost, 20);
}

TEST_F(GifRecords, PutOutNothingForWhatNoCallerMaySay) {
  const uint8_t pixel = 0;
  GifWriteImage(gif, 0, 0, 0, 1, {&pixel, 1, 0});
  GifWriteImage(gif, 0, 0, 1, -1, {&pixel, 1, 0});
  LzwEncodeImage(gif.lzw, gif.ownStream, {&pixel, 1, 0}, 9, 0);
  for (const uint16_t initBits : {2, 10}) LzwEncodeImage(gif.lzw, gif.ownStream, {&pixel, 1, 0}, initBits, 1);
  LzwEncodeImage(gif.lzw, gif.ownStream, {&pixel, 0, 0}, 9, 1);
  EXPECT_EQ(gif.ownStream.streamSize, 0u);
}

} // namespace
} // namespace framereel
