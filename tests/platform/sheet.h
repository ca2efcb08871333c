// What the drawing tests draw on: a program whose current Port is a white Offscreen, with a state of its own in use.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "platform/bitmaps/copy_bits.h"
#include "platform/bitmaps/load_bitmaps.h"
#include "platform/bitmaps/offscreens.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/shared_contexts.h"
#include "platform/drawing/standard_drawing.h"
#include "support/window_program.h"
#include "win32/drawing/contexts.h"
#include "win32/drawing/fonts.h"
#include "win32/drawing/objects.h"
#include "win32/pixels/pixels.h"

namespace framereel {

inline constexpr Colour kBlack = {0, 0, 0}, kWhite = {0xFFFF, 0xFFFF, 0xFFFF}, kRed = {0xFFFF, 0, 0};
inline constexpr Colour kGreen = {0, 0xFFFF, 0}, kBlue = {0, 0, 0xFFFF};

inline std::vector<uint32_t> PixelsOf(const Offscreen* offscreen) {
  std::vector<uint32_t> pixels;
  for (int32_t i = 0; i < offscreen->width * offscreen->height; ++i) {
    pixels.push_back(PixelAt(offscreen->bitmap->surface, i % offscreen->width, i / offscreen->width));
  }
  return pixels;
}

struct Sheet {
  WindowProgram program;
  Offscreen* offscreen; // in the display's format
  DrawState* state = NewDrawState();

  Sheet(int16_t width, int16_t height, int32_t depth = 24)
      : program(200, 150, depth), offscreen(NewOffscreen(width, height, true)) {
    SetPortOffscreen(offscreen);
    UseDrawState(state);
    Clear();
  }

  // White all over, then the state as it was.
  void Clear() {
    DrawState* used = CurrentDrawState();
    UseDrawState(DrawStateWhite());
    FillRect(OffscreenBounds(offscreen));
    UseDrawState(used);
  }
  std::vector<uint32_t> Pixels() const { return PixelsOf(offscreen); }
  uint32_t PixelOf(const Colour& c) const {
    const ColourMap map = MapOf(offscreen->bitmap->surface.layout, offscreen->bitmap->ofScreen);
    return PixelOfColour(map, {uint8_t(c.red >> 8), uint8_t(c.green >> 8), uint8_t(c.blue >> 8)});
  }
  // How many pixels have the colour.
  int64_t Count(const Colour& colour) const {
    const std::vector<uint32_t> pixels = Pixels();
    return std::count(pixels.begin(), pixels.end(), PixelOf(colour));
  }
  bool Is(int x, int y, const Colour& colour) const {
    return PixelAt(offscreen->bitmap->surface, x, y) == PixelOf(colour);
  }
  // Every pixel has the colour that colourAt(x, y) answers.
  template <typename ColourAt> void ExpectColours(ColourAt colourAt) const {
    for (int i = 0; i < offscreen->width * offscreen->height; ++i) {
      const int x = i % offscreen->width, y = i / offscreen->width;
      ASSERT_EQ(PixelAt(offscreen->bitmap->surface, x, y), PixelOf(colourAt(x, y))) << x << ", " << y;
    }
  }
};

inline bool Contains(const Rect& r, int x, int y) {
  return x >= r.left && x < r.right && y >= r.top && y < r.bottom;
}

} // namespace framereel
