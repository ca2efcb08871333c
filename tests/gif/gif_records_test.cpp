// The records byte by byte, and whole files through a foreign reader.
#include "gif/gif_records.h"

#include <gtest/gtest.h>

#include "gif/own_writer.h"
#include "support/gif_reader.h"

namespace framereel {
namespace {

using Bytes = std::vector<uint8_t>;

const Bytes kColours = SomeBytes(768);

TEST(GifRecords, BeginWithHeaderScreenDescriptorAndTable) {
  OwnWriter gif;
  GifWriteHeader(gif, 100, 50, 0, 0, 8, kColours.data());
  Bytes expected = {0x47, 0x49, 0x46, 0x38, 0x39, 0x61, 0x64, 0x00, 0x32, 0x00, 0xF7, 0x00, 0x31};
  expected.insert(expected.end(), kColours.begin(), kColours.end());
  EXPECT_EQ(gif.Bytes(), expected);
  EXPECT_EQ(gif.gifCodeSize, 8);
}

TEST(GifRecords, PackTheTableSizeAndKeepTheCodeSizeAtTwo) {
  const struct {
    uint8_t bits, packed, codeSize;
  } cases[] = {{8, 0xF7, 8}, {5, 0xC4, 5}, {3, 0xA2, 3}, {2, 0x91, 2}, {1, 0x80, 2}};
  for (const auto& [bits, packed, codeSize] : cases) {
    OwnWriter gif;
    GifWriteHeader(gif, 0x7FFF, 1, 0, 7, bits, kColours.data());
    const Bytes bytes = gif.Bytes();
    EXPECT_EQ(bytes.size(), 13u + (3u << bits));
    EXPECT_EQ(Bytes(bytes.begin() + 6, bytes.begin() + 13), (Bytes{0xFF, 0x7F, 1, 0, packed, 7, 0x31}));
    EXPECT_EQ(gif.gifCodeSize, codeSize);
  }
}

TEST(GifRecords, WriteLoopControlAndTrailerByteForByte) {
  const struct {
    void (*write)(GifWriter&);
    Bytes expected;
  } cases[] = {
      {[](GifWriter& gif) { GifWriteLoop(gif, 0); },
       {0x21, 0xFF, 11, 'N', 'E', 'T', 'S', 'C', 'A', 'P', 'E', '2', '.', '0', 3, 1, 0, 0, 0}},
      {[](GifWriter& gif) { GifWriteLoop(gif, 0xFEDC); },
       {0x21, 0xFF, 11, 'N', 'E', 'T', 'S', 'C', 'A', 'P', 'E', '2', '.', '0', 3, 1, 0xDC, 0xFE, 0}},
      {[](GifWriter& gif) { GifWriteControl(gif, true, 12, 216); }, {0x21, 0xF9, 4, 0x05, 12, 0, 216, 0}},
      {[](GifWriter& gif) { GifWriteControl(gif, false, 0, 216); }, {0x21, 0xF9, 4, 0x04, 0, 0, 216, 0}},
      {[](GifWriter& gif) { GifWriteControl(gif, true, 0xFFFF, 0); }, {0x21, 0xF9, 4, 0x05, 0xFF, 0xFF, 0, 0}},
      {GifWriteTrailer, {0x3B}},
  };
  for (const auto& [write, expected] : cases) {
    OwnWriter gif;
    write(gif);
    EXPECT_EQ(gif.Bytes(), expected);
  }
}

TEST(GifRecords, CutACommentIntoSubBlocks) {
  for (const size_t length : {0u, 1u, 255u, 256u, 300u, 510u}) {
    OwnWriter gif;
    GifWriteComment(gif, std::string(length, 'x').c_str());
    Bytes expected = {0x21, 0xFE};
    for (size_t left = length; left > 0;) {
      const size_t part = std::min<size_t>(left, 255);
      expected.push_back(static_cast<uint8_t>(part));
      expected.insert(expected.end(), part, 'x');
      left -= part;
    }
    expected.push_back(0);
    EXPECT_EQ(gif.Bytes(), expected) << length;
  }
}

TEST(GifRecords, WriteAnImageOfOnePixel) {
  OwnWriter gif;
  GifWriteHeader(gif, 1, 1, 0, 0, 8, kColours.data());
  StreamClear(*gif.stream);
  const uint8_t pixel = 5;
  GifWriteImage(gif, 0x0102, 0x7FFF, 1, 1, {&pixel, 1, 0});
  // Codes 256, 5, 257 of 9 bits each.
  EXPECT_EQ(gif.Bytes(), (Bytes{0x2C, 0x02, 0x01, 0xFF, 0x7F, 1, 0, 1, 0, 0, 8, 4, 0x00, 0x0B, 0x04, 0x04, 0}));
}

TEST(GifRecords, MarkInterlacedImagesIfTheHeaderSaidSo) {
  OwnWriter gif;
  GifWriteHeader(gif, 1, 1, 1, 0, 2, kColours.data());
  StreamClear(*gif.stream);
  const uint8_t pixel = 3;
  GifWriteImage(gif, 0, 0, 1, 1, {&pixel, 1, 0});
  // Codes 4, 3, 5 of 3 bits each.
  EXPECT_EQ(gif.Bytes(), (Bytes{0x2C, 0, 0, 0, 0, 1, 0, 1, 0, 0x40, 2, 2, 0x5C, 0x01, 0}));
}

TEST(GifRecords, LeaveOutAnImageWithoutPixels) {
  OwnWriter gif;
  const uint8_t pixel = 0;
  GifWriteImage(gif, 0, 0, 0, 1, {&pixel, 1, 0});
  GifWriteImage(gif, 0, 0, 1, -1, {&pixel, 1, 0});
  EXPECT_EQ(gif.stream->streamSize, 0u);
}

TEST(GifRecords, ReadBackAsTheAnimationThatWasWritten) {
  constexpr int kWidth = 40, kHeight = 30, kFrameWidth = 64;
  OwnWriter gif;
  GifWriteHeader(gif, kWidth, kHeight, 0, 0, 8, kColours.data());
  GifWriteLoop(gif, 3);
  const std::string text = std::string(400, 'c') + "end";
  GifWriteComment(gif, text.c_str());
  const Bytes first = SomeBytes(kWidth * kHeight), frame = SomeBytes(kFrameWidth * kHeight);
  GifWriteControl(gif, false, 0, 216);
  GifWriteImage(gif, 0, 0, kWidth, kHeight, {first.data(), kWidth, 0});
  GifWriteControl(gif, true, 12, frame[3 * kFrameWidth + 7]);
  GifWriteImage(gif, 7, 3, 10, 9, {&frame[3 * kFrameWidth + 7], 10, kFrameWidth - 10});
  GifWriteTrailer(gif);

  const GifPicture read = ReadGif(gif.Bytes());
  ASSERT_EQ(read.error, "");
  EXPECT_EQ(read.comment, text);
  EXPECT_EQ(read.loopCount, 3);
  ASSERT_EQ(read.frames.size(), 2u);
  EXPECT_EQ(read.frames[0].indices, first);
  EXPECT_EQ(read.frames[0].transparent, -1);
  EXPECT_EQ(read.frames[1].delay, 12);
  EXPECT_EQ(read.frames[1].disposal, 1);
  const std::vector<uint32_t> shown = Composite(read, 1);
  ASSERT_EQ(shown.size(), size_t{kWidth} * kHeight);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const bool inside = x >= 7 && x < 17 && y >= 3 && y < 12;
      const uint8_t over = frame[static_cast<size_t>(y * kFrameWidth + x)];
      const bool drawn = inside && over != frame[3 * kFrameWidth + 7];
      const size_t index = drawn ? over : first[static_cast<size_t>(y * kWidth + x)];
      const uint32_t rgb =
          static_cast<uint32_t>(kColours[3 * index] << 16 | kColours[3 * index + 1] << 8 | kColours[3 * index + 2]);
      ASSERT_EQ(shown[static_cast<size_t>(y * kWidth + x)], rgb) << x << "," << y;
    }
  }
}

TEST(GifRecords, HoldTheLongestRowAndTheLongestColumn) {
  const Bytes pixels = SomeBytes(0x7FFF);
  const int16_t sides[][2] = {{0x7FFF, 1}, {1, 0x7FFF}};
  for (const auto& [width, height] : sides) {
    OwnWriter gif;
    GifWriteHeader(gif, width, height, 0, 0, 8, kColours.data());
    GifWriteImage(gif, 0, 0, width, height, {pixels.data(), width, 0});
    GifWriteTrailer(gif);
    const GifPicture read = ReadGif(gif.Bytes());
    ASSERT_EQ(read.error, "");
    EXPECT_EQ(read.width, width);
    EXPECT_EQ(read.frames[0].height, height);
    EXPECT_EQ(read.frames[0].indices, pixels);
  }
}

} // namespace
} // namespace framereel
