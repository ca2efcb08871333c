// The records byte by byte.
#include "gif/gif_records.h"

#include <gtest/gtest.h>

#include <string>

#include "gif/own_writer.h"

namespace framereel {
namespace {

using Bytes = std::vector<uint8_t>;

const Bytes kColours = SomeBytes(768);

TEST(GifRecords, BeginWithHeaderScreenDescriptorAndTable) {
  const struct {
    uint8_t bits, packed, codeSize;
  } cases[] = {{8, 0xF7, 8}, {5, 0xC4, 5}, {3, 0xA2, 3}, {2, 0x91, 2}, {1, 0x80, 2}};
  for (const auto& [bits, packed, codeSize] : cases) {
    OwnWriter gif;
    GifWriteHeader(gif, 0x7FFE, 0x0102, 0, 7, bits, kColours.data());
    Bytes expected = {'G', 'I', 'F', '8', '9', 'a', 0xFE, 0x7F, 0x02, 0x01, packed, 7, 0x31};
    expected.insert(expected.end(), kColours.begin(), kColours.begin() + (3 << bits));
    EXPECT_EQ(gif.Bytes(), expected);
    EXPECT_EQ(gif.gifCodeSize, codeSize);
  }
}

const uint8_t kPixel = 3;

TEST(GifRecords, AreWrittenByteForByte) {
  const struct {
    void (*write)(GifWriter&);
    Bytes expected;
  } cases[] = {
      {[](GifWriter& gif) { GifWriteLoop(gif, 0xFEDC); },
       {0x21, 0xFF, 11, 'N', 'E', 'T', 'S', 'C', 'A', 'P', 'E', '2', '.', '0', 3, 1, 0xDC, 0xFE, 0}},
      {[](GifWriter& gif) { GifWriteControl(gif, false, 12, 216); }, {0x21, 0xF9, 4, 0x04, 12, 0, 216, 0}},
      {[](GifWriter& gif) { GifWriteControl(gif, true, 0xFFFE, 0); }, {0x21, 0xF9, 4, 0x05, 0xFE, 0xFF, 0, 0}},
      {GifWriteTrailer, {0x3B}},
      // Codes 4, 3, 5 of 3 bits each.
      {[](GifWriter& gif) {
         GifWriteImage(gif, 0x0102, 0x7FFF, 1, 1, {&kPixel, 1, 0});
       },
       {0x2C, 0x02, 0x01, 0xFF, 0x7F, 1, 0, 1, 0, 0, 2, 2, 0x5C, 0x01, 0}},
      {[](GifWriter& gif) {
         GifWriteHeader(gif, 1, 1, 1, 0, 2, kColours.data());
         StreamClear(*gif.stream);
         GifWriteImage(gif, 0, 0, 1, 1, {&kPixel, 1, 0});
       },
       {0x2C, 0, 0, 0, 0, 1, 0, 1, 0, 0x40, 2, 2, 0x5C, 0x01, 0}},
      {[](GifWriter& gif) {
         GifWriteImage(gif, 0, 0, 0, 1, {&kPixel, 1, 0});
       },
       {}},
      {[](GifWriter& gif) {
         GifWriteImage(gif, 0, 0, 1, -1, {&kPixel, 1, 0});
       },
       {}},
  };
  for (const auto& [write, expected] : cases) {
    OwnWriter gif;
    gif.gifCodeSize = 2;
    write(gif);
    EXPECT_EQ(gif.Bytes(), expected);
  }
}

TEST(GifRecords, CutACommentIntoSubBlocks) {
  for (const size_t length : {0u, 1u, 255u, 256u, 510u}) {
    std::string text;
    while (text.size() < length) text += static_cast<char>('a' + text.size() % 26);
    OwnWriter gif;
    GifWriteComment(gif, text.c_str());
    std::string expected = "\x21\xFE";
    for (size_t at = 0; at < length; at += 255) {
      const std::string part = text.substr(at, 255);
      expected += static_cast<char>(part.size()) + part;
    }
    expected += '\0';
    EXPECT_EQ(gif.Bytes(), Bytes(expected.begin(), expected.end())) << length;
  }
}

} // namespace
} // namespace framereel
