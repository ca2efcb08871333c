// What the drawing tests draw on: a bitmap in a context of its own, the screen's context, and pictures of both.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "support/dice.h"
#include "win32/drawing/contexts.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels/pixels.h"
#include "win32/win32_drawing.h"

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

// What the context draws on, the screen's 32-bit values among them.
inline Surface SurfaceOf(HDC context) {
  MemoryDisplay& display = TheMemoryDisplay();
  if (!context->screen) return context->bitmap ? context->bitmap->surface : *context->surface;
  auto* pixels = reinterpret_cast<uint8_t*>(display.screen.data());
  return {kLayoutXrgb8888, display.width, display.height, 4 * display.width, pixels, nullptr};
}

inline Picture PictureOf(HDC context) {
  const Surface surface = SurfaceOf(context);
  Picture picture = {surface.width, surface.height, {}};
  for (int32_t i = 0; i < surface.width * surface.height; ++i) {
    picture.pixels.push_back(PixelAt(surface, i % surface.width, i / surface.width));
  }
  return picture;
}

// The pixel that a colour becomes in the context's format.
inline uint32_t PixelOf(HDC context, COLORREF colour) {
  const ColourMap map = MapOf(LayoutOf(*context), HasScreenColours(*context));
  return PixelOfColour(map, {GetRValue(colour), GetGValue(colour), GetBValue(colour)});
}

// Any pixels that the context's layout has.
inline void Scribble(HDC context, Dice* dice) {
  const Surface surface = SurfaceOf(context);
  for (int32_t i = 0; i < surface.width * surface.height; ++i) {
    SetPixelAt(surface, i % surface.width, i / surface.width, uint32_t(dice->random()) & PixelBits(LayoutOf(*context)));
  }
}

} // namespace framereel
