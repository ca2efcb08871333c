// Bitmap resources, masks, and single pixels.
#include "platform/drawing/clip.h"
#include "platform/sheet.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

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
    }
  }
  WindowProgram program;
  EXPECT_EQ(LoadOffscreen(152), nullptr);
  EXPECT_EQ(LoadMaskOffscreen(161), nullptr);
  EXPECT_EQ(LoadPicture(1), nullptr);
}

TEST(Masks, JoinTheBrushToWhatIsCopied) {
  for (const int depth : {4, 8, 16, 24}) {
    SCOPED_TRACE(depth);
    Sheet sheet(8, 8, depth);
    Offscreen* mask = LoadMaskOffscreen(155);
    ASSERT_NE(mask, nullptr);
    EXPECT_EQ(mask->port.colour, 0);
    EXPECT_EQ(CurrentPort(), &mask->port);
    SetPortOffscreen(sheet.offscreen);
    UseDrawState(sheet.state);
    SetForeColour(kRed);
    SetBackColour(kBlue);
    // Mode 3 is a plain copy: 0 in the foreground colour and 1 in the background's.
    CopyBits(&mask->port, OffscreenBounds(mask), OffscreenBounds(mask), 3);
    sheet.ExpectColours([](int x, int y) { return IsStripe(x, y, 2) ? kRed : kBlue; });
    // Mode 1 has the brush, here the foreground's, in all of it.
    CopyBits(&mask->port, OffscreenBounds(mask), OffscreenBounds(mask), 1);
    const uint32_t red = sheet.PixelOf(kRed), ground = red | sheet.PixelOf(kBlue);
    const std::vector<uint32_t> pixels = sheet.Pixels();
    for (int i = 0; i < 64; ++i) ASSERT_EQ(pixels[size_t(i)], IsStripe(i % 8, i / 8, 2) ? red : ground);
  }
}

TEST(Masks, AreMadeFromColoursByTheBackground) {
  Sheet sheet(3, 1);
  SetForeColour(kBlue);
  DrawPixel(0, 0);
  SetForeColour(kRed);
  DrawPixel(1, 0);
  Offscreen* mask = NewMaskOffscreen(3, 1);
  SetPortOffscreen(mask);
  UseDrawState(DrawStateDefault());
  CopyBits(&sheet.offscreen->port, OffscreenBounds(mask), OffscreenBounds(mask), 1);
  // Only what has the background colour of the source's context, white, becomes 1.
  for (int x = 0; x < 3; ++x) EXPECT_EQ(PixelIsSet(mask, x, 0), x < 2) << x;
}

// Pixel 1 is black and pixel 2 another white than the rest, where there are two. What lies outside counts as set.
TEST(PixelIsSet, AnswersTheSameInAndOutOfThePortWhateverTheState) {
  for (const int depth : {1, 8, 16, 24}) {
    SCOPED_TRACE(depth);
    Sheet sheet(4, 1, depth);
    DrawPixel(1, 0);
    if (depth == 8) TheMemoryDisplay().palette[3] = {255, 255, 255};
    DrawPixel(2, 0);
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

TEST(CopyBits, WithinTheCurrentPortMovesItsPixels) {
  Sheet sheet(9, 3);
  DrawPixel(1, 1);
  CopyBits(&sheet.offscreen->port, {0, 0, 3, 4}, {0, 4, 3, 8}, 1);
  sheet.ExpectColours([](int x, int y) { return y == 1 && (x == 1 || x == 5) ? kBlack : kWhite; });
}

} // namespace
} // namespace framereel
