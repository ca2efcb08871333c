// What the drawing tests draw on: a bitmap in a context of its own, the screen's context, and pictures of both.
#pragma once

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "win32/drawing/contexts.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels/pixels.h"

namespace framereel {

// Pixel values, row after row.
struct Picture {
  int32_t width, height;
  std::vector<uint32_t> pixels;

  uint32_t& At(int32_t x, int32_t y) { return pixels.at(size_t(y) * size_t(width) + size_t(x)); }
  bool Has(int32_t x, int32_t y) const { return x >= 0 && y >= 0 && x < width && y < height; }
};

// The whole screen of a new display.
struct ScreenCanvas {
  HDC context;

  ScreenCanvas(int32_t width, int32_t height, int32_t depth) {
    MemoryDisplayReset(width, height, depth);
    context = ::CreateDCA("DISPLAY", nullptr, nullptr, nullptr);
  }
  ~ScreenCanvas() { ::DeleteDC(context); }
  ScreenCanvas(const ScreenCanvas&) = delete;
};

// In the screen's format, or one of black and white.
struct BitmapCanvas {
  HDC context;
  HBITMAP bitmap;
  HGDIOBJ before;

  BitmapCanvas(HDC screen, int width, int height, bool ofScreen = true)
      : context(::CreateCompatibleDC(screen)), bitmap(ofScreen ? ::CreateCompatibleBitmap(screen, width, height)
                                                               : ::CreateBitmap(width, height, 1, 1, nullptr)),
        before(::SelectObject(context, bitmap)) {}
  ~BitmapCanvas() {
    ::DeleteDC(context);
    ::DeleteObject(bitmap);
  }
  BitmapCanvas(const BitmapCanvas&) = delete;
};

inline Picture PictureOf(HDC context) {
  const PixelRect bounds = BoundsOf(*context);
  Picture picture = {bounds.right, bounds.bottom, {}};
  if (context->screen) {
    picture.pixels = TheMemoryDisplay().screen;
    return picture;
  }
  for (int32_t i = 0; i < bounds.right * bounds.bottom; ++i) {
    picture.pixels.push_back(PixelAt(context->bitmap->surface, i % bounds.right, i / bounds.right));
  }
  return picture;
}

// Every pixel is what pixelAt(x, y) answers.
template <typename PixelAtPlace> void ExpectPixels(HDC context, PixelAtPlace pixelAt) {
  const Picture picture = PictureOf(context);
  for (int i = 0; i < int(picture.pixels.size()); ++i) {
    const int x = i % picture.width, y = i / picture.width;
    ASSERT_EQ(picture.pixels[size_t(i)], pixelAt(x, y)) << x << ", " << y;
  }
}

// The pixel that a colour becomes in the context's format.
inline uint32_t PixelOf(HDC context, COLORREF colour) {
  const ColourMap map = MapOf(LayoutOf(*context), HasScreenColours(*context));
  return PixelOfColour(map, {GetRValue(colour), GetGValue(colour), GetBValue(colour)});
}

// Any pixels that the context's layout has.
inline void Scribble(HDC context, std::mt19937& random) {
  const PixelRect bounds = BoundsOf(*context);
  const uint32_t bits = PixelBits(LayoutOf(*context));
  for (int32_t i = 0; i < bounds.right * bounds.bottom; ++i) {
    const int32_t x = i % bounds.right, y = i / bounds.right;
    const uint32_t pixel = uint32_t(random()) & bits;
    if (context->screen) {
      MemoryPixel(x, y) = pixel;
    } else {
      SetPixelAt(context->bitmap->surface, x, y, pixel);
    }
  }
}

} // namespace framereel
