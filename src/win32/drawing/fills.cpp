// The inner loops of all fills, and the short way to the display for what only inverts the screen.
#include "win32/drawing/fills.h"

#include <cstring>

#include "win32/drawing/drawing_target.h"
#include "win32/pixels/presenter.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

// The bits that inverting changes: those of the screen in everything that has its colours.
uint32_t InvertedBits(const Win32DeviceContext& context) {
  const PixelLayout layout = LayoutOf(context);
  const ScreenFacts screen = DisplayScreen();
  const bool likeScreen = HasScreenColours(context) && layout.depth == screen.layout.depth;
  return likeScreen ? screen.inverted : PixelBits(layout);
}

// What is put down, or exclusive-or'ed, for a colour. Under R2_NOTXORPEN black inverts and white leaves, whatever a
// palette says; of other colours not (a xor b) is (not a) xor b.
uint32_t ValueOf(const Win32DeviceContext& context, COLORREF colour, int rop) {
  if (rop == R2_NOTXORPEN && colour == RGB(0, 0, 0)) return InvertedBits(context);
  if (rop == R2_NOTXORPEN && colour == RGB(255, 255, 255)) return 0;
  const PixelLayout layout = LayoutOf(context);
  const uint32_t pixel = PixelOf(MapOf(layout, HasScreenColours(context)), colour);
  return rop == R2_NOTXORPEN ? ~pixel & PixelBits(layout) : pixel;
}

// Eight pixels a step, which the compiler turns into a few wide operations.
template <typename Pixel> void PaintRow(Pixel* row, int32_t count, Pixel keep, const Pixel values[8]) {
  int32_t x = 0;
  for (; x + 8 <= count; x += 8) {
    for (int32_t k = 0; k < 8; ++k) row[x + k] = Pixel((row[x + k] & keep) ^ values[k]);
  }
  for (; x < count; ++x) row[x] = Pixel((row[x] & keep) ^ values[x & 7]);
}

// Pixels are of 1, 2 or 4 bytes; their rows are aligned for it.
template <typename Pixel> void PaintBox(const DrawingTarget& target, const PixelRect& box, const Paint& paint) {
  for (int32_t y = box.top; y < box.bottom; ++y) {
    Pixel values[8];
    for (int32_t i = 0; i < 8; ++i) {
      values[i] = Pixel(PaintValueAt(paint, box.left + i - target.originX, y - target.originY));
    }
    auto* row = reinterpret_cast<Pixel*>(RowOf(target.surface, y)) + box.left;
    PaintRow(row, box.right - box.left, Pixel(paint.keep), values);
  }
}

void PaintTarget(const DrawingTarget& target, const Paint& paint) {
  target.where.ForEach([&](const PixelRect& box) {
    if (target.surface.layout.bytesPerPixel == 1) {
      PaintBox<uint8_t>(target, box, paint);
    } else if (target.surface.layout.bytesPerPixel == 2) {
      PaintBox<uint16_t>(target, box, paint);
    } else {
      PaintBox<uint32_t>(target, box, paint);
    }
  });
}

// Whether each pixel is either left or inverted; `pattern`, in the target's coordinates, then has a 1 for the inverted.
bool OnlyInverts(const Win32DeviceContext& context, const Paint& paint, uint8_t pattern[8]) {
  const auto inverts = [bits = InvertedBits(context)](uint32_t value) { return value == bits; };
  if (paint.keep == 0) return false;
  for (const uint32_t value : paint.value) {
    if (value != 0 && !inverts(value)) return false;
  }
  for (int32_t y = 0; y < 8; ++y) {
    pattern[y] = 0;
    for (int32_t x = 0; x < 8; ++x) {
      const uint32_t value = PaintValueAt(paint, x - context.originX, y - context.originY);
      pattern[y] = uint8_t(pattern[y] << 1 | inverts(value));
    }
  }
  return true;
}

void InvertScreen(const Win32DeviceContext& context, const PixelRect& rect, const uint8_t pattern[8]) {
  PresentWindows();
  DrawableRegion(context, rect).ForEach([pattern](const PixelRect& box) { DisplayInvertScreen(box, pattern); });
}

} // namespace

Paint SolidPaint(const Win32DeviceContext& context, COLORREF colour, int rop) {
  const uint32_t value = ValueOf(context, colour, rop);
  return {rop == R2_NOTXORPEN ? ~0U : 0, {value, value}, {}};
}

Paint BrushPaint(const Win32DeviceContext& context, const Win32Brush& brush, int rop) {
  if (!brush.patterned) return SolidPaint(context, brush.colour, rop);
  Paint paint = {rop == R2_NOTXORPEN ? ~0U : 0,
                 {ValueOf(context, context.textColour, rop), ValueOf(context, context.backColour, rop)},
                 {}};
  std::memcpy(paint.pattern, brush.pattern, sizeof paint.pattern);
  return paint;
}

void PaintRects(HDC context, const PixelRect* rects, size_t count, const Paint& paint) {
  uint8_t pattern[8];
  const bool inverts = context->screen && OnlyInverts(*context, paint, pattern);
  const TargetPixels pixels = paint.keep ? TargetPixels::kKept : TargetPixels::kReplaced;
  for (size_t i = 0; i < count; ++i) {
    DrawingTarget target;
    if (inverts) {
      InvertScreen(*context, rects[i], pattern);
    } else if (OpenTarget(context, rects[i], pixels, &target)) {
      PaintTarget(target, paint);
      CloseTarget(&target);
    }
  }
}

} // namespace framereel
