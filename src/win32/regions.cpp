// Regions and the clip. The arithmetic is pixman's; a region in a context is a copy of the caller's.
#include <algorithm>
#include <new>

#include "win32/drawing_target.h"

using namespace framereel;

namespace {

int ComplexityOf(const pixman_region32_t* area) {
  const int count = pixman_region32_n_rects(const_cast<pixman_region32_t*>(area));
  return count == 0 ? NULLREGION : count == 1 ? SIMPLEREGION : COMPLEXREGION;
}

int BoxOf(const pixman_region32_t* area, RECT* box) {
  const pixman_box32_t* extents = pixman_region32_extents(const_cast<pixman_region32_t*>(area));
  const int complexity = ComplexityOf(area);
  *box = complexity == NULLREGION ? RECT{0, 0, 0, 0} : RECT{extents->x1, extents->y1, extents->x2, extents->y2};
  return complexity;
}

} // namespace

HRGN CreateRectRgn(int left, int top, int right, int bottom) {
  auto* region = new (std::nothrow) Win32Region{{GdiKind::kRegion, false, 0}, {}};
  if (!region) return nullptr;
  const auto [x, endX] = std::minmax({left, right});
  const auto [y, endY] = std::minmax({top, bottom});
  pixman_region32_init_rect(&region->area, x, y, uint32_t(endX) - uint32_t(x), uint32_t(endY) - uint32_t(y));
  return region;
}

int CombineRgn(HRGN into, HRGN a, HRGN b, int how) {
  if (!into || !a || !b || how != RGN_AND) return 0;
  pixman_region32_intersect(&into->area, &a->area, &b->area);
  return ComplexityOf(&into->area);
}

int GetRgnBox(HRGN region, RECT* box) {
  return region && box ? BoxOf(&region->area, box) : 0;
}

BOOL RectInRegion(HRGN region, const RECT* rect) {
  if (!region || !rect) return FALSE;
  const pixman_box32_t box = {rect->left, rect->top, rect->right, rect->bottom};
  if (box.x1 >= box.x2 || box.y1 >= box.y2) return FALSE;
  return pixman_region32_contains_rectangle(&region->area, &box) != PIXMAN_REGION_OUT;
}

int SelectClipRgn(HDC context, HRGN region) {
  if (!context) return 0;
  context->clipped = region != nullptr;
  if (!region) return SIMPLEREGION;
  pixman_region32_copy(&context->clip, &region->area);
  return ComplexityOf(&region->area);
}

int GetClipRgn(HDC context, HRGN region) {
  if (!context || !region) return -1;
  if (!context->clipped) return 0;
  pixman_region32_copy(&region->area, &context->clip);
  return 1;
}

int GetClipBox(HDC context, RECT* box) {
  if (!context || !box) return 0;
  pixman_region32_t region;
  DrawableRegion(*context, BoundsOf(*context), &region);
  pixman_region32_translate(&region, -context->originX, -context->originY);
  const int complexity = BoxOf(&region, box);
  pixman_region32_fini(&region);
  return complexity;
}
