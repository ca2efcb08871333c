// Who paints next, and with what: the order of paints, BeginPaint and EndPaint, scrolling.
#include "win32/windows/painting.h"

#include <algorithm>

#include "win32/drawing/relief.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_drawing.h"
#include "win32/win32_windows.h"
#include "win32/windows/frame.h"
#include "win32/windows/sending.h"
#include "win32/windows/update_regions.h"
#include "win32/windows/visible.h"
#include "win32/windows/window_contexts.h"
#include "win32/windows/window_surfaces.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

HWND FirstToPaint(const std::vector<HWND>& windows, HWND filter) {
  for (HWND window : windows) {
    if (!IsShown(*window)) continue;
    if (window->frameDirty) PaintFrame(window);
    if (!window->update.IsEmpty() && (!filter || IsWithin(window, filter))) return window;
    if (HWND child = FirstToPaint(window->children, filter)) return child;
  }
  return nullptr;
}

} // namespace

HWND WindowToPaint(HWND filter) {
  return FirstToPaint(TheWindows().topLevels, filter);
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

namespace {

// A window that does not spare its children covers them, also one that has been painted ahead of it.
void PaintsOver(HWND window) {
  if (Has(*window, WS_CLIPCHILDREN) || window->children.empty()) return;
  const PixelRect origin = ClientOnScreen(*window);
  Region covered = window->update;
  covered.Offset(origin.left, origin.top);
  for (HWND child : window->children) Expose(child, covered);
}

} // namespace
} // namespace framereel

using namespace framereel;

HDC BeginPaint(HWND window, PAINTSTRUCT* paint) {
  if (!IsLive(window) || !paint) return nullptr;
  *paint = {};
  if (window->frameDirty) PaintFrame(window);
  WindowContext* held = BeginContext(window, false);
  LimitContext(held, window->update);
  HDC context = held->context;
  paint->hdc = context;
  paint->rcPaint = RectOf(window->update.Bounds());
  PaintsOver(window);
  const bool erase = window->eraseUpdate && !window->update.IsEmpty();
  window->update.Clear();
  window->eraseUpdate = false;
  if (erase) paint->fErase = !Send(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0);
  if (IsLive(window)) return context;
  GiveBackContext(context);
  *paint = {};
  return nullptr;
}

BOOL EndPaint(HWND, const PAINTSTRUCT* paint) {
  return paint && GiveBackContext(paint->hdc);
}

BOOL UpdateWindow(HWND window) {
  if (!IsLive(window)) return FALSE;
  if (window->frameDirty && IsShown(*window)) PaintFrame(window);
  if (!window->update.IsEmpty() && IsShown(*window)) Send(window, WM_PAINT, 0, 0);
  const std::vector<HWND> children = IsLive(window) ? window->children : std::vector<HWND>();
  for (HWND child : children) ::UpdateWindow(child);
  return TRUE;
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
