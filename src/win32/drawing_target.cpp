// Finding what can be drawn on, and putting its pixels at hand.
#include "win32/drawing_target.h"

#include <algorithm>

#include "win32/present.h"

namespace framereel {
namespace {

// Makes it a copy of the screen around `where`, which turns to the copy's coordinates.
bool CopyFromScreen(DrawingTarget* target, TargetPixels pixels) {
  // What our windows show by now is part of what is drawn on.
  PresentWindows();
  const PixelRect around = RectOf(*pixman_region32_extents(&target->where));
  if (!DisplayNewSurface(around.right - around.left, around.bottom - around.top, &target->surface)) return false;
  if (pixels == TargetPixels::kKept && !DisplayReadScreen(around, target->surface, 0, 0)) {
    DisplayFreeSurface(&target->surface);
    return false;
  }
  target->copied = true;
  target->originX -= around.left;
  target->originY -= around.top;
  pixman_region32_translate(&target->where, -around.left, -around.top);
  return true;
}

// Puts back what was drawn on, and nothing else: what lies between may have changed on the screen.
bool PutOnScreen(const DrawingTarget& target) {
  const int32_t dx = target.context->originX - target.originX, dy = target.context->originY - target.originY;
  int count = 0;
  const pixman_box32_t* boxes = pixman_region32_rectangles(const_cast<pixman_region32_t*>(&target.where), &count);
  bool done = true;
  for (int i = 0; i < count; ++i) {
    done &= DisplayDrawScreen(target.surface, RectOf(boxes[i]), boxes[i].x1 + dx, boxes[i].y1 + dy);
  }
  return done;
}

void NoteDamage(PixelRect* damage, const PixelRect& drawn) {
  if (IsEmpty(*damage)) {
    *damage = drawn;
  } else {
    *damage = {std::min(damage->left, drawn.left), std::min(damage->top, drawn.top),
               std::max(damage->right, drawn.right), std::max(damage->bottom, drawn.bottom)};
  }
}

} // namespace

void DrawableRegion(const Win32DeviceContext& context, const PixelRect& rect, pixman_region32_t* region) {
  const PixelRect r = Moved(Intersect(rect, BoundsOf(context)), context.originX, context.originY);
  if (IsEmpty(r)) return pixman_region32_init(region);
  pixman_region32_init_rect(region, r.left, r.top, uint32_t(r.right - r.left), uint32_t(r.bottom - r.top));
  if (context.bounded) {
    pixman_region32_intersect(region, region, const_cast<pixman_region32_t*>(&context.visible));
  }
  if (!context.clipped) return;
  pixman_region32_translate(region, -context.originX, -context.originY);
  pixman_region32_intersect(region, region, const_cast<pixman_region32_t*>(&context.clip));
  pixman_region32_translate(region, context.originX, context.originY);
}

bool OpenTarget(HDC context, const PixelRect& rect, TargetPixels pixels, DrawingTarget* target) {
  target->context = context;
  target->originX = context->originX;
  target->originY = context->originY;
  target->copied = false;
  DrawableRegion(*context, rect, &target->where);
  bool open = pixman_region32_not_empty(&target->where);
  if (open && context->screen) {
    open = CopyFromScreen(target, pixels);
  } else if (open) {
    target->surface = context->bitmap ? context->bitmap->surface : *context->surface;
  }
  if (!open) pixman_region32_fini(&target->where);
  return open;
}

bool CloseTarget(DrawingTarget* target) {
  bool done = true;
  if (target->copied) {
    done = PutOnScreen(*target);
    DisplayFreeSurface(&target->surface);
  } else if (target->context->damage) {
    NoteDamage(target->context->damage, RectOf(*pixman_region32_extents(&target->where)));
  }
  pixman_region32_fini(&target->where);
  return done;
}

} // namespace framereel
