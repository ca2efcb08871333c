// Bitmap resources, masks, and single pixels.
#include <gtest/gtest.h>

#include "platform/bitmaps.h"
#include "platform/drawing.h"
#include "platform/primitives.h"
#include "platform/standard_drawing.h"
#include "support/window_program.h"
#include "win32/gdi.h"
#include "win32/pixels.h"

namespace framereel {
namespace {

constexpr Colour kBlack = {0, 0, 0}, kWhite = {0xFFFF, 0xFFFF, 0xFFFF}, kRed = {0xFFFF, 0, 0}, kBlue = {0, 0, 0xFFFF};

bool IsStripe(int x, int y, int k) {
  return (x + y) % 8 == k;
}

TEST(LoadOffscreen, GivesTheStripesAsTheyStand) {
  for (const int depth : {1, 4, 8, 24}) {
    WindowProgram program(200, 150, depth);
    for (int k = 0; k < 8; ++k) {
      Offscreen* stripes = LoadOffscreen(uint16_t(153 + k));
      ASSERT_NE(stripes, nullptr);
      EXPECT_EQ(stripes->width, 8);
      EXPECT_EQ(stripes->height, 8);
      EXPECT_EQ(stripes->port.colour, 1);
      for (int i = 0; i < 64; ++i) ASSERT_EQ(PixelIsSet(stripes, i % 8, i / 8), IsStripe(i % 8, i / 8, k)) << k << i;
      FreeOffscreen(stripes);
    }
    EXPECT_EQ(LoadOffscreen(152), nullptr);
    EXPECT_EQ(LoadMaskOffscreen(161), nullptr);
    EXPECT_EQ(LoadPicture(1), nullptr);
  }
}

TEST(Masks, JoinTheBrushToWhatIsCopied) {
  for (const int depth : {4, 8, 16, 24}) {
    SCOPED_TRACE(depth);
    WindowProgram program(200, 150, depth);
    Offscreen* mask = LoadMaskOffscreen(155);
    ASSERT_NE(mask, nullptr);
    EXPECT_EQ(mask->port.colour, 0);
    EXPECT_EQ(CurrentPort(), &mask->port);
    Offscreen* sheet = NewOffscreen(8, 8, true);
    SetPortOffscreen(sheet);
    const Surface& surface = sheet->bitmap->surface;
    const ColourMap map = MapOf(surface.layout, true);
    const auto pixelOf = [&map](const Colour& c) {
      return PixelOfColour(map, {uint8_t(c.red >> 8), uint8_t(c.green >> 8), uint8_t(c.blue >> 8)});
    };
    DrawState* state = NewDrawState();
    UseDrawState(state);
    SetForeColour(kRed);
    SetBackColour(kBlue);
    // Mode 3 is a plain copy: 0 in the foreground colour and 1 in the background's.
    CopyBits(&mask->port, OffscreenBounds(mask), OffscreenBounds(mask), 3);
    for (int i = 0; i < 64; ++i) {
      ASSERT_EQ(PixelAt(surface, i % 8, i / 8), pixelOf(IsStripe(i % 8, i / 8, 2) ? kRed : kBlue));
    }
    // Mode 1 has the brush, here the foreground's, in all of it.
    CopyBits(&mask->port, OffscreenBounds(mask), OffscreenBounds(mask), 1);
    for (int i = 0; i < 64; ++i) {
      const uint32_t ground = (pixelOf(kRed) | pixelOf(kBlue)) & PixelBits(surface.layout);
      ASSERT_EQ(PixelAt(surface, i % 8, i / 8), IsStripe(i % 8, i / 8, 2) ? pixelOf(kRed) : ground);
    }
    FreeOffscreen(sheet);
    FreeOffscreen(mask);
  }
}

TEST(Masks, AreMadeFromColoursByTheBackground) {
  WindowProgram program;
  Offscreen *colours = NewOffscreen(3, 1, true), *mask = NewMaskOffscreen(3, 1);
  SetPortOffscreen(colours);
  DrawState* state = NewDrawState();
  UseDrawState(state);
  SetForeColour(kBlue);
  FillRect(OffscreenBounds(colours));
  SetForeColour(kRed);
  DrawPixel(1, 0);
  SetForeColour(kWhite);
  DrawPixel(2, 0);
  SetPortOffscreen(mask);
  UseDrawState(DrawStateDefault());
  CopyBits(&colours->port, OffscreenBounds(mask), OffscreenBounds(mask), 1);
  // Only what has the background colour of the source's context, white, becomes 1.
  EXPECT_TRUE(PixelIsSet(mask, 0, 0));
  EXPECT_TRUE(PixelIsSet(mask, 1, 0));
  EXPECT_FALSE(PixelIsSet(mask, 2, 0));
  FreeOffscreen(colours);
  FreeOffscreen(mask);
}

TEST(PixelIsSet, AnswersTheSameInAndOutOfThePortWhateverTheState) {
  for (const int depth : {1, 8, 16, 24}) {
    SCOPED_TRACE(depth);
    WindowProgram program(200, 150, depth);
    Offscreen* sheet = NewOffscreen(4, 1, true);
    SetPortOffscreen(sheet);
    DrawState* state = NewDrawState();
    UseDrawState(state);
    SetForeColour(kWhite);
    FillRect(OffscreenBounds(sheet));
    SetForeColour(kBlack);
    DrawPixel(1, 0);
    SetBackColour(kBlack);
    for (int x = 0; x < 4; ++x) EXPECT_EQ(PixelIsSet(sheet, x, 0), x == 1) << x;
    EXPECT_EQ(CurrentContext()->backColour, RGB(0, 0, 0));
    ReleasePort();
    for (int x = 0; x < 4; ++x) EXPECT_EQ(PixelIsSet(sheet, x, 0), x == 1) << x;
    FreeOffscreen(sheet);
  }
}

TEST(CopyBits, WithinTheCurrentPortMovesItsPixels) {
  WindowProgram program;
  Offscreen* sheet = NewOffscreen(9, 3, true);
  SetPortOffscreen(sheet);
  UseDrawState(DrawStateWhite());
  FillRect(OffscreenBounds(sheet));
  UseDrawState(DrawStateDefault());
  DrawPixel(1, 1);
  CopyBits(&sheet->port, {0, 0, 3, 4}, {0, 4, 3, 8}, 1);
  for (int i = 0; i < 27; ++i) EXPECT_EQ(PixelIsSet(sheet, i % 9, i / 9), i == 10 || i == 14) << i;
  FreeOffscreen(sheet);
}

} // namespace
} // namespace framereel
