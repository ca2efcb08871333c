// Learning from the platform's messages. What the program itself asks for (window_geometry.h) comes back through these
// as well, and is stored here alone.
#include "platform/windows/place_messages.h"

#include "core/notices.h"
#include "core/numbers.h"
#include "platform/drawing/ports.h"
#include "platform/windows/active_window.h"
#include "platform/windows/display_change.h"
#include "platform/windows/window_geometry.h"
#include "platform/windows/window_list.h"

namespace framereel {
namespace {

bool IsIconic(HWND handle) {
  WINDOWPLACEMENT placement = {};
  placement.length = sizeof placement;
  ::GetWindowPlacement(handle, &placement);
  return placement.showCmd == SW_SHOWMINIMIZED;
}

// Learns the frame from what the platform's default takes off the rectangle of WM_NCCALCSIZE.
LRESULT LearnInsets(WindowGeometry* g, bool iconic, HWND handle, WPARAM wParam, LPARAM lParam) {
  auto* rect = reinterpret_cast<RECT*>(lParam);
  const RECT outer = *rect;
  const LRESULT answer = ::DefWindowProcA(handle, WM_NCCALCSIZE, wParam, lParam);
  if (!iconic) {
    g->insetLeft = PinToShort(rect->left - outer.left);
    g->insetTop = PinToShort(rect->top - outer.top);
    g->insetRight = PinToShort(outer.right - rect->right);
    g->insetBottom = PinToShort(outer.bottom - rect->bottom);
  }
  ClientFromOuter(g);
  return answer;
}

bool StoreSize(WindowGeometry* g, const WINDOWPOS& place) {
  if (place.cx == g->outerWidth && place.cy == g->outerHeight) return false;
  const Insets insets = InsetsOf(*g);
  g->outerWidth = PinToShort(place.cx);
  g->outerHeight = PinToShort(place.cy);
  g->clientWidth = PinToShort(g->outerWidth - insets.width);
  g->clientHeight = PinToShort(g->outerHeight - insets.height);
  return true;
}

// The outer corner in toolkit coordinates.
bool StorePlace(WindowGeometry* g, int32_t x, int32_t y) {
  const WindowGeometry before = *g;
  g->outerLeft = PinToShort(x);
  g->outerTop = PinToShort(y);
  g->clientLeft = PinToShort(x + g->insetLeft);
  g->clientTop = PinToShort(y + g->insetTop);
  return g->outerLeft != before.outerLeft || g->outerTop != before.outerTop || g->clientLeft != before.clientLeft ||
         g->clientTop != before.clientTop;
}

// Windows that stand on the screen by themselves, or those inside the main window, are at another place in toolkit
// coordinates, without a doing of their own.
void ShiftWindows(bool topLevel, int32_t dx, int32_t dy) {
  for (ChildWindow* window = NextChildWindow(nullptr); window; window = NextChildWindow(window)) {
    const WindowGeometry& g = window->geometry;
    if (IsTopLevel(window) == topLevel) StorePlace(&window->geometry, g.outerLeft + dx, g.outerTop + dy);
  }
}

void ReadChildIconic(ChildWindow* window) {
  window->iconic = IsIconic(window->window);
}

// A change of the main window's is told to the listeners.
void ReadMainIconic(MainWindow* main) {
  if (!main->window) return;
  const bool before = main->iconic;
  main->iconic = IsIconic(main->window);
  CheckActiveState();
  if (main->iconic != before) NotifySend(main, kChangeMainMinimised);
}

// A slot for what the user did to the window.
void CallUserSlot(ChildWindow* window, WindowMethod method) {
  if (ProgramPlacesWindow() || window->flags & kWindowClosed) return;
  SetPortWindow(window);
  method(window);
}

} // namespace

LRESULT ChildFrameChanged(ChildWindow* window, HWND handle, WPARAM wParam, LPARAM lParam) {
  ReadChildIconic(window);
  return LearnInsets(&window->geometry, window->iconic, handle, wParam, lParam);
}

LRESULT MainFrameChanged(MainWindow* main, HWND handle, WPARAM wParam, LPARAM lParam) {
  ReadMainIconic(main);
  const WindowGeometry before = main->geometry;
  const LRESULT answer = LearnInsets(&main->geometry, main->iconic, handle, wParam, lParam);
  // The windows inside go with its client area, as when a bar of menus comes.
  const WindowGeometry& g = main->geometry;
  ShiftWindows(false, g.insetLeft - before.insetLeft, g.insetTop - before.insetTop);
  return answer;
}

void ChildPlaceChanged(ChildWindow* window, const WINDOWPOS& place) {
  EvaluateActiveWindow();
  ReadChildIconic(window);
  if (window->iconic) return;
  const MainWindow* main = window->parent;
  const bool topLevel = IsTopLevel(window);
  const int32_t x = place.x + (topLevel ? -main->originX : main->geometry.insetLeft);
  const int32_t y = place.y + (topLevel ? -main->originY : main->geometry.insetTop);
  if (StoreSize(&window->geometry, place)) CallUserSlot(window, window->methods.resized);
  if (StorePlace(&window->geometry, x, y)) CallUserSlot(window, window->methods.moved);
}

void MainPlaceChanged(MainWindow* main, const WINDOWPOS& place) {
  WindowGeometry* g = &main->geometry;
  const int16_t width = g->clientWidth, height = g->clientHeight, originX = main->originX, originY = main->originY;
  ReadMainIconic(main);
  if (!main->iconic) {
    StoreSize(g, place);
    main->originX = PinToShort(place.x);
    main->originY = PinToShort(place.y);
    StorePlace(g, 0, 0);
    // The origin of the coordinates moved with it.
    ShiftWindows(true, originX - main->originX, originY - main->originY);
  }
  if (main->originX != originX || main->originY != originY) NotifySend(main, kChangeMainMoved);
  if (g->clientWidth != width || g->clientHeight != height) NotifySend(main, kChangeMainSize);
  DisplayChanged();
}

} // namespace framereel
