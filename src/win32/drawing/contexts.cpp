// Device contexts: making, selecting into, deleting. What they hold by default is made in objects.cpp and fonts.cpp.
#include "win32/drawing/contexts.h"

#include "win32/drawing/fonts.h"
#include "win32/drawing/objects.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

template <typename Object> void Hold(Object** slot, Object* object) {
  ++object->object.contexts;
  *slot = object;
}

// Puts an object into a slot of a context and answers the one that was there.
template <typename Object> Object* Swap(Object** slot, Object* object) {
  Object* before = *slot;
  --before->object.contexts;
  Hold(slot, object);
  return before;
}

void SetModes(HDC context) {
  context->textColour = RGB(0, 0, 0);
  context->backColour = RGB(255, 255, 255);
  context->rop = R2_COPYPEN;
  context->characterExtra = 0;
  context->textAlign = 0;
  context->clipped = false;
}

HBITMAP SwapBitmap(HDC context, HBITMAP bitmap) {
  if (!context->bitmap || (bitmap->holder && bitmap->holder != context)) return nullptr;
  HBITMAP before = context->bitmap;
  before->holder = nullptr;
  bitmap->holder = context;
  context->bitmap = bitmap;
  return before;
}

const Surface* SurfaceOf(const Win32DeviceContext& context) {
  return context.bitmap ? &context.bitmap->surface : context.surface;
}

} // namespace

HDC NewContext() {
  HDC context = new Win32DeviceContext{};
  Hold(&context->pen, static_cast<HPEN>(::GetStockObject(BLACK_PEN)));
  Hold(&context->brush, WhiteBrush());
  Hold(&context->font, SystemFont());
  SetModes(context);
  return context;
}

void ResetContext(HDC context) {
  Swap(&context->pen, static_cast<HPEN>(::GetStockObject(BLACK_PEN)));
  Swap(&context->brush, WhiteBrush());
  Swap(&context->font, SystemFont());
  SetModes(context);
}

void FreeContext(HDC context) {
  --context->pen->object.contexts;
  --context->brush->object.contexts;
  --context->font->object.contexts;
  delete context;
}

PixelRect BoundsOf(const Win32DeviceContext& context) {
  const Surface* surface = SurfaceOf(context);
  const ScreenFacts facts = context.screen ? DisplayScreen() : ScreenFacts{};
  const int32_t width = surface ? surface->width : facts.width;
  const int32_t height = surface ? surface->height : facts.height;
  return {-context.originX, -context.originY, width - context.originX, height - context.originY};
}

PixelLayout LayoutOf(const Win32DeviceContext& context) {
  const Surface* surface = SurfaceOf(context);
  return surface ? surface->layout : DisplayScreen().layout;
}

bool HasScreenColours(const Win32DeviceContext& context) {
  return !context.bitmap || context.bitmap->ofScreen;
}

} // namespace framereel

using namespace framereel;

HDC CreateDCA(const char*, const char*, const char*, const void*) {
  HDC context = DisplayOpen() ? NewContext() : nullptr;
  if (context) context->screen = true;
  return context;
}

HDC CreateCompatibleDC(HDC) {
  HDC context = NewContext();
  context->bitmap = context->first = CreateBitmap(1, 1, 1, 1, nullptr);
  context->first->holder = context;
  return context;
}

BOOL DeleteDC(HDC context) {
  if (!context || context->window) return FALSE;
  if (context->bitmap) {
    context->bitmap->holder = nullptr;
    context->first->holder = nullptr;
    DeleteObject(context->first);
  }
  FreeContext(context);
  return TRUE;
}

HGDIOBJ SelectObject(HDC context, HGDIOBJ object) {
  if (!context || !object) return nullptr;
  switch (KindOf(object)) {
  case GdiKind::kBitmap:
    return SwapBitmap(context, static_cast<HBITMAP>(object));
  case GdiKind::kPen:
    return Swap(&context->pen, static_cast<HPEN>(object));
  case GdiKind::kBrush:
    return Swap(&context->brush, static_cast<HBRUSH>(object));
  case GdiKind::kFont:
    return Swap(&context->font, static_cast<HFONT>(object));
  case GdiKind::kRegion:
    return nullptr;
  }
  return nullptr;
}
