// What the drawing tests draw on: a program whose current Port is a white Offscreen, with a state of its own in use.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/bitmaps/offscreens.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "support/window_program.h"
#include "win32/drawing/contexts.h"
#include "win32/drawing/objects.h"
#include "win32/pixels/pixels.h"

namespace framereel {

inline constexpr Colour kBlack = {0, 0, 0}, kWhite = {0xFFFF, 0xFFFF, 0xFFFF}, kRed = {0xFFFF, 0, 0};
inline constexpr Colour kGreen = {0, 0xFFFF, 0}, kBlue = {0, 0, 0xFFFF};

using Rows = std::vector<std::string>;

struct Sheet {
  WindowProgram program;
  Offscreen* offscreen; // in the display's format
  DrawState* state = NewDrawState();

  Sheet(int16_t width, int16_t height, int32_t depth = 24)
      : program(200, 150, depth), offscreen(NewOffscreen(width, height, true)) {
    SetPortOffscreen(offscreen);
    Clear();
    UseDrawState(state);
  }

  // White all over, in another state.
  void Clear() const {
    UseDrawState(DrawStateFill());
    SetForeColour(PrimaryColour(7));
    FillRect(OffscreenBounds(offscreen));
  }
  // A row of letters for each row of pixels: # black, b g c r m y the full colours, . white, ? another one.
  Rows Picture() const {
    const Surface& surface = offscreen->bitmap->surface;
    const ColourMap map = MapOf(surface.layout, offscreen->bitmap->ofScreen);
    Rows rows(size_t(offscreen->height), std::string(size_t(offscreen->width), '?'));
    for (int i = 0; i < offscreen->width * offscreen->height; ++i) {
      const int x = i % offscreen->width, y = i / offscreen->width;
      for (int colour = 0; colour < 8; ++colour) {
        const auto channel = [colour](int bit) { return uint8_t((colour + 7) & bit ? 255 : 0); }; // white first
        const uint32_t pixel = PixelOfColour(map, {channel(4), channel(2), channel(1)});
        char& letter = rows[size_t(y)][size_t(x)];
        if (letter == '?' && PixelAt(surface, x, y) == pixel) letter = ".#bgcrmy"[colour];
      }
    }
    return rows;
  }
};

// How many letters of the picture are this one.
inline size_t Count(const Rows& picture, char letter) {
  size_t count = 0;
  for (const std::string& row : picture) count += size_t(std::count(row.begin(), row.end(), letter));
  return count;
}

} // namespace framereel
