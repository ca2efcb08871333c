// What a context tells of the screen: its size, depth and colours.
#include "win32/drawing/contexts.h"
#include "win32/pixels/pixels.h"
#include "win32/win32_drawing.h"

using namespace framereel;

int GetDeviceCaps(HDC context, int index) {
  if (!context) return 0;
  const ScreenFacts facts = DisplayScreen();
  const int depth = facts.layout.depth;
  const bool hasPalette = depth == 8;
  switch (index) {
  case HORZRES:
    return facts.width;
  case VERTRES:
    return facts.height;
  case BITSPIXEL:
    return depth;
  case PLANES:
    return 1;
  case NUMCOLORS:
    return depth < 16 ? 1 << depth : -1;
  case RASTERCAPS:
    return hasPalette ? RC_PALETTE : 0;
  case SIZEPALETTE:
  case NUMRESERVED:
    return hasPalette ? 256 : 0;
  default:
    return 0;
  }
}

UINT GetSystemPaletteEntries(HDC context, UINT first, UINT count, PALETTEENTRY* entries) {
  const PixelLayout layout = DisplayScreen().layout;
  if (!context || !IsPalette(layout) || layout.depth < 1 || layout.depth > 8) return 0;
  const UINT has = 1U << layout.depth;
  const ColourMap map = MapOf(layout, true);
  for (UINT i = first; i < has && i - first < count; ++i) {
    entries[i - first] = {map.palette[i].red, map.palette[i].green, map.palette[i].blue, 0};
  }
  return has;
}

COLORREF GetNearestColor(HDC context, COLORREF colour) {
  if (!context) return 0;
  const ColourMap map = MapOf(LayoutOf(*context), HasScreenColours(*context));
  const PaletteColour asked = {GetRValue(colour), GetGValue(colour), GetBValue(colour)};
  const PaletteColour shown = ColourOfPixel(map, PixelOfColour(map, asked));
  return RGB(shown.red, shown.green, shown.blue);
}
