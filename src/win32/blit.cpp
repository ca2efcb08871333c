// Copying pixels between targets. The screen as a target or a source is a rectangle read from the display and, for a
// target, put back; the copy from the screen into a bitmap of its own format is a single read.
#include <cstring>

#include "win32/gdi.h"
#include "win32/pixels.h"

namespace framereel {
namespace {

// One side of a copy: pixels at hand, and the colours that they stand for.
struct Side {
  Surface surface;
  bool ofScreen;
  bool temporary; // made for this copy; FreeSide releases it
};

void FreeSide(Side* side) {
  if (side->temporary) DisplayFreeSurface(&side->surface);
}

// Whether a pixel value stands for the same colour on both, so that values can be copied as they are.
bool SameColours(const PixelLayout& a, bool aOfScreen, const PixelLayout& b, bool bOfScreen) {
  if (::memcmp(&a, &b, sizeof a) != 0) return false;
  if (!IsPalette(a) || aOfScreen == bOfScreen) return true;
  const ColourMap aMap = MapOf(a, aOfScreen), bMap = MapOf(b, bOfScreen);
  return ::memcmp(aMap.palette, bMap.palette, sizeof aMap.palette) == 0;
}

// The pixels of `where`, which lies inside the context, as a side whose 0, 0 is the rectangle's corner.
bool TakeSide(const Win32DeviceContext& context, const PixelRect& where, Side* side) {
  if (context.screen) {
    if (!DisplayNewSurface(where.right - where.left, where.bottom - where.top, &side->surface)) return false;
    side->ofScreen = side->temporary = true;
    if (DisplayReadScreen(where, side->surface, 0, 0)) return true;
    FreeSide(side);
    return false;
  }
  *side = {context.bitmap->surface, context.bitmap->ofScreen, false};
  side->surface.pixels =
      RowOf(side->surface, where.top) + static_cast<int64_t>(where.left) * side->surface.layout.bytesPerPixel;
  side->surface.width = where.right - where.left;
  side->surface.height = where.bottom - where.top;
  return true;
}

uint32_t Combine(DWORD operation, uint32_t source, uint32_t target) {
  switch (operation) {
  case SRCAND:
    return source & target;
  case SRCPAINT:
    return source | target;
  case MERGEPAINT:
    return ~source | target;
  case SRCCOPY:
    return source;
  default:
    return 0;
  }
}

// Copies with stretching and a change of colours, pixel by pixel. The operations work on pixel values; an inverted one
// has no bits that the layout does not have.
void CombinePixels(const Side& to, const Side& from, bool same, DWORD operation) {
  const ColourMap toMap = MapOf(to.surface.layout, to.ofScreen);
  const ColourMap fromMap = MapOf(from.surface.layout, from.ofScreen);
  const uint32_t bits = PixelBits(to.surface.layout);
  for (int32_t y = 0; y < to.surface.height; ++y) {
    const auto fromY = int32_t(int64_t{y} * from.surface.height / to.surface.height);
    for (int32_t x = 0; x < to.surface.width; ++x) {
      const auto fromX = int32_t(int64_t{x} * from.surface.width / to.surface.width);
      uint32_t source = PixelAt(from.surface, fromX, fromY);
      if (!same) source = PixelOfColour(toMap, ColourOfPixel(fromMap, source));
      SetPixelAt(to.surface, x, y, Combine(operation, source, PixelAt(to.surface, x, y)) & bits);
    }
  }
}

void CopyRows(const Surface& to, const Surface& from) {
  const size_t bytes = size_t(to.width) * to.layout.bytesPerPixel;
  // A copy within one bitmap may overlap: downward it runs from the last row.
  const bool upward = to.pixels <= from.pixels;
  for (int32_t i = 0; i < to.height; ++i) {
    const int32_t y = upward ? i : to.height - 1 - i;
    ::memmove(RowOf(to, y), RowOf(from, y), bytes);
  }
}

void CombineSides(const Side& to, const Side& from, DWORD operation) {
  const bool sameSize = to.surface.width == from.surface.width && to.surface.height == from.surface.height;
  const bool same = SameColours(to.surface.layout, to.ofScreen, from.surface.layout, from.ofScreen);
  if (operation == SRCCOPY && sameSize && same) {
    CopyRows(to.surface, from.surface);
  } else {
    CombinePixels(to, from, same, operation);
  }
}

// Both rectangles lie inside their contexts and are not empty.
bool BlitInside(const Win32DeviceContext& to, const PixelRect& toRect, const Win32DeviceContext& from,
                const PixelRect& fromRect, DWORD operation) {
  const bool sameSize = toRect.right - toRect.left == fromRect.right - fromRect.left &&
                        toRect.bottom - toRect.top == fromRect.bottom - fromRect.top;
  if (from.screen && !to.screen && sameSize && operation == SRCCOPY &&
      SameColours(to.bitmap->surface.layout, to.bitmap->ofScreen, DisplayScreen().layout, true)) {
    return DisplayReadScreen(fromRect, to.bitmap->surface, toRect.left, toRect.top);
  }
  Side source, target;
  if (!TakeSide(from, fromRect, &source)) return false;
  if (!TakeSide(to, toRect, &target)) {
    FreeSide(&source);
    return false;
  }
  CombineSides(target, source, operation);
  bool done = true;
  if (to.screen) {
    done = DisplayDrawScreen(target.surface, BoundsOf(target.surface), toRect.left, toRect.top);
  }
  FreeSide(&target);
  FreeSide(&source);
  return done;
}

} // namespace
} // namespace framereel

using namespace framereel;

BOOL BitBlt(HDC to, int x, int y, int width, int height, HDC from, int fromX, int fromY, DWORD operation) {
  if (!to || !from || width <= 0 || height <= 0) return FALSE;
  const PixelRect toBounds = BoundsOf(*to);
  const PixelRect fromBounds = BoundsOf(*from);
  const int dx = x - fromX, dy = y - fromY;
  const PixelRect source =
      Intersect(Intersect({fromX, fromY, fromX + width, fromY + height}, fromBounds),
                {toBounds.left - dx, toBounds.top - dy, toBounds.right - dx, toBounds.bottom - dy});
  if (IsEmpty(source)) return TRUE;
  const PixelRect target = {source.left + dx, source.top + dy, source.right + dx, source.bottom + dy};
  return BlitInside(*to, target, *from, source, operation);
}

BOOL StretchBlt(HDC to, int x, int y, int width, int height, HDC from, int fromX, int fromY, int fromWidth,
                int fromHeight, DWORD operation) {
  if (!to || !from || width <= 0 || height <= 0 || fromWidth <= 0 || fromHeight <= 0) return FALSE;
  const PixelRect target = {x, y, x + width, y + height};
  const PixelRect source = {fromX, fromY, fromX + fromWidth, fromY + fromHeight};
  const PixelRect toBounds = BoundsOf(*to), fromBounds = BoundsOf(*from);
  const PixelRect targetIn = Intersect(target, toBounds), sourceIn = Intersect(source, fromBounds);
  if (IsEmpty(targetIn) || IsEmpty(sourceIn)) return TRUE;
  // A stretch that is cut on either side would need the part of a pixel; no caller stretches over an edge.
  if (targetIn.right - targetIn.left != width || targetIn.bottom - targetIn.top != height) return FALSE;
  if (sourceIn.right - sourceIn.left != fromWidth || sourceIn.bottom - sourceIn.top != fromHeight) return FALSE;
  return BlitInside(*to, targetIn, *from, sourceIn, operation);
}

COLORREF GetPixel(HDC context, int x, int y) {
  if (!context) return 0xFFFFFFFF;
  const PixelRect bounds = BoundsOf(*context);
  if (x < bounds.left || y < bounds.top || x >= bounds.right || y >= bounds.bottom) return 0xFFFFFFFF;
  Side side;
  if (!TakeSide(*context, {x, y, x + 1, y + 1}, &side)) return 0xFFFFFFFF;
  const PaletteColour colour = ColourOfPixel(MapOf(side.surface.layout, side.ofScreen), PixelAt(side.surface, 0, 0));
  FreeSide(&side);
  return RGB(colour.red, colour.green, colour.blue);
}
