// Copying pixels between targets. The screen as a source is a rectangle read from the display. Between the screen and
// a bitmap of its own format the display copies, and no memory is asked for.
#include <cstring>

#include "win32/drawing/drawing_target.h"
#include "win32/drawing/objects.h"
#include "win32/pixels/presenter.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

// The pixels that are copied: 0, 0 is the corner of the rectangle.
struct Source {
  Surface surface;
  bool ofDisplay; // read from the screen for this copy
  bool snapshot;  // copied aside for this copy
};

void FreeSource(Source* source) {
  if (source->ofDisplay) DisplayFreeSurface(&source->surface);
  if (source->snapshot) FreePlainSurface(&source->surface);
}

bool SamePixels(const PixelLayout& a, bool aOfScreen, const PixelLayout& b, bool bOfScreen) {
  if (::memcmp(&a, &b, sizeof a) != 0) return false;
  if (!IsPalette(a) || a.depth == 1 || aOfScreen == bOfScreen) return true;
  const ColourMap aMap = MapOf(a, aOfScreen), bMap = MapOf(b, bOfScreen);
  return ::memcmp(aMap.palette, bMap.palette, sizeof aMap.palette) == 0;
}

// Whether a pixel value means the same on both, so that values can be copied as they are.
bool SamePixels(const Win32DeviceContext& to, const Win32DeviceContext& from) {
  return SamePixels(LayoutOf(to), HasScreenColours(to), LayoutOf(from), HasScreenColours(from));
}

Surface PartOf(Surface surface, const PixelRect& part) {
  surface.pixels = RowOf(surface, part.top) + int64_t(part.left) * surface.layout.bytesPerPixel;
  surface.width = part.right - part.left;
  surface.height = part.bottom - part.top;
  return surface;
}

const Surface& SurfaceOf(const Win32DeviceContext& context) {
  return context.bitmap ? context.bitmap->surface : *context.surface;
}

// The pixels of `rect`, which lies inside the context. `apart`: they must outlast what is drawn on the context.
bool TakeSource(const Win32DeviceContext& context, const PixelRect& rect, bool apart, Source* source) {
  *source = {};
  const PixelRect where = Moved(rect, context.originX, context.originY);
  const int32_t width = where.right - where.left, height = where.bottom - where.top;
  if (context.screen) {
    PresentWindows();
    if (!DisplayNewSurface(width, height, &source->surface)) return false;
    source->ofDisplay = true;
    if (DisplayReadScreen(where, source->surface, 0, 0)) return true;
    FreeSource(source);
    return false;
  }
  const Surface part = PartOf(SurfaceOf(context), where);
  source->surface = part;
  if (!apart) return true;
  if (!NewPlainSurface(part.layout, width, height, &source->surface)) return false;
  source->snapshot = true;
  const size_t bytes = size_t(width) * part.layout.bytesPerPixel;
  for (int32_t y = 0; y < height; ++y) ::memcpy(RowOf(source->surface, y), RowOf(part, y), bytes);
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

// What turns a pixel of the source into one of the target.
struct Translation {
  enum { kSame, kBitsToColours, kColoursToBits, kNearest } kind;
  uint32_t zero, one; // for kBitsToColours the target's pixels; for kColoursToBits `one` is the source's background
  ColourMap to, from; // for kNearest
};

Translation TranslationOf(const Win32DeviceContext& to, const Win32DeviceContext& from) {
  if (SamePixels(to, from)) return {Translation::kSame, 0, 0, {}, {}};
  const ColourMap toMap = MapOf(LayoutOf(to), HasScreenColours(to));
  const ColourMap fromMap = MapOf(LayoutOf(from), HasScreenColours(from));
  if (!HasScreenColours(from)) {
    return {Translation::kBitsToColours, PixelOf(toMap, to.textColour), PixelOf(toMap, to.backColour), {}, {}};
  }
  if (!HasScreenColours(to)) {
    return {Translation::kColoursToBits, 0, PixelOf(fromMap, from.backColour), {}, {}};
  }
  return {Translation::kNearest, 0, 0, toMap, fromMap};
}

uint32_t Translate(const Translation& translation, uint32_t pixel) {
  switch (translation.kind) {
  case Translation::kBitsToColours:
    return pixel ? translation.one : translation.zero;
  case Translation::kColoursToBits:
    return pixel == translation.one;
  case Translation::kNearest:
    return PixelOfColour(translation.to, ColourOfPixel(translation.from, pixel));
  default:
    return pixel;
  }
}

// One copy: the whole rectangle on the target's surface, of which only parts may be drawn on.
struct Copy {
  PixelRect rect;
  Source source;
  Translation translation;
  DWORD operation;
};

// Pixel by pixel. The operations work on pixel values; an inverted one has no bits that the layout does not have.
void CombinePixels(const Surface& to, const PixelRect& box, const Copy& copy) {
  const int32_t width = copy.rect.right - copy.rect.left, height = copy.rect.bottom - copy.rect.top;
  const Surface& from = copy.source.surface;
  const uint32_t bits = PixelBits(to.layout);
  for (int32_t y = box.top; y < box.bottom; ++y) {
    const auto fromY = int32_t(int64_t{y - copy.rect.top} * from.height / height);
    for (int32_t x = box.left; x < box.right; ++x) {
      const auto fromX = int32_t(int64_t{x - copy.rect.left} * from.width / width);
      const uint32_t source = Translate(copy.translation, PixelAt(from, fromX, fromY));
      SetPixelAt(to, x, y, Combine(copy.operation, source, PixelAt(to, x, y)) & bits);
    }
  }
}

void CopyRows(const Surface& to, const PixelRect& box, const Copy& copy) {
  const Surface source = PartOf(copy.source.surface, Moved(box, -copy.rect.left, -copy.rect.top));
  const Surface target = PartOf(to, box);
  const size_t bytes = size_t(target.width) * target.layout.bytesPerPixel;
  // A copy within one bitmap may overlap: downward it runs from the last row.
  const bool upward = target.pixels <= source.pixels;
  for (int32_t i = 0; i < target.height; ++i) {
    const int32_t y = upward ? i : target.height - 1 - i;
    ::memmove(RowOf(target, y), RowOf(source, y), bytes);
  }
}

void CopyToTarget(DrawingTarget* target, const Copy& copy) {
  const PixelRect& r = copy.rect;
  const bool sameSize = r.right - r.left == copy.source.surface.width && r.bottom - r.top == copy.source.surface.height;
  const bool plain = copy.operation == SRCCOPY && sameSize && copy.translation.kind == Translation::kSame;
  target->where.ForEach([&](const PixelRect& box) {
    if (plain) {
      CopyRows(target->surface, box, copy);
    } else {
      CombinePixels(target->surface, box, copy);
    }
  });
}

bool ReadScreenTo(DrawingTarget* target, const PixelRect& to, const PixelRect& from) {
  PresentWindows();
  const int32_t dx = from.left - to.left - target->originX, dy = from.top - to.top - target->originY;
  bool done = true;
  target->where.ForEach(
      [&](const PixelRect& box) { done &= DisplayReadScreen(Moved(box, dx, dy), target->surface, box.left, box.top); });
  return CloseTarget(target) && done;
}

// `where` is the part of toRect that may be drawn on, on the screen.
bool DrawOnScreen(const Region& where, const PixelRect& toRect, const Win32DeviceContext& to,
                  const Win32DeviceContext& from, const PixelRect& fromRect) {
  PresentWindows();
  const int32_t dx = fromRect.left + from.originX - toRect.left - to.originX;
  const int32_t dy = fromRect.top + from.originY - toRect.top - to.originY;
  bool done = true;
  where.ForEach(
      [&](const PixelRect& box) { done &= DisplayDrawScreen(SurfaceOf(from), Moved(box, dx, dy), box.left, box.top); });
  return done;
}

// The source's rectangle lies inside its context, neither is empty, and without a stretch the target's does too.
bool Blit(HDC to, const PixelRect& toRect, HDC from, const PixelRect& fromRect, DWORD operation) {
  const bool replaces = operation == SRCCOPY || operation == 0;
  const bool sameSize = toRect.right - toRect.left == fromRect.right - fromRect.left &&
                        toRect.bottom - toRect.top == fromRect.bottom - fromRect.top;
  const Region where = DrawableRegion(*to, toRect);
  if (where.IsEmpty()) return true;
  DrawingTarget target;
  if (from->screen != to->screen && sameSize && operation == SRCCOPY && SamePixels(*to, *from)) {
    if (to->screen) return DrawOnScreen(where, toRect, *to, *from, fromRect);
    if (!OpenTarget(to, toRect, TargetPixels::kReplaced, &target)) return false;
    return ReadScreenTo(&target, toRect, Moved(fromRect, from->originX, from->originY));
  }
  Copy copy = {{}, {}, TranslationOf(*to, *from), operation};
  const bool sameSurface = !from->screen && !to->screen && SurfaceOf(*from).pixels == SurfaceOf(*to).pixels;
  const bool inOrder = operation == SRCCOPY && sameSize && !to->bounded && !to->clipped; // CopyRows
  const bool apart = sameSurface && !inOrder;
  if (!TakeSource(*from, fromRect, apart, &copy.source)) return false;
  bool done = OpenTarget(to, toRect, replaces ? TargetPixels::kReplaced : TargetPixels::kKept, &target);
  if (done) {
    copy.rect = Moved(toRect, target.originX, target.originY);
    CopyToTarget(&target, copy);
    done = CloseTarget(&target);
  }
  FreeSource(&copy.source);
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
      Intersect(Intersect({fromX, fromY, fromX + width, fromY + height}, fromBounds), Moved(toBounds, -dx, -dy));
  if (IsEmpty(source)) return TRUE;
  return Blit(to, Moved(source, dx, dy), from, source, operation);
}

BOOL StretchBlt(HDC to, int x, int y, int width, int height, HDC from, int fromX, int fromY, int fromWidth,
                int fromHeight, DWORD operation) {
  if (!to || !from || width <= 0 || height <= 0 || fromWidth <= 0 || fromHeight <= 0) return FALSE;
  const PixelRect source = {fromX, fromY, fromX + fromWidth, fromY + fromHeight};
  const PixelRect inside = Intersect(source, BoundsOf(*from));
  if (IsEmpty(inside)) return TRUE;
  // A source that is cut would need the part of a pixel; no caller stretches over the source's edge.
  if (::memcmp(&inside, &source, sizeof source) != 0) return FALSE;
  return Blit(to, {x, y, x + width, y + height}, from, source, operation);
}

COLORREF GetPixel(HDC context, int x, int y) {
  if (!context) return CLR_INVALID;
  const bool drawable = !DrawableRegion(*context, {x, y, x + 1, y + 1}).IsEmpty();
  Source source;
  if (!drawable || !TakeSource(*context, {x, y, x + 1, y + 1}, false, &source)) return CLR_INVALID;
  const ColourMap map = MapOf(source.surface.layout, HasScreenColours(*context));
  const PaletteColour colour = ColourOfPixel(map, PixelAt(source.surface, 0, 0));
  FreeSource(&source);
  return RGB(colour.red, colour.green, colour.blue);
}
