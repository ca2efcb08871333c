// Offscreens, Ports and DibBuffers on every kind of display.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "platform/bitmaps/copy_bits.h"
#include "platform/bitmaps/dib_buffers.h"
#include "platform/bitmaps/offscreens.h"
#include "platform/drawing/ports.h"
#include "support/desktop.h"
#include "win32/drawing/gdi.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

constexpr uint8_t kUntouched = 0xE7;
constexpr int kDepths[] = {1, 2, 4, 8, 16, 24, 32};

TEST(Offscreens, TakeTheDisplaysFormatOrBlackAndWhite) {
  for (const int depth : kDepths) {
    SCOPED_TRACE(depth);
    const Desktop desktop(40, 30, depth);
    Offscreen* like = NewOffscreen(33, 7, true);
    EXPECT_EQ(like->bitmap->ofScreen, depth > 1);
    EXPECT_EQ(OffscreenBounds(like).bottom, 7);
    EXPECT_EQ(OffscreenBounds(like).right, 33);
    Offscreen* mono = NewOffscreen(2, 1, false);
    EXPECT_FALSE(mono->bitmap->ofScreen);
    SetPortOffscreen(like);
    FreeOffscreen(like);
    EXPECT_EQ(CurrentPort(), nullptr); // it was the current Port
    EXPECT_EQ(CurrentContext(), nullptr);
    EXPECT_EQ(NewOffscreen(0, 5, true), nullptr);
    // `mono` is left to the desktop's end.
  }
}

TEST(CopyBits, MovesTheScreenIntoAnOffscreenAndBack) {
  std::mt19937 random(1);
  for (const int depth : kDepths) {
    SCOPED_TRACE(depth);
    const Desktop desktop(40, 30, depth);
    std::vector<uint32_t>& screen = TheMemoryDisplay().screen;
    for (uint32_t& pixel : screen) pixel = uint32_t(random()) & (depth < 24 ? (1U << depth) - 1 : 0xFFFFFF);
    const std::vector<uint32_t> before = screen;
    Offscreen* offscreen = NewOffscreen(9, 5, true);
    SetPortOffscreen(offscreen);
    CopyBits(ScreenPort(), {11, 20, 16, 29}, {0, 0, 5, 9}, 1);
    std::fill(screen.begin(), screen.end(), 0);
    SetPortScreen();
    CopyBits(&offscreen->port, {0, 0, 5, 9}, {0, 0, 5, 9}, 1);
    for (size_t i = 0; i < screen.size(); ++i) {
      const size_t x = i % 40, y = i / 40;
      ASSERT_EQ(screen[i], x < 9 && y < 5 ? before[(y + 11) * 40 + x + 20] : 0) << x << ", " << y;
    }
  }
}

TEST(CopyBits, CombinesByItsModesAndStretches) {
  const Desktop desktop(8, 4, 8);
  Offscreen* offscreen = NewOffscreen(2, 1, true);
  MemoryPixel(0, 0) = 0x0F;
  MemoryPixel(1, 0) = 0x3C;
  SetPortOffscreen(offscreen);
  CopyBits(ScreenPort(), {0, 0, 1, 2}, {0, 0, 1, 2}, 1);
  struct Case {
    int mode;
    uint32_t left, right;
  };
  const Case cases[] = {{0, 0, 0},       {1, 0x0F, 0x3C}, {2, 0x05, 0x14}, {3, 0x0F, 0x3C},
                        {4, 0x5F, 0x7D}, {5, 0xF5, 0xD7}, {6, 0x55, 0x55}, {-1, 0x55, 0x55}};
  for (const Case& c : cases) {
    MemoryFill({0, 0, 8, 4}, 0x55);
    SetPortScreen();
    CopyBits(&offscreen->port, {0, 0, 1, 2}, {1, 2, 3, 6}, c.mode);
    EXPECT_EQ(MemoryPixel(3, 1), c.left) << "mode " << c.mode;
    EXPECT_EQ(MemoryPixel(4, 2), c.right) << "mode " << c.mode;
    EXPECT_EQ(MemoryPixel(6, 1), 0x55U);
  }
}

struct Kind {
  int bitsPerPixel;
  DibBuffer* (*make)(int16_t width, int16_t height);
  void (*read)(DibBuffer* buffer, int16_t bufferRow, Offscreen* offscreen, int16_t offscreenRow, int16_t rows);
  uint32_t rowUnit;
};

const Kind kKinds[] = {{24, NewDibBuffer24, ReadDibBuffer24, 1},
                       {8, NewDibBuffer8, ReadDibBuffer8, 1},
                       {2, NewDibBuffer2, ReadDibBuffer2, 1},
                       {1, NewDibBuffer1, ReadDibBuffer1, 4}};

TEST(DibBuffers, HaveRowsOfWholeWordsAndAllBitsClear) {
  struct Case {
    int16_t width;
    uint32_t rowSizes[4]; // of each kind
  };
  const Case cases[] = {{1, {4, 4, 4, 1}},
                        {5, {16, 8, 4, 1}},
                        {17, {52, 20, 8, 1}},
                        {33, {100, 36, 12, 2}},
                        {32767, {98304, 32768, 8192, 1024}}};
  for (const Case& c : cases) {
    for (int i = 0; i < 4; ++i) {
      DibBuffer* buffer = kKinds[i].make(c.width, 3);
      EXPECT_EQ(buffer->rowSize, c.rowSizes[i]) << kKinds[i].bitsPerPixel << " bits, width " << c.width;
      const uint32_t bytes = 3 * buffer->rowSize * kKinds[i].rowUnit;
      EXPECT_EQ(std::count(buffer->bits, buffer->bits + bytes, 0), bytes);
      FreeDibBuffer(buffer);
    }
  }
}

// An Offscreen as wide as asked for with what stands at the left of the screen. It is the current Port.
Offscreen* CopyOfScreen(int16_t width, int16_t height) {
  Offscreen* offscreen = NewOffscreen(width, height, true);
  SetPortOffscreen(offscreen);
  CopyBits(ScreenPort(), OffscreenBounds(offscreen), OffscreenBounds(offscreen), 1);
  return offscreen;
}

// The first byte of a row whose pixels all have this value.
uint8_t FirstByte(const Kind& kind, int depth, uint32_t pixel) {
  if (kind.bitsPerPixel == 24) return MemoryColourOf(pixel).blue;
  return uint8_t(kind.bitsPerPixel == 8 ? pixel : pixel * 0xFF / ((1U << depth) - 1));
}

TEST(DibBuffers, TakeAnyRowsOfAnOffscreenOfTheirWidthFromTheBottomUp) {
  constexpr int16_t kWidth = 8, kHeight = 6;
  for (const int depth : kDepths) {
    const Desktop desktop(kWidth + 1, kHeight, depth);
    const Kind& kind = kKinds[depth > 8 ? 0 : depth > 2 ? 1 : depth == 2 ? 2 : 3];
    for (int32_t y = 0; y < kHeight; ++y) {
      MemoryFill({0, y, kWidth + 1, y + 1}, uint32_t(y + 1) & ((2U << (depth - 1)) - 1));
    }
    DibBuffer* buffer = kind.make(kWidth, kHeight);
    const uint32_t rowBytes = buffer->rowSize * kind.rowUnit, bytes = rowBytes * kHeight;
    std::fill(buffer->bits, buffer->bits + bytes, kUntouched);
    for (const int16_t other : {kWidth - 1, kWidth + 1}) {
      Offscreen* offscreen = CopyOfScreen(other, kHeight);
      kind.read(buffer, 0, offscreen, 0, kHeight);
      EXPECT_EQ(std::count(buffer->bits, buffer->bits + bytes, kUntouched), bytes) << depth << " bits, width " << other;
      EXPECT_EQ(CurrentPort(), &offscreen->port);
    }
    Offscreen* offscreen = CopyOfScreen(kWidth, kHeight);
    // Every place, and beyond every end.
    for (int i = 0; i < 9 * 9 * 9; ++i) {
      const int bufferRow = i % 9 - 1, row = i / 9 % 9 - 1, rows = i / 81 - 1;
      SCOPED_TRACE(testing::Message() << depth << " bits: " << rows << " rows from " << row << " to " << bufferRow);
      std::fill(buffer->bits, buffer->bits + bytes, kUntouched);
      kind.read(buffer, int16_t(bufferRow), offscreen, int16_t(row), int16_t(rows));
      const bool fits = bufferRow >= 0 && row >= 0 && bufferRow + rows <= kHeight && row + rows <= kHeight;
      for (int k = 0; k < kHeight; ++k) {
        const bool read = fits && k >= bufferRow && k < bufferRow + rows;
        const int imageRow = row + rows - 1 - (k - bufferRow);
        const uint8_t byte = buffer->bits[rowBytes * uint32_t(k)];
        ASSERT_EQ(byte, read ? FirstByte(kind, depth, MemoryPixel(0, imageRow)) : kUntouched) << "buffer row " << k;
      }
    }
    EXPECT_EQ(CurrentPort(), nullptr); // reading has let go of it
    FreeDibBuffer(buffer);
  }
}

} // namespace
} // namespace framereel
