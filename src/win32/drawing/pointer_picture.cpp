// The mouse pointer's picture and place, and drawing it.
#include "win32/drawing/drawing_target.h"
#include "win32/pixels/cursor.h"
#include "win32/win32_input.h"

namespace framereel {
namespace {

// A premultiplied channel over an opaque one.
uint8_t Over(uint32_t source, uint32_t alpha, uint8_t under) {
  const uint32_t sum = source + (under * (255 - alpha) + 127) / 255;
  return uint8_t(sum < 255 ? sum : 255);
}

PaletteColour Blend(uint32_t premultiplied, PaletteColour under) {
  const uint32_t alpha = premultiplied >> 24;
  return {Over(premultiplied >> 16 & 255, alpha, under.red), Over(premultiplied >> 8 & 255, alpha, under.green),
          Over(premultiplied & 255, alpha, under.blue)};
}

// The part of the picture, placed at left, top, that lies in the box.
void BlendPicture(const PointerPicture& picture, int32_t left, int32_t top, const Surface& to, const PixelRect& box,
                  const ColourMap& map) {
  const PixelRect where = Intersect({left, top, left + picture.width, top + picture.height}, box);
  for (int32_t y = where.top; y < where.bottom; ++y) {
    const uint32_t* row = picture.pixels + int64_t(y - top) * picture.width;
    for (int32_t x = where.left; x < where.right; ++x) {
      const uint32_t pixel = row[x - left];
      if (pixel == 0) continue;
      const PaletteColour under = ColourOfPixel(map, PixelAt(to, x, y));
      SetPixelAt(to, x, y, PixelOfColour(map, Blend(pixel, under)));
    }
  }
}

} // namespace
} // namespace framereel

using namespace framereel;

BOOL GetCursorInfo(CURSORINFO* info) {
  static Win32Cursor current = {nullptr, PointerShape::kOwn};
  POINT place;
  if (!info || !::GetCursorPos(&place)) return FALSE;
  current.picture = DisplayPointer();
  if (!current.picture) return FALSE;
  const PointerPicture& picture = *current.picture;
  const LONG left = place.x - picture.hotX, top = place.y - picture.hotY;
  *info = {&current, {left, top, left + picture.width, top + picture.height}, picture.serial};
  return TRUE;
}

BOOL GetCursorPos(POINT* position) {
  return position && DisplayPointerPlace(&position->x, &position->y);
}

BOOL DrawIcon(HDC context, int x, int y, HICON icon) {
  if (!context || !icon || !icon->picture) return FALSE;
  const PointerPicture& picture = *icon->picture;
  DrawingTarget target;
  if (!OpenTarget(context, {x, y, x + picture.width, y + picture.height}, TargetPixels::kKept, &target)) return TRUE;
  const ColourMap map = MapOf(target.surface.layout, HasScreenColours(*context));
  target.where.ForEach([&](const PixelRect& box) {
    BlendPicture(picture, x + target.originX, y + target.originY, target.surface, box, map);
  });
  return CloseTarget(&target);
}
