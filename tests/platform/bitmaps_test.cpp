// Offscreens, single pixels, DibBuffers, and what the program knows of the display.
#include <algorithm>

#include "core/memory.h"
#include "platform/bitmaps/copy_bits.h"
#include "platform/bitmaps/dib_buffers.h"
#include "platform/bitmaps/load_bitmaps.h"
#include "platform/bitmaps/screen_colours.h"
#include "platform/display/display_caps.h"
#include "platform/drawing/clip.h"
#include "platform/pump/engine_start.h"
#include "platform/sheet.h"
#include "support/desktop.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

constexpr int kDepths[] = {1, 2, 4, 8, 16, 24, 32};

TEST(Offscreens, TakeTheDisplaysFormatOrBlackAndWhite) {
  for (const int depth : kDepths) {
    const Desktop desktop(40, 30, depth);
    Offscreen* like = NewOffscreen(33, 7, true);
    EXPECT_EQ(like->bitmap->ofScreen, depth > 1) << depth;
    EXPECT_TRUE(OffscreenBounds(like).bottom == 7 && OffscreenBounds(like).right == 33);
    EXPECT_FALSE(NewOffscreen(2, 1, false)->bitmap->ofScreen); // left to the desktop's end
    SetPortOffscreen(like);
    FreeOffscreen(like);
    EXPECT_EQ(CurrentPort(), nullptr); // it was the current Port
    EXPECT_EQ(CurrentContext(), nullptr);
    EXPECT_EQ(NewOffscreen(0, 5, true), nullptr);
  }
}

// ---- Resources and pixels ----------------------------------------------------------------------------------------

TEST(LoadedBitmaps, AreTheStripesAsTheyStand) {
  for (const int depth : {1, 4, 8, 24}) {
    const Desktop desktop(40, 30, depth);
    for (int k = 0; k < 8; ++k) {
      const Offscreen* stripes = LoadOffscreen(uint16_t(153 + k));
      ASSERT_TRUE(stripes && stripes->width == 8 && stripes->height == 8 && stripes->port.colour == 1);
      for (int i = 0; i < 64; ++i) ASSERT_EQ(PixelIsSet(stripes, i % 8, i / 8), (i % 8 + i / 8) % 8 == k) << k << i;
    }
    EXPECT_FALSE(LoadOffscreen(152) || LoadMaskOffscreen(161) || LoadPicture(1));
  }
}

// Pixel 1 is black and pixel 2 another white than the rest, where there are two. What lies outside counts as set.
TEST(PixelIsSet, AnswersTheSameInAndOutOfThePortWhateverTheState) {
  for (const int depth : {1, 8, 16, 24}) {
    SCOPED_TRACE(depth);
    const Sheet sheet(4, 1, depth);
    DrawPixel(1, 0);
    if (depth == 8) TheMemoryDisplay().palette[3] = {255, 255, 255};
    SetForeColour(kWhite);
    DrawPixel(2, 0);
    SetBackColour(kBlack);
    const auto expect = [&sheet] {
      for (int x = -1; x <= 4; ++x) EXPECT_EQ(PixelIsSet(sheet.offscreen, x, 0), x < 0 || x == 1 || x == 4) << x;
      EXPECT_TRUE(PixelIsSet(sheet.offscreen, 2, 1));
    };
    SetClip(0, 0, 1, 1);
    expect();
    DrawPixel(1, 0); // the clip stands, and hides nothing from a look
    expect();
    ReleasePort();
    expect();
  }
}

// ---- DibBuffers --------------------------------------------------------------------------------------------------

TEST(DibBuffers, TakeAnyRowsOfAnOffscreenOfTheirWidthFromTheBottomUpAndRefuseAllOthers) {
  constexpr int16_t kWidth = 7, kHeight = 6;
  constexpr uint8_t kUntouched = 0xE7;
  const Desktop desktop(kWidth + 1, kHeight, 24);
  for (int32_t y = 0; y < kHeight; ++y) MemoryFill({0, y, kWidth + 1, y + 1}, MemoryPixelOf(0, 0, uint8_t(y)));
  DibBuffer* buffer = NewDibBuffer24(kWidth, kHeight);
  EXPECT_EQ(buffer->rowSize, 24u);
  EXPECT_EQ(std::count(buffer->bits, buffer->bits + 24 * kHeight, 0), 24 * kHeight);
  for (const int16_t width : {kWidth - 1, kWidth + 1, kWidth + 0}) {
    Offscreen* offscreen = NewOffscreen(width, kHeight, true);
    SetPortOffscreen(offscreen);
    CopyBits(ScreenPort(), OffscreenBounds(offscreen), OffscreenBounds(offscreen), 1);
    for (int i = 0; i < 9 * 9 * 9; ++i) {
      const int to = i % 9 - 1, from = i / 9 % 9 - 1, rows = i / 81 - 1;
      std::fill(buffer->bits, buffer->bits + 24 * kHeight, kUntouched);
      ReadDibBuffer24(buffer, int16_t(to), offscreen, int16_t(from), int16_t(rows));
      const bool fits = width == kWidth && to >= 0 && from >= 0 && to + rows <= kHeight && from + rows <= kHeight;
      for (int row = 0; row < kHeight; ++row) {
        const bool read = fits && row >= to && row < to + rows;
        ASSERT_EQ(buffer->bits[24 * row], read ? from + rows - 1 - (row - to) : kUntouched)
            << rows << " rows from " << from << " to " << to;
      }
    }
    EXPECT_EQ(CurrentPort(), width == kWidth ? nullptr : &offscreen->port); // reading has let go of it
  }
  FreeDibBuffer(buffer);
}

// ---- The display -------------------------------------------------------------------------------------------------

TEST(DisplayCaps, TellDepthColourSizeAndColoursOfEveryDisplay) {
  for (const int depth : {1, 2, 4, 8, 12, 16, 24, 32}) {
    SCOPED_TRACE(depth);
    const Desktop desktop(300 + depth, 200, depth);
    const DisplayCaps& caps = TheDisplayCaps();
    EXPECT_EQ(caps.screenDepth, depth);
    EXPECT_EQ(caps.screenPlanes * caps.screenPlaneBits, depth);
    EXPECT_EQ(caps.screenHasColour, depth > 1);
    EXPECT_TRUE(caps.screenWidth == 300 + depth && caps.screenHeight == 200);
    ColourList list;
    ScreenColours(&list);
    ASSERT_EQ(list.count, depth > 8 ? 512U : 1U << depth);
    const int step = depth == 12 ? 17 : depth == 16 ? 9 : 1; // between two values of a channel, at most
    for (uint32_t i = 0; i < list.count; ++i) {
      // Of true colour an even spread.
      const PaletteColour even = {uint8_t((i >> 6) * 255 / 7), uint8_t((i >> 3 & 7) * 255 / 7),
                                  uint8_t((i & 7) * 255 / 7)};
      const PaletteColour& has = depth > 8 ? even : TheMemoryDisplay().palette[i];
      const Colour& c = list.colours[i];
      for (const auto& [wide, narrow] : {std::pair{c.red, has.red}, {c.green, has.green}, {c.blue, has.blue}}) {
        EXPECT_EQ(wide % 257, 0);
        EXPECT_LT(std::abs(wide / 257 - narrow), step) << i;
      }
    }
    MemFree(list.colours);
  }
}

TEST(EngineStartUp, AnswersFalseWithoutADisplay) {
  MemoryDisplayReset(64, 48, 24);
  TheMemoryDisplay().present = false;
  EXPECT_FALSE(EngineStartUp());
}

} // namespace
} // namespace framereel
