// Drawing and measuring text.
#include <algorithm>
#include <bit>

#include "win32/drawing/contexts.h"
#include "win32/drawing/drawing_target.h"
#include "win32/drawing/glyphs.h"
#include "win32/pixels/utf8.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

Rendition RenditionOf(const Win32DeviceContext& context) {
  return IsPalette(LayoutOf(context)) ? Rendition::kPlain : Rendition::kSmooth;
}

PixelRect PlaceOf(const Glyph& glyph, int32_t x, int32_t baseline) {
  return {x + glyph.left, baseline + glyph.top, x + glyph.left + glyph.width, baseline + glyph.top + glyph.height};
}

// Calls `each` with every letter's glyph and the place of the pen for it.
template <typename Each> void WalkText(HDC context, int32_t x, const char* text, int length, const Each& each) {
  const Rendition rendition = RenditionOf(*context);
  const std::string_view all(text, size_t(length));
  for (size_t at = 0; at < all.size();) {
    const CodePoint letter = CodePointAt(all, at);
    at += letter.length;
    const Glyph& glyph = GlyphOf(context->font->record, rendition, letter.code);
    each(glyph, x);
    x += glyph.advance + context->characterExtra;
  }
}

// A pixel that a letter covers in part. Channel by channel, so that each stays within its bits.
uint32_t Blend(const PixelLayout& layout, uint32_t under, uint32_t ink, uint32_t coverage) {
  uint32_t blended = 0;
  for (const uint32_t mask : {layout.redMask, layout.greenMask, layout.blueMask}) {
    const int shift = std::countr_zero(mask);
    const uint64_t sum =
        uint64_t{(ink & mask) >> shift} * coverage + uint64_t{(under & mask) >> shift} * (255 - coverage);
    blended |= uint32_t((sum + 127) / 255) << shift;
  }
  return blended;
}

// The part of a letter that lies in one box of where the target may be drawn on.
void DrawLetter(const Surface& surface, const PixelRect& box, const Glyph& glyph, const PixelRect& place,
                uint32_t ink) {
  const PixelRect part = Intersect(box, place);
  for (int32_t y = part.top; y < part.bottom; ++y) {
    const uint8_t* coverage = glyph.coverage.data() + size_t(y - place.top) * size_t(glyph.width);
    for (int32_t x = part.left; x < part.right; ++x) {
      const uint32_t covered = coverage[x - place.left];
      if (covered == 255) {
        SetPixelAt(surface, x, y, ink);
      } else if (covered) {
        SetPixelAt(surface, x, y, Blend(surface.layout, PixelAt(surface, x, y), ink, covered));
      }
    }
  }
}

// The smallest rectangle that holds the text's ink.
PixelRect InkOf(HDC context, int32_t x, int32_t baseline, const char* text, int length) {
  PixelRect ink = {0, 0, 0, 0};
  WalkText(context, x, text, length, [&](const Glyph& glyph, int32_t penX) {
    const PixelRect r = PlaceOf(glyph, penX, baseline);
    if (IsEmpty(r)) return;
    const bool first = IsEmpty(ink);
    ink = first ? r
                : PixelRect{std::min(ink.left, r.left), std::min(ink.top, r.top), std::max(ink.right, r.right),
                            std::max(ink.bottom, r.bottom)};
  });
  return ink;
}

void DrawInk(DrawingTarget* target, int32_t x, int32_t baseline, const char* text, int length) {
  HDC context = target->context;
  const ColourMap map = MapOf(target->surface.layout, HasScreenColours(*context));
  const uint32_t ink = PixelOf(map, context->textColour);
  WalkText(context, x + target->originX, text, length, [&](const Glyph& glyph, int32_t penX) {
    const PixelRect place = PlaceOf(glyph, penX, baseline + target->originY);
    target->where.ForEach([&](const PixelRect& box) { DrawLetter(target->surface, box, glyph, place, ink); });
  });
}

} // namespace
} // namespace framereel

using namespace framereel;

BOOL TextOutA(HDC context, int x, int y, const char* text, int length) {
  if (!context || !text || length < 0) return FALSE;
  const int32_t baseline = context->textAlign == TA_BASELINE ? y : y + context->font->record->ascent;
  DrawingTarget target;
  if (!OpenTarget(context, InkOf(context, x, baseline, text, length), TargetPixels::kKept, &target)) return TRUE;
  DrawInk(&target, x, baseline, text, length);
  return CloseTarget(&target);
}

BOOL GetTextExtentPointA(HDC context, const char* text, int length, SIZE* size) {
  if (!context || !text || length < 0 || !size) return FALSE;
  *size = {0, context->font->record->ascent + context->font->record->descent};
  WalkText(context, 0, text, length, [size](const Glyph& glyph, int32_t) { size->cx += glyph.advance; });
  return TRUE;
}

BOOL GetTextMetricsA(HDC context, TEXTMETRICA* metrics) {
  if (!context || !metrics) return FALSE;
  FontRecord* font = context->font->record;
  *metrics = {font->ascent + font->descent, font->ascent,          font->descent,
              font->internalLeading,        font->externalLeading, AverageWidth(font, RenditionOf(*context))};
  return TRUE;
}
