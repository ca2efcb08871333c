// What of windows is to be painted anew: asking for paint, where more of a window can be seen than before among others.
#include "win32/windows/update_regions.h"

#include "win32/drawing/gdi.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_drawing.h"
#include "win32/win32_windows.h"
#include "win32/windows/visible.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

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

PixelRect ClientBounds(const Win32Window& window) {
  return {0, 0, WidthOf(window.client), HeightOf(window.client)};
}

// A rectangle of the client area, or all of it for null, cut to it.
PixelRect ClientPart(const Win32Window& window, const RECT* rect) {
  return rect ? Intersect(PixelsOf(*rect), ClientBounds(window)) : ClientBounds(window);
}

void InvalidateOwn(HWND window, const Region& region, bool erase) {
  if (region.IsEmpty()) return;
  window->update.Add(region);
  window->update.Intersect(ClientBounds(*window));
  window->eraseUpdate = window->eraseUpdate || erase;
}

void InvalidateFrame(HWND window) {
  window->frameDirty = true;
}

void Expose(HWND window, const Region& region) {
  Region frame = VisibleFrame(*window);
  frame.Intersect(region);
  if (!frame.IsEmpty()) window->frameDirty = true;
  Region client = VisibleClient(*window);
  client.Intersect(region);
  const PixelRect origin = ClientOnScreen(*window);
  client.Offset(-origin.left, -origin.top);
  InvalidateOwn(window, client, true);
  for (HWND child : window->children) {
    if (Has(*child, WS_VISIBLE)) Expose(child, region);
  }
}

} // namespace framereel

using namespace framereel;

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

int GetUpdateRgn(HWND window, HRGN region, BOOL) {
  if (!IsLive(window) || !region) return 0;
  region->area = window->update;
  RECT box;
  return ::GetRgnBox(region, &box);
}
