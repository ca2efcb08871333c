// Who is whose parent, owner and sibling, and which window stands at a point.
#include "win32/windows/window_tree.h"

#include <algorithm>

#include "win32/pixels/rectangles.h"
#include "win32/win32_windows.h"

namespace framereel {

WindowSystem& TheWindows() {
  static WindowSystem system;
  return system;
}

bool IsLive(HWND window) {
  const auto& windows = TheWindows().windows;
  return window && std::any_of(windows.begin(), windows.end(), [=](const auto& live) { return live.get() == window; });
}

bool Has(const Win32Window& window, DWORD style) {
  return (window.style & style) == style;
}

HWND TopLevelOf(HWND window) {
  while (window && window->parent) window = window->parent;
  return window;
}

bool IsWithin(HWND window, HWND ancestor) {
  while (window && window != ancestor) window = window->parent;
  return window != nullptr;
}

std::vector<HWND>& SiblingsOf(HWND window) {
  return window->parent ? window->parent->children : TheWindows().topLevels;
}

bool IsShown(const Win32Window& window) {
  for (const Win32Window* each = &window; each; each = each->parent) {
    if (!Has(*each, WS_VISIBLE)) return false;
    const bool asCaption = each == &window && (!each->top || each->top->asCaption);
    if (each->minimised && !asCaption) return false;
  }
  return OwnersAreShown(window);
}

bool OwnersAreShown(const Win32Window& window) {
  const Win32Window* top = &window;
  while (top->parent) top = top->parent;
  for (const Win32Window* owner = top->owner; owner; owner = owner->owner) {
    if (!Has(*owner, WS_VISIBLE) || owner->minimised) return false;
  }
  return true;
}

bool IsGoing(HWND window) {
  while (window && !window->beingDestroyed) window = window->parent;
  return window != nullptr;
}

bool IsEnabled(HWND window) {
  for (; window; window = window->parent) {
    if (Has(*window, WS_DISABLED)) return false;
  }
  return true;
}

HWND TopLevelOf(const DisplayWindow* display) {
  for (HWND window : TheWindows().topLevels) {
    if (window->top->shown.display == display) return window;
  }
  return nullptr;
}

HWND DeepestAt(HWND window, int32_t x, int32_t y) {
  if (!Holds(ClientOnScreen(*window), x, y)) return window;
  for (HWND child : window->children) {
    const bool takes = Has(*child, WS_VISIBLE) && !Has(*child, WS_DISABLED);
    if (takes && Holds(PlaceOnScreen(*child), x, y)) return DeepestAt(child, x, y);
  }
  return window;
}

PixelRect PlaceOnScreen(const Win32Window& window) {
  if (!window.parent) return window.place;
  const PixelRect around = ClientOnScreen(*window.parent);
  return Moved(window.place, around.left, around.top);
}

PixelRect ClientOnScreen(const Win32Window& window) {
  if (!window.parent) return window.client;
  const PixelRect around = ClientOnScreen(*window.parent);
  return Moved(window.client, around.left, around.top);
}

PixelRect DisplayPlace(const Win32Window& window) {
  // The display shows nothing smaller than a pixel.
  const PixelRect& place = window.place;
  return {place.left, place.top, std::max(place.right, place.left + 1), std::max(place.bottom, place.top + 1)};
}

bool IsOwnedBy(const Win32Window* window, const Win32Window* owner) {
  while (window && window != owner) window = window->owner;
  return window != nullptr;
}

namespace {

bool IsTopmost(const Win32Window& window) {
  return window.extendedStyle & WS_EX_TOPMOST;
}

// Topmost windows first, and within each half the order that they have.
void SortTopmost(std::vector<HWND>* windows) {
  std::stable_partition(windows->begin(), windows->end(), [](HWND window) { return IsTopmost(*window); });
}

} // namespace

bool Restack(HWND window, bool top) {
  std::vector<HWND>& siblings = SiblingsOf(window);
  const std::vector<HWND> before = siblings;
  // An owned window goes with its owner.
  const auto goes = [=](HWND each) { return window->parent ? each == window : IsOwnedBy(each, window); };
  if (top) {
    std::stable_partition(siblings.begin(), siblings.end(), goes);
  } else {
    std::stable_partition(siblings.begin(), siblings.end(), [&](HWND each) { return !goes(each); });
  }
  if (!window->parent) SortTopmost(&siblings);
  return siblings != before;
}

} // namespace framereel

using namespace framereel;

HWND GetTopWindow(HWND window) {
  if (window && !IsLive(window)) return nullptr;
  const std::vector<HWND>& order = window ? window->children : TheWindows().topLevels;
  return order.empty() ? nullptr : order.front();
}

HWND GetParent(HWND window) {
  return IsLive(window) ? window->parent : nullptr;
}

HWND GetWindow(HWND window, UINT which) {
  if (!IsLive(window) || which != GW_HWNDNEXT) return nullptr;
  const std::vector<HWND>& siblings = SiblingsOf(window);
  const auto next = std::find(siblings.begin(), siblings.end(), window) + 1;
  return next == siblings.end() ? nullptr : *next;
}

BOOL IsWindowVisible(HWND window) {
  for (HWND each = IsLive(window) ? window : nullptr; each; each = each->parent) {
    if (!Has(*each, WS_VISIBLE)) return FALSE;
  }
  return IsLive(window) && OwnersAreShown(*window);
}

HWND WindowFromPoint(POINT point) {
  for (HWND window : TheWindows().topLevels) {
    const bool takes = IsShown(*window) && !Has(*window, WS_DISABLED);
    if (takes && Holds(window->place, point.x, point.y)) return DeepestAt(window, point.x, point.y);
  }
  return nullptr;
}

LONG_PTR GetWindowLongPtrA(HWND window, int index) {
  if (!IsLive(window)) return 0;
  switch (index) {
  case GWL_USERDATA:
    return window->userData;
  case GWL_ID:
    return window->id;
  case GWL_STYLE:
    return window->style;
  case GWL_WNDPROC:
    return reinterpret_cast<LONG_PTR>(window->procedure);
  default:
    return 0;
  }
}

LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value) {
  const LONG_PTR before = GetWindowLongPtrA(window, index);
  if (!IsLive(window)) return 0;
  if (index == GWL_USERDATA) window->userData = value;
  if (index == GWL_ID) window->id = value;
  if (index == GWL_WNDPROC) window->procedure = reinterpret_cast<WNDPROC>(value);
  return before;
}
