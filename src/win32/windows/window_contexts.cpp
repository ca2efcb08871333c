// The contexts that windows are drawn through: given out, kept up to date while windows move, and used again.
#include "win32/windows/window_contexts.h"

#include <algorithm>

#include "win32/drawing/contexts.h"
#include "win32/win32_windows.h"
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
  // What is drawn on a cover mixes with what is under it, of which a compositor has a picture of its own.
  if (onScreen && DisplayIsComposed()) visible.Clear();
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

WindowContext* OwnContext(HWND window) {
  for (const auto& held : Contexts()) {
    if (held->window == window && held->own) return held.get();
  }
  return nullptr;
}

WindowContext* SpareContext() {
  for (const auto& held : Contexts()) {
    if (!held->window && !held->given) return held.get();
  }
  return NewWindowContext();
}

// Leaves the window.
void Detach(WindowContext* held) {
  GatherFrom(held);
  held->own = held->painting = false;
  held->paint.Clear();
  held->window = held->context->window = nullptr;
  held->context->surface = nullptr;
  held->context->screen = false;
  ResetContext(held->context);
}

} // namespace

WindowContext* BeginContext(HWND window, bool ofFrame) {
  const bool own = !ofFrame && window->windowClass->style & CS_OWNDC;
  // A window's own context is in use all the time, and so up to date.
  WindowContext* kept = own ? OwnContext(window) : nullptr;
  WindowContext* held = kept ? kept : SpareContext();
  held->given = true;
  if (kept) return kept;
  held->window = window;
  held->own = own;
  held->ofFrame = ofFrame;
  Refresh(held);
  return held;
}

void EndContext(WindowContext* held) {
  held->given = false;
  if (!held->own) return Detach(held);
  GatherFrom(held);
  if (!held->painting) return;
  held->painting = false;
  held->paint.Clear();
  Refresh(held);
}

bool GiveBackContext(HDC context) {
  const auto is = [=](const auto& held) { return held->context == context && held->given; };
  const auto held = std::find_if(Contexts().begin(), Contexts().end(), is);
  if (held == Contexts().end()) return false;
  const bool stands = (*held)->window;
  EndContext(held->get());
  // It may have outlived the last window.
  if (TheWindows().windows.empty()) FreeContexts();
  return stands;
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
    if (held->window == window) Detach(held.get());
  }
}

void FreeContexts() {
  std::erase_if(Contexts(), [](const auto& held) {
    if (!held->given) FreeContext(held->context);
    return !held->given;
  });
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
  return GiveBackContext(context);
}
