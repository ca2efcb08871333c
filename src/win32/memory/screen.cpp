// The screen in memory: facts, palette, surfaces, reading and drawing.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <utility>

#include "win32/memory/memory_display.h"
#include "win32/pixels/pixels.h"
#include "win32/pixels/region.h"

namespace framereel {

uint32_t& MemoryPixel(int32_t x, int32_t y) {
  MemoryDisplay& display = TheMemoryDisplay();
  return display.screen.at(size_t(y) * size_t(display.width) + size_t(x));
}

uint32_t MemoryPixelOf(uint8_t red, uint8_t green, uint8_t blue) {
  const PixelLayout& layout = TheMemoryDisplay().layout;
  return ChannelBits(red, layout.redMask) | ChannelBits(green, layout.greenMask) | ChannelBits(blue, layout.blueMask);
}

PaletteColour MemoryColourOf(uint32_t pixel) {
  const MemoryDisplay& display = TheMemoryDisplay();
  if (IsPalette(display.layout)) return display.palette.at(pixel);
  return ColourOfPixel({display.layout, {}}, pixel);
}

void MemoryFill(const PixelRect& where, uint32_t pixel) {
  const PixelRect r = Intersect(where, {0, 0, TheMemoryDisplay().width, TheMemoryDisplay().height});
  for (int32_t y = r.top; y < r.bottom; ++y) {
    for (int32_t x = r.left; x < r.right; ++x) MemoryPixel(x, y) = pixel;
  }
}

std::vector<PaletteColour> MemoryStandardPalette(int32_t depth) {
  std::vector<PaletteColour> palette;
  if (depth == 4) {
    palette.assign(std::begin(kStandardColours), std::end(kStandardColours));
  } else if (depth == 8) {
    for (int i = 0; i < 256; ++i) {
      palette.push_back({uint8_t((i >> 5) * 255 / 7), uint8_t((i >> 2 & 7) * 255 / 7), uint8_t((i & 3) * 85)});
    }
  } else if (depth < 8) {
    const int top = (1 << depth) - 1;
    for (int i = 0; i <= top; ++i) {
      const auto grey = uint8_t(i * 255 / top);
      palette.push_back({grey, grey, grey});
    }
  }
  return palette;
}

bool MemoryWritePicture(const std::string& path) {
  const MemoryDisplay& display = TheMemoryDisplay();
  std::FILE* file = ::fopen(path.c_str(), "wb");
  if (!file) return false;
  ::fprintf(file, "P6 %d %d 255\n", display.width, display.height);
  for (const uint32_t pixel : display.screen) {
    const PaletteColour colour = MemoryColourOf(pixel);
    ::fwrite(&colour, 3, 1, file);
  }
  return ::fclose(file) == 0;
}

ScreenFacts DisplayScreen() {
  const MemoryDisplay& display = TheMemoryDisplay();
  if (display.lost) return {};
  return {display.width, display.height, display.layout, PixelBits(display.layout)};
}

int32_t DisplayDotsPerInch() {
  return TheMemoryDisplay().dotsPerInch;
}

void DisplayPalette(PaletteColour* colours) {
  const std::vector<PaletteColour>& palette = TheMemoryDisplay().palette;
  std::copy(palette.begin(), palette.end(), colours);
}

bool DisplayNewSurface(int32_t width, int32_t height, Surface* out) {
  return !TheMemoryDisplay().lost && NewPlainSurface(TheMemoryDisplay().layout, width, height, out);
}

void DisplayFreeSurface(Surface* surface) {
  FreePlainSurface(surface);
}

bool DisplayReadScreen(const PixelRect& where, const Surface& into, int32_t toX, int32_t toY) {
  MemoryDisplay& display = TheMemoryDisplay();
  if (display.lost || into.layout.depth != display.layout.depth) return false;
  if (++display.screenReads == display.lostAtRead) display.lost = true;
  if (display.lost) return false;
  for (int32_t y = where.top; y < where.bottom; ++y) {
    for (int32_t x = where.left; x < where.right; ++x) {
      SetPixelAt(into, toX + x - where.left, toY + y - where.top, MemoryPixel(x, y));
    }
  }
  return true;
}

namespace {

bool SameScreen(const MemoryDisplay& display, const MemoryLook& before) {
  const auto sameColour = [](const PaletteColour& a, const PaletteColour& b) {
    return a.red == b.red && a.green == b.green && a.blue == b.blue;
  };
  return display.width == before.width && display.height == before.height &&
         std::memcmp(&display.layout, &before.layout, sizeof before.layout) == 0 &&
         std::equal(display.palette.begin(), display.palette.end(), before.palette.begin(), before.palette.end(),
                    sameColour);
}

} // namespace

// Just the rows that differ: whoever relies on more shows it in a picture.
void DisplayAddChanges(const PixelRect& where, Region* rows) {
  MemoryDisplay& display = TheMemoryDisplay();
  const MemoryLook before = std::exchange(
      display.looked, {where, display.layout, display.width, display.height, display.palette, display.screen});
  if (display.lost || !Same(where, before.where) || !SameScreen(display, before)) return rows->Add(where);
  const PixelRect on = Intersect(where, {0, 0, display.width, display.height});
  if (IsEmpty(on)) return;
  for (int32_t y = on.top; y < on.bottom; ++y) {
    const auto row = std::ptrdiff_t{y} * display.width;
    const auto now = display.screen.cbegin() + row, then = before.screen.cbegin() + row;
    if (!std::equal(now + on.left, now + on.right, then + on.left)) rows->Add({where.left, y, where.right, y + 1});
  }
}

bool DisplayIsComposed() {
  return false;
}

bool DisplayDrawScreen(const Surface& from, const PixelRect& part, int32_t x, int32_t y) {
  const MemoryDisplay& display = TheMemoryDisplay();
  if (display.lost || from.layout.depth != display.layout.depth) return false;
  const int32_t dx = x - part.left, dy = y - part.top;
  const PixelRect on = Intersect({x, y, part.right + dx, part.bottom + dy}, {0, 0, display.width, display.height});
  for (int32_t row = on.top; row < on.bottom; ++row) {
    for (int32_t column = on.left; column < on.right; ++column) {
      MemoryPixel(column, row) = PixelAt(from, column - dx, row - dy);
    }
  }
  return true;
}

bool DisplayInvertScreen(const PixelRect& where, const uint8_t pattern[8]) {
  const MemoryDisplay& display = TheMemoryDisplay();
  if (display.lost) return false;
  const uint32_t all = PixelBits(display.layout);
  const PixelRect on = Intersect(where, {0, 0, display.width, display.height});
  for (int32_t y = on.top; y < on.bottom; ++y) {
    for (int32_t x = on.left; x < on.right; ++x) {
      if (pattern[y & 7] >> (7 - (x & 7)) & 1) MemoryPixel(x, y) ^= all;
    }
  }
  return true;
}

} // namespace framereel
