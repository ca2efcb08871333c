// Regions and the clip. The arithmetic is pixman's; a region in a context is a copy of the caller's.
#include <algorithm>

#include "win32/drawing/drawing_target.h"
#include "win32/pixels/presenter.h"
#include "win32/win32_drawing.h"

using namespace framereel;

namespace {

int ComplexityOf(const Region& area) {
  const int32_t count = area.Rectangles();
  return count == 0 ? NULLREGION : count == 1 ? SIMPLEREGION : COMPLEXREGION;
}

int BoxOf(const Region& area, RECT* box) {
  const PixelRect bounds = area.Bounds();
  *box = area.IsEmpty() ? RECT{0, 0, 0, 0} : RECT{bounds.left, bounds.top, bounds.right, bounds.bottom};
  return ComplexityOf(area);
}

PixelRect InOrder(int left, int top, int right, int bottom) {
  return {std::min(left, right), std::min(top, bottom), std::max(left, right), std::max(top, bottom)};
}

} // namespace

HRGN CreateRectRgn(int left, int top, int right, int bottom) {
  return new Win32Region{{GdiKind::kRegion, false, 0}, Region(InOrder(left, top, right, bottom))};
}

BOOL AddRectRgn(HRGN region, const RECT* rect) {
  if (!region || !rect) return FALSE;
  region->area.Add({rect->left, rect->top, rect->right, rect->bottom});
  return TRUE;
}

BOOL GetScreenChanges(HRGN region, const RECT* where) {
  if (!region || !where) return FALSE;
  PresentWindows();
  region->area.Clear();
  DisplayAddChanges({where->left, where->top, where->right, where->bottom}, &region->area);
  region->area.Offset(-where->left, -where->top);
  return TRUE;
}

int GetRgnBox(HRGN region, RECT* box) {
  return region && box ? BoxOf(region->area, box) : 0;
}

BOOL RectInRegion(HRGN region, const RECT* rect) {
  return region && rect && region->area.Touches({rect->left, rect->top, rect->right, rect->bottom});
}

int SelectClipRgn(HDC context, HRGN region) {
  if (!context) return 0;
  context->clipped = region != nullptr;
  if (!region) return SIMPLEREGION;
  context->clip = region->area;
  return ComplexityOf(region->area);
}

int IntersectClipRect(HDC context, int left, int top, int right, int bottom) {
  if (!context) return 0;
  const PixelRect rect = InOrder(left, top, right, bottom);
  if (context->clipped) {
    context->clip.Intersect(rect);
  } else {
    context->clip = Region(rect);
  }
  context->clipped = true;
  return ComplexityOf(context->clip);
}

int GetClipRgn(HDC context, HRGN region) {
  if (!context || !region) return -1;
  if (!context->clipped) return 0;
  region->area = context->clip;
  return 1;
}

int GetClipBox(HDC context, RECT* box) {
  if (!context || !box) return 0;
  Region region = DrawableRegion(*context, BoundsOf(*context));
  region.Offset(-context->originX, -context->originY);
  return BoxOf(region, box);
}
