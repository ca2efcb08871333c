// Finding what can be drawn on, and putting its pixels at hand.
#include "win32/drawing/drawing_target.h"

#include <algorithm>

#include "win32/pixels/presenter.h"

namespace framereel {
namespace {

// Makes it a copy of the screen around `where`, which turns to the copy's coordinates.
bool CopyFromScreen(DrawingTarget* target, TargetPixels pixels) {
  // What our windows show by now is part of what is drawn on.
  PresentWindows();
  const PixelRect around = target->where.Bounds();
  if (!DisplayNewSurface(around.right - around.left, around.bottom - around.top, &target->surface)) return false;
  if (pixels == TargetPixels::kKept && !DisplayReadScreen(around, target->surface, 0, 0)) {
    DisplayFreeSurface(&target->surface);
    return false;
  }
  target->copied = true;
  target->originX -= around.left;
  target->originY -= around.top;
  target->where.Offset(-around.left, -around.top);
  return true;
}

// Puts back what was drawn on, and nothing else: what lies between may have changed on the screen.
bool PutOnScreen(const DrawingTarget& target) {
  const int32_t dx = target.context->originX - target.originX, dy = target.context->originY - target.originY;
  bool done = true;
  target.where.ForEach(
      [&](const PixelRect& box) { done &= DisplayDrawScreen(target.surface, box, box.left + dx, box.top + dy); });
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

Region DrawableRegion(const Win32DeviceContext& context, const PixelRect& rect) {
  Region region(Intersect(rect, BoundsOf(context)));
  if (context.clipped) region.Intersect(context.clip);
  region.Offset(context.originX, context.originY);
  if (context.bounded) region.Intersect(context.visible);
  return region;
}

bool OpenTarget(HDC context, const PixelRect& rect, TargetPixels pixels, DrawingTarget* target) {
  *target = {context, {}, context->originX, context->originY, DrawableRegion(*context, rect), false};
  if (target->where.IsEmpty()) return false;
  if (context->screen) return CopyFromScreen(target, pixels);
  target->surface = context->bitmap ? context->bitmap->surface : *context->surface;
  return true;
}

bool CloseTarget(DrawingTarget* target) {
  bool done = true;
  if (target->copied) {
    done = PutOnScreen(*target);
    DisplayFreeSurface(&target->surface);
  } else if (target->context->damage) {
    NoteDamage(target->context->damage, target->where.Bounds());
  }
  return done;
}

} // namespace framereel
