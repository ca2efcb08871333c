// Update regions, the contexts of windows, and who paints next.
#include <algorithm>

#include "win32/windows/window.h"

namespace framereel {
namespace {

std::vector<std::unique_ptr<WindowContext>>& Contexts() {
  return TheWindows().contexts;
}

WindowContext* ContextOf(HDC context) {
  for (const auto& held : Contexts()) {
    if (held->context == context) return held->window ? held.get() : nullptr;
  }
  return nullptr;
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
  HDC context = NewContext();
  if (!context) return nullptr;
  auto held = std::make_unique<WindowContext>();
  held->context = context;
  context->damage = &held->drawn;
  Contexts().push_back(std::move(held));
  return Contexts().back().get();
}

WindowContext* FindContext(HWND owner, bool own) {
  for (const auto& held : Contexts()) {
    if (held->window == owner && held->own == own) return held.get();
  }
  return nullptr;
}

PixelRect ClientBounds(const Win32Window& window) {
  return {0, 0, WidthOf(window.client), HeightOf(window.client)};
}

// A rectangle of the client area, or all of it for null, cut to it.
PixelRect ClientPart(const Win32Window& window, const RECT* rect) {
  return rect ? Intersect(PixelsOf(*rect), ClientBounds(window)) : ClientBounds(window);
}

HWND FirstToPaint(const std::vector<HWND>& windows, HWND filter) {
  for (HWND window : windows) {
    if (!IsShown(*window)) continue;
    if (window->frameDirty) PaintFrame(window);
    if (!window->update.IsEmpty() && (!filter || IsWithin(window, filter))) return window;
    if (HWND child = FirstToPaint(window->children, filter)) return child;
  }
  return nullptr;
}

// Of all programs' windows; null is the whole screen.
void InvalidateScreen(const RECT* rect) {
  const ScreenFacts screen = DisplayScreen();
  const PixelRect whole = {0, 0, screen.width, screen.height};
  const PixelRect where = rect ? Intersect({rect->left, rect->top, rect->right, rect->bottom}, whole) : whole;
  if (IsEmpty(where)) return;
  DisplayRefresh(where);
  for (HWND window : TheWindows().topLevels) {
    Region region = VisibleWindow(*window);
    region.Intersect(where);
    Expose(window, region);
  }
}

} // namespace

WindowContext* BeginContext(HWND window, bool ofFrame) {
  const bool own = !ofFrame && window->windowClass->style & CS_OWNDC;
  // A window's own context is in use all the time, and so up to date.
  if (WindowContext* kept = own ? FindContext(window, true) : nullptr) return kept;
  WindowContext* held = FindContext(nullptr, false);
  if (!held) held = NewWindowContext();
  if (!held) return nullptr;
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

void InvalidateOwn(HWND window, const Region& region, bool erase) {
  if (region.IsEmpty()) return;
  window->update.Add(region);
  window->update.Intersect(ClientBounds(*window));
  window->eraseUpdate = window->eraseUpdate || erase;
}

HWND WindowToPaint(HWND filter) {
  return FirstToPaint(TheWindows().topLevels, filter);
}

void FillPixels(HDC context, const PixelRect& r, COLORREF colour) {
  HBRUSH brush = IsEmpty(r) ? nullptr : ::CreateSolidBrush(colour);
  const RECT rect = RectOf(r);
  ::FillRect(context, &rect, brush);
  ::DeleteObject(brush);
}

bool EraseBackground(HWND window, HDC context) {
  const auto background = reinterpret_cast<uintptr_t>(window->windowClass->background);
  if (!background) return false;
  const RECT all = RectOf(ClientBounds(*window));
  // Small numbers stand for system colours; no brush has such an address.
  if (background > 32) return ::FillRect(context, &all, window->windowClass->background);
  FillPixels(context, ClientBounds(*window), ::GetSysColor(int(background) - 1));
  return true;
}

} // namespace framereel

using namespace framereel;

HDC GetDC(HWND window) {
  WindowContext* held = IsLive(window) ? BeginContext(window, false) : nullptr;
  return held ? held->context : nullptr;
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

HDC BeginPaint(HWND window, PAINTSTRUCT* paint) {
  if (!IsLive(window) || !paint) return nullptr;
  *paint = {};
  if (window->frameDirty) PaintFrame(window);
  WindowContext* held = BeginContext(window, false);
  if (!held) return nullptr;
  held->painting = true;
  held->paint = window->update;
  Refresh(held);
  HDC context = held->context;
  paint->hdc = context;
  paint->rcPaint = RectOf(window->update.Bounds());
  const bool erase = window->eraseUpdate && !window->update.IsEmpty();
  window->update.Clear();
  window->eraseUpdate = false;
  if (erase) paint->fErase = !Send(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0);
  if (!IsLive(window)) *paint = {};
  return paint->hdc;
}

BOOL EndPaint(HWND, const PAINTSTRUCT* paint) {
  WindowContext* held = paint ? ContextOf(paint->hdc) : nullptr;
  if (!held) return FALSE;
  EndContext(held);
  return TRUE;
}

BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase) {
  if (!window) {
    InvalidateScreen(rect);
    return TRUE;
  }
  if (!IsLive(window)) return FALSE;
  const PixelRect origin = ClientOnScreen(*window);
  Region region = VisibleClient(*window);
  region.Intersect(Moved(ClientPart(*window, rect), origin.left, origin.top));
  if (!Has(*window, WS_CLIPCHILDREN)) {
    for (HWND child : window->children) Expose(child, region);
  }
  region.Offset(-origin.left, -origin.top);
  InvalidateOwn(window, region, erase);
  return TRUE;
}

BOOL UpdateWindow(HWND window) {
  if (!IsLive(window)) return FALSE;
  if (window->frameDirty && IsShown(*window)) PaintFrame(window);
  if (!window->update.IsEmpty() && IsShown(*window)) Send(window, WM_PAINT, 0, 0);
  const std::vector<HWND> children = IsLive(window) ? window->children : std::vector<HWND>();
  for (HWND child : children) ::UpdateWindow(child);
  return TRUE;
}

int GetUpdateRgn(HWND window, HRGN region, BOOL) {
  if (!IsLive(window) || !region) return 0;
  region->area = window->update;
  RECT box;
  return ::GetRgnBox(region, &box);
}

BOOL ScrollWindow(HWND window, int dx, int dy, const RECT* scroll, const RECT* clip) {
  if (!IsLive(window)) return FALSE;
  const PixelRect origin = ClientOnScreen(*window);
  Region visible = VisibleClient(*window);
  visible.Intersect(Moved(ClientPart(*window, clip), origin.left, origin.top));
  Region area = VisibleClient(*window);
  area.Intersect(Moved(ClientPart(*window, scroll), origin.left, origin.top));
  Region to = area;
  to.Offset(dx, dy);
  to.Intersect(visible);
  CopyPixels(window, to, dx, dy);
  // What was to be painted before it moved is to be painted where it has gone.
  Region stale = window->update;
  stale.Intersect(ClientPart(*window, scroll));
  stale.Offset(dx, dy);
  stale.Intersect(ClientPart(*window, clip));
  InvalidateOwn(window, stale, true);
  Region free = area;
  free.Intersect(visible);
  free.Subtract(to);
  free.Offset(-origin.left, -origin.top);
  InvalidateOwn(window, free, true);
  return TRUE;
}
