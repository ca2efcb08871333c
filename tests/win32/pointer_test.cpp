// The mouse pointer drawn into bitmaps.
#include "win32/canvas.h"

#include <algorithm>
#include <cmath>

namespace framereel {
namespace {

uint32_t Premultiplied(uint32_t alpha, uint32_t red, uint32_t green, uint32_t blue) {
  const auto part = [alpha](uint32_t channel) { return (channel * alpha + 127) / 255; };
  return alpha << 24 | part(red) << 16 | part(green) << 8 | part(blue);
}

void SetPointer(int32_t width, int32_t height, std::vector<uint32_t> pixels) {
  MemoryDisplay& display = TheMemoryDisplay();
  display.hasPointer = true;
  display.pointerWidth = width;
  display.pointerHeight = height;
  display.hotX = 1;
  display.hotY = 2;
  display.pointerPixels = std::move(pixels);
}

uint8_t PlainOver(uint32_t source, uint32_t alpha, uint8_t under) {
  const double over = source + under * (255 - alpha) / 255.0;
  return uint8_t(std::min(255.0, std::floor(over + 0.5)));
}

uint32_t PlainBlend(const ColourMap& map, uint32_t source, uint32_t under) {
  if (source == 0) return under;
  const uint32_t alpha = source >> 24;
  const PaletteColour c = ColourOfPixel(map, under);
  return PixelOfColour(map, {PlainOver(source >> 16 & 255, alpha, c.red), PlainOver(source >> 8 & 255, alpha, c.green),
                             PlainOver(source & 255, alpha, c.blue)});
}

TEST(DrawIcon, BlendsByAlphaAtEveryDepthAndIsCutAtEveryEdge) {
  std::mt19937 random(8);
  for (const int depth : {1, 2, 4, 8, 16, 24, 32}) {
    SCOPED_TRACE(depth);
    ScreenCanvas screen(4, 4, depth);
    BitmapCanvas canvas(screen.context, 6, 5);
    const ColourMap map = MapOf(canvas.bitmap->surface.layout, true);
    for (int i = 0; i < 12 * 12; ++i) {
      std::vector<uint32_t> pixels(4 * 3);
      for (uint32_t& pixel : pixels) {
        const uint32_t alphas[] = {0, 255, 128, uint32_t(random()) % 256};
        const auto any = uint32_t(random());
        pixel = Premultiplied(alphas[random() % 4], any & 255, any >> 8 & 255, any >> 16 & 255);
      }
      SetPointer(4, 3, pixels);
      Scribble(canvas.context, random);
      Picture expected = PictureOf(canvas.context);
      const int left = i % 12 - 5, top = i / 12 - 5;
      for (int k = 0; k < 12; ++k) {
        const int x = left + k % 4, y = top + k / 4;
        if (expected.Has(x, y)) expected.At(x, y) = PlainBlend(map, pixels[size_t(k)], expected.At(x, y));
      }
      ASSERT_TRUE(::DrawIcon(canvas.context, left, top, ::GetCursor()));
      ASSERT_EQ(PictureOf(canvas.context).pixels, expected.pixels) << "at " << left << ", " << top;
    }
  }
}

TEST(DrawIcon, GivesFullColoursForFullAlphaAndNeverPassesFullAlsoOnTheScreen) {
  ScreenCanvas screen(4, 1, 24);
  MemoryFill({0, 0, 4, 1}, 0xFFFFFF);
  MemoryPixel(1, 0) = 0x123456;
  SetPointer(3, 1, {0xFFABCDEF, 0x80808080, 0x00FFFFFF});
  ASSERT_TRUE(::DrawIcon(screen.context, 1, 0, ::GetCursor()));
  EXPECT_EQ(TheMemoryDisplay().screen, (std::vector<uint32_t>{0xFFFFFF, 0xABCDEF, 0xFFFFFF, 0xFFFFFF}));
}

TEST(Pointer, TellsItsHotSpotAndPlaceAndThatItHasNoPicture) {
  MemoryDisplayReset(4, 4, 24);
  EXPECT_EQ(::GetCursor(), nullptr);
  ICONINFO info;
  EXPECT_FALSE(::GetIconInfo(nullptr, &info));
  SetPointer(2, 3, std::vector<uint32_t>(6));
  ASSERT_TRUE(::GetIconInfo(::GetCursor(), &info));
  EXPECT_EQ(info.xHotspot, 1U);
  EXPECT_EQ(info.yHotspot, 2U);
  EXPECT_EQ(info.hbmMask, nullptr);
  EXPECT_EQ(info.hbmColor, nullptr);
  DisplayMovePointer(-3, 700);
  POINT place;
  ASSERT_TRUE(::GetCursorPos(&place));
  EXPECT_EQ(place.x, 0); // it stays on the screen
  EXPECT_EQ(place.y, 3);
  TheMemoryDisplay().lost = true;
  EXPECT_EQ(::GetCursor(), nullptr);
  EXPECT_FALSE(::GetCursorPos(&place));
}

} // namespace
} // namespace framereel
