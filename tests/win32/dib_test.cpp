// Rows read out of bitmaps.
#include "win32/canvas.h"

#include <algorithm>

namespace framereel {
namespace {

constexpr uint8_t kUntouched = 0xE7;

BITMAPINFO InfoOf(HBITMAP bitmap, WORD bitCount) {
  return {
      {sizeof(BITMAPINFOHEADER), bitmap->surface.width, bitmap->surface.height, 1, bitCount, BI_RGB, 0, 0, 0, 0, 0}};
}

// A row of the picture, as the bit count has it, padded with bytes that nobody touches.
std::vector<uint8_t> PlainRow(Picture& picture, const PixelLayout& layout, int32_t y, WORD bitCount) {
  std::vector<uint8_t> row(size_t(picture.width) * bitCount / 8 + (picture.width * bitCount % 8 != 0), 0);
  for (int32_t x = 0; x < picture.width; ++x) {
    const uint32_t pixel = picture.At(x, y);
    if (bitCount == 24) {
      row[size_t(3 * x)] = ChannelOf(pixel, layout.blueMask);
      row[size_t(3 * x + 1)] = ChannelOf(pixel, layout.greenMask);
      row[size_t(3 * x + 2)] = ChannelOf(pixel, layout.redMask);
    } else {
      const int32_t bit = x * bitCount;
      row[size_t(bit / 8)] |= uint8_t(pixel << (8 - bitCount - bit % 8));
    }
  }
  row.resize((row.size() + 3) / 4 * 4, kUntouched);
  return row;
}

struct DibCase {
  int depth;
  WORD bitCount;
  UINT usage;
};

constexpr DibCase kDibCases[] = {{1, 1, DIB_RGB_COLORS},   {1, 8, DIB_PAL_COLORS},   {2, 2, DIB_PAL_COLORS},
                                 {2, 8, DIB_PAL_COLORS},   {4, 8, DIB_PAL_COLORS},   {8, 8, DIB_PAL_COLORS},
                                 {16, 24, DIB_RGB_COLORS}, {24, 24, DIB_RGB_COLORS}, {32, 24, DIB_RGB_COLORS}};

TEST(GetDIBits, GivesRowsFromTheBottomUpInEveryLayoutAndTouchesNoPadding) {
  std::mt19937 random(6);
  constexpr int kHeight = 5;
  for (const DibCase& c : kDibCases) {
    for (const int width : {1, 3, 5, 8, 9, 33}) {
      SCOPED_TRACE(testing::Message() << c.bitCount << " of " << c.depth << " bits, width " << width);
      ScreenCanvas screen(4, 4, c.depth);
      BitmapCanvas canvas(screen.context, width, kHeight);
      Scribble(canvas.context, random);
      Picture picture = PictureOf(canvas.context);
      ::SelectObject(canvas.context, canvas.before);
      for (UINT start = 0; start < kHeight; ++start) {
        for (const UINT rows : {1U, 2U, 9U}) {
          const UINT given = std::min(rows, kHeight - start);
          std::vector<uint8_t> expected;
          for (UINT line = start; line < start + given; ++line) {
            const std::vector<uint8_t> row =
                PlainRow(picture, canvas.bitmap->surface.layout, int32_t(kHeight - 1 - line), c.bitCount);
            expected.insert(expected.end(), row.begin(), row.end());
          }
          expected.push_back(kUntouched);
          std::vector<uint8_t> bits(expected.size(), kUntouched);
          BITMAPINFO info = InfoOf(canvas.bitmap, c.bitCount);
          ASSERT_EQ(::GetDIBits(screen.context, canvas.bitmap, start, rows, bits.data(), &info, c.usage), int(given));
          ASSERT_EQ(bits, expected) << rows << " rows from " << start;
        }
      }
    }
  }
}

TEST(GetDIBits, GivesTheFixedSixteenWhateverOrderTheScreensPaletteHadAndHas) {
  ScreenCanvas screen(4, 4, 4);
  std::vector<PaletteColour> palette = TheMemoryDisplay().palette;
  std::shuffle(palette.begin(), palette.end(), std::mt19937(7));
  TheMemoryDisplay().palette = palette;
  BitmapCanvas canvas(screen.context, 16, 1);
  std::shuffle(TheMemoryDisplay().palette.begin(), TheMemoryDisplay().palette.end(), std::mt19937(8));
  for (int32_t x = 0; x < 16; ++x) SetPixelAt(canvas.bitmap->surface, x, 0, uint32_t(x));
  ::SelectObject(canvas.context, canvas.before);
  uint8_t bits[16];
  BITMAPINFO info = InfoOf(canvas.bitmap, 8);
  ASSERT_EQ(::GetDIBits(screen.context, canvas.bitmap, 0, 1, bits, &info, DIB_PAL_COLORS), 1);
  for (size_t x = 0; x < 16; ++x) {
    const PaletteColour fixed = kStandardColours[bits[x]];
    EXPECT_EQ(fixed.red, palette[x].red) << x;
    EXPECT_EQ(fixed.green, palette[x].green) << x;
    EXPECT_EQ(fixed.blue, palette[x].blue) << x;
  }
}

TEST(GetDIBits, RefusesWhatItCannotReadAndLeavesTheBufferAlone) {
  for (const DibCase& c : kDibCases) {
    SCOPED_TRACE(testing::Message() << c.bitCount << " of " << c.depth << " bits");
    ScreenCanvas screen(4, 4, c.depth);
    BitmapCanvas canvas(screen.context, 4, 4);
    std::vector<uint8_t> bits(64, kUntouched);
    const auto read = [&](int bitCount, UINT start, int wider) {
      BITMAPINFO info = InfoOf(canvas.bitmap, WORD(bitCount));
      info.bmiHeader.biWidth += wider;
      return ::GetDIBits(screen.context, canvas.bitmap, start, 4, bits.data(), &info, c.usage);
    };
    EXPECT_EQ(read(c.bitCount, 0, 0), 0); // it is in a context
    ::SelectObject(canvas.context, canvas.before);
    EXPECT_EQ(read(c.depth > 8 ? 8 : 24, 0, 0) + read(c.depth == 2 ? 1 : 2, 0, 0) + read(32, 0, 0), 0);
    EXPECT_EQ(read(c.bitCount, 4, 0) + read(c.bitCount, 0, 1), 0);
    EXPECT_EQ(::GetDIBits(screen.context, nullptr, 0, 4, bits.data(), nullptr, c.usage), 0);
    EXPECT_EQ(bits, std::vector<uint8_t>(64, kUntouched));
  }
}

} // namespace
} // namespace framereel
