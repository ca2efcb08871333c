// What can be seen of a window, and asking for paint where more of it can be seen than before.
#include "win32/windows/visible.h"

#include "win32/win32_windows.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

void SubtractChildren(const Win32Window& window, Region* region) {
  for (HWND child : window.children) {
    if (Has(*child, WS_VISIBLE)) region->Subtract(PlaceOnScreen(*child));
  }
}

// Takes away what lies above the window among its siblings.
void SubtractSiblings(const Win32Window& window, Region* region) {
  for (HWND sibling : window.parent->children) {
    if (sibling == &window) break;
    if (Has(*sibling, WS_VISIBLE)) region->Subtract(PlaceOnScreen(*sibling));
  }
}

Region Visible(const Win32Window& window, const PixelRect& part) {
  Region region;
  if (!IsShown(window)) return region;
  region.Add(part);
  for (const Win32Window* each = &window; each->parent; each = each->parent) {
    region.Intersect(ClientOnScreen(*each->parent));
    if (Has(*each, WS_CLIPSIBLINGS)) SubtractSiblings(*each, &region);
  }
  return region;
}

} // namespace

Region VisibleWindow(const Win32Window& window) {
  return Visible(window, PlaceOnScreen(window));
}

Region VisibleClient(const Win32Window& window) {
  Region region = Visible(window, Intersect(ClientOnScreen(window), PlaceOnScreen(window)));
  if (Has(window, WS_CLIPCHILDREN)) SubtractChildren(window, &region);
  return region;
}

Region VisibleFrame(const Win32Window& window) {
  Region region = VisibleWindow(window);
  region.Subtract(ClientOnScreen(window));
  return region;
}

} // namespace framereel
