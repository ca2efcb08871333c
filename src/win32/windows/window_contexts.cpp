// The contexts that windows are drawn through: given out, kept up to date while windows move, and used again.
#include "win32/windows/window_contexts.h"

#include <algorithm>

#include "win32/drawing/contexts.h"
#include "win32/windows/visible.h"
#include "win32/windows/window_surfaces.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

std::vector<std::unique_ptr<WindowContext>>& Contexts() {
  return TheWindows().contexts;
}

// Tells the context where its window stands now and what of it can be seen.
void Refresh(WindowContext* held) {
  const Win32Window& window = *held->window;
  const HWND topLevel = TopLevelOf(held->window);
  const bool onScreen = topLevel->top->role == WindowRole::kCover;
  const ShownSurface& shown = topLevel->top->shown;
  const PixelRect area = held->ofFrame ? PlaceOnScreen(window) : ClientOnScreen(window);
  Region visible = held->ofFrame ? VisibleFrame(window) : VisibleClient(window);
  if (held->painting) {
    Region paint = held->paint;
    paint.Offset(area.left, area.top);
    visible.Intersect(paint);
  }
  const int32_t left = onScreen ? 0 : topLevel->place.left, top = onScreen ? 0 : topLevel->place.top;
  visible.Offset(-left, -top);
  HDC context = held->context;
  context->screen = onScreen;
  context->surface = shown.surface.pixels ? &shown.surface : nullptr;
  context->window = held->window;
  context->originX = area.left - left;
  context->originY = area.top - top;
  context->bounded = true;
  context->visible = visible;
}

void GatherFrom(WindowContext* held) {
  if (held->window && !IsEmpty(held->drawn)) NoteDamage(&TopLevelOf(held->window)->top->shown, held->drawn);
  held->drawn = {0, 0, 0, 0};
}

WindowContext* NewWindowContext() {
  auto held = std::make_unique<WindowContext>();
  held->context = NewContext();
  held->context->damage = &held->drawn;
  Contexts().push_back(std::move(held));
  return Contexts().back().get();
}

WindowContext* FindContext(HWND owner, bool own) {
  for (const auto& held : Contexts()) {
    if (held->window == owner && held->own == own) return held.get();
  }
  return nullptr;
}

} // namespace

WindowContext* BeginContext(HWND window, bool ofFrame) {
  const bool own = !ofFrame && window->windowClass->style & CS_OWNDC;
  // A window's own context is in use all the time, and so up to date.
  if (WindowContext* kept = own ? FindContext(window, true) : nullptr) return kept;
  WindowContext* held = FindContext(nullptr, false);
  if (!held) held = NewWindowContext();
  held->window = window;
  held->own = own;
  held->ofFrame = ofFrame;
  Refresh(held);
  return held;
}

void EndContext(WindowContext* held) {
  GatherFrom(held);
  held->painting = false;
  held->paint.Clear();
  if (held->own) return Refresh(held);
  held->window = held->context->window = nullptr;
  held->context->surface = nullptr;
  held->context->screen = false;
  ResetContext(held->context);
}

WindowContext* ContextOf(HDC context) {
  for (const auto& held : Contexts()) {
    if (held->context == context) return held->window ? held.get() : nullptr;
  }
  return nullptr;
}

void RefreshContexts() {
  for (const auto& held : Contexts()) {
    if (!held->window) continue;
    GatherFrom(held.get());
    Refresh(held.get());
  }
}

void GatherDamage() {
  for (const auto& held : Contexts()) GatherFrom(held.get());
}

void ForgetContexts(HWND window) {
  for (const auto& held : Contexts()) {
    if (held->window != window) continue;
    held->own = false;
    EndContext(held.get());
  }
}

void FreeContexts() {
  for (const auto& held : Contexts()) FreeContext(held->context);
  Contexts().clear();
}

void LimitContext(WindowContext* held, const Region& paint) {
  held->painting = true;
  held->paint = paint;
  Refresh(held);
}

} // namespace framereel

using namespace framereel;

HDC GetDC(HWND window) {
  return IsLive(window) ? BeginContext(window, false)->context : nullptr;
}

int ReleaseDC(HWND, HDC context) {
  WindowContext* held = ContextOf(context);
  if (!held) return 0;
  if (held->own) {
    GatherFrom(held);
  } else {
    EndContext(held);
  }
  return 1;
}
